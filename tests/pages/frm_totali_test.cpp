// The page of totals: each number in its own row, money in the decimals of the board.
// The numbering is not in the order of the rows, so every row is checked by itself.
#include "pages/sales/frm_totali.h"

#include <gtest/gtest.h>

#include "support/bare_mirror.h"
#include "support/layouts.h"

namespace kestrel::testing {
namespace {

struct Total {
    int parameter;
    Label& label;
    bool money;
};

TEST(FrmTotali, ShowsEveryTotalInItsRowAndMoneyInTheBoardsDecimalsWhenTheyCome) {
    BareMirror mirror;
    auto& page = mirror.load<FrmTotali>();
    const Total totals[] = {{164, page.Label3[0], true},  {165, page.Label3[1], true},  {166, page.Label3[2], true},
                            {160, page.Label3[3], false}, {161, page.Label3[4], false}, {167, page.Label3[5], false},
                            {162, page.Label3[6], false}, {168, page.Label3[7], false}, {169, page.Label3[8], false},
                            {163, page.Label4[0], true},  {159, page.Label4[1], false}};
    const auto rawOf = [](const Total& total) { return 1000U * static_cast<unsigned>(total.parameter); };
    for (const Total& total : totals) {
        mirror.arrive(0, total.parameter, rawOf(total));
        EXPECT_EQ(total.label.Caption.get(), total.money ? "" : std::to_string(rawOf(total))) << total.parameter;
        mirror.arrive(1, total.parameter, 7);
    }
    for (const unsigned decimals : {0U, 1U, 2U, 3U, 6U}) {
        mirror.arrive(0, 3, decimals);
        for (const Total& total : totals)
            EXPECT_EQ(total.label.Caption.get(), written(rawOf(total), total.money ? decimals % 4 : 0))
                << total.parameter;
        mirror.arrive(0, 163, 5);
        EXPECT_EQ(page.Label4[0].Caption.get(), written(5, decimals % 4));
        mirror.arrive(0, 163, 163'000);
    }
    mirror.arrive(0, 3, 2);
    auto& second = mirror.load<FrmTotali>();
    mirror.arrive(0, 164, 1234);
    EXPECT_EQ(second.Label3[0].Caption.get(), "12.34") << "known to the mirror before this page was told of them";
}

}  // namespace
}  // namespace kestrel::testing
