// Building the machine's boards from an installation.
// A board that is not fitted has an empty memory and reads no file.
#include "simulator/setup.h"

#include <map>
#include <system_error>

#include "simulator/index_files.h"
#include "simulator/initial_values.h"

namespace kestrel::simulator {
namespace {

constexpr int defaultKind = 18;
constexpr int defaultRevision = 27;

// The identity records that the PC asks for; the others read as 0.
constexpr int releaseRecord = 17;
constexpr int softwareRecord = 11;
constexpr int kindRecord = 12;
constexpr int typeLowRecord = 13;
constexpr int typeHighRecord = 14;
constexpr int revisionRecord = 18;

std::uint32_t revisionOf(const Identity& identity) {
    return static_cast<std::uint32_t>(identity.revision.value_or(defaultRevision));
}

// What the board will report, and the file that lays out its memory.
struct Layout {
    std::filesystem::path file;
    int type;
    int software;
    int release;
};

Layout layoutOf(const std::filesystem::path& directory, Board board, const Identity& identity) {
    const std::filesystem::path last = findParameterFile(directory, board);
    const ParameterFileName name = *parseParameterFileName(last.filename().string());
    const ParameterFileName wanted{identity.type.value_or(name.type), identity.software.value_or(name.software),
                                   identity.release.value_or(name.release)};
    const std::filesystem::path file = directory / composeParameterFileName(wanted);
    std::error_code error;
    const bool exists = std::filesystem::is_regular_file(file, error);
    return {exists ? file : last, wanted.type, wanted.software, wanted.release};
}

BoardMemory buildMemory(const std::filesystem::path& directory, Board board, const Identity& identity) {
    const Layout layout = layoutOf(directory, board, identity);
    BoardMemory memory(readParameterFile(layout.file));
    const std::map<int, int> values{{releaseRecord, layout.release},
                                    {softwareRecord, layout.software},
                                    {kindRecord, identity.kind.value_or(defaultKind)},
                                    {typeLowRecord, layout.type % 256},
                                    {typeHighRecord, layout.type / 256},
                                    {revisionRecord, static_cast<int>(revisionOf(identity))}};
    const auto records = readIdentityFile(identityFile(directory, board));
    const auto addRecords = [&](bool known) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            const int number = static_cast<int>(i) + 1;
            const auto value = values.find(number);
            if ((value != values.end()) != known) continue;
            memory.addIdentity(number, records[i], known ? static_cast<std::uint32_t>(value->second) : 0);
        }
    };
    // Records without meaning may share an address with others; those with a meaning have the last word.
    addRecords(false);
    addRecords(true);
    return memory;
}

}  // namespace

World buildWorld(const MachineOptions& options) {
    World world;
    world.seed = options.seed;
    world.moving = options.moving;
    world.fitted = {true, options.hotDrinkBoard, options.sectorBoard};
    for (const Board board : allBoards) {
        if (!world.isFitted(board)) continue;
        world.at(board) = buildMemory(options.directory, board, options.identities[indexOf(board)]);
    }
    world.at(Board::Master).addByte(0);  // the PC looks for the machine by reading the master's first byte
    setInitialValues(world, options);
    world.set(master::FirmwareRevision, revisionOf(options.identities[indexOf(Board::Master)]));
    return world;
}

}  // namespace kestrel::simulator
