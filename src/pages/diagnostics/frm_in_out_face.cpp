// In/Out test: where its lamps and switches stand, and what is written on them.
#include <algorithm>
#include <array>

#include "language/language_files.h"
#include "pages/common/own_words.h"
#include "pages/diagnostics/frm_in_out.h"

namespace kestrel {

namespace {

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
constexpr const char* LongestNumber = "00";

}  // namespace

/// Captions stand behind their lamps and switches, so that blocks side by side stay apart.
void FrmInOut::nameRows() {
    const auto number = [](Label& label, int i) {
        label.showsValue(LongestNumber);
        label.standsForNoValue = true;
        label.Caption = std::to_string(i + 1);
    };
    for (int i = 0; i < MasterInputs; ++i) {
        number(masterNumbers_[i], i);
        LedX1[i].namedBy(&Label1[i]);
    }
    for (int i = 0; i < HotDrinkInputs; ++i) {
        number(inputNumbers_[i], i);
        iLedRectangleX1[InputLamp[static_cast<std::size_t>(i)]].namedBy(&Label3[i]);
    }
    for (int i = 0; i < HotDrinkOutputs; ++i) {
        number(outputNumbers_[i], i);
        SwitchLed1[i].namedBy(&Label4[i]);
    }
    for (int i = 0; i < SectorOutputs; ++i) SwitchLed3[i].namedBy(&Label5[i]);
    SwitchLed4.namedBy(&Label2);
    iAnalogX1.digits = 3;
    for (Label& head : inputHeads_) head.role = Label::Role::Heading;
    for (Label& head : outputHeads_) head.role = Label::Role::Heading;
}

Layout FrmInOut::Arrange() {
    std::vector<Layout> inputs;
    for (int i = 0; i < HotDrinkInputs; ++i) {
        inputs.emplace_back(inputNumbers_[i]);
        inputs.emplace_back(iLedRectangleX1[InputLamp[static_cast<std::size_t>(i)]]);
        inputs.emplace_back(Label3[i]);
    }

    Layout outputs(Layout::Kind::Row);
    constexpr int OutputRows = HotDrinkOutputs / OutputColumns;
    for (int first = 0; first < HotDrinkOutputs; first += OutputRows) {
        std::vector<Layout> column;
        for (int i = first; i < first + OutputRows; ++i)
            column.push_back(Target{outputNumbers_[i], SwitchLed1[i], Label4[i]});
        outputs.children.push_back(Grid(1, std::move(column)));
    }

    Layout sectors(Layout::Kind::Row);
    for (int bit = 0; bit < OutputsPerByte; ++bit) {
        std::vector<Layout> column;
        for (int i = bit; i < SectorOutputs; i += OutputsPerByte) column.push_back(Target{SwitchLed3[i], Label5[i]});
        sectors.children.push_back(Grid(1, std::move(column)));
    }
    sectors.children.push_back(Column{Target{SwitchLed4, Label2}, Row{Label8, iAnalogX2}});

    return Column{
        Row{
            Column{
                Row{Command1, Label7},
                Group(Frame1,
                      Column{inputHeads_[0], Rows(Indexes(0, MasterInputs - 1), masterNumbers_, LedX1, Label1)}),
                Row{Label6, iAnalogX1},
                Gap(),
            },
            Group(Frame2, Row{Column{inputHeads_[1], Grid(3, inputs)}, Column{outputHeads_[0], outputs}}),
        },
        Group(Frame3, Column{outputHeads_[1], sectors}),
    };
}

void FrmInOut::PageCaptions() {
    TablePage::PageCaptions();
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
    for (Label& head : inputHeads_) head.Caption = OwnWord(Own::Inputs);
    for (Label& head : outputHeads_) head.Caption = OwnWord(TestActive ? Own::Outputs : Own::LockedOutputs);
}

}  // namespace kestrel
