// A small installation of index files in a temporary directory, and a machine on it, for the tests of the simulator.
// Parameter n of a board lies at its base address plus 4 n, identity record r at an area of its own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "simulator/machine.h"

namespace kestrel::simulator::tests {

struct Entry {
    std::uint32_t address;
    int width;
    std::uint32_t preload;
};

class Installation {
  public:
    Installation();  // identity and parameter files of all three boards, every parameter with preload 0
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::filesystem::path& directory() const { return directory_; }
    void writeParameters(const std::string& name, const std::vector<Entry>& entries) const;
    void writeIdentity(const std::string& name, const std::vector<Entry>& entries) const;
    void writeRaw(const std::string& name, const Bytes& bytes) const;

    MachineOptions options() const;

    static std::uint32_t address(Board board, int parameter);
    static std::uint32_t identityAddress(Board board, int record);
    static int width(Board board, int parameter);

  private:
    std::filesystem::path directory_;
};

// The frames of a PC, built by hand.
Bytes readFrame(Board board, std::uint32_t address, int width);
Bytes writeFrame(Board board, std::uint32_t address, int width, std::uint32_t value);

// A PC that sends one frame at a time and waits up to a second for what comes back.
class Pc {
  public:
    explicit Pc(Machine& machine) : machine_(machine) {}

    Bytes exchange(const Bytes& frame, Micros wait = second);
    // The value of a parameter, or of an identity record, as read over the line; fails the test on a bad reply.
    std::uint32_t read(Board board, int parameter);
    std::uint32_t readIdentity(Board board, int record);
    bool write(Board board, int parameter, std::uint32_t value);  // true when rightly acknowledged
    void wait(Micros time);

    Micros now = 0;

  private:
    std::uint32_t readAt(Board board, std::uint32_t address, int width);
    Machine& machine_;
};

}  // namespace kestrel::simulator::tests
