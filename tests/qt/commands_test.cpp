// What the user can ask for beside the pages: find, read again, copy, the list of changes, put back, tabs, groups.
// Keys go to the window, as his do.
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTreeWidget>

#include "link/history.h"
#include "pages/payment/frm_prezzi.h"
#include "qt/window/access_words.h"
#include "qt/window/page_help.h"
#include "qt/window/search_box.h"
#include "screen_fixture.h"
#include "shell/put_back.h"

namespace kestrel::qt::testing {
namespace {

constexpr int Raw70 = 70 - 32768;

class Commands : public ScreenTest {
  protected:
    Commands() {
        choose(1);
        platform.view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(platform.view.get()));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(platform.view.get(), key, modifiers);
        settle();
    }
    void open(const char* entry) {
        MDIForm1().entry(entry).UserClick();
        fill();
    }
    template <class Kind>
    Kind& only() const {
        return *platform.view->findChild<Kind*>();
    }
    /// The control that has the focus, as a screen reader names it.
    std::string focused() const {
        const auto* accessible = QAccessible::queryAccessibleInterface(platform.view->focusWidget());
        return accessible ? accessible->text(QAccessible::Name).toStdString() : "";
    }
    FrmPrezzi& prices() { return dynamic_cast<FrmPrezzi&>(*FindLoadedPage("FrmPrezzi")); }
};

TEST_F(Commands, FindASettingAndGoToItEvenWhereItsPageIsStillBeingRead) {
    press(Qt::Key_K, Qt::ControlModifier);
    auto& box = only<SearchBox>();
    auto& typed = *box.findChild<QLineEdit*>();
    auto& list = *box.findChild<QListWidget*>();
    QTest::keyClicks(&typed, QStringLiteral("price 12"));
    ASSERT_GE(list.count(), 1);
    QTest::keyClick(&typed, Qt::Key_Return);
    settle();
    ASSERT_NE(FindLoadedPage("FrmPrezzi"), nullptr);
    EXPECT_NE(focused(), "Price 12") << "it cannot be worked yet";
    fill();
    EXPECT_EQ(focused(), "Price 12");
}

TEST_F(Commands, CopyThePageAsATable) {
    open("ssmnuImposta");
    prices().HScroll1[0].UserMove(Raw70 + 15);
    press(Qt::Key_C, Qt::ControlModifier);
    QString table = QApplication::clipboard()->text();
    EXPECT_TRUE(table.startsWith(QStringLiteral("Set prices\nPrice 1\t"))) << table.toStdString();
    EXPECT_EQ(table.count(u'\n'), 40);
    press(Qt::Key_W, Qt::ControlModifier);
    platform.run(3000);
    open("smnuAllarmi");
    press(Qt::Key_C, Qt::ControlModifier);
    table = QApplication::clipboard()->text();
    EXPECT_EQ(table.section(u'\n', 1, 1).count(u'\t'), 4) << "the heads of the list: " << table.toStdString();
}

TEST_F(Commands, ListTheChangesAndPutThemBack) {
    open("ssmnuImposta");
    prices().HScroll1[2].UserMove(Raw70 + 1);
    platform.run(1000);
    press(Qt::Key_H, Qt::ControlModifier);
    auto& list = only<QTreeWidget>();
    const auto row = [&list](int at) {
        QStringList cells;
        for (int i = 1; i < list.columnCount(); ++i) cells += list.topLevelItem(at)->text(i);
        return cells.join(u'|').toStdString();
    };
    ASSERT_EQ(list.topLevelItemCount(), 1);
    EXPECT_EQ(row(0), "Set prices|Price 3|0.70|0.71|confirmed");
    QTest::keyClick(list.window(), Qt::Key_Z, Qt::ControlModifier);
    platform.run(5000);
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(row(0), "Set prices|Price 3|0.71|0.70|confirmed");
    EXPECT_EQ(row(1), "Set prices|Price 3|0.70|0.71|put back");
}

TEST_F(Commands, GoFromGroupToGroupAndFromPageToPage) {
    open("ssmnuImposta");
    std::vector<std::string> reached;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_F6);
        reached.push_back(focused());
    }
    EXPECT_EQ(reached, (std::vector<std::string>{"Price 1", "Preselection 1", "Preselection 2", "Price 1"}));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Preselection 2");
    open("smnuTempi");
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(platform.view->activeWindow()->name(), "FrmPrezzi");
}

TEST_F(Commands, PagesStandBesideOneAnotherAndHaveTabsWhenAsked) {
    open("smnuPassword");
    open("smnuAzione");
    open("mnuVer");
    const auto pages = platform.view->findChildren<ChildWindow*>();
    ASSERT_EQ(pages.size(), 3);
    for (const ChildWindow* one : pages)
        for (const ChildWindow* other : pages)
            EXPECT_TRUE(one == other || !one->geometry().intersects(other->geometry()))
                << one->windowTitle().toStdString() << " " << other->windowTitle().toStdString();
    auto& tabs = only<QTabBar>();
    EXPECT_TRUE(tabs.isHidden());
    for (QAction* action : platform.view->findChildren<QAction*>())
        if (action->isCheckable() && action->text().contains(QStringLiteral("of the open pages"))) action->trigger();
    settle();
    ASSERT_EQ(tabs.count(), 3);
    EXPECT_TRUE(tabs.isVisible());
    tabs.setCurrentIndex(0);
    EXPECT_EQ(platform.view->activeWindow()->name(), "FrmPassword");
    Q_EMIT tabs.tabCloseRequested(1);
    platform.run(3000);
    settle();
    EXPECT_EQ(tabs.count(), 2);
    EXPECT_EQ(FindLoadedPage("FrmAzione"), nullptr);
}

TEST_F(Commands, SayWhatEachPageIsForInEveryLanguage) {
    for (int language = 0; language < 5; ++language) {
        choose(language);
        QSet<QString> purposes{purposeOf({})};
        for (const MenuRow& row : rows()) purposes.insert(purposeOf(row.page));
        EXPECT_EQ(purposes.size(), 31) << language;
    }
}

}  // namespace
}  // namespace kestrel::qt::testing
