// Every lamp and lit switch that stands for a bit: the bit lights the lamp of that name and no other.
// A row is a run of bits from `bit` on, whose devices have consecutive texts from `line` on; a clear bit of an input
// lights its lamp, a set bit of an output. Bits of no run light nothing.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

#include "language/language_files.h"
#include "pages/registry.h"
#include "platform/displays.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

constexpr std::uint32_t Inputs = 0xFF, Outputs = 0;  ///< the byte while everything is dark

struct BitRun {
    const char* page;
    int bank, parameter;
    std::uint32_t dark;
    int bit, count, line;
};

const BitRun AllRuns[] = {
    {"FrmInOut", 0, 249, Inputs, 1, 1, 337},    {"FrmInOut", 0, 249, Inputs, 3, 5, 338},
    {"FrmInOut", 1, 1289, Inputs, 0, 2, 406},   {"FrmInOut", 1, 1289, Inputs, 3, 1, 408},
    {"FrmInOut", 1, 1289, Inputs, 6, 1, 409},   {"FrmInOut", 1, 1290, Inputs, 1, 7, 386},
    {"FrmInOut", 1, 1291, Inputs, 4, 4, 393},   {"FrmInOut", 1, 1292, Outputs, 0, 8, 346},
    {"FrmInOut", 1, 1293, Outputs, 0, 8, 354},  {"FrmInOut", 1, 1294, Outputs, 0, 8, 362},
    {"FrmInOut", 1, 1295, Outputs, 0, 8, 370},  {"FrmInOut", 1, 1296, Outputs, 0, 8, 378},
    {"FrmSchema", 1, 1289, Inputs, 0, 8, 438},  {"FrmSchema", 1, 1290, Inputs, 0, 1, 446},
    {"FrmSchema", 1, 1290, Inputs, 2, 1, 447},  {"FrmSchema", 1, 1291, Inputs, 0, 0, 0},
    {"FrmSchema", 1, 1292, Outputs, 0, 8, 415}, {"FrmSchema", 1, 1293, Outputs, 0, 4, 423},
    {"FrmSchema", 1, 1294, Outputs, 0, 8, 427}, {"FrmSchema", 1, 1295, Outputs, 0, 3, 435},
    {"FrmSchema", 1, 1296, Outputs, 0, 0, 0},
};

std::vector<std::string> litNames(const Layout& layout) {
    std::vector<std::string> names;
    eachControl(layout, [&](const Control& control) {
        const auto* lamp = dynamic_cast<const Led*>(&control);
        const auto* lit = dynamic_cast<const LedSwitch*>(&control);
        if ((lamp && lamp->Active) || (lit && lit->Active)) names.push_back(control.accessibleName());
    });
    return names;
}

TEST(Lamps, EachIsLitByItsOwnBitAndHasTheNameOfItsDevice) {
    for (const char* name : {"FrmInOut", "FrmSchema"}) {
        BareMirror mirror;
        Page& page = LoadPage(AllPages().at(name)());
        std::map<std::pair<int, int>, std::vector<std::string>> texts;  // by parameter and bit
        std::set<std::tuple<int, int, std::uint32_t>> words;
        for (const BitRun& run : AllRuns)
            if (page.name() == run.page) {
                words.emplace(run.bank, run.parameter, run.dark);
                for (int i = 0; i < run.count; ++i) texts[{run.parameter, run.bit + i}] = {LanguageTable(run.line + i)};
            }
        for (const auto& [bank, parameter, dark] : words) mirror.arrive(bank, parameter, dark);
        for (const auto& [bank, parameter, dark] : words)
            for (int bit = 0; bit < 8; ++bit) {
                const std::uint32_t lit = dark ^ 1U << bit;
                for (int other = 0; other < Banks; ++other)
                    if (other != bank) mirror.arrive(other, parameter, lit);
                EXPECT_EQ(litNames(page.Arrange()), std::vector<std::string>{}) << "other boards' " << parameter;
                mirror.arrive(bank, parameter, lit);
                EXPECT_EQ(litNames(page.Arrange()), (texts[{parameter, bit}]))
                    << name << " " << parameter << " bit " << bit;
                mirror.arrive(bank, parameter, dark);
            }
        EXPECT_EQ(mirror.deliverAll(), page.name() == "FrmInOut" ? (Writes{{0, 368, 255}}) : Writes{});
    }
}

}  // namespace
}  // namespace kestrel::testing
