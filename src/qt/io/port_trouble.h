// Why a serial port could not be opened, in words that help a technician.
// The toolkit has one code for "in use" and "no permission"; the file system tells them apart.
#pragma once

#include <QSerialPort>
#include <string>

#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::qt {

std::string portTroubleText(const std::string& device, PortTrouble trouble);

/// The run-time error for a device that `port` has just failed to open; numbers SerialBadPort (not there),
/// SerialNoPermission, SerialPortInUse, SerialDevice (anything else).
RunTimeError openingTrouble(const std::string& device, const QSerialPort& port);

}  // namespace kestrel::qt
