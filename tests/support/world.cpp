// The whole program on a simulated machine, in virtual time.
#include "support/world.h"

#include "link/link_engine.h"
#include "link/param_table.h"
#include "platform/outside.h"

namespace kestrel::testing {

World::World(simulator::MachineOptions options) : line(options) {
    platform.install(InstallationDirectory());
    platform.lines[1] = &line;
    RegisterPages(AllPages());
}

simulator::MachineOptions World::still(bool hotDrinkBoard, bool sectorBoard) {
    simulator::MachineOptions options;
    options.directory = InstallationDirectory();
    options.hotDrinkBoard = hotDrinkBoard;
    options.sectorBoard = sectorBoard;
    options.moving = false;
    return options;
}

void World::start() {
    platform.put("kestrel.ini", "Com=1\r\nLingua=Italiano\r\n");
    MDIForm_Load("Kestrel");
}

bool World::settle() {
    constexpr int VirtualMinute = 60'000;
    constexpr int Slice = 20;
    for (int waited = 0; waited < VirtualMinute; waited += Slice) {
        run(Slice);
        if (UnsettledRecords() == 0 && Link().LinkIdle && !AnyActWaits()) return true;
    }
    return false;
}

void World::letActsIn() {
    while (AnyActWaits() && platform.step()) continue;
}

StartedWorld::StartedWorld(simulator::MachineOptions options, std::initializer_list<BoardValue> values)
    : World(std::move(options)) {
    start();
    setBoards(values);
}

StartedWorld::StartedWorld(std::initializer_list<BoardValue> values) : StartedWorld(still(), values) {}

std::filesystem::path InstallationDirectory() { return KESTREL_INSTALLATION; }

int UnsettledRecords() {
    int count = 0;
    for (int bank = 0; bank < Banks; ++bank)
        for (int index = 1; index < RecordCount(bank); ++index) {
            const std::uint8_t flags = ParamFlags(bank, index);
            const bool stale = (flags & flag::Watched) && !(flags & flag::Valid);
            if (stale || (flags & flag::WriteDue)) ++count;
        }
    return count;
}

}  // namespace kestrel::testing
