// The test modes of the two boards behind the master, driven over the line as the program drives them.
// If these were wrong, the program's in/out page could not be tried without a machine.
#include "simulator/installation.h"

namespace kestrel::simulator::tests {
namespace {

using TestModesTest = SimulatorTest;

// A test begins by command 1 with its seconds in the mailbox and lasts until they have run out since the last order;
// outputs go by command 2.
TEST_F(TestModesTest, RunAndEndAndDriveOutputs) {
    const struct {
        const char* what;
        const char* steps;
    } cases[] = {
        {"every order starts the time anew",
         "H2=60 H1=1 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 H1=2 S285=60 S284=1 +40 "
         "H1297?1 S290?1 +21 H1297?0 S290?0"},
        {"time zero stops it, and the end of the first test does not end the second",
         "H2=60 H1=1 +30 H2=0 H1=1 H1297?0 +10 H2=60 H1=1 +25 H1297?1 +37 H1297?0"},
        {"outputs do not move outside the test mode", "H3=85 H1=2 S285=1 S286=1 S284=2 H1293?0 S288?0"},
        {"and in it on command only, until its end",
         "H2=60 H1=1 H2=1 H3=128 H4=255 H5=0 H6=16 H1292?0 H1=2 H1292?1 H1293?128 H1294?255 H1295?0 H1296?16 +61 "
         "H1292?0 H1296?0"},
        {"the sector board drives one output and the compressor",
         "S285=60 S284=1 S285=4 S286=32 S284=2 S288?4 S289?32 S285=32 S286=128 S284=2 S288?32 S289?128 "
         "S285=129 S286=1 S284=2 S288?129 S289?1 S285=128 S286=0 S284=2 S288?128 S289?0"},
        {"of two groups or bits at once the lowest, of a group that is none nothing",
         "S285=60 S284=1 S285=12 S286=2 S284=2 S288?4 S289?2 S285=1 S286=144 S284=2 S288?1 S289?16 "
         "S285=64 S286=1 S284=2 S288?0 S289?0 S285=1 S286=1 S284=2 S285=0 S286=0 S284=2 S288?0 S289?0"},
        {"a restart ends the test of that board",
         "H2=60 H1=1 S285=60 S284=1 S284=3 S! +2 S290?0 S285?0 H1297?1 H! +2 H1297?0"},
        {"motors go to zero for a while", "S284=3 S290?2 +5 S290?0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bench(options).play(c.steps);
    }
}

}  // namespace
}  // namespace kestrel::simulator::tests
