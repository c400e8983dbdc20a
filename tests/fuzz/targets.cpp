// The seven places where bytes from outside enter.
#include "fuzz/targets.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <stdexcept>

#include "ctl/session.h"
#include "ctl/settings_file.h"
#include "language/language_files.h"
#include "link/link_bench.h"
#include "link/link_engine.h"
#include "link/param_table.h"
#include "platform/errors.h"
#include "shell/configuration.h"
#include "shell/language_menu.h"
#include "shell/main_window.h"
#include "shell/options.h"
#include "simulator/faults.h"
#include "simulator/receiver.h"

namespace kestrel::fuzz {

namespace {

using testing::LinkBench;
using testing::ProcessEnded;

void demand(bool holds) {
    if (!holds) std::abort();
}

/// Runs what may end the process, or the run, by the rules of the program.
template <class Act>
void untilItEnds(const Act& act) {
    try {
        act();
    } catch (const ProcessEnded&) {
        return;
    } catch (const RunTimeError&) {
        return;
    }
}

}  // namespace

std::pair<std::string, std::string> twoTexts(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* const end = data + size;
    const std::uint8_t* const mark = std::find(data, end, std::uint8_t{255});
    return {std::string(data, mark), std::string(mark == end ? end : mark + 1, end)};
}

void index(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return;
    static constexpr const char* Files[] = {"W0256.inx",     "W0292.inx",     "W0245.inx",
                                            "W0256AP03.inx", "W0292AP07.inx", "W0245AB04.inx"};
    LinkBench bench;
    bench.putFiles();
    bench.platform.put(Files[data[0] % 6], std::string(data + 1, data + size));
    untilItEnds([&] {
        LinkBench::load();
        for (int bank = 0; bank < Banks; ++bank)
            for (int number = 1; number < std::min(RecordCount(bank), 5); ++number) {
                testing::Watch(bank, number);
                testing::Write(bank, number, 0xA1B2C3D4);
                demand(ParamRead(number, bank) >= 0);
            }
        bench.run(5'000);
    });
}

void language(const std::uint8_t* data, std::size_t size) {
    testing::VirtualPlatform platform;
    const Session session;
    const auto [reference, candidate] = twoTexts(data, size);
    platform.put("A.lng", reference);
    platform.put("B.lng", candidate);
    untilItEnds([] { LoadLanguage("A.lng"); });
    untilItEnds([] { CheckLanguageFile("A.lng", "B.lng"); });
    for (int line = 0; line <= LanguageLines; ++line) demand(LanguageTable(line).find('\n') == std::string::npos);
}

void configuration(const std::uint8_t* data, std::size_t size) {
    testing::VirtualPlatform platform;
    const Session session;
    const auto [own, family] = twoTexts(data, size);
    platform.put("kestrel.ini", own);
    platform.files["/family/kestrel.ini"] = family;
    platform.put("Italiano.lng", "uno\r\ndue\r\n");
    platform.put("English.lng", "one\r\ntwo\r\n");
    ReadConfig();
    untilItEnds([] { SelectLanguage(); });
    demand(Link().ComPort >= 1 && Link().ComPort <= 9);
    demand(ActiveLanguage() == "Italiano" || ActiveLanguage() == "English");
}

/// Each piece is two bytes of head, how long after the last one it comes and how many bytes it has, and those bytes.
void reply(const std::uint8_t* data, std::size_t size) {
    LinkBench bench;
    bench.rows[0] = {{0, 0, 0}, {1, 1, 0}, {2, 3, 0}, {0, 1, 0}};
    bench.start();
    for (int bank = 0; bank < Banks; ++bank)
        for (int number = 1; number < RecordCount(bank); ++number) testing::Watch(bank, number);
    testing::Write(0, 2, 70'000);
    bench.mute = true;
    testing::Micros when = bench.platform.now();
    for (std::size_t at = 0; at + 2 <= size;) {
        constexpr testing::Micros Unit = 5'000;
        when += data[at] * Unit;
        const std::size_t count = std::min<std::size_t>(data[at + 1], size - at - 2);
        bench.line.inject(when, Bytes(data + at + 2, data + at + 2 + count));
        at += 2 + count;
    }
    bench.run(static_cast<double>(when - bench.platform.now()) / 1000 + 2'000);
    demand(Link().LinkIdle != Link().Timer2.Enabled);
    demand(Link().Comm1->InBufferCount() <= 1024);
}

/// Pairs of bytes: how many milliseconds of silence, and what then arrives.
void frame(const std::uint8_t* data, std::size_t size) {
    simulator::Receiver receiver;
    simulator::Micros when = 0;
    for (std::size_t i = 0; i + 2 <= size; i += 2) {
        when += data[i] * simulator::millisecond + simulator::byteTime;
        const auto heard = receiver.take(when, data[i + 1]);
        if (!heard) continue;
        demand(!heard->raw.empty() && heard->raw.size() <= 12);
        if (heard->verdict != simulator::Frame::Verdict::Good) continue;
        demand(heard->sum == static_cast<std::uint8_t>(std::accumulate(heard->raw.begin(), heard->raw.end() - 1, 0)));
        demand(heard->width >= 1 && heard->width <= 4);
        demand(heard->data.size() == (heard->write ? static_cast<std::size_t>(heard->width) : 0));
    }
}

void options(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> arguments;
    const std::string text(data, data + size);
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        arguments.push_back(text.substr(from, end - from));
        from = end + 1;
    }
    try {
        const Options given = parseOptions(arguments);
        for (const auto& [port, device] : given.devices) demand(port >= 1 && port <= PortCount && !device.empty());
        simulator::parseFaults(given.faults);
    } catch (const BadOption& trouble) {
        demand(*trouble.what() != '\0');
    } catch (const std::invalid_argument& trouble) {
        demand(*trouble.what() != '\0');
    }
}

/// What is taken is printed and read again as it was.
void settings(const std::uint8_t* data, std::size_t size) {
    const ctl::Session session;
    const std::string text(data, data + size);
    for (const bool edited : {false, true}) {
        try {
            const std::string once = ctl::print(ctl::parse(text, "file", edited));
            demand(ctl::print(ctl::parse(once, "file", false)) == once);
        } catch (const RunTimeError& trouble) {
            demand(std::string(trouble.what()).starts_with("file: line "));
        }
    }
}

}  // namespace kestrel::fuzz
