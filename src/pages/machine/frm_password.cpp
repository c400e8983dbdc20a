// Passwords: the three numeric access codes of the machine's own keypad.
#include "pages/machine/frm_password.h"

#include <array>

#include "language/language_files.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "pages/common/number_field.h"

namespace kestrel {

namespace {

struct CodeRow {
    int line;  ///< of its caption
    NumberField field;
    int shadow;  ///< written after the first, never subscribed
};

constexpr std::array<CodeRow, FrmPassword::Codes> CodeRows = {{
    {305, {362, 5, 99999}, 365},
    {306, {364, 5, 99999}, 367},
    {307, {363, 4, 9999}, 366},
}};

constexpr std::array<ParamRun, 3> Subscriptions = {{{0, 362}, {0, 364}, {0, 363}}};

constexpr int TitleLine = 25;
constexpr int TypedAtMost = 10;

}  // namespace

FrmPassword::FrmPassword() : Page("FrmPassword") {
    for (TextBox& box : Text1) box.maxLength = TypedAtMost;
    Text1.OnKeyPress([this](int Index, int KeyAscii) { Text1_KeyPress(Index, KeyAscii); });
    Text1.OnLostFocus([this](int Index) { Text1_LostFocus(Index); });
}

Layout FrmPassword::Arrange() { return Rows(Indexes(0, Codes - 1), Label1, Text1); }

void FrmPassword::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
}

void FrmPassword::Form_Activate() { PageCaptions(); }

void FrmPassword::Form_Unload() { PageRelease(); }

void FrmPassword::PageSubscribe() { WatchAll(Subscriptions); }

void FrmPassword::PageRelease() { ReleaseAll(Subscriptions); }

void FrmPassword::PageCaptions() {
    Caption = LanguageTable(TitleLine);
    for (int i = 0; i < Codes; ++i) Label1[i].Caption = LanguageTable(CodeRows[static_cast<std::size_t>(i)].line);
}

void FrmPassword::Text1_KeyPress(int Index, int KeyAscii) {
    if (Updating || KeyAscii != TextBox::EnterKey) return;
    const CodeRow& row = CodeRows[static_cast<std::size_t>(Index)];
    if (const auto value = CommitNumber(Text1[Index], row.field))
        WriteTwice(0, row.field.parameter, row.shadow, *value);
}

void FrmPassword::Text1_LostFocus(int Index) { Text1_KeyPress(Index, TextBox::EnterKey); }

void FrmPassword::SLabel_Change(int n, ParamValue value) {
    if (CurrentBank != 0) return;
    Updating = true;
    for (int i = 0; i < Codes; ++i)
        if (CodeRows[static_cast<std::size_t>(i)].field.parameter == n) Text1[i].Text = std::to_string(value);
    Updating = false;
}

}  // namespace kestrel
