// Where the controls of the pages stand: each in one place, and a bar beside the figure that it sets.
// A bar in another scale than its figure would take 15 for 1.5.
#include <gtest/gtest.h>

#include <map>

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

void count(const Layout& layout, std::map<const Control*, int>& places) {
    if (layout.control) ++places[layout.control];
    for (const Layout& child : layout.children) count(child, places);
}

TEST(PageLayouts, EveryControlStandsInOnePlace) {
    World world;
    world.start();
    for (const auto& [name, make] : AllPages()) {
        std::map<const Control*, int> places;
        count(ShowPage(name).Arrange(), places);
        EXPECT_FALSE(places.empty()) << name;
        for (const auto& [control, times] : places) EXPECT_EQ(times, 1) << name << ": " << control->accessibleName();
    }
}

TEST(PageLayouts, EveryBarSpeaksInTheScaleOfTheFigureBesideIt) {
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
