// The serial devices of this computer.
#include "posix/serial_devices.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <tuple>

namespace kestrel::posix {

namespace {

namespace fs = std::filesystem;

constexpr const char* Listing = "/sys/class/tty";

std::string firstLineOf(const fs::path& file) {
    std::string line;
    std::getline(std::ifstream(file), line);
    return line;
}

/// What an adapter says of itself stands in one of the directories above its device.
void describe(SerialDevice& device, const fs::path& from) {
    for (fs::path place = from; place.has_relative_path(); place = place.parent_path()) {
        std::error_code ignored;
        if (!fs::exists(place / "idVendor", ignored)) continue;
        device.isUsb = true;
        for (const char* part : {"manufacturer", "product", "serial"})
            if (const std::string text = firstLineOf(place / part); !text.empty())
                device.about += (device.about.empty() ? "" : " ") + text;
        return;
    }
}

}  // namespace

std::vector<SerialDevice> serialDevices() {
    std::vector<SerialDevice> devices;
    std::error_code trouble;
    for (fs::directory_iterator entry(Listing, trouble), end; !trouble && entry != end; entry.increment(trouble)) {
        std::error_code ignored;
        const fs::path hardware = fs::canonical(entry->path() / "device", ignored);
        if (hardware.empty() || firstLineOf(entry->path() / "type") == "0") continue;  // a place without a chip
        SerialDevice device;
        device.path = "/dev/" + entry->path().filename().string();
        device.driver = fs::read_symlink(hardware / "driver", ignored).filename().string();
        if (device.driver.empty() || !fs::exists(device.path, ignored)) continue;
        describe(device, hardware);
        devices.push_back(device);
    }
    std::ranges::sort(devices, {},
                      [](const SerialDevice& each) { return std::tuple(!each.isUsb, each.path.size(), each.path); });
    return devices;
}

}  // namespace kestrel::posix
