// Why a serial port could not be opened.
#include "qt/io/port_trouble.h"

#include <QFileInfo>
#include "language/port_words.h"
#include "qt/io/text.h"
#ifdef Q_OS_UNIX
#include "posix/device_access.h"
#endif

namespace kestrel::qt {

namespace {

#ifdef Q_OS_UNIX
using posix::groupHint;
using posix::holderOf;
using posix::isPermitted;

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
