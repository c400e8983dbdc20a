// The board's side of a pseudo-terminal whose other side the program takes for a serial port.
// Closing it is what unplugging an adapter is to the program.
#pragma once

#include <string>

namespace kestrel::testing {

class PseudoTerminal {
  public:
    PseudoTerminal();
    ~PseudoTerminal() { unplug(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    const std::string& device() const { return device_; }
    enum Amount { All, WhatFits };
    void send(const std::string& bytes, Amount amount = All);
    /// What the program has sent and has not been read yet.
    std::string received();
    void unplug();

  private:
    int master_ = -1;
    std::string device_;
};

}  // namespace kestrel::testing
