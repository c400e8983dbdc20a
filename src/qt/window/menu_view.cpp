// Shows a tree of menu entries as a menu bar.
#include "qt/window/menu_view.h"

#include <QMenuBar>
#include <algorithm>

#include "qt/io/deliver.h"
#include "qt/io/text.h"
#include "qt/window/mnemonics.h"

namespace kestrel::qt {

/// One entry: its action, and the menu that it opens if it has entries below it.
class MenuEntryView : public ControlView {
  public:
    MenuEntryView(MenuItem& item, QWidget& place, std::function<void()> renamed)
        : item_(item), renamed_(std::move(renamed)), action_(new QAction(&place)) {
        place.addAction(action_);
        if (!item.items().empty()) makeMenu();
        QObject::connect(action_, &QAction::triggered, action_, [this] {
            deliver([this] { item_.UserClick(); });
            showState();
        });
        item.bind(this);
        showState();
    }
    ~MenuEntryView() override { item_.unbind(this); }

    void controlChanged() override {
        showState();
        renamed_();
    }

    QString caption() const { return item_.Visible ? toQt(item_.Caption) : QString(); }
    /// Gives the entry its caption, which bears the mark of its letter.
    void setText(const QString& marked) {
        const QString detail = toQt(item_.Detail).replace(u'&', QStringLiteral("&&"));
        const QString text = detail.isEmpty() ? marked : marked + QStringLiteral("   ") + detail;
        if (action_->text() != text) action_->setText(text);
    }
    const MenuItem& item() const { return item_; }
    QAction& action() { return *action_; }
    QMenu& makeMenu() {
        if (QMenu* present = action_->menu()) return *present;
        auto* menu = new QMenu(qobject_cast<QWidget*>(action_->parent()));
        QObject::connect(menu, &QMenu::aboutToShow, action_, [this] { deliver([this] { item_.UserOpen(); }); });
        action_->setMenu(menu);
        return *menu;
    }

  private:
    void showState() {
        action_->setEnabled(item_.Enabled);
        action_->setVisible(item_.Visible);
        action_->setCheckable(item_.Checked);  // an entry that could be ticked would be drawn with an empty box
        action_->setChecked(item_.Checked);
    }

    MenuItem& item_;
    std::function<void()> renamed_;
    QAction* action_;
};

MenuView::MenuView(MenuItem& root, QMenuBar& bar, std::function<void()> renamed) : renamed_(std::move(renamed)) {
    fill(root, bar);
}
MenuView::~MenuView() = default;

QMenu& MenuView::menuOf(const std::string& name) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) { return entry->item().name() == name; });
    return (*found)->makeMenu();
}

void MenuView::fill(MenuItem& parent, QWidget& place) {
    Level& level = *levels_.emplace_back(std::make_unique<Level>());
    for (const auto& item : parent.items()) {
        auto entry = std::make_unique<MenuEntryView>(*item, place, [this, &level] { renameLater(level); });
        level.entries.push_back(entry.get());
        QMenu* below = entry->action().menu();
        entries_.push_back(std::move(entry));
        if (below) fill(*item, *below);
    }
    rename(level);
}

/// A change of language renames every entry: the letters are chosen once, after the last of them.
void MenuView::renameLater(Level& level) {
    if (level.isStale) return;
    level.isStale = true;
    QMetaObject::invokeMethod(
        &context_, [this] { bringUpToDate(); }, Qt::QueuedConnection);
}

void MenuView::bringUpToDate() {
    for (const auto& level : levels_) {
        if (!level->isStale) continue;
        rename(*level);
        if (level == levels_.front()) renamed_();
    }
}

void MenuView::rename(Level& level) {
    level.isStale = false;
    QStringList captions;
    for (const MenuEntryView* entry : level.entries) captions += entry->caption();
    const QStringList marked = withMnemonics(captions);
    for (std::size_t i = 0; i < level.entries.size(); ++i) level.entries[i]->setText(marked[static_cast<qsizetype>(i)]);
}

}  // namespace kestrel::qt
