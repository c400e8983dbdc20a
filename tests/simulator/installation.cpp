// The test installation, and the frames of the PC's side.
// The frames are put together here once more by hand, so that the machine is not tested with its own code.
#include "simulator/installation.h"

#include <fstream>
#include <numeric>
#include <random>

namespace kestrel::simulator::tests {
namespace {

struct Range {
    Board board;
    int first;
    int last;
    int width;
};
constexpr std::array<Range, 10> wide{{{Board::Master, 8, 83, 2},
                                      {Board::Master, 88, 157, 2},
                                      {Board::Master, 159, 198, 4},
                                      {Board::Master, 312, 349, 2},
                                      {Board::Master, 356, 356, 4},
                                      {Board::HotDrink, 1204, 1215, 2},
                                      {Board::HotDrink, 1216, 1287, 2},
                                      {Board::Sector, 71, 214, 2},
                                      {Board::Sector, 287, 287, 2},
                                      {Board::Sector, 400, 400, 4}}};

constexpr std::array<int, boardCount> parameterCounts{400, 1480, 300};
constexpr int identityCount = 20;

void append(Bytes& bytes, const Entry& entry, std::size_t size) {
    const Bytes record{static_cast<std::uint8_t>(entry.address >> 16), static_cast<std::uint8_t>(entry.address >> 8),
                       static_cast<std::uint8_t>(entry.width - 1),     0,
                       static_cast<std::uint8_t>(entry.address),       static_cast<std::uint8_t>(entry.preload),
                       static_cast<std::uint8_t>(entry.preload >> 8),  static_cast<std::uint8_t>(entry.preload >> 16),
                       static_cast<std::uint8_t>(entry.preload >> 24)};
    bytes.insert(bytes.end(), record.begin(), record.begin() + static_cast<std::ptrdiff_t>(size));
}

Bytes closed(Bytes frame) {
    frame.push_back(static_cast<std::uint8_t>(std::accumulate(frame.begin(), frame.end(), 0)));
    return frame;
}

Bytes frameOf(Board board, std::uint32_t address, std::uint8_t command, std::uint8_t kind) {
    const auto low = static_cast<std::uint8_t>(address);
    const auto middle = static_cast<std::uint8_t>(address >> 8);
    const auto high = static_cast<std::uint8_t>(address >> 16);
    if (board == Board::Master) return {command, low, middle, high};
    const std::uint8_t route = board == Board::HotDrink ? 0x49 : 0x56;
    return {kind, low, middle, high, command, route};
}

}  // namespace

Installation::Installation() {
    const auto unique = std::to_string(std::random_device{}()) + std::to_string(std::random_device{}());
    directory_ = std::filesystem::temp_directory_path() / ("machine_test_" + unique);
    std::filesystem::create_directories(directory_);
    const std::array<std::string, boardCount> identities{"W0256.inx", "W0292.inx", "W0245.inx"};
    const std::array<std::string, boardCount> parameters{"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
    for (const Board board : allBoards) {
        std::vector<Entry> entries;
        for (int n = 1; n <= parameterCounts[indexOf(board)]; ++n) {
            entries.push_back({address(board, n), width(board, n), 0});
        }
        writeParameters(parameters[indexOf(board)], entries);
        entries.clear();
        for (int r = 1; r <= identityCount; ++r) entries.push_back({identityAddress(board, r), 1, 0});
        writeIdentity(identities[indexOf(board)], entries);
    }
}

Installation::~Installation() {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

void Installation::writeParameters(const std::string& name, const std::vector<Entry>& entries) const {
    Bytes bytes;
    for (const Entry& entry : entries) append(bytes, entry, 9);
    writeRaw(name, bytes);
}

void Installation::writeIdentity(const std::string& name, const std::vector<Entry>& entries) const {
    Bytes bytes;
    for (const Entry& entry : entries) append(bytes, entry, 5);
    writeRaw(name, bytes);
}

void Installation::writeRaw(const std::string& name, const Bytes& bytes) const {
    std::ofstream out(directory_ / name, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

MachineOptions Installation::options() const {
    MachineOptions options;
    options.directory = directory_;
    return options;
}

std::uint32_t Installation::address(Board board, int parameter) {
    return 0x2000U * (static_cast<std::uint32_t>(indexOf(board)) + 1) + 4U * static_cast<std::uint32_t>(parameter);
}

std::uint32_t Installation::identityAddress(Board board, int record) {
    return 0xFE0000U + 0x100U * static_cast<std::uint32_t>(indexOf(board)) + static_cast<std::uint32_t>(record);
}

int Installation::width(Board board, int parameter) {
    for (const Range& range : wide) {
        if (range.board == board && parameter >= range.first && parameter <= range.last) return range.width;
    }
    return 1;
}

Bytes readFrame(Board board, std::uint32_t address, int width) {
    return closed(frameOf(board, address, static_cast<std::uint8_t>(width - 1), 241));
}

Bytes writeFrame(Board board, std::uint32_t address, int width, std::uint32_t value) {
    const int code = width - 1;
    Bytes frame = frameOf(board, address, static_cast<std::uint8_t>(128 + code), static_cast<std::uint8_t>(242 + code));
    for (int i = 0; i < width; ++i) frame.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    return closed(frame);
}

Bytes Pc::exchange(const Bytes& frame, Micros wait) {
    machine_.send(now, frame);
    now += wait;
    return machine_.takeOutput(now);
}

std::uint32_t Pc::readAt(Board board, std::uint32_t address, int width) {
    const Bytes reply = exchange(readFrame(board, address, width), 100 * millisecond);
    if (reply.size() != static_cast<std::size_t>(width) + 1) {
        ADD_FAILURE() << "reply of " << reply.size() << " bytes to a read of " << width;
        return 0;
    }
    std::uint32_t value = 0;
    unsigned sum = 0;
    for (int i = width; i-- > 0;) {
        value = value << 8 | reply[static_cast<std::size_t>(i)];
        sum += reply[static_cast<std::size_t>(i)];
    }
    EXPECT_EQ(reply.back(), sum % 256);
    return value;
}

std::uint32_t Pc::read(Board board, int parameter) {
    return readAt(board, Installation::address(board, parameter), Installation::width(board, parameter));
}

std::uint32_t Pc::readIdentity(Board board, int record) {
    return readAt(board, Installation::identityAddress(board, record), 1);
}

bool Pc::write(Board board, int parameter, std::uint32_t value) {
    const Bytes frame =
        writeFrame(board, Installation::address(board, parameter), Installation::width(board, parameter), value);
    return exchange(frame, 100 * millisecond) == Bytes{static_cast<std::uint8_t>(frame.back() * 2)};
}

void Pc::wait(Micros time) {
    now += time;
    machine_.advance(now);
}

}  // namespace kestrel::simulator::tests
