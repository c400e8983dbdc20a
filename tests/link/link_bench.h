// The link with its start-up on a scripted line, in virtual time, with an installation of the test's own.
// Addresses are the numbers of the records, so that every frame can be told in a few letters.
#pragma once

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/menu.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

using Strings = std::vector<std::string>;
using Pieces = std::vector<ScriptedLine::Piece>;

class LinkBench {
  public:
    using Place = std::pair<int, int>;  ///< bank and number
    struct Row {
        int period = 0;
        int command = 1;
        std::uint32_t preload = 0;
    };

    LinkBench();

    VirtualPlatform platform;
    ScriptedLine line;  ///< on port 1
    Session session;

    // The installation: parameter files of four records a bank, all one-shot and two bytes wide, unless changed.
    std::array<std::vector<Row>, 3> rows;
    void putIdentityFile(int bank, int command = 0);
    void putParameterFile(int bank, const std::string& name);
    /// All six files, with the names that follow from what the boards tell of themselves. Done at the start too.
    void putFiles();

    // The boards. The default script of the line answers as they would, 5 ms after each frame.
    std::map<Place, int> identity;  ///< what a board tells of itself, by identity record
    std::map<Place, std::uint32_t> board;
    /// By frame, as tell() has it, a letter for each coming answer: g good, b one that no check lets pass, h half of
    /// it, s silence. The last letter holds for ever.
    std::map<std::string, std::string> replies;
    bool mute = false;  ///< nobody answers anything
    Pieces answer(const Bytes& frame);

    /// "probe", "i1.17?" for identity record 17 of bank 1, "0.3?" for a read, "2.1=500" for a write.
    static std::string tell(const Bytes& frame);
    /// All frames since the start.
    Strings sent() const;

    /// Writes the index files, loads the link as the program does, and forgets its frames.
    void start();
    /// The same without the writing and the forgetting.
    static void load();
    /// Loads, and gives the text of the error that ended the program; empty when it started.
    std::string endOfLoad();
    void run(double milliseconds) { platform.run(milliseconds); }
    static MenuItem& portEntry(int port);
    static std::string notice();
    /// The device is pulled out, or put back.
    void unplug();
    void plug() { line.there = true; }
};

/// As pages do: the bank first.
void Watch(int bank, int number);
void Write(int bank, int number, std::uint32_t value);

}  // namespace kestrel::testing
