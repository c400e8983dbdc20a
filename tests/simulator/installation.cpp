// The test installation, and the frames of the PC's side.
// The frames are put together here once more by hand, so that the machine is not tested with its own code.
#include "simulator/installation.h"

#include <fstream>
#include <numeric>
#include <random>
#include <sstream>

namespace kestrel::simulator::tests {
namespace {

struct Range {
    Board board;
    int first;
    int last;
    int width;
};
constexpr Range wide[] = {{Master, 8, 83, 2},        {Master, 88, 157, 2},  {Master, 159, 198, 4},
                          {Master, 312, 349, 2},     {Master, 356, 356, 4}, {HotDrink, 1204, 1215, 2},
                          {HotDrink, 1216, 1287, 2}, {Sector, 71, 214, 2},  {Sector, 287, 287, 2},
                          {Sector, 400, 400, 4}};

constexpr std::array<int, boardCount> parameterCounts{400, 1480, 300};
constexpr int identityCount = 20;
constexpr std::size_t parameterRecord = 9;  // bytes
constexpr std::size_t identityRecord = 5;   // the same without the preload
constexpr std::uint8_t hotDrinkRoute = 0x49;
constexpr std::uint8_t sectorRoute = 0x56;

std::uint32_t addressOf(Board board, int parameter) {
    return 0x2000U * (static_cast<std::uint32_t>(indexOf(board)) + 1) + 4U * static_cast<std::uint32_t>(parameter);
}

std::uint32_t identityAddressOf(Board board, int record) {
    return 0xFE0000U + 0x100U * static_cast<std::uint32_t>(indexOf(board)) + static_cast<std::uint32_t>(record);
}

std::uint8_t byteOf(std::uint32_t value, int number) { return static_cast<std::uint8_t>(value >> (8 * number)); }

std::uint8_t sumOf(const Bytes& bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0));
}

void writeIndex(const std::filesystem::path& file, const std::vector<Entry>& entries, std::size_t size) {
    std::ofstream out(file, std::ios::binary);
    for (const auto& [address, width, preload] : entries) {
        const auto code = static_cast<std::uint8_t>(width - 1);
        Bytes record{byteOf(address, 2), byteOf(address, 1), code, 0, byteOf(address, 0)};
        for (int i = 0; i < 4; ++i) record.push_back(byteOf(preload, i));
        out.write(reinterpret_cast<const char*>(record.data()), static_cast<std::streamsize>(size));
    }
}

Bytes frameOf(Board board, std::uint32_t address, int command, int kind, const Bytes& data = {}) {
    const auto code = static_cast<std::uint8_t>(command);
    Bytes frame{code, byteOf(address, 0), byteOf(address, 1), byteOf(address, 2)};
    if (board != Master) {
        frame[0] = static_cast<std::uint8_t>(kind);
        frame.insert(frame.end(), {code, board == HotDrink ? hotDrinkRoute : sectorRoute});
    }
    frame.insert(frame.end(), data.begin(), data.end());
    frame.push_back(sumOf(frame));
    return frame;
}

}  // namespace

SimulatorTest::SimulatorTest() {
    const auto unique = std::to_string(std::random_device{}()) + std::to_string(std::random_device{}());
    options.directory = std::filesystem::temp_directory_path() / ("machine_test_" + unique);
    options.moving = false;
    std::filesystem::create_directories(options.directory);
    const std::array<std::string, boardCount> identities{"W0256.inx", "W0292.inx", "W0245.inx"};
    const std::array<std::string, boardCount> parameters{"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
    for (const Board board : allBoards) {
        std::vector<Entry> entries;
        for (int n = 1; n <= parameterCounts[indexOf(board)]; ++n)
            entries.push_back({addressOf(board, n), widthOf(board, n), 0});
        writeParameters(parameters[indexOf(board)], entries);
        entries.clear();
        for (int r = 1; r <= identityCount; ++r) entries.push_back({identityAddressOf(board, r), 1, 0});
        writeIndex(options.directory / identities[indexOf(board)], entries, identityRecord);
    }
}

SimulatorTest::~SimulatorTest() {
    std::error_code ignored;
    std::filesystem::remove_all(options.directory, ignored);
}

void SimulatorTest::writeParameters(const std::string& name, const std::vector<Entry>& entries) const {
    writeIndex(options.directory / name, entries, parameterRecord);
}

int widthOf(Board board, int parameter) {
    for (const Range& range : wide)
        if (range.board == board && parameter >= range.first && parameter <= range.last) return range.width;
    return 1;
}

Bytes readFrame(Board board, int parameter) {
    return frameOf(board, addressOf(board, parameter), widthOf(board, parameter) - 1, 241);
}

Bytes writeFrame(Board board, int parameter, std::uint32_t value) {
    const int code = widthOf(board, parameter) - 1;
    Bytes data;
    for (int i = 0; i <= code; ++i) data.push_back(byteOf(value, i));
    return frameOf(board, addressOf(board, parameter), 128 + code, 242 + code, data);
}

Bytes goodAck(const Bytes& write) { return {static_cast<std::uint8_t>(write.back() * 2)}; }

Bytes Bench::exchange(const Bytes& frame, Micros wait) {
    send(now, frame);
    now += wait;
    return takeOutput(now);
}

std::uint32_t Bench::read(Board board, int parameter) {
    Bytes reply = exchange(readFrame(board, parameter), 100 * millisecond);
    EXPECT_EQ(reply.size(), static_cast<std::size_t>(widthOf(board, parameter)) + 1) << parameter;
    if (reply.empty()) return 0;
    const std::uint8_t sum = reply.back();
    reply.pop_back();
    EXPECT_EQ(sum, sumOf(reply));
    std::uint32_t value = 0;
    for (std::size_t i = reply.size(); i-- > 0;) value = value << 8 | reply[i];
    return value;
}

bool Bench::write(Board board, int parameter, std::uint32_t value) {
    const Bytes frame = writeFrame(board, parameter, value);
    return exchange(frame, 100 * millisecond) == goodAck(frame);
}

void Bench::wait(Micros time) {
    now += time;
    advance(now);
}

void Bench::play(const std::string& steps) {
    std::istringstream in(steps);
    for (std::string step; in >> step;) {
        const bool ofIdentity = step[0] == 'i';
        const std::string place = step.substr(ofIdentity ? 1 : 0);
        const std::size_t sign = step.find_first_of("!=?&~");
        const auto value = [&] { return static_cast<std::uint32_t>(std::stoul(step.substr(sign + 1))); };
        const Board board = allBoards[static_cast<std::size_t>(place[0] - '0') % boardCount];
        const int number = step[1] == '!' || step[0] == '+' ? 0 : std::stoi(place.substr(2));
        bool holds = true;
        if (step[0] == '+') {
            wait(std::stoi(step.substr(1)) * second);
        } else if (step[sign] == '!') {
            boardReset(board);
        } else if (step[sign] == '=') {
            holds = write(board, number, value());
        } else if (ofIdentity) {
            const auto byte = static_cast<std::uint8_t>(value());
            holds = exchange(frameOf(board, identityAddressOf(board, number), 0, 241)) == Bytes{byte, byte};
        } else {
            const std::uint32_t held = read(board, number);
            holds = step[sign] == '?' ? held == value() : ((held & value()) != 0) == (step[sign] == '&');
        }
        EXPECT_TRUE(holds) << step;
    }
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace kestrel::simulator::tests
