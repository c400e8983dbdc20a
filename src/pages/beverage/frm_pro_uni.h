// Unique products: the product channel, time and delay of each of the machine's three unique products.
// All on the hot-drink board, with one switch for the delays of the whole page.
#pragma once

#include <array>

#include "link/presence.h"
#include "pages/common/arrival_count.h"
#include "pages/common/table_page.h"
#include "platform/switches.h"

namespace kestrel {

class FrmProUni : public TablePage {
  public:
    static constexpr int Products = 3;

    FrmProUni();

    ControlArray<Frame, Products + 1> Blocks;            ///< without titles: a product each, and the delays' switch
    Label Label1x, Label2x, Label3x;                     ///< names of the products
    SliderSwitch iSwSliderX1, iSwSliderX2, iSwSliderX3;  ///< product channel, 0: none
    ControlArray<Label, 2> Label1s, Label2s, Label3s;    ///< captions: time, delay
    ControlArray<ScrollBar, 2> HScroll1, HScroll2, HScroll3;  ///< time and delay, tenths of a second
    ControlArray<Label, 2> Label1, Label2, Label3;
    Label lblEnRit;
    SliderSwitch swslResto;  ///< 1: the board takes the delays into account

    Layout Arrange() override;

  private:
    struct Product {
        Label& name;
        SliderSwitch& channel;
        ControlArray<Label, 2>& captions;
        ControlArray<ScrollBar, 2>& bars;
        ControlArray<Label, 2>& values;
    };
    Product& at(int product) { return products_[static_cast<std::size_t>(product)]; }
    void PageSubscribe() override;
    void PageRelease() override;
    void PageCaptions() override;
    void valueCame(int n, ParamValue value) override;
    void valueShown() override;
    void HScroll_Change(int product, int Index);
    void iSwSliderX_PositionChangeUser(int product);
    void swslResto_PositionChange();
    void LockProducts();
    void UnlockProducts();
    void enableHead(Product& product, bool live);
    void enableRow(Product& product, int row, bool live);
    void countOrUnlock();
    void statusArrived(ParamValue value);
    void settingArrived(int n, ParamValue value);
    void productCountArrived(ParamValue value);
    void optionsArrived(ParamValue value);

    std::array<Product, Products> products_ = {{
        {Label1x, iSwSliderX1, Label1s, HScroll1, Label1},
        {Label2x, iSwSliderX2, Label2s, HScroll2, Label2},
        {Label3x, iSwSliderX3, Label3s, HScroll3, Label3},
    }};
    ParamValue LastStatus = NoPresence;
    ParamValue ProductCount = 0;
    unsigned OptionByte = 0;   ///< as the board last reported it
    unsigned OptionsBits = 0;  ///< of the machine; nothing reports them yet, so the board's revision alone decides
    ArrivalCount Arrivals;
};

}  // namespace kestrel
