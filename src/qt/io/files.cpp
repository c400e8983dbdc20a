// The files of the machine.
#include "qt/io/files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>
#include <system_error>

#include "platform/errors.h"
#include "qt/io/text.h"

namespace kestrel::qt {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int number, const fs::path& file, const std::string& reason) {
    throw RunTimeError(number, pathToQt(file).toStdString() + ": " + reason);
}

[[noreturn]] void failAccess(const fs::path& file, const QFileDevice& device) {
    fail(error_number::FileAccess, file, device.errorString().toStdString());
}

/// Writes over a file whose directory takes no new one. A text as short as a configuration is there with the first
/// write; what the old one was longer is cut off behind it, and on a failure the old text is put back.
void writeOver(const fs::path& file, const QByteArray& content) {
    QFile target(pathToQt(file));
    if (!target.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) failAccess(file, target);
    const QByteArray old = target.readAll();
    const auto put = [&target](const QByteArray& text) {
        return target.seek(0) && target.write(text) == text.size() && target.resize(text.size());
    };
    if (put(content)) return;
    const std::string reason = target.errorString().toStdString();
    put(old);
    fail(error_number::FileAccess, file, reason);
}

/// Only the user may look into a new one.
void makeDirectory(const fs::path& directory) {
    std::error_code trouble;
    if (fs::exists(directory, trouble)) return;
    if (directory.has_relative_path()) makeDirectory(directory.parent_path());
    if (!fs::create_directory(directory, trouble)) fail(error_number::FileAccess, directory, trouble.message());
    fs::permissions(directory, fs::perms::owner_all, trouble);
}

}  // namespace

std::string readWholeFile(const fs::path& file) {
    QFile source(pathToQt(file));
    if (!source.exists()) fail(error_number::FileNotFound, file, "File not found");
    if (!source.open(QIODevice::ReadOnly)) failAccess(file, source);
    const QByteArray content = source.readAll();
    if (source.error() != QFileDevice::NoError) failAccess(file, source);
    return content.toStdString();
}

bool canBeWritten(const fs::path& file) {
    const QFileInfo present(pathToQt(file));
    return present.exists() ? present.isWritable() : QFileInfo(present.path()).isWritable();
}

fs::path userDirectory() {
    return toPath(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)) / "kestrel";
}

void writeWholeFile(const fs::path& file, const std::string& content) {
    makeDirectory(file.parent_path());
    QSaveFile target(pathToQt(file));
    const bool takesNewFiles = QFileInfo(pathToQt(file.parent_path())).isWritable();
    if (!takesNewFiles && QFile::exists(target.fileName())) return writeOver(file, QByteArray::fromStdString(content));
    const auto size = static_cast<qint64>(content.size());
    // Unbuffered, because a write cut short by a full disk goes unnoticed when it happens inside commit().
    const bool isOpen = target.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    const bool written = isOpen && target.write(content.data(), size) == size;
    if (!written || !target.commit()) failAccess(file, target);
}

std::vector<std::string> listFilesEnding(const fs::path& directory, const std::string& ending) {
    std::error_code trouble;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(directory, trouble), end; !trouble && entry != end; entry.increment(trouble)) {
        std::error_code ignored;
        const fs::path name = entry->path().filename();
        const bool isWanted = name.native().ends_with(fs::path(ending).native()) && isText(name);
        if (isWanted && entry->is_regular_file(ignored)) names.push_back(pathToQt(name).toStdString());
    }
    if (trouble) fail(error_number::PathNotFound, directory, trouble.message());
    std::sort(names.begin(), names.end());
    return names;
}

void enterDirectory(const fs::path& directory) {
    std::error_code trouble;
    fs::current_path(directory, trouble);
    if (trouble) fail(error_number::PathNotFound, directory, trouble.message());
}

}  // namespace kestrel::qt
