// The base of the pages.
#include "pages/common/table_page.h"

#include <utility>

#include "language/language_files.h"
#include "link/presence.h"
#include "link/value_helpers.h"
#include "pages/common/offset_bar.h"
#include "pages/common/units.h"

namespace kestrel {

namespace {

/// Of a setting of one byte, which no range passes.
constexpr int WidestByte = 255;

std::string textOf(const BarRow& row, ParamValue value) {
    return row.text ? row.text(value) : FormatAmount(value, row.decimals);
}

}  // namespace

TablePage::TablePage(const char* name, int titleLine, const PageLists& lists)
    : Page(name), titleLine_(titleLine), lists_(lists) {}

void TablePage::Form_Load() {
    PageSubscribe();
    PageCaptions();
    CenterPage(*this);
    if (timer_) timer_->Enabled = true;
}

void TablePage::Form_Activate() { PageCaptions(); }

void TablePage::Form_Unload() {
    PageRelease();
    if (timer_) timer_->Enabled = false;
}

void TablePage::ReadAgain() {
    const KeepSubscriptions kept;
    PageRelease();
    PageSubscribe();
    Form_Activate();
}

void TablePage::PageSubscribe() { WatchAll(lists_.subscriptions); }

void TablePage::PageRelease() { ReleaseAll(lists_.releases); }

void TablePage::PageCaptions() {
    if (titleLine_ != 0) Caption = LanguageTable(titleLine_);
    for (const Text& each : captions_) *each.text = LanguageTable(each.line);
}

void TablePage::SLabel_Change(int n, ParamValue value) {
    for (const Taker& each : takers_)
        if (Arrived(n, each.setting)) each.take(value);
    valueCame(n, value);
}

void TablePage::whenComes(const Setting& setting, std::function<void(ParamValue)> take) {
    takers_.push_back({setting, std::move(take)});
}

void TablePage::bar(const BarRow& row, Label& caption, ScrollBar& bar, Label& value) {
    bar.design(row.min, row.max, row.largeStep);
    bar.scale.decimals = row.decimals;
    bar.scale.words = row.text;
    Measure(bar, row.setting);
    value.showsValue(row.longest ? row.longest : textOf(row, WidestByte));
    if (row.line != 0) this->caption(caption.Caption, row.line);
    whenComes(row.setting, [&bar, &value, row](ParamValue came) {
        PlaceBar(bar, came);
        value.Caption = textOf(row, came);
    });
    bar.OnChange([this, &bar, setting = row.setting] {
        if (!Updating) WriteTwice(setting, static_cast<unsigned>(bar.Value.get()));
    });
}

void TablePage::number(const Setting& setting, Label& value) {
    value.showsValue("4294967295");
    whenComes(setting, [&value](ParamValue came) { value.Caption = std::to_string(came); });
}

void TablePage::offsetBar(int line, const Setting& setting, Label& caption, ScrollBar& bar, Label& value) {
    DesignOffsetBar(bar);
    value.showsValue("65535");
    this->caption(caption.Caption, line);
    whenComes(setting, [&bar, &value](ParamValue came) { value.Caption = std::to_string(SetOffsetBar(bar, came)); });
    bar.OnChange([this, &bar, setting] {
        if (!Updating) WriteTwice(setting, RawOfBar(bar.Value));
    });
}

void TablePage::liveWith(const Setting& presence, std::initializer_list<Control*> controls) {
    whenComes(presence, [all = std::vector(controls), last = NoPresence](ParamValue word) mutable {
        if (std::exchange(last, word) == word) return;
        for (Control* control : all) control->Enabled = SaysPresent(word);
    });
}

void TablePage::readsAgain(Timer& timer) {
    timer_ = &timer;
    timer.OnTimer([this] {
        PageRelease();
        PageSubscribe();
    });
}

}  // namespace kestrel
