// Counters: what all the pages do.
// See vend_counters.h; the tables of the pages stand in vend_counter_tables.cpp.
#include "pages/sales/vend_counters.h"

#include "language/language_files.h"
#include "link/value_helpers.h"
#include "pages/common/sector_names.h"

namespace kestrel {

namespace {

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

}  // namespace

VendCounters::VendCounters(const CounterDesign& design) : Page(design.name), design_(design) {
    for (const CounterBlock& block : design_.blocks)
        for (int row = 0; row < block.rows; ++row) {
            value(block, row).showsValue(LongestCount);
            value(block, row).standsForNoValue = row >= block.shown.size();
        }
    Timer1.OnTimer([this] { Timer1_Timer(); });
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
    Frame* frame = frameOf(block.kind);
    return frame ? Group(*frame, std::move(lists)) : lists;
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

void VendCounters::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
    Timer1.Enabled = true;
}

void VendCounters::Form_Activate() { PageCaptions(); }

void VendCounters::Form_Unload() {
    PageRelease();
    Timer1.Enabled = false;
}

void VendCounters::PageSubscribe() {
    for (const CounterBlock& block : design_.blocks) Watch(block.watched);
}

void VendCounters::PageRelease() {
    for (const CounterBlock& block : design_.blocks) Release(block.watched);
}

void VendCounters::PageCaptions() {
    Caption = design_.titleLine == 0 ? design_.title : LanguageTable(design_.titleLine);
    for (const CounterBlock& block : design_.blocks) captionBlock(block);
}

void VendCounters::captionBlock(const CounterBlock& block) {
    if (Frame* frame = frameOf(block.kind))
        frame->Caption = block.texts.frameLine == 0 ? block.texts.frame : LanguageTable(block.texts.frameLine);
    for (int row = 0; row < block.rows; ++row) caption(block, row).Caption = captionText(block, row);
}

void VendCounters::Timer1_Timer() {
    PageRelease();
    PageSubscribe();
}

void VendCounters::SLabel_Change(int n, ParamValue number) {
    for (const CounterBlock& block : design_.blocks) {
        const int row = ArrivedAt(n, block.shown);
        if (row >= 0) value(block, row).Caption = std::to_string(number);
    }
}

}  // namespace kestrel
