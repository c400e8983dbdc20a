// The plain kinds of control.
#include "platform/basic_controls.h"

#include <algorithm>

#include "platform/numbers.h"

namespace kestrel {

std::string Label::accessibleName() const { return caption() ? caption()->Caption.get() : Caption.get(); }

void Label::UserClick() {
    userAct([this] {
        if (usable()) raise(onClick_);
    });
}

void Label::figureOf(ScrollBar* bar) {
    bar_ = bar;
    bar->figuredBy(this);
}

Standing Label::standing() const {
    const Standing own = Control::standing();
    const Standing bars = bar_ ? bar_->standing() : own;
    return own != Standing::Unread && (bars == Standing::Waiting || bars == Standing::NotTaken) ? bars : own;
}

std::string Label::wantedText() const { return bar_ ? bar_->wantedText() : Control::wantedText(); }

std::optional<EntryLimits> Label::entryLimits() const { return bar_ ? bar_->entryLimits() : std::nullopt; }

void CommandButton::UserClick() {
    userAct([this] {
        if (usable()) raise(onClick_);
    });
}

void TextBox::takesNumbers(std::size_t figures, std::uint32_t highest) {
    figures_ = figures;
    highest_ = highest;
}

/// Of what would be handed over: the figures beyond those that count are cut off first.
Objection TextBox::objectionTo(const std::string& typed) const {
    if (!isNumeric()) return Objection::None;
    const std::optional<std::int64_t> whole = parseScaled(typed, 0);
    if (!whole) return Objection::NoNumber;
    if (typed.size() > figures_) return Objection::TooLong;
    return *whole < 0 || *whole > highest_ ? Objection::OutOfRange : Objection::None;
}

std::optional<EntryLimits> TextBox::entryLimits() const {
    if (!isNumeric()) return std::nullopt;
    return EntryLimits{"0", std::to_string(highest_), {}};
}

std::string ListView::asTable() const {
    std::string table;
    const auto addLine = [&table](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) table += (i > 0 ? "\t" : "") + cells[i];
        table += "\n";
    };
    addLine(ColumnHeads);
    for (const auto& row : Rows.get()) addLine(row);
    return table;
}

std::string TextBox::text() const { return Concealed ? "\u2022\u2022\u2022\u2022\u2022" : Text.get(); }

void TextBox::putBack(const std::string& text) {
    nothingSent();
    Text = text;
}

void TextBox::UserType(const std::string& typed) {
    userAct([this, typed] {
        if (!takesActs()) return;
        isTyping_ = true;
        Text = typed;
        isTyping_ = false;
    });
}

void TextBox::UserRestore(const std::string& held) {
    UserType(held);
    UserEnter();
}

void TextBox::assigned(const void* property, bool changed) {
    if (property == &Text && !isTyping_) settled_ = Text;
    Control::assigned(property, changed);
}

void TextBox::commit(const Handler& change) {
    if (takesActs()) userChange(change);
}

void TextBox::UserEnter() {
    userAct([this] {
        if (onKeyPress_) commit([this] { onKeyPress_(EnterKey); });
    });
}

void TextBox::UserLeave() {
    userAct([this] { commit([this] { raise(onLostFocus_); }); });
}

}  // namespace kestrel
