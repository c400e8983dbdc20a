// Hydraulic schema: the machine's water circuit as a drawing, with the hot-drink board's inputs and outputs as lamps.
// The page only reads; it is the read-only twin of the In/Out test.
#pragma once

#include "link/page.h"
#include "platform/displays.h"

namespace kestrel {

class FrmSchema : public Page {
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
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;

  private:
    void PageSubscribe();
    void PageRelease();
    void PageCaptions();

    ControlArray<Label, Devices> legendNumbers_;
};

}  // namespace kestrel
