// Which device stands behind ports 1 to 4.
// See port_devices.h.
#include "platform/qt/port_devices.h"

#include <QCollator>
#include <QSerialPortInfo>
#include <algorithm>

namespace kestrel::qt {

std::vector<std::string> serialDevices() {
    QList<QSerialPortInfo> found = QSerialPortInfo::availablePorts();
    QCollator byName(QLocale::c());
    byName.setNumericMode(true);
    std::sort(found.begin(), found.end(), [&byName](const QSerialPortInfo& a, const QSerialPortInfo& b) {
        if (a.hasVendorIdentifier() != b.hasVendorIdentifier()) return a.hasVendorIdentifier();
        return byName.compare(a.portName(), b.portName()) < 0;
    });
    std::vector<std::string> devices;
    for (const QSerialPortInfo& port : found) devices.push_back(port.systemLocation().toStdString());
    return devices;
}

std::string PortDevices::device(int port, const std::vector<std::string>& present) {
    auto next = present.begin();
    for (int number = 1; number <= LastPort; ++number) {
        if (devices_.contains(number)) continue;
        next = std::find_if(next, present.end(), [this](const std::string& device) { return !isGiven(device); });
        if (next == present.end()) break;
        devices_[number] = *next;
    }
    const auto found = devices_.find(port);
    return found == devices_.end() ? std::string() : found->second;
}

bool PortDevices::isGiven(const std::string& device) const {
    return std::any_of(devices_.begin(), devices_.end(), [&](const auto& entry) { return entry.second == device; });
}

}  // namespace kestrel::qt
