// Pages that stay locked until their first set of values is whole: which values count, whichever of them comes last.
// A page that opens early writes bytes that it has never read; one that waits for a value too many never opens.
#include <gtest/gtest.h>

#include "pages/registry.h"
#include "support/bare_mirror.h"
#include "support/layouts.h"
#include "support/watches.h"

namespace kestrel::testing {
namespace {

struct FirstSet {
    const char* page;
    const char* counted;
    const char* uncounted;  ///< words of presence among them are not new
    int before, after;      ///< controls that a user can work
    int liveBefore;         ///< what is not greyed before, captions and frames as well
};

const FirstSet Sets[] = {
    {"FrmInter", "0: 1 1: 1156 1370-1379", "0: 1 1: 1380-1382 2: 1370", 0, 12, 7},
    // The times of the plus block are live from the start.
    {"FrmPresel", "0: 1 1: 1156 1412-1423 1447-1450", "0: 1 1: 1298 1424 1451 2: 1412", 4, 16, 24},
    // Until its status is known the board counts as there.
    {"FrmProUni", "1: 1156 1394-1402", "1: 1203 1298 1300-1301 1403 2: 1394", 0, 10, 4},
    {"FrmConMac", "0: 1 1: 1153-1157 1304-1307 1309-1312 1314-1317 1319-1322 1324-1327 1329-1333",
     "0: 1 1: 1298 1308 1328 1334-1336", 0, 28, 11},
    // The fields are live from the start; what is subscribed and not shown does not count.
    {"FrmOpzioni", "0: 1-3 7 85 158 350 354 356-358 361 1: 1153 1203 1298-1299 1302 1443-1444 2: 59 283",
     "0: 1-2 7 355 1: 84 1205 1303 1445-1446 2: 274 1298", 4, 26, 23},
    // One of the sixty values of a selection may be missing, here the kind of cooling.
    {"FrmDosi", "1: 1063-1066 1071-1074 1079-1082 1087-1090 1095 1127-1134 1154 7-1031/32",
     "1: 8 1067 1075 1083 1096 1135-1142 1298 1455-1458 2: 7", 2, 59, 84},
};

TEST(FirstSet, OpensThePageWithItsLastValueWhicheverThatIs) {
    constexpr std::uint32_t Value = 4;  // boards are there, and there are as many valves, powders and products
    for (const FirstSet& set : Sets)
        for (const auto& [last, once] : watchesOf(set.counted)) {
            SCOPED_TRACE(std::string(set.page) + " " + std::to_string(last.second));
            BareMirror mirror;
            Page& page = LoadPage(AllPages().at(set.page)());
            for (const char* list : {set.counted, set.uncounted})
                for (const auto& [number, times] : watchesOf(list))
                    if (number != last) mirror.arrive(number.first, number.second, Value);
            EXPECT_EQ(usableInputs(page.Arrange()), set.before);
            EXPECT_EQ(liveControls(page.Arrange()), set.liveBefore);
            mirror.arrive(last.first, last.second, Value);
            EXPECT_EQ(usableInputs(page.Arrange()), set.after);
        }
}

}  // namespace
}  // namespace kestrel::testing
