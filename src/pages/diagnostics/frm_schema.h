// Hydraulic schema: the machine's water circuit as a drawing, with the hot-drink board's inputs and outputs as lamps.
// The page only reads; it is the read-only twin of the In/Out test.
#pragma once

#include "pages/common/table_page.h"
#include "platform/displays.h"

namespace kestrel {

class FrmSchema : public TablePage {
  public:
    static constexpr int Outputs = 23;
    static constexpr int Inputs = 10;
    static constexpr int Devices = 21;

    FrmSchema();

    Picture Image1{"schema"};
    ControlArray<kestrel::Led, Outputs> Led;  ///< round lamps, each on the device that its tooltip names
    ControlArray<kestrel::Led, Inputs> iLed;  ///< rectangular ones on the sensors
    Thermometer iThermometerX1;               ///< of the boiler
    SevenSegment iSevenSegmentAnalogX1;       ///< the same reading
    ControlArray<Label, Devices> Label1;      ///< legend of the numbers in the drawing

    Layout Arrange() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageCaptions() override;

    ControlArray<Label, Devices> legendNumbers_;
};

}  // namespace kestrel
