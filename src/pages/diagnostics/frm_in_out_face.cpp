// In/Out test: where its lamps and switches stand, and what is written on them.
#include <algorithm>
#include <array>

#include "language/language_files.h"
#include "pages/diagnostics/frm_in_out.h"

namespace kestrel {

namespace {

constexpr int TitleLine = 31;  // that of the menu
constexpr int Frame1Line = 336;
constexpr int Label1Line = 337;
constexpr int Frame2Line = 344;
constexpr int Label6Line = 345;
constexpr int Label4Line = 346;
constexpr int SwitchedInputsLine = 386;  // Label3(0) to Label3(10)
constexpr int FrameInputsLine = 406;     // Label3(11) to Label3(14)
constexpr int FirstFrameInput = 11;
constexpr int Frame3Line = 398;
constexpr int SectorLine = 399;
constexpr int StopLine = 400;
constexpr int StartLine = 401;
constexpr int RunningLine = 402;
constexpr int NormalLine = 403;
constexpr int Label8Line = 404;
constexpr int Label2Line = 405;

constexpr int Green = 65280;
constexpr int Red = 255;

/// Lamp of each row of inputs of the hot-drink board.
constexpr std::array<int, FrmInOut::HotDrinkInputs> InputLamp = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 14, 17};

constexpr int OutputColumns = 4;
constexpr const char* Number = "00";             // the longest
constexpr const char* NumberWithRoom = "   00";  // the room keeps blocks side by side apart

}  // namespace

/// Captions stand behind their lamps and switches, so that blocks side by side stay apart.
void FrmInOut::nameRows() {
    const auto number = [](Label& label, int i, const char* longest) {
        label.showsValue(longest);
        label.standsForNoValue = true;
        label.Caption = std::to_string(i + 1);
    };
    for (int i = 0; i < MasterInputs; ++i) {
        number(masterNumbers_[i], i, Number);
        LedX1[i].namedBy(&Label1[i]);
    }
    for (int i = 0; i < HotDrinkInputs; ++i) {
        number(inputNumbers_[i], i, Number);
        iLedRectangleX1[InputLamp[static_cast<std::size_t>(i)]].namedBy(&Label3[i]);
    }
    for (int i = 0; i < HotDrinkOutputs; ++i) {
        number(outputNumbers_[i], i, NumberWithRoom);
        SwitchLed1[i].namedBy(&Label4[i]);
    }
    for (int i = 0; i < SectorOutputs; ++i) SwitchLed3[i].namedBy(&Label5[i]);
    SwitchLed4.namedBy(&Label2);
    iAnalogX1.digits = 3;
}

Layout FrmInOut::Arrange() {
    std::vector<Layout> inputs;
    for (int i = 0; i < HotDrinkInputs; ++i) {
        inputs.emplace_back(inputNumbers_[i]);
        inputs.emplace_back(iLedRectangleX1[InputLamp[static_cast<std::size_t>(i)]]);
        inputs.emplace_back(Label3[i]);
    }

    Layout hotDrink(Layout::Kind::Row, {Grid(3, inputs)});
    constexpr int OutputRows = HotDrinkOutputs / OutputColumns;
    for (int first = 0; first < HotDrinkOutputs; first += OutputRows)
        hotDrink.children.push_back(Rows(Indexes(first, first + OutputRows - 1), outputNumbers_, SwitchLed1, Label4));

    Layout sector(Layout::Kind::Row, {});
    for (int bit = 0; bit < OutputsPerByte; ++bit) {
        std::vector<int> column;
        for (int i = bit; i < SectorOutputs; i += OutputsPerByte) column.push_back(i);
        sector.children.push_back(Rows(column, SwitchLed3, Label5));
    }
    sector.children.push_back(Column{Row{SwitchLed4, Label2}, Row{Label8, iAnalogX2}});

    return Column{
        Row{
            Column{
                Row{Command1, Label7},
                Group(Frame1, Rows(Indexes(0, MasterInputs - 1), masterNumbers_, LedX1, Label1)),
                Row{Label6, iAnalogX1},
                Gap(),
            },
            Group(Frame2, hotDrink),
        },
        Group(Frame3, sector),
    };
}

void FrmInOut::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    Frame1.Caption = LanguageTable(Frame1Line);
    for (int i = 0; i < MasterInputs; ++i) Label1[i].Caption = LanguageTable(Label1Line + i);

    Frame2.Caption = LanguageTable(Frame2Line);
    for (int i = 0; i < HotDrinkInputs; ++i)
        Label3[i].Caption =
            LanguageTable(i < FirstFrameInput ? SwitchedInputsLine + i : FrameInputsLine + i - FirstFrameInput);
    for (int i = 0; i < HotDrinkOutputs; ++i) Label4[i].Caption = LanguageTable(Label4Line + i);
    Label6.Caption = LanguageTable(Label6Line);

    Frame3.Caption = LanguageTable(Frame3Line);
    for (int i = 0; i < SectorOutputs; ++i)
        Label5[i].Caption = LanguageTable(SectorLine) + " " + std::to_string(i / OutputsPerByte + 1) +
                            std::to_string(i % OutputsPerByte + 1);
    Label2.Caption = LanguageTable(Label2Line);
    Label8.Caption = LanguageTable(Label8Line);
    ShowTestState();
}

void FrmInOut::ShowTestState() {
    Command1.Caption = LanguageTable(TestActive ? StopLine : StartLine);
    Label7.Caption = LanguageTable(TestActive ? RunningLine : NormalLine);
    Label7.ForeColor = TestActive ? Green : Red;
}

}  // namespace kestrel
