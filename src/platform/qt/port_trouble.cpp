// Why a serial port could not be opened.
// See port_trouble.h.
#include "platform/qt/port_trouble.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "platform/qt/text.h"

namespace kestrel::qt {

namespace {

#ifdef Q_OS_UNIX
bool isPermitted(const std::string& device) { return access(device.c_str(), R_OK | W_OK) == 0; }

/// The group whose members may use the device, if that is how it is shared.
std::string groupHint(const std::string& device) {
    const QFileInfo file(toQt(device));
    constexpr auto Shared = QFile::ReadGroup | QFile::WriteGroup;
    if (!file.permission(Shared) || file.group().isEmpty()) return {};
    return " (needs group " + file.group().toStdString() + ")";
}

bool isThere(const std::string& device, const QSerialPort&) { return QFileInfo::exists(toQt(device)); }
#else
bool isPermitted(const std::string&) { return true; }
std::string groupHint(const std::string&) { return {}; }
bool isThere(const std::string&, const QSerialPort& port) { return port.error() != QSerialPort::DeviceNotFoundError; }
#endif

}  // namespace

RunTimeError openingTrouble(const std::string& device, const QSerialPort& port) {
    if (!isThere(device, port)) return {error_number::SerialBadPort, device + ": not there"};
    if (!isPermitted(device)) return {error_number::SerialNoPermission, device + ": no permission" + groupHint(device)};
    if (port.error() == QSerialPort::PermissionError)
        return {error_number::SerialPortInUse, device + ": in use by another program"};
    return {error_number::SerialDevice, device + ": " + port.errorString().toStdString()};
}

}  // namespace kestrel::qt
