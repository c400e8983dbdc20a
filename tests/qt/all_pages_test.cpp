// Every page of the menu in the real frame window, filled by the simulated machine, in every language and every look:
// nothing is cut off, nothing overlaps, all fits the smallest screen in use, and all can be used by keys and heard.
#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <set>

#include "drawn_texts.h"
#include "language/language_files.h"
#include "qt/views/bar_view.h"
#include "qt/views/canvas_view.h"
#include "qt/views/field_view.h"
#include "qt/views/group_view.h"
#include "qt/views/label_view.h"
#include "qt/window/message_boxes.h"
#include "screen_fixture.h"
#include "support/processor_time.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

constexpr int Languages = 5;
constexpr int German = 0;  ///< in the language menu

class AllPages : public ScreenTest {
  protected:
    /// What the menu of windows calls closing them all.
    std::string closeAllEntry() const {
        for (QAction* entry : platform.view->menuBar()->actions()) {
            if (entry->text().remove(u'&') != toQt(MDIForm1().entry("mnuWL").Caption)) continue;
            Q_EMIT entry->menu()->aboutToShow();
            return entry->menu()->actions().at(5)->text().remove(u'&').toStdString();
        }
        return "no menu of windows";
    }
};

/// The part of the widget that nothing round it cuts off.
QRect uncut(const QWidget& widget) {
    QRect seen = widget.rect();
    QPoint at;
    for (const QWidget* each = &widget; each->parentWidget() && !each->isWindow(); each = each->parentWidget()) {
        at += each->pos();
        seen &= each->parentWidget()->rect().translated(-at);
    }
    return seen;
}

std::string inWords(const QWidget& widget) {
    const auto* view = dynamic_cast<const ViewBase*>(&widget);
    return std::string(widget.metaObject()->className()) + " " + (view ? view->spokenName().toStdString() : "") +
           " in " + (widget.parentWidget() ? widget.parentWidget()->metaObject()->className() : "");
}

void expectNothingCutOff(ChildWindow& window) {
    expectTextsWhole(window);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->size().isEmpty()) continue;
        expectTextsWhole(*widget);
        EXPECT_TRUE(uncut(*widget) == widget->rect()) << inWords(*widget);
        if (const auto* group = qobject_cast<QGroupBox*>(widget)) {
            QFont bold = group->font();
            bold.setWeight(QFont::DemiBold);
            EXPECT_LE(QFontMetrics(bold).horizontalAdvance(group->title()), group->width() - 20) << inWords(*group);
        }
    }
    for (const ViewBase* view : viewsOf(window)) {
        if (!view->widget().isVisible()) continue;
        const QSize needed = view->widget().minimumSizeHint().expandedTo({0, 0});
        const QSize given = view->widget().size();
        EXPECT_EQ(given.expandedTo(needed), given) << view->spokenName().toStdString();
    }
    for (const auto* area : window.findChildren<QScrollArea*>())
        EXPECT_FALSE(area->verticalScrollBar()->isVisible() || area->horizontalScrollBar()->isVisible());
}

void expectNothingOverlaps(ChildWindow& window) {
    std::vector<std::pair<const ViewBase*, QRect>> placed;
    for (const ViewBase* view : viewsOf(window)) {
        QWidget& widget = view->widget();
        if (!widget.isVisible() || dynamic_cast<GroupView*>(&widget) || dynamic_cast<CanvasView*>(&widget)) continue;
        const QRect place(widget.mapTo(&window, QPoint(0, 0)), widget.size());
        for (const auto& [other, itsPlace] : placed)
            EXPECT_FALSE(itsPlace.intersects(place))
                << view->spokenName().toStdString() << " and " << other->spokenName().toStdString();
        placed.emplace_back(view, place);
    }
}

bool isOperatedOrRead(const QAccessibleInterface& each) {
    static const std::set<QAccessible::Role> Displays = {QAccessible::Indicator, QAccessible::Clock,
                                                         QAccessible::Chart};
    static const std::set<QAccessible::Role> Surroundings = {
        QAccessible::Client, QAccessible::Cell, QAccessible::TreeItem, QAccessible::Window, QAccessible::ListItem};
    const auto role = each.role();
    return Displays.contains(role) || (each.state().focusable && !Surroundings.contains(role));
}

bool holdsValue(const QAccessibleInterface& each) {
    static const std::set<QAccessible::Role> Valueless = {QAccessible::Button, QAccessible::Tree,
                                                          QAccessible::MenuItem};
    return !Valueless.contains(each.role()) && !each.state().checkable;
}

/// Of everything in the tree that can be operated or shows something a name, and a value where it holds one, for a
/// screen reader. How many of such there are.
int expectNamesAndValues(QAccessibleInterface& tree) {
    int found = 0;
    if (isOperatedOrRead(tree) && !tree.state().invisible) {
        ++found;
        const QAccessibleInterface* parent = tree.parent();
        const std::string about = "role " + std::to_string(tree.role()) + " \"" +
                                  tree.text(QAccessible::Name).toStdString() + "\" in \"" +
                                  (parent ? parent->text(QAccessible::Name).toStdString() : "") + "\"";
        EXPECT_FALSE(tree.text(QAccessible::Name).isEmpty()) << about;
        EXPECT_FALSE(holdsValue(tree) && tree.text(QAccessible::Value).isEmpty()) << about;
    }
    for (int i = 0; i < tree.childCount(); ++i)
        if (QAccessibleInterface* child = tree.child(i)) found += expectNamesAndValues(*child);
    return found;
}

TEST_F(AllPages, AreWholeInEveryLanguageAndLook) {
    int spoken = 0;
    for (const Theme look : {Theme::Light, Theme::Dark, Theme::Contrast}) {
        applyLook(*qApp, look);
        for (const MenuRow& row : rows()) {
            ChildWindow& window = open(row);
            for (int language = 0; language < Languages; ++language) {
                choose(language);
                SCOPED_TRACE(std::string(row.page) + " " + MDIForm1().smnuLingue(language).Caption.get());
                expectNothingCutOff(window);
                expectNothingOverlaps(window);
                spoken += expectNamesAndValues(*QAccessible::queryAccessibleInterface(platform.view.get()));
                const QMenuBar& menus = *platform.view->menuBar();
                for (QAction* entry : menus.actions())
                    EXPECT_TRUE(menus.rect().contains(menus.actionGeometry(entry))) << entry->text().toStdString();
                EXPECT_EQ(platform.view->size(), SmallestScreen);
            }
            ClosePages();
        }
    }
    EXPECT_GT(spoken, 4500) << "so much is there to be heard on all pages, languages and looks together";
}

/// 1366 x 768 points at a scale of 1.5: groups stand below one another, so that a page scrolls down alone.
TEST_F(AllPages, ScrollInOneDirectionAtMostOnASmallScreenOfLargeScale) {
    platform.view->resize(SmallestScreen / 1.5);
    for (const MenuRow& row : rows()) {
        ChildWindow& window = open(row);
        for (int language = 0; language < Languages; ++language) {
            choose(language);
            for (const auto* area : window.findChildren<QScrollArea*>())
                EXPECT_FALSE(area->verticalScrollBar()->isVisible() && area->horizontalScrollBar()->isVisible())
                    << row.page << " " << language << ": " << area->widget()->minimumSizeHint().width();
        }
        ClosePages();
    }
}

TEST_F(AllPages, AreReachedWholeByTabAndTakeATypedValueOnAClickOnTheFigureOfEveryBar) {
    for (const MenuRow& row : rows()) {
        ChildWindow& window = open(row);
        platform.view->activateWindow();
        std::set<const QWidget*> reached;
        for (int i = 0; i < 200; ++i) {
            QTest::keyClick(platform.view->windowHandle(), Qt::Key_Tab);
            const QWidget* focused = QApplication::focusWidget();
            if (!focused || !reached.insert(focused).second) break;
        }
        std::set<const QWidget*> withoutField;
        for (const ViewBase* view : viewsOf(window)) {
            QWidget& widget = view->widget();
            const bool isLedByItsField = widget.focusProxy() != nullptr;
            const bool operated =
                (view->span() && !isLedByItsField) || view->canPress() || widget.inherits("QLineEdit");
            EXPECT_TRUE(!operated || !widget.isVisible() || !widget.isEnabled() || reached.contains(&widget))
                << row.page << " " << view->spokenName().toStdString();
            if (dynamic_cast<const BarView*>(view) && !isLedByItsField) withoutField.insert(&widget);
            const auto* field = dynamic_cast<const FieldView*>(view);
            if (!field || !widget.isEnabled() || field->isReadOnly()) continue;
            QTest::mouseClick(widget.findChild<QLineEdit*>(), Qt::LeftButton);
            EXPECT_EQ(QApplication::focusWidget(), &widget) << row.page;
        }
        const bool hasABarThatChooses = row.page == std::string("FrmDosi");
        EXPECT_EQ(withoutField.size(), hasABarThatChooses ? 1u : 0u) << row.page;
        ClosePages();
    }
}

TEST_F(AllPages, FollowTheLanguageTogetherAndAtOnceAndSoDoTheWordsRoundThem) {
    constexpr std::size_t Open = 10;
    // Seconds of the processor, until all is painted.
    constexpr double LongestChange = 0.050 * kestrel::testing::BuildAllowance;
    constexpr int Changes = 10;
    std::vector<MenuRow> pages = rows();
    pages.resize(Open);
    for (const MenuRow& row : pages) open(row);
    const double before = kestrel::testing::processorSeconds();
    for (int i = 0; i < Changes; ++i) choose(i % Languages);
    EXPECT_LT(kestrel::testing::processorSeconds() - before, Changes * LongestChange);
    ChildWindow& away = platform.view->childOf(*FindLoadedPage(pages.front().page));
    away.showMinimized();
    choose(German);
    EXPECT_TRUE(away.isMinimized());
    for (const MenuRow& row : pages)
        EXPECT_EQ(platform.view->childOf(*FindLoadedPage(row.page)).windowTitle(), toQt(LanguageTable(row.line)));
    EXPECT_EQ(closeAllEntry(), "Alle schließen");
    EXPECT_EQ(platform.view->statusBar()->findChildren<QLabel*>().last()->accessibleName(), QStringLiteral("Fehler"));

    std::vector<std::string> answers;
    QTimer::singleShot(0, qApp, [&answers] {
        auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
        for (const auto which : {QMessageBox::Yes, QMessageBox::No})
            answers.push_back(box.button(which)->text().remove(u'&').toStdString());
        box.reject();
    });
    MessageBoxes().ask({.text = LanguageTable(476), .title = "", .buttons = Message::Buttons::YesNo}, nullptr);
    EXPECT_EQ(answers, (std::vector<std::string>{"Ja", "Nein"}));

    std::string lines;
    for (int i = 1; i <= LanguageLines; ++i) lines += "another text\n";
    platform.put("Other.lng", lines);
    LoadLanguage("Other.lng");
    EXPECT_EQ(closeAllEntry(), "Close all") << "a language file without words for it";
}

}  // namespace
}  // namespace kestrel::qt::testing
