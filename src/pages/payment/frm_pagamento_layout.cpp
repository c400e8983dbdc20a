// Payment system: ranges, captions and layout of the page.
#include "language/language_files.h"
#include "pages/common/own_words.h"
#include "pages/common/position_labels.h"
#include "pages/payment/frm_pagamento.h"

namespace kestrel {

namespace {

constexpr const char* SixteenPositions = "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16";
constexpr int LargeStep = 100;

constexpr int TitleLine = 7;
constexpr int CoinLine = 146;
constexpr int TokenLine = 159;
constexpr int OnLine = 167;
constexpr int OffLine = 168;

std::string numbered(int line, int number) { return LanguageTable(line) + " " + std::to_string(number); }

}  // namespace

void FrmPagamento::designControls() {
    HScroll11[0].design(0, 9999, LargeStep);
    Label11[0].showsValue(LongestAmount);
    scrTP.design(20, 250, LargeStep);
    scrTP.scale.decimals = 1;
    Label8v.showsValue("25.5");
    for (SliderSwitch* selector : {&SliderX1, &SliderX7}) {
        selector->PositionLabels = SixteenPositions;
        selector->isSelector = true;
    }
    for (SliderSwitch& control : SwitchX5) control.PositionLabels = "No, Si";
}

Layout FrmPagamento::Arrange() {
    const Layout coins = Grid(3, {Label4[0], HScroll11[0], Label11[0],  //
                                  Label2, iSwitchSliderX2, Gap(),       //
                                  Label3[3], SwitchX5[1], Gap(),        //
                                  Label12, SliderX1, Gap(),             //
                                  Label5, SliderX4, Gap()});
    const Layout banknotes = Grid(3, {Label9, SliderX7, Gap(),  //
                                      Label7, SliderX6, Gap()});
    const Layout executive = Column{SliderX5, Grid(3, {Label8, scrTP, Label8v,  //
                                                       Label13, SwitchX5[0], Gap()})};
    Layout tokens = Rows(Indexes(0, Tokens - 1), Label6, HScroll6, Label6s);
    for (int i = 0; i < Tokens; ++i) {
        tokens.children.emplace_back(Label3[i]);
        tokens.children.emplace_back(iSwSliderX3[i]);
        tokens.children.push_back(Gap());
    }
    const Layout coinValues = Row{Rows(Indexes(0, Coins / 2 - 1), Label1, HScroll10, Label10),
                                  Rows(Indexes(Coins / 2, Coins - 1), Label1, HScroll10, Label10)};
    return Column{
        Folding{
            Group(Frame2, Row{Column{Group(Frame3, coins), Group(Frame6, banknotes)}, Group(Frame5, tokens)}),
            Group(Frame1, coinValues),
            Group(Frame4, executive),
        },
        Group(creditLimits_, Rows({2, 3}, Label4, HScroll11, Label11)),
    };
}

void FrmPagamento::PageCaptions() {
    const struct {
        Property<std::string>& caption;
        int line;
    } texts[] = {
        {Caption, TitleLine},     {Frame1.Caption, 144},    {Frame2.Caption, 147},    {Frame3.Caption, 148},
        {Frame4.Caption, 152},    {Frame5.Caption, 158},    {Frame6.Caption, 164},    {Label4[0].Caption, 149},
        {Label4[2].Caption, 171}, {Label4[3].Caption, 170}, {Label2.Caption, 150},    {Label12.Caption, 155},
        {Label5.Caption, 151},    {Label9.Caption, 166},    {Label7.Caption, 165},    {Label3[0].Caption, 160},
        {Label3[1].Caption, 161}, {Label3[2].Caption, 162}, {Label3[3].Caption, 172}, {Label8.Caption, 163},
        {Label13.Caption, 169},
    };
    for (const auto& text : texts) text.caption = LanguageTable(text.line);
    for (int i = 0; i < Coins; ++i) Label1[i].Caption = numbered(CoinLine, i + 1);
    for (int i = 0; i < Tokens; ++i) Label6[i].Caption = numbered(TokenLine, i + 1);

    creditLimits_.Caption = OwnWord(Own::CreditLimits);
    for (SliderSwitch& yesNo : SwitchX5) yesNo.ToolTip = OwnWord(Own::NoYes);

    const std::string offOn = TwoPositions(OffLine, OnLine);
    for (SliderSwitch* control : {&SliderX4, &SliderX6, &iSwitchSliderX2}) control->PositionLabels = offOn;
    for (SliderSwitch& control : iSwSliderX3) control.PositionLabels = offOn;
    SliderX5.PositionLabels = LanguageTable(156) + "," + LanguageTable(153) + "," + LanguageTable(154);
}

}  // namespace kestrel
