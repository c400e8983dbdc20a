// What the core costs: a pass of the scan with nothing due, and a reply stored and told to 25 open pages.
// Exit status 1 when a figure misses its limit.
#include <cstdlib>

#include "bench/figures.h"
#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/param_table.h"
#include "pages/beverage/frm_tempi.h"
#include "pages/sales/frm_totali.h"
#include "shell/session.h"
#include "support/virtual_platform.h"

namespace {

using namespace kestrel;

constexpr int Rounds = 31;
constexpr double PassLimitMicros = 50;
constexpr double StoreLimitMicros = 20;
constexpr int OpenPages = 25;

void fullPass() {
    for (int bank = 0; bank < Banks; ++bank) LinkNextRecord();
}

double passMicros() {
    for (int bank = 0; bank < Banks; ++bank) SetRecordCount(bank, ParamRecords);
    return bench::medianMicros(Rounds, 200, fullPass);
}

/// Parameter 160 of bank 0 is a counter that the totals page shows; its value changes every time.
double storeMicros() {
    constexpr int Counter = 160;
    SetBoardPresent(0, true);
    for (int i = 0; i < OpenPages; ++i) {
        if (i % 2)
            LoadPage(std::make_unique<FrmTempi>());
        else
            LoadPage(std::make_unique<FrmTotali>());
    }
    ParamTable(0, Counter).Command = 3;
    Link().RequestBytes.n = 3;
    std::uint8_t low = 0;
    return bench::medianMicros(Rounds, 500, [&] {
        CurrentBank = 0;
        Link().ScanIndex = Counter;
        ParamFlags(0, Counter) = flag::Pending | flag::Watched;
        Link().ReplyData = {++low, 2, 3, 0};
        LinkAcceptReply();
    });
}

}  // namespace

int main() {
    const kestrel::testing::VirtualPlatform platform;
    const Session session;
    bool holds =
        bench::atMost("pass over three banks of 33001 records, nothing due", passMicros(), PassLimitMicros, "us");
    holds &= bench::atMost("reply stored and told to 25 open pages", storeMicros(), StoreLimitMicros, "us");
    return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
