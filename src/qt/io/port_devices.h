// Which device stands behind ports 1 to 4.
// A device once given to a port stays there for the run, so that unplugging one adapter moves no other.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kestrel::qt {

/// Serial devices of this machine by path: USB adapters first, then the built-in ones, each in order of name.
std::vector<std::string> serialDevices();

class PortDevices {
  public:
    /// Devices by port number, as the user named them; they come before any that is found.
    explicit PortDevices(std::map<int, std::string> named) : devices_(std::move(named)) {}

    /// The device behind a port, 1 to 4; empty when there is none. If it has none yet, the machine is asked for its
    /// devices, and those that stand behind no port are given, in their order, to the ports that have none.
    std::string device(int port, const std::function<std::vector<std::string>()>& present);

  private:
    void giveOut(const std::vector<std::string>& present);
    bool isGiven(const std::string& device) const;

    std::map<int, std::string> devices_;
};

}  // namespace kestrel::qt
