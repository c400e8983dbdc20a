// Who may use a device and who does.
#include "posix/device_access.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include "language/port_words.h"

namespace kestrel::posix {

namespace {

namespace fs = std::filesystem;

std::string userName() {
    const passwd* const user = getpwuid(geteuid());
    return user ? user->pw_name : "USER";
}

bool holds(const fs::path& process, const fs::path& device) {
    std::error_code trouble;
    for (fs::directory_iterator open(process / "fd", trouble), end; !trouble && open != end; open.increment(trouble)) {
        std::error_code ignored;
        if (fs::read_symlink(open->path(), ignored) == device) return true;
    }
    return false;
}

}  // namespace

bool isPermitted(const std::string& device) { return access(device.c_str(), R_OK | W_OK) == 0; }

std::string groupHint(const std::string& device) {
    struct stat status {};
    constexpr mode_t Shared = S_IRGRP | S_IWGRP;
    if (stat(device.c_str(), &status) != 0 || (status.st_mode & Shared) != Shared) return {};
    const group* const found = getgrgid(status.st_gid);
    const std::string name = found ? found->gr_name : "";
    if (name.empty() || name == "root") return {};
    return "; " + portWord(PortWord::NeedsGroup) + " " + name + ": sudo usermod -aG " + name + " " + userName() + ", " +
           portWord(PortWord::LogInAgain);
}

std::string holderOf(const std::string& device) {
    std::error_code trouble;
    const fs::path real = fs::canonical(device, trouble);
    for (fs::directory_iterator process("/proc", trouble), end; !trouble && process != end;
         process.increment(trouble)) {
        const std::string number = process->path().filename().string();
        if (number.find_first_not_of("0123456789") != std::string::npos || number == std::to_string(getpid())) continue;
        if (!holds(process->path(), real)) continue;
        std::string name;
        std::getline(std::ifstream(process->path() / "comm"), name);
        return name + " (" + number + ")";
    }
    return {};
}

}  // namespace kestrel::posix
