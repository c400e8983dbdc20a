// The files of the machine.
// See files.h.
#include "platform/qt/files.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <system_error>

#include "platform/qt/text.h"
#include "platform/trouble.h"

namespace kestrel::qt {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int number, const fs::path& file, const std::string& reason) {
    throw RunTimeError(number, pathToQt(file).toStdString() + ": " + reason);
}

[[noreturn]] void failAccess(const fs::path& file, const QFileDevice& device) {
    fail(error_number::FileAccess, file, device.errorString().toStdString());
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

void writeWholeFile(const fs::path& file, const std::string& content) {
    QSaveFile target(pathToQt(file));
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
        const std::string name = pathToQt(entry->path().filename()).toStdString();
        if (name.ends_with(ending) && entry->is_regular_file(ignored)) names.push_back(name);
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
