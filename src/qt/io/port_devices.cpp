// Which device stands behind ports 1 to 4.
#include "qt/io/port_devices.h"

#include <QCollator>
#include <QSerialPortInfo>
#include <algorithm>

#include "link/link_engine.h"

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

std::string PortDevices::device(int port, const std::function<std::vector<std::string>()>& present) {
    if (!devices_.contains(port)) giveOut(present());
    const auto found = devices_.find(port);
    return found == devices_.end() ? std::string() : found->second;
}

void PortDevices::giveOut(const std::vector<std::string>& present) {
    int port = 1;
    for (const std::string& device : present) {
        if (isGiven(device)) continue;
        while (devices_.contains(port)) ++port;
        if (port > PortCount) return;
        devices_[port] = device;
    }
}

bool PortDevices::isGiven(const std::string& device) const {
    return std::any_of(devices_.begin(), devices_.end(), [&](const auto& entry) { return entry.second == device; });
}

}  // namespace kestrel::qt
