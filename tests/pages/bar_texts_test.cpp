// What a bar itself says of its value, in its preview and where one is typed, against the value that stands beside it.
// A bar in another scale than its figure would take 15 for 1.5.
#include <gtest/gtest.h>

#include "support/world.h"

namespace kestrel {
namespace {

using testing::World;

/// Every bar with the value that stands right behind it.
void collect(const Layout& layout, std::vector<std::pair<const ScrollBar*, const Label*>>& pairs) {
    for (std::size_t i = 0; i < layout.children.size(); ++i) {
        collect(layout.children[i], pairs);
        if (i == 0) continue;
        const auto* bar = dynamic_cast<const ScrollBar*>(layout.children[i - 1].control);
        const auto* label = dynamic_cast<const Label*>(layout.children[i].control);
        if (bar && label && label->role == Label::Role::Value) pairs.emplace_back(bar, label);
    }
}

TEST(BarTexts, EveryBarSpeaksInTheScaleOfTheFigureBesideIt) {
    const std::pair<const char*, std::size_t> pages[] = {{"FrmPagamento", 15},  {"FrmPrezzi", 38},  {"FrmSconti", 35},
                                                         {"FrmAssSel", 18},     {"FrmAssSet", 48},  {"FrmConMac", 21},
                                                         {"FrmOpzioni", 4},     {"FrmAzione", 6},   {"FrmTempi", 8},
                                                         {"FrmTemperatura", 7}, {"FrmOrologio", 25}};
    for (const auto& [name, bars] : pages) {
        World world;
        world.start();
        auto& page = world.open<Page>(name);
        world.run(5'000);
        std::vector<std::pair<const ScrollBar*, const Label*>> pairs;
        collect(page.Arrange(), pairs);
        EXPECT_EQ(pairs.size(), bars) << name;
        for (const auto& [bar, label] : pairs)
            EXPECT_EQ(bar->textOf(bar->Value), label->Caption.get()) << name << ": " << bar->accessibleName();
    }
}

}  // namespace
}  // namespace kestrel
