// The whole program on a simulated machine, in virtual time.
// A test starts it, opens pages, acts as the user, lets time pass, and looks at both ends.
#pragma once

#include <initializer_list>
#include <string>

#include "link/loaded_pages.h"
#include "pages/registry.h"
#include "shell/session.h"
#include "shell/start_up.h"
#include "shell/windows.h"
#include "simulator/machine.h"
#include "support/board_value.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

class World {
  public:
    /// The installation is the one that the build made; the machine does nothing by itself unless asked to.
    explicit World(simulator::MachineOptions options);
    World() : World(still()) {}

    static simulator::MachineOptions still(bool hotDrinkBoard = true, bool sectorBoard = true);

    VirtualPlatform platform;
    MachineLine line;
    simulator::Machine& machine = line.machine;
    Session session;

    /// Starts the program: configuration, language, boards. The machine is on port 1.
    void start();
    /// Opens a page by its class name and gives the link time to fill it.
    template <class P>
    P& open(const std::string& name) {
        auto& page = dynamic_cast<P&>(ShowPage(name));
        settle();
        return page;
    }
    /// Lets time pass until nothing watched is stale and nothing written is due; false after a virtual minute.
    bool settle();
    /// Lets what the user has done come in: an act waits for the end of an open exchange.
    void letActsIn();
    /// Lets time pass.
    void run(double milliseconds) { platform.run(milliseconds); }

    std::uint32_t board(int bank, int parameter) const {
        return machine.value(static_cast<simulator::Board>(bank), parameter);
    }
    void setBoard(int bank, int parameter, std::uint32_t value) {
        machine.setValue(static_cast<simulator::Board>(bank), parameter, value);
    }
    void setBoards(std::initializer_list<BoardValue> values) {
        for (const BoardValue& each : values) setBoard(each.bank, each.parameter, each.value);
    }
    /// Consecutive parameters hold consecutive values.
    void setBoards(int bank, int first, int count, std::uint32_t value) {
        for (int i = 0; i < count; ++i) setBoard(bank, first + i, value + static_cast<std::uint32_t>(i));
    }
};

/// A world whose program has started, on boards that hold these values.
class StartedWorld : public World {
  public:
    explicit StartedWorld(std::initializer_list<BoardValue> values = {});
    explicit StartedWorld(simulator::MachineOptions options, std::initializer_list<BoardValue> values = {});
};

/// The program's directory of the installation that the build made.
std::filesystem::path InstallationDirectory();

/// Records that are watched and not fresh, or whose write is due, over all banks.
int UnsettledRecords();

}  // namespace kestrel::testing
