// Why a serial port could not be opened.
#include "qt/io/port_trouble.h"

#include <QFileInfo>
#include <filesystem>
#include <fstream>
#include <system_error>
#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

#include "qt/io/text.h"
#include "qt/window/port_words.h"

namespace kestrel::qt {

namespace {

namespace fs = std::filesystem;

#ifdef Q_OS_UNIX
bool isPermitted(const std::string& device) { return access(device.c_str(), R_OK | W_OK) == 0; }

std::string userName() {
    const passwd* const user = getpwuid(geteuid());
    return user ? user->pw_name : "USER";
}

/// The group whose members may use the device, if that is how it is shared, and how to become one.
std::string groupHint(const std::string& device) {
    const QFileInfo file(toQt(device));
    constexpr auto Shared = QFile::ReadGroup | QFile::WriteGroup;
    const std::string group = file.group().toStdString();
    if (!file.permission(Shared) || group.empty() || group == "root") return {};
    return "; " + portWord(PortWord::NeedsGroup) + " " + group + ": sudo usermod -aG " + group + " " + userName() +
           ", " + portWord(PortWord::LogInAgain);
}

bool holds(const fs::path& process, const fs::path& device) {
    std::error_code trouble;
    for (fs::directory_iterator open(process / "fd", trouble), end; !trouble && open != end; open.increment(trouble)) {
        std::error_code ignored;
        if (fs::read_symlink(open->path(), ignored) == device) return true;
    }
    return false;
}

/// Name and number of the program that has the device open; empty where the system does not show it.
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

bool isThere(const std::string& device, const QSerialPort&) { return QFileInfo::exists(toQt(device)); }
#else
bool isPermitted(const std::string&) { return true; }
std::string groupHint(const std::string&) { return {}; }
std::string holderOf(const std::string&) { return {}; }
bool isThere(const std::string&, const QSerialPort& port) { return port.error() != QSerialPort::DeviceNotFoundError; }
#endif

}  // namespace

std::string portTroubleText(const std::string& device, PortTrouble trouble) {
    const PortWord word = trouble == PortTrouble::NoBoard ? PortWord::NoBoard
                          : trouble == PortTrouble::Gone  ? PortWord::Gone
                                                          : PortWord::Closed;
    return device + ": " + portWord(word);
}

RunTimeError openingTrouble(const std::string& device, const QSerialPort& port) {
    const std::string of = device + ": ";
    if (!isThere(device, port)) return {error_number::SerialBadPort, of + portWord(PortWord::NotThere)};
    if (!isPermitted(device))
        return {error_number::SerialNoPermission, of + portWord(PortWord::NoPermission) + groupHint(device)};
    if (port.error() == QSerialPort::PermissionError) {
        const std::string holder = holderOf(device);
        const std::string who = holder.empty() ? portWord(PortWord::InUse) : portWord(PortWord::InUseBy) + " " + holder;
        return {error_number::SerialPortInUse, of + who};
    }
    return {error_number::SerialDevice, of + port.errorString().toStdString()};
}

}  // namespace kestrel::qt
