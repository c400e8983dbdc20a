// The installation of a test, and the frames of the PC's side.
// The frames are put together here once more by hand, so that the machine is not tested with its own code.
#include "simulator/installation.h"

#include <fstream>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <sstream>

#include "support/world.h"

namespace kestrel::simulator::tests {
namespace {

constexpr std::array<const char*, boardCount> identityFiles{"W0256.inx", "W0292.inx", "W0245.inx"};
constexpr std::array<const char*, boardCount> parameterFiles{"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
constexpr std::size_t parameterRecord = 9;  // bytes
constexpr std::size_t identityRecord = 5;   // the same without the preload
constexpr std::uint8_t hotDrinkRoute = 0x49;
constexpr std::uint8_t sectorRoute = 0x56;

// A record as its file has it: two bytes of address, the command, the refresh, the lowest byte of the address.
const std::uint8_t* recordOf(const char* file, int number, std::size_t size) {
    static std::map<std::string, std::string> files;
    std::string& bytes = files[file];
    if (bytes.empty()) {
        std::ifstream in(kestrel::testing::InstallationDirectory() / file, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    return reinterpret_cast<const std::uint8_t*>(&bytes.at((static_cast<std::size_t>(number) - 1) * size));
}

const std::uint8_t* parameterAt(Board board, int number) {
    return recordOf(parameterFiles[indexOf(board)], number, parameterRecord);
}

std::uint8_t byteOf(std::uint32_t value, int number) { return static_cast<std::uint8_t>(value >> (8 * number)); }

std::uint8_t sumOf(const Bytes& bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0));
}

Bytes frameOf(Board board, const std::uint8_t* record, int command, int kind, const Bytes& data = {}) {
    const auto code = static_cast<std::uint8_t>(command);
    Bytes frame{code, record[4], record[1], record[0]};
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
    for (const auto& file : std::filesystem::directory_iterator(kestrel::testing::InstallationDirectory()))
        if (file.path().extension() == ".inx") std::filesystem::copy(file.path(), options.directory);
}

SimulatorTest::~SimulatorTest() {
    std::error_code ignored;
    std::filesystem::remove_all(options.directory, ignored);
}

void SimulatorTest::writeParameters(const std::string& name, const std::vector<Entry>& entries) const {
    std::ofstream out(options.directory / name, std::ios::binary);
    for (const auto& [address, width, preload] : entries) {
        const auto code = static_cast<std::uint8_t>(width - 1);
        for (const std::uint8_t byte :
             Bytes{byteOf(address, 2), byteOf(address, 1), code, 0, byteOf(address, 0), byteOf(preload, 0),
                   byteOf(preload, 1), byteOf(preload, 2), byteOf(preload, 3)})
            out.put(static_cast<char>(byte));
    }
}

int widthOf(Board board, int parameter) { return parameterAt(board, parameter)[2] + 1; }

Bytes readFrame(Board board, int parameter) {
    return frameOf(board, parameterAt(board, parameter), widthOf(board, parameter) - 1, 241);
}

Bytes writeFrame(Board board, int parameter, std::uint32_t value) {
    const int code = widthOf(board, parameter) - 1;
    Bytes data;
    for (int i = 0; i <= code; ++i) data.push_back(byteOf(value, i));
    return frameOf(board, parameterAt(board, parameter), 128 + code, 242 + code, data);
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
            holds = exchange(frameOf(board, recordOf(identityFiles[indexOf(board)], number, identityRecord), 0, 241)) ==
                    Bytes{byte, byte};
        } else {
            const std::uint32_t held = read(board, number);
            holds = step[sign] == '?' ? held == value() : ((held & value()) != 0) == (step[sign] == '&');
        }
        EXPECT_TRUE(holds) << step;
    }
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace kestrel::simulator::tests
