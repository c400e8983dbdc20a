// Counters: what all the pages do.
// See vend_counters.h; the tables of the pages stand in vend_counter_tables.cpp.
#include "pages/sales/vend_counters.h"

#include <algorithm>
#include <iterator>

#include "language/language_files.h"
#include "link/value_helpers.h"
#include "pages/common/own_words.h"
#include "pages/common/sector_names.h"

namespace kestrel {

namespace {

constexpr int SelectionFrameLine = 222;
constexpr int SectorFrameLine = 223;
constexpr int SelectionLine = 224;
constexpr int SectorLine = 225;
constexpr int CoinLine = 245;

constexpr const char* LongestCount = "4294967295";

std::string captionText(const CounterBlock& block, int row) {
    const CounterTexts& texts = block.texts;
    const bool keepsDesign = texts.captionLine == 0 || row >= block.shown.size();
    std::string text = keepsDesign ? texts.caption : LanguageTable(texts.captionLine);
    switch (texts.numbering) {
        case CounterTexts::Numbering::Running:
            return text + " " + std::to_string(row + 1);
        case CounterTexts::Numbering::RowAndColumn:
            return text + " " + RowAndColumn(row);
        case CounterTexts::Numbering::OwnLines:
            return LanguageTable(texts.captionLine + row);
        case CounterTexts::Numbering::None:
            break;
    }
    return text;
}

/// Captions that stay Italian are explained by those that the paid vends and the coins have in the active language.
std::string explanation(const CounterBlock& block, int row) {
    switch (block.kind) {
        case CounterBlock::Kind::Selection:
            return LanguageTable(SelectionLine) + " " + std::to_string(row + 1);
        case CounterBlock::Kind::Sector:
            return LanguageTable(SectorLine) + " " + RowAndColumn(row);
        case CounterBlock::Kind::Coin:
            return row < block.shown.size() ? std::string() : LanguageTable(CoinLine) + " " + std::to_string(row + 1);
        case CounterBlock::Kind::Preselection:
            break;
    }
    return {};
}

}  // namespace

VendCounters::VendCounters(const CounterDesign& design) : TablePage(design.name, 0, {}), design_(design) {
    for (const CounterBlock& block : design_.blocks) {
        sums_[block.kind].figure.showsValue(LongestCount);
        for (int row = 0; row < block.rows; ++row) {
            value(block, row).showsValue(LongestCount);
            value(block, row).standsForNoValue = row >= block.shown.size();
        }
    }
    readsAgain(Timer1);
}

Frame* VendCounters::frameOf(CounterBlock::Kind kind) {
    switch (kind) {
        case CounterBlock::Kind::Selection:
            return &Frame1;
        case CounterBlock::Kind::Sector:
            return &Frame2[0];
        case CounterBlock::Kind::Preselection:
            return &Frame3;
        case CounterBlock::Kind::Coin:
            break;
    }
    return nullptr;
}

Layout VendCounters::arrangeBlock(const CounterBlock& block) {
    const int length = block.rows / block.columns;
    Layout lists(Layout::Kind::Row);
    for (int column = 0; column < block.columns; ++column) {
        std::vector<Layout> cells;
        for (int line = 0; line < length; ++line) {
            const int row = block.runsAlong ? line * block.columns + column : column * length + line;
            cells.emplace_back(caption(block, row));
            cells.emplace_back(value(block, row));
        }
        lists.children.push_back(Grid(2, std::move(cells)));
    }
    Layout counted = Column{std::move(lists), sumOf(block)};
    Frame* frame = frameOf(block.kind);
    return frame ? Group(*frame, std::move(counted)) : counted;
}

Layout VendCounters::sumOf(const CounterBlock& block) {
    Sum& sum = sums_[block.kind];
    return Row{Gap(), sum.caption, sum.figure};
}

/// Sectors below all others, and selections left of preselections.
Layout VendCounters::Arrange() {
    Layout above(Layout::Kind::Row);
    Layout page(Layout::Kind::Column);
    for (const CounterBlock& block : design_.blocks) {
        const bool sectors = block.kind == CounterBlock::Kind::Sector;
        std::vector<Layout>& children = sectors ? page.children : above.children;
        children.insert(children.begin(), arrangeBlock(block));
    }
    page.children.insert(page.children.begin(), above);
    return page;
}

void VendCounters::PageSubscribe() {
    for (const CounterBlock& block : design_.blocks) Watch(block.watched);
}

void VendCounters::PageRelease() {
    for (const CounterBlock& block : design_.blocks) Release(block.watched);
}

void VendCounters::PageCaptions() {
    Caption = design_.titleLine == 0 ? design_.title : LanguageTable(design_.titleLine);
    if (design_.menuLine != 0) ToolTip = LanguageTable(design_.menuLine);
    for (const CounterBlock& block : design_.blocks) captionBlock(block);
}

void VendCounters::captionBlock(const CounterBlock& block) {
    if (Frame* frame = frameOf(block.kind))
        frame->Caption = block.texts.frameLine == 0 ? block.texts.frame : LanguageTable(block.texts.frameLine);
    for (int row = 0; row < block.rows; ++row) caption(block, row).Caption = captionText(block, row);
    explainBlock(block);
    sums_[block.kind].caption.Caption = OwnWord(Own::Sum);
}

void VendCounters::explainBlock(const CounterBlock& block) {
    Frame* frame = frameOf(block.kind);
    if (frame && block.texts.frameLine == 0)
        frame->ToolTip = LanguageTable(block.kind == CounterBlock::Kind::Sector ? SectorFrameLine : SelectionFrameLine);
    if (block.texts.captionLine != 0 && block.kind != CounterBlock::Kind::Coin) return;
    for (int row = 0; row < block.rows; ++row) caption(block, row).ToolTip = explanation(block, row);
}

void VendCounters::SLabel_Change(int n, ParamValue number) {
    for (const CounterBlock& block : design_.blocks) {
        const int row = ArrivedAt(n, block.shown);
        if (row < 0) continue;
        value(block, row).Caption = std::to_string(number);
        tally(block, row, number);
    }
}

/// Measures the counters of a block by the highest of them, and adds them up when the last one has come.
void VendCounters::tally(const CounterBlock& block, int row, ParamValue number) {
    Sum& sum = sums_[block.kind];
    sum.counts[row] = number;
    double highest = 1;
    ParamValue all = 0;
    for (const auto& [counted, count] : sum.counts) {
        highest = std::max(highest, static_cast<double>(count));
        all += count;
    }
    for (const auto& [counted, count] : sum.counts) value(block, counted).Share = static_cast<double>(count) / highest;
    if (std::ssize(sum.counts) == block.shown.size()) sum.figure.Caption = std::to_string(all);
}

}  // namespace kestrel
