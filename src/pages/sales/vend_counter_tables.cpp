// The five pages of counters as tables.
// Free, jug and test vends have no texts in the language files: those pages stay as they were drawn.
#include <array>

#include "pages/common/sector_names.h"
#include "pages/sales/vend_counters.h"

namespace kestrel {

namespace {

using Kind = CounterBlock::Kind;
using Numbering = CounterTexts::Numbering;

constexpr int SelectionColumns = 6;

constexpr CounterTexts SelectionsAsDrawn = {Numbering::Running, "Bev.", 0, "Bevande", 0};
/// The captions were never numbered: every sector reads as the last one.
constexpr CounterTexts SectorsAsDrawn = {Numbering::None, "Set. 68", 0, "Settori", 0};

constexpr CounterBlock selections(const SettingRange& all, CounterBlock::Labels values, const CounterTexts& texts) {
    return {Kind::Selection, all, all, all.size(), SelectionColumns, true, values, &VendCounters::Label1, 0, texts};
}

constexpr CounterBlock sectors(const SettingRange& all, const CounterTexts& texts) {
    return {Kind::Sector,          all, all,  all.size(), SectorColumns, true, &VendCounters::Label4,
            &VendCounters::Label2, 0,   texts};
}

/// The counters of the plus preselections are kept fresh, and shown nowhere.
constexpr CounterBlock Preselections = {.kind = Kind::Preselection,
                                        .shown = master::PreselectionVends,
                                        .watched = {master::PreselectionVends[0], master::PreselectionPlusVends[3]},
                                        .rows = 4,
                                        .columns = 1,
                                        .runsAlong = false,
                                        .values = &VendCounters::Label1,
                                        .captions = &VendCounters::Label11,
                                        .firstLabel = 30,
                                        .texts = {Numbering::OwnLines, "", 227, "", 226}};

/// Sixteen rows were drawn; nine of them count.
constexpr CounterBlock Coins = {.kind = Kind::Coin,
                                .shown = master::CoinCount.first(9),
                                .watched = master::CoinCount.first(9),
                                .rows = 16,
                                .columns = 2,
                                .runsAlong = false,
                                .values = &VendCounters::Label2,
                                .captions = &VendCounters::Label1,
                                .firstLabel = 0,
                                .texts = {Numbering::Running, "Contatore moneta", 245, "", 0}};

constexpr std::array PaidBlocks = {
    Preselections, selections(hot_drink::SelectionVends, &VendCounters::Label3, {Numbering::Running, "", 224, "", 222}),
    sectors(sector::SectorVends, {Numbering::RowAndColumn, "", 225, "", 223})};
constexpr std::array FreeBlocks = {selections(hot_drink::SelectionFree, &VendCounters::Label3, SelectionsAsDrawn),
                                   sectors(sector::SectorFree, SectorsAsDrawn)};
constexpr std::array JugBlocks = {selections(hot_drink::SelectionJugs, &VendCounters::Label2, SelectionsAsDrawn)};
constexpr std::array TestBlocks = {selections(hot_drink::SelectionTests, &VendCounters::Label3, SelectionsAsDrawn),
                                   sectors(sector::SectorTests, SectorsAsDrawn)};
constexpr std::array CoinBlocks = {Coins};

}  // namespace

constexpr CounterDesign FrmBattute = {"FrmBattute", "", 16, PaidBlocks};
constexpr CounterDesign FrmGratis = {"FrmGratis", "Gratis", 0, FreeBlocks, 17};
constexpr CounterDesign FrmBricco = {"FrmBricco", "Bricco", 0, JugBlocks, 18};
constexpr CounterDesign FrmProva = {"FrmProva", "Prova", 0, TestBlocks, 19};
constexpr CounterDesign FrmMonete = {"FrmMonete", "", 20, CoinBlocks};

}  // namespace kestrel
