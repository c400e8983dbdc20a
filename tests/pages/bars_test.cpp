// Every bar of every page: it shows its own parameter in the figure beside it, and a move writes that parameter and its
// shadow. A bar on a neighbour's parameter changes what nobody touched, and shows the technician that all is well.
#include <gtest/gtest.h>

#include "support/layouts.h"
#include "support/writes.h"

namespace kestrel::testing {
namespace {

/// Of a bar, as the board counts.
struct Range {
    int min, max, largeStep;
    bool operator==(const Range&) const = default;
};
constexpr Range Time = {0, 255, 10};
constexpr Range Amount = {-32768, 32767, 100};
constexpr Range PriceNumber = {1, 30, 3};
constexpr Range Powder = {0, 5, 1};

/// Bars of a page on consecutive parameters that hold consecutive values.
struct Series {
    const char* page;
    std::size_t bar;  ///< the first one in reading order
    int count;
    int bank, parameter, shadow;
    std::uint32_t raw;  ///< of the first one
    std::size_t decimals;
    Range range;           ///< of the last one, as is all from here to its name
    const char* lastName;  ///< what stands beside it
    std::size_t barStep = 1;
    int parameterStep = 1;
    int offset = 0;             ///< of the figure, beyond the raw value
    std::uint32_t payment = 4;  ///< the payment system whose bars are live

    Setting setting(int i) const { return {bank, parameter + parameterStep * i, shadow + parameterStep * i}; }
};

const Series AllBars[] = {
    {"FrmAzione", 0, 6, 1, 1204, 1210, 32765, 0, Amount, "filtro FB2"},
    {"FrmAzione", 5, 1, 1, 1209, 1215, 65534, 0, Amount, "filtro FB2"},
    {"FrmTempi", 0, 4, 1, 1143, 1148, 10, 1, Time, "infusione tè"},
    {"FrmTempi", 4, 1, 1, 1147, 1147, 99, 1, {0, 100, 10}, "compenaz. amaro"},  // its shadow 1152 is left as it is
    {"FrmTempi", 5, 1, 1, 1439, 1440, 254, 1, Time, "tempo on pompa"},
    {"FrmTempi", 6, 1, 1, 1441, 1442, 59, 1, {0, 60, 10}, "integro acqua"},
    {"FrmTempi", 7, 1, 2, 58, 273, 249, 1, {0, 250, 10}, "timeout motori"},
    {"FrmTemperatura", 0, 1, 1, 1199, 376, 95, 0, {70, 110, 5}, "Termperatura caldaia"},
    {"FrmTemperatura", 1, 1, 1, 1200, 1202, 50, 1, {5, 100, 5}, "temperatura frigo"},
    {"FrmTemperatura", 2, 1, 2, 51, 266, 14, 0, {8, 16, 2}, "Temperatura vasca"},
    {"FrmTemperatura", 3, 1, 2, 53, 268, 49, 1, {10, 50, 5}, "Delta temperatura"},
    {"FrmTemperatura", 4, 1, 2, 56, 271, 10, 0, {1, 12, 2}, "Sbrina dopo"},
    {"FrmTemperatura", 5, 1, 2, 57, 272, 10, 0, {1, 30, 5}, "Sbrina per"},
    {"FrmTemperatura", 6, 1, 2, 52, 267, 8, 0, {0, 10, 2}, "Offset temperatura", 1, 1, -5},
    {"FrmOrologio", 5, 2, 0, 208, 228, 11, 0, {0, 59, 5}, "Lavaggio 1 minuti", 1, -1},
    {"FrmOrologio", 7, 2, 0, 210, 230, 12, 0, {0, 59, 5}, "Lavaggio 2 minuti", 1, -1},
    {"FrmOrologio", 9, 2, 0, 200, 220, 13, 0, {0, 59, 5}, "Inizio 1 minuti", 1, -1},
    {"FrmOrologio", 11, 2, 0, 204, 224, 14, 0, {0, 59, 5}, "Fine 1 minuti", 1, -1},
    {"FrmOrologio", 13, 2, 0, 202, 222, 15, 0, {0, 59, 5}, "Inizio 2 minuti", 1, -1},
    {"FrmOrologio", 15, 2, 0, 206, 226, 16, 0, {0, 59, 5}, "Fine 2 minuti", 1, -1},
    {"FrmOrologio", 17, 2, 0, 212, 232, 17, 0, {0, 59, 5}, "Inizio 1 minuti", 1, -1},
    {"FrmOrologio", 19, 2, 0, 216, 236, 18, 0, {0, 59, 5}, "Fine 1 minuti", 1, -1},
    {"FrmOrologio", 21, 2, 0, 214, 234, 19, 0, {0, 59, 5}, "Inizio 2 minuti", 1, -1},
    {"FrmOrologio", 23, 2, 0, 218, 238, 20, 0, {0, 59, 5}, "Fine 2 minuti", 1, -1},
    {"FrmInter", 0, 5, 1, 1370, 1382, 20, 1, {0, 255, 3}, "5", 2},
    {"FrmInter", 1, 5, 1, 1375, 1387, 250, 1, {0, 255, 3}, "5", 2},
    {"FrmPresel", 0, 4, 1, 1420, 1432, 100, 1, Time, "4"},
    {"FrmPresel", 4, 4, 1, 1447, 1451, 200, 1, Time, "4 Plus"},
    {"FrmProUni", 0, 3, 1, 1397, 1406, 30, 1, Time, "tempo unico 3 (s)", 2},
    {"FrmProUni", 1, 3, 1, 1400, 1409, 40, 1, Time, "ritardo unico 3 (s)", 2},
    {"FrmDosi", 0, 1, 1, 7, 7, 2, 0, {0, 6, 3}, " ev."},
    {"FrmDosi", 2, 2, 1, 103, 103, 10, 1, Time, "tempo mixer  ", 2, 192},
    {"FrmDosi", 1, 2, 1, 199, 199, 15, 1, Time, "ritardo mixer ", 2, 192},
    {"FrmDosi", 6, 3, 1, 487, 487, 20, 1, Time, "tempo sol. 3 ", 2, 96},
    {"FrmDosi", 5, 3, 1, 775, 775, 30, 1, Time, "ritardo sol. 3 ", 2, 96},
    {"FrmDosi", 11, 1, 1, 39, 39, 2, 0, {0, 4, 3}, " ev."},
    {"FrmDosi", 13, 2, 1, 135, 135, 40, 1, Time, "tempo mixer  ", 2, 192},
    {"FrmDosi", 12, 2, 1, 231, 231, 45, 1, Time, "ritardo mixer ", 2, 192},
    {"FrmDosi", 17, 3, 1, 519, 519, 50, 1, Time, "tempo sol. 3 ", 2, 96},
    {"FrmDosi", 16, 3, 1, 807, 807, 60, 1, Time, "ritardo sol. 3 ", 2, 96},
    {"FrmDosi", 22, 1, 1, 71, 71, 2, 0, {0, 4, 3}, " ev."},
    {"FrmDosi", 24, 2, 1, 167, 167, 70, 1, Time, "tempo mixer  ", 2, 192},
    {"FrmDosi", 23, 2, 1, 263, 263, 75, 1, Time, "ritardo mixer ", 2, 192},
    {"FrmDosi", 28, 3, 1, 551, 551, 80, 1, Time, "tempo sol. 3 ", 2, 96},
    {"FrmDosi", 27, 3, 1, 839, 839, 252, 1, Time, "ritardo sol. 3 ", 2, 96},
    {"FrmDosi", 33, 1, 1, 1095, 1095, 98, 0, {1, 99, 10}, "num bricco"},
    {"FrmConMac", 0, 4, 1, 1309, 1342, 1, 0, Powder, "4", 4},
    {"FrmConMac", 1, 4, 1, 1314, 1347, 0, 0, Powder, "4", 4},
    {"FrmConMac", 2, 4, 1, 1319, 1352, 1, 0, Powder, "4", 4},
    {"FrmConMac", 3, 4, 1, 1324, 1357, 100, 1, Time, "4", 4},
    {"FrmConMac", 16, 5, 1, 1329, 1362, 0, 0, Powder, "5"},
    {"FrmOpzioni", 0, 1, 0, 354, 355, 60, 0, {0, 180, 10}, "timeout overpay"},
    {"FrmOpzioni", 1, 1, 1, 1302, 1303, 254, 0, Time, "dose lavaggio"},
    {"FrmOpzioni", 2, 2, 1, 1443, 1445, 1, 0, Time, "sens.sonda max"},
    {"FrmPagamento", 4, 8, 0, 312, 320, 40000, 2, Amount, "Moneta 8", 1, 1, 0, 1},
    {"FrmPagamento", 12, 1, 0, 342, 343, 21, 1, {20, 250, 100}, "timeout prezzo", 1, 1, 0, 2 + 64},
    {"FrmPagamento", 0, 1, 0, 328, 329, 1234, 2, {0, 9999, 100}, "Resto massimo"},
    {"FrmPagamento", 1, 3, 0, 336, 339, 32766, 2, Amount, "token 3"},
    {"FrmPagamento", 13, 2, 0, 332, 333, 9, 2, Amount, "credito massimo monete", 1, 2},
    {"FrmPrezzi", 0, 30, 0, 16, 46, 32750, 2, Amount, "Prezzo 30"},
    {"FrmPrezzi", 30, 2, 0, 8, 12, 998, 2, Amount, "preselezione 3", 1, 2},
    {"FrmPrezzi", 32, 2, 0, 76, 80, 98, 2, Amount, "presel. + 3", 1, 2},
    {"FrmPrezzi", 34, 2, 0, 9, 13, 8, 2, Amount, "preselezione 4", 1, 2},
    {"FrmPrezzi", 36, 2, 0, 77, 81, 0, 2, Amount, "presel. + 4", 1, 2},
    {"FrmSconti", 0, 30, 0, 88, 118, 1000, 2, Amount, "Sconto 30"},
    {"FrmSconti", 30, 4, 0, 148, 152, 50, 2, Amount, "sconto presel. 4 "},
    {"FrmSconti", 34, 1, 0, 156, 157, 65534, 2, Amount, "sconto no bicch. "},
    {"FrmAssSel", 0, 18, 1, 1163, 1181, 3, 0, PriceNumber, "Prezzo sel. 18", 1, 1, 1},
    {"FrmAssSet", 0, 8, 2, 1, 216, 3, 0, PriceNumber, "Prezzo set. 18", 6, 1, 1},
    {"FrmAssSet", 1, 8, 2, 9, 224, 7, 0, PriceNumber, "Prezzo set. 28", 6, 1, 1},
    {"FrmAssSet", 2, 8, 2, 17, 232, 11, 0, PriceNumber, "Prezzo set. 38", 6, 1, 1},
    {"FrmAssSet", 3, 8, 2, 25, 240, 15, 0, PriceNumber, "Prezzo set. 48", 6, 1, 1},
    {"FrmAssSet", 4, 8, 2, 33, 248, 19, 0, PriceNumber, "Prezzo set. 58", 6, 1, 1},
    {"FrmAssSet", 5, 8, 2, 41, 256, 19, 0, PriceNumber, "Prezzo set. 68", 6, 1, 1},
};

TEST(Bars, EachShowsItsParameterAndWritesThatAndItsShadow) {
    for (const Series& run : AllBars) {
        SCOPED_TRACE(std::string(run.page) + " from bar " + std::to_string(run.bar));
        auto options = World::still();
        options.identities[0].revision = 26;  // it has the delays of unique products
        StartedWorld world(options, {{0, 3, 2},
                                     {0, 85, run.payment},
                                     {1, 1153, 1},
                                     {1, 1154, 4},
                                     {1, 1156, 5},
                                     {1, 1394, 1},
                                     {1, 1395, 1},
                                     {1, 1396, 1},
                                     {1, 7, 3},
                                     {1, 39, 2},
                                     {1, 71, 1},
                                     {1, 1087, 1}});
        for (int i = 0; i < run.count; ++i)
            world.setBoard(run.bank, run.setting(i).parameter, run.raw + static_cast<std::uint32_t>(i));
        auto& page = world.open<Page>(run.page);
        world.run(6'000);
        const auto bars = barsOf(page.Arrange());
        const ScrollBar* last = nullptr;
        for (int i = 0; i < run.count; ++i) {
            const auto [bar, figure] = bars.at(run.bar + run.barStep * static_cast<std::size_t>(i));
            const std::uint32_t raw = run.raw + static_cast<std::uint32_t>(i);
            const auto text = [&](std::uint32_t value) {
                return written(value + static_cast<std::uint32_t>(run.offset), run.decimals);
            };
            EXPECT_EQ(figure->Caption.get(), text(raw)) << i;
            EXPECT_EQ(bar->textOf(bar->Value), text(raw)) << i;
            const auto to = bar->valueOf(text(raw + 1));
            ASSERT_TRUE(to) << i;
            expectMove(world, *bar, *figure, *to, text(raw + 1), run.setting(i).as(raw + 1));
            last = bar;
        }
        EXPECT_EQ(last->accessibleName(), run.lastName);
        EXPECT_EQ((Range{last->Min, last->Max, last->LargeChange}), run.range);
    }
}

}  // namespace
}  // namespace kestrel::testing
