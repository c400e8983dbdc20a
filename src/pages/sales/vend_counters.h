// Counters: blocks of numbers that the boards count, each under its own caption.
// One page on five tables: paid, free, jug and test vends, and coins. It only reads, and scales nothing.
#pragma once

#include <map>
#include <span>

#include "link/subscriptions.h"
#include "pages/common/table_page.h"
#include "platform/tally.h"

namespace kestrel {

class VendCounters;

/// Words of a block. A line of 0 keeps the text of the design.
struct CounterTexts {
    enum class Numbering { Running, RowAndColumn, OwnLines, None };

    Numbering numbering;
    const char* caption;  ///< text at design time, and for good in rows that show nothing
    int captionLine;
    const char* frame;
    int frameLine;
};

/// Consecutive counters of one board, and the labels that show them.
struct CounterBlock {
    enum class Kind { Selection, Sector, Preselection, Coin };
    static constexpr int MostRows = 48;
    using Labels = ControlArray<Tally, MostRows> VendCounters::*;

    Kind kind;
    SettingRange shown;  ///< counters that reach a label
    ParamRun watched;    ///< counters that are kept fresh
    int rows;            ///< rows on the page; those beyond the shown ones stay empty
    int columns;         ///< in which the rows stand
    bool runsAlong;      ///< row after row as the sectors lie in the machine, else column after column
    Labels values;
    Labels captions;
    int firstLabel;  ///< index of the first row in both arrays
    CounterTexts texts;
};

/// What differs between the pages. Blocks stand in the order in which they are subscribed.
struct CounterDesign {
    const char* name;
    const char* title;
    int titleLine;  ///< or 0: it keeps its design text
    std::span<const CounterBlock> blocks;
    int menuLine = 0;  ///< of its name in the menu, where its title is no text of the language
};

extern const CounterDesign FrmBattute;  ///< paid vends
extern const CounterDesign FrmGratis;   ///< free vends
extern const CounterDesign FrmBricco;   ///< jug vends
extern const CounterDesign FrmProva;    ///< test vends
extern const CounterDesign FrmMonete;   ///< coins

class VendCounters : public TablePage {
  public:
    explicit VendCounters(const CounterDesign& design);

    Frame Frame1;                   ///< selections
    ControlArray<Frame, 1> Frame2;  ///< sectors
    Frame Frame3;                   ///< preselections
    // Which labels are in use, and what for, is the page's table's matter.
    ControlArray<Tally, CounterBlock::MostRows> Label1;
    ControlArray<Tally, CounterBlock::MostRows> Label2;
    ControlArray<Tally, CounterBlock::MostRows> Label3;
    ControlArray<Tally, CounterBlock::MostRows> Label4;
    ControlArray<Tally, CounterBlock::MostRows> Label11;
    Timer Timer1{15000};  ///< milliseconds; has the counters read again

    /// The sum of a block's counters, once all of them have come.
    const Label& sum(CounterBlock::Kind kind) const { return sums_.at(kind).figure; }

    Layout Arrange() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    Frame* frameOf(CounterBlock::Kind kind);
    Tally& value(const CounterBlock& block, int row) { return (this->*block.values)[block.firstLabel + row]; }
    Label& caption(const CounterBlock& block, int row) { return (this->*block.captions)[block.firstLabel + row]; }
    Layout arrangeBlock(const CounterBlock& block);
    Layout sumOf(const CounterBlock& block);
    void tally(const CounterBlock& block, int row, ParamValue number);
    void captionBlock(const CounterBlock& block);
    void explainBlock(const CounterBlock& block);

    struct Sum {
        Label caption;
        Label figure;
        std::map<int, ParamValue> counts;  ///< by row, as far as they have come
    };

    const CounterDesign& design_;
    std::map<CounterBlock::Kind, Sum> sums_;
};

}  // namespace kestrel
