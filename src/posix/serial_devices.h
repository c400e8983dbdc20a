// The serial devices of this computer, as the system lists them.
// USB adapters come first, then the built-in ones, each in order of name.
#pragma once

#include <string>
#include <vector>

namespace kestrel::posix {

struct SerialDevice {
    std::string path;    ///< "/dev/ttyUSB0"
    std::string about;   ///< maker, product and number of an adapter; empty where nothing is known
    std::string driver;  ///< by which the system works it
    bool isUsb = false;
};

std::vector<SerialDevice> serialDevices();

}  // namespace kestrel::posix
