// The files of the machine.
#include "posix/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/errors.h"

namespace kestrel::posix {

namespace {

namespace fs = std::filesystem;

constexpr mode_t NewFile = 0666;  // less what the user's mask takes away

[[noreturn]] void fail(const fs::path& file, int error) {
    const int number = error == ENOENT ? error_number::FileNotFound : error_number::FileAccess;
    throw RunTimeError(number, file.string() + ": " + std::generic_category().message(error));
}

struct Descriptor {
    Descriptor(const fs::path& name, int flags) : file(name), number(open(name.c_str(), flags | O_CLOEXEC, NewFile)) {
        if (number < 0) fail(file, errno);
    }
    ~Descriptor() { close(number); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void writeAll(const std::string& content) const {
        for (std::size_t done = 0; done < content.size();) {
            const ssize_t count = write(number, content.data() + done, content.size() - done);
            if (count < 0 && errno != EINTR) fail(file, errno);
            if (count > 0) done += static_cast<std::size_t>(count);
        }
    }

    fs::path file;
    int number;
};

}  // namespace

std::string readWholeFile(const fs::path& file) {
    const Descriptor source(file, O_RDONLY);
    std::string content;
    for (std::string piece(65536, '\0');;) {
        const ssize_t count = read(source.number, piece.data(), piece.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) fail(file, errno);
        if (count == 0) return content;
        content.append(piece, 0, static_cast<std::size_t>(count));
    }
}

void writeWholeFile(const fs::path& file, const std::string& content) {
    std::error_code trouble;
    const fs::file_status status = fs::status(file, trouble);
    if (fs::exists(status) && !fs::is_regular_file(status)) return Descriptor(file, O_WRONLY).writeAll(content);
    const fs::path target = fs::exists(status) ? fs::canonical(file) : file;
    fs::path aside = target;
    aside += "." + std::to_string(getpid()) + ".new";
    try {
        {
            const Descriptor fresh(aside, O_WRONLY | O_CREAT | O_TRUNC);
            fresh.writeAll(content);
            if (fsync(fresh.number) != 0) fail(file, errno);
        }
        if (rename(aside.c_str(), target.c_str()) != 0) fail(file, errno);
    } catch (const RunTimeError&) {
        unlink(aside.c_str());
        throw;
    }
}

std::vector<std::string> listFilesEnding(const fs::path& directory, const std::string& ending) {
    std::error_code trouble;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(directory, trouble), end; !trouble && entry != end; entry.increment(trouble)) {
        std::error_code ignored;
        const std::string name = entry->path().filename().string();
        if (name.ends_with(ending) && entry->is_regular_file(ignored)) names.push_back(name);
    }
    if (trouble) throw RunTimeError(error_number::PathNotFound, directory.string() + ": " + trouble.message());
    std::ranges::sort(names);
    return names;
}

void enterDirectory(const fs::path& directory) {
    std::error_code trouble;
    fs::current_path(directory, trouble);
    if (trouble) throw RunTimeError(error_number::PathNotFound, directory.string() + ": " + trouble.message());
}

}  // namespace kestrel::posix
