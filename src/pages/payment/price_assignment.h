// Assignment of prices: which of the thirty prices each selection, or each sector, costs.
// One page on two tables: FrmAssSel for the selections, FrmAssSet for the sectors.
#pragma once

#include <span>

#include "link/subscriptions.h"
#include "pages/common/table_page.h"

namespace kestrel {

/// What differs between the two pages.
struct AssignmentDesign {
    enum class Numbering { Running, RowAndColumn };

    const char* name;
    int titleLine;
    int captionLine;
    Numbering numbering;
    SettingRange rows;  ///< price number less 1 each
    int columns;        ///< in which the rows stand
    Setting gate;       ///< presence word of the rows' board
    int rowsToOpen;     ///< so many of the first rows must be fresh to open the bars
    bool gateIsDeaf;    ///< rows open by the gate alone, even while everything is at price 1
    std::span<const ParamRun> subscriptions;
};

extern const AssignmentDesign FrmAssSel;
extern const AssignmentDesign FrmAssSet;

class PriceAssignment : public TablePage {
  public:
    static constexpr int MostRows = 48;

    explicit PriceAssignment(const AssignmentDesign& design);

    // Of each array, the first `rows` elements are in use.
    ControlArray<Label, MostRows> Label11;       ///< captions
    ControlArray<ScrollBar, MostRows> HScroll1;  ///< numbers of prices, 1 to 30
    ControlArray<Label, MostRows> Label1;        ///< numbers as the board holds them
    ControlArray<Label, MostRows> amounts;       ///< of these prices, where the cells have no room for them

    Layout Arrange() override;

  private:
    void PageSubscribe() override;
    void PageCaptions() override;
    void EnableRows();
    void DisableRows();
    void EnableBars();
    void DisableBars();
    void setBars(bool open);
    void followGate();
    void showAmount(int row);
    /// Its fields have room for a number alone.
    bool isDense() const { return design_.columns > 2; }
    void valueCame(int n, ParamValue value) override;
    void valueShown() override;
    bool enoughRowsAreFresh() const;
    bool allAtPriceOne() const;
    void HScroll1_Change(int Index);

    const AssignmentDesign& design_;
    int gate_ = 255;            ///< presence word as it last came
    unsigned saleOptions_ = 0;  ///< as they last came
    bool neverOpened_ = true;   ///< the bars have not been opened by fresh values yet
};

}  // namespace kestrel
