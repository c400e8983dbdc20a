// Passwords: the three numeric access codes of the machine's own keypad.
#include "pages/machine/frm_password.h"

#include <array>

#include "pages/common/number_field.h"
#include "pages/common/own_words.h"

namespace kestrel {

namespace {

struct CodeRow {
    int line;           ///< of its caption
    NumberField field;  ///< its copy is never subscribed
};

constexpr std::array<CodeRow, FrmPassword::Codes> CodeRows = {{
    {305, {master::CodeService, 5, 99999}},
    {306, {master::CodeSales, 5, 99999}},
    {307, {master::CodeClear, 4, 9999}},
}};

constexpr std::array<ParamRun, 3> Subscriptions = {{master::CodeService, master::CodeSales, master::CodeClear}};

constexpr int TitleLine = 25;
constexpr int TypedAtMost = 10;

}  // namespace

FrmPassword::FrmPassword() : TablePage("FrmPassword", TitleLine, {Subscriptions}) {
    for (int i = 0; i < Codes; ++i) {
        const CodeRow& row = CodeRows[static_cast<std::size_t>(i)];
        caption(Label1[i].Caption, row.line);
        DesignNumber(Text1[i], row.field, TypedAtMost);
        Text1[i].Concealed = true;
        reveal[i].standsForNoValue = true;
        whenComes(row.field.setting, [&box = Text1[i]](ParamValue value) { box.Text = std::to_string(value); });
    }
    reveal.OnClick([this](int Index) { Text1[Index].Concealed = !reveal[Index].Active; });
    Text1.OnKeyPress([this](int Index, int KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text1.OnLostFocus([this](int Index) { Text1_LostFocus(Index); });
}

Layout FrmPassword::Arrange() { return Rows(Indexes(0, Codes - 1), Label1, Text1, reveal); }

void FrmPassword::PageCaptions() {
    TablePage::PageCaptions();
    for (RevealSwitch& eye : reveal) eye.ToolTip = OwnWord(Own::ShowCode);
}

void FrmPassword::Text1_KeyPress(int Index, int KeyAscii) {
    if (Updating || KeyAscii != TextBox::EnterKey) return;
    const CodeRow& row = CodeRows[static_cast<std::size_t>(Index)];
    if (const auto value = CommitNumber(Text1[Index], row.field)) WriteTwice(row.field.setting, *value);
}

void FrmPassword::Text1_LostFocus(int Index) { Text1_KeyPress(Index, TextBox::EnterKey); }

}  // namespace kestrel
