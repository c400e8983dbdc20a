// The link with its start-up on a scripted line.
#include "link_bench.h"

#include <numeric>

#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "shell/frm_ser.h"
#include "shell/main_window.h"
#include "shell/start_up.h"

namespace kestrel::testing {

namespace {

constexpr Micros ReplyTime = 5000;
constexpr std::uint8_t Mark = 0x5A;  // the third address byte of every record of the bench
constexpr int ValueSize = 4;         // a board's value has no more bytes, however many a command asks for
constexpr std::array<const char*, 3> IdentityFiles = {"W0256.inx", "W0292.inx", "W0245.inx"};
constexpr std::array<const char*, 3> ParameterFiles = {"W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};

/// A frame as a board takes it apart.
struct Heard {
    int bank = 0;
    bool ofIdentity = false;
    int number = 0;
    int width = 1;
    bool write = false;
    std::uint32_t value = 0;

    explicit Heard(const Bytes& frame) {
        const bool routed = frame[0] >= 0xF0;
        if (routed) bank = frame[5] == 0x49 ? 1 : 2;
        const int command = routed ? frame[4] : frame[0];
        number = frame[1];
        ofIdentity = (frame[2] & 1) != 0;
        write = command >= 0x80;
        width = ofIdentity ? 1 : (command & 15) + 1;
        const std::size_t first = routed ? 6 : 4;
        for (std::size_t i = first; write && i + 1 < frame.size() && i < first + ValueSize; ++i)
            value |= static_cast<std::uint32_t>(frame[i]) << (8 * (i - first));
    }
};

bool isProbe(const Bytes& frame) { return frame == Bytes(5, 0); }

std::string header(int bank, int number, int command, int period, int ofIdentity) {
    std::string bytes;
    for (const int byte : {int{Mark}, bank * 16 + ofIdentity, command, period, number})
        bytes += static_cast<char>(byte);
    return bytes;
}

}  // namespace

LinkBench::LinkBench() {
    InitBoardTables();
    platform.lines[1] = &line;
    Link().ComPort = 1;
    line.answer = [this](const Bytes& frame) { return answer(frame); };
    for (auto& bank : rows) bank.resize(4);
    identity = {{{0, 11}, 15}, {{0, 12}, 18}, {{0, 13}, 0}, {{0, 14}, 1},   {{0, 17}, 3}, {{0, 18}, 23}, {{1, 11}, 15},
                {{1, 13}, 36}, {{1, 14}, 1},  {{1, 17}, 7}, {{2, 13}, 245}, {{2, 11}, 1}, {{2, 17}, 4}};
    putFiles();
}

void LinkBench::putIdentityFile(int bank, int command) {
    std::string content;
    for (int i = 1; i <= 20; ++i) content += header(bank, i, command, 0, 1);
    platform.put(IdentityFiles[static_cast<std::size_t>(bank)], content);
}

void LinkBench::putParameterFile(int bank, const std::string& name) {
    std::string content;
    int number = 0;
    for (const Row& row : rows[static_cast<std::size_t>(bank)]) {
        content += header(bank, ++number, row.command, row.period, 0);
        for (int shift = 0; shift < 32; shift += 8) content += static_cast<char>(row.preload >> shift);
    }
    platform.put(name, content);
}

void LinkBench::putFiles() {
    for (int bank = 0; bank < 3; ++bank) {
        putIdentityFile(bank);
        putParameterFile(bank, ParameterFiles[static_cast<std::size_t>(bank)]);
    }
}

Pieces LinkBench::answer(const Bytes& frame) {
    std::string& letters = replies[tell(frame)];
    const char letter = letters.empty() ? 'g' : letters.front();
    if (letters.size() > 1) letters.erase(0, 1);
    if (mute || letter == 's') return {};
    if (isProbe(frame)) return {{ReplyTime, {0x33, 0x33}}};
    const Heard heard(frame);
    const Place place{heard.bank, heard.number};
    Bytes reply;
    if (heard.write) {
        if (letter == 'g') board[place] = heard.value;
        reply = {static_cast<std::uint8_t>(frame.back() * 2)};
    } else {
        const std::uint32_t value = heard.ofIdentity ? static_cast<std::uint32_t>(identity[place]) : board[place];
        for (int i = 0; i < heard.width; ++i)
            reply.push_back(i < ValueSize ? static_cast<std::uint8_t>(value >> (8 * i)) : std::uint8_t{0});
        reply.push_back(std::accumulate(reply.begin(), reply.end(), std::uint8_t{0}));
    }
    if (letter == 'b') ++reply.back();
    if (letter == 'h') reply.pop_back();
    return {{ReplyTime, reply}};
}

std::string LinkBench::tell(const Bytes& frame) {
    if (isProbe(frame)) return "probe";
    const Heard heard(frame);
    const std::string place = std::to_string(heard.bank) + "." + std::to_string(heard.number);
    return (heard.ofIdentity ? "i" : "") + place + (heard.write ? "=" + std::to_string(heard.value) : "?");
}

Strings LinkBench::sent() const {
    Strings told;
    for (const auto& frame : line.sent) told.push_back(tell(frame.frame));
    return told;
}

void LinkBench::start() {
    putFiles();
    load();
    line.sent.clear();
}

void LinkBench::load() { FrmSer_Load(); }

std::string LinkBench::endOfLoad() {
    try {
        load();
        return "";
    } catch (const ProcessEnded&) {
        if (platform.messages.size() != 1) return "no message, or more than one";
        const Message& message = platform.messages.front();
        const bool isError = message.title == "ERROR" && message.icon == Message::Icon::Critical;
        return isError ? message.text : "no error, but " + message.title;
    }
}

MenuItem& LinkBench::portEntry(int port) { return MDIForm1().mnuCox(port); }

std::string LinkBench::notice() { return MDIForm1().StatusBar1.Panels(1).Text; }

void LinkBench::unplug() {
    line.there = false;
    line.inject(platform.now(), {});
    run(0);
}

void Watch(int bank, int number) {
    CurrentBank = bank;
    ParamWatch(number);
}

void Write(int bank, int number, std::uint32_t value) {
    CurrentBank = bank;
    ParamWrite(number, value);
}

}  // namespace kestrel::testing
