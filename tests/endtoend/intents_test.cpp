// The boards hear what the user meant, and nothing else: real keys and clicks, and every write that goes over the line.
// Acts in the middle of an exchange, before values have come, while the line is away, and on boards that are not there.
#include <QMenuBar>
#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/recheck.h"
#include "moments.h"
#include "pages/diagnostics/frm_in_out.h"
#include "pages/diagnostics/frm_test_cedar.h"
#include "platform/outside.h"
#include "qt/views/view.h"
#include "qt/window/child_window.h"
#include "qt/window/main_window_view.h"
#include "session.h"
#include "shell/main_window.h"

namespace kestrel::testing {
namespace {

/// Two ways in which a board does not answer: the first leaves the port as it is.
constexpr std::pair<const char*, const char*> Absences[] = {{"fault silent=1", "fault"}, {"unplug", "plug"}};

class Intents : public Session {
  protected:
    using Session::Session;

    template <class P>
    P& open(const char* entry, const char* name) {
        choose(MDIForm1().entry(entry));
        return dynamic_cast<P&>(*FindLoadedPage(name));
    }
    void click(Page& page, const Control& control) { QTest::mouseClick(&widgetOf(page, control), Qt::LeftButton); }
    /// A step of the bar that is handed over at once.
    void step(FrmTempi& page) {
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Return}) QTest::keyClick(&firstBar(page), key);
    }
    /// Until the program has noticed.
    void takeAway(const char* order) {
        witness.errors = 0;
        board.tell(order);
        ASSERT_TRUE(eventually([&] { return witness.errors > 0 || !notice().empty(); })) << order;
    }
    static bool isBack() { return notice().empty() && !isErrorLit() && !LineIsClosed() && !WritesAreHeld(); }
    /// So many values more have come: what is due has had its turn meanwhile.
    static bool goesOn(const Page& page, int values) {
        return eventually([&, now = page.arrivals()] { return isBack() && page.arrivals() > now + values; });
    }
    /// What takes keys on a page, and whether each has its value.
    QList<QWidget*> inputsOf(Page& page) {
        QList<QWidget*> all = platform->mainWindow().childOf(page).findChildren<QWidget*>();
        const auto isNone = [](const QWidget* widget) {
            return !dynamic_cast<const qt::ViewBase*>(widget) || !(widget->focusPolicy() & Qt::TabFocus);
        };
        all.removeIf(isNone);
        return all;
    }
    bool isRead(Page& page) {
        return std::ranges::none_of(inputsOf(page),
                                    [](QWidget* widget) { return dynamic_cast<qt::ViewBase&>(*widget).unread(); });
    }
    /// The question that the user is asked when `cause` has come about, and answers by this button.
    QString answered(QMessageBox::StandardButton button, const std::function<void()>& cause) {
        QString question;
        when(witness, isBoxOpen, [&] { question = clickInBox(button); });
        cause();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !question.isEmpty(); }, 2 * Soon)) << "nobody asks";
        return question;
    }
};

/// There is time to act inside an exchange, and it ends before an act stops waiting for it.
class SlowAdapter : public Intents {
  protected:
    SlowAdapter() : Intents({QStringLiteral("--latency"), QStringLiteral("60")}) {}
};

TEST_F(SlowAdapter, EditMadeWhileTheOneBeforeIsOnTheLineIsWrittenToo) {
    board.tell("set 1 1143 10");
    FrmTempi& page = openTimes(2 * Soon);
    QStringList meant;
    int value = 10;
    for (int inside = 0; inside < 5 && value < 60;) {
        step(page);
        meant += writesOf(++value).first();
        const auto isOnTheLine = [&] {
            return isWriting() && Link().ScanIndex == BrewingWater && Link().RequestBytes.Data[0] == value;
        };
        const auto isTaken = [&] { return page.HScroll1[0].Value == value && !page.HScroll1[0].waiting(); };
        ASSERT_TRUE(eventually([&] { return isOnTheLine() || isTaken(); })) << value << " was lost";
        inside += isOnTheLine() ? 1 : 0;
    }
    QStringList heard;
    ASSERT_TRUE(eventually([&] {
        heard = board.writes();
        return heard.contains(writesOf(value).first()) && heard.contains(writesOf(value).last());
    }));
    EXPECT_EQ(heard.filter(QStringLiteral(" 1143 ")), meant);
    EXPECT_EQ(heard.filter(QStringLiteral(" 1148 ")).size() + meant.size(), heard.size());
}

TEST_F(SlowAdapter, PageOpenedWhileAnotherOneIsReadTakesNoReplyFromIt) {
    choose(MDIForm1().entry("smnuTempi"));
    const auto isReading = [] {
        return isWaiting() && Link().ScanIndex >= BrewingWater && Link().ScanIndex < BrewingWaterShadow;
    };
    ASSERT_TRUE(eventually(isReading));
    qt::MainWindowView& window = platform->mainWindow();
    const QString caption = window.menuBar()->actions()[6]->text();
    QTest::keyClick(&window, caption[caption.indexOf(u'&') + 1].toLatin1(), Qt::AltModifier);
    ASSERT_TRUE(
        eventually([] { return FindLoadedPage("FrmOrologio") && FindLoadedPage("FrmTempi")->arrivals() > 30; }));
    for (int parameter = BrewingWater; parameter <= BrewingWaterShadow; ++parameter)
        EXPECT_EQ(board.exchanges({QStringLiteral("hot-drink"), QString::number(parameter)}).size(), 1) << parameter;
}

TEST_F(Intents, ControlWhoseValueHasNotComeTakesNeitherKeysNorClicks) {
    constexpr std::pair<const char*, const char*> Pages[] = {{"smnuPagamento", "FrmPagamento"},
                                                             {"smnuSet", "FrmTemperatura"}};
    for (const auto& [away, back] : Absences) {
        SCOPED_TRACE(away);
        openTimes();
        takeAway(away);
        int touched = 0;
        for (const auto& [entry, name] : Pages) {
            auto& page = open<Page>(entry, name);
            for (QWidget* widget : inputsOf(page)) {
                QTest::mouseClick(widget, Qt::LeftButton);
                for (const Qt::Key key : {Qt::Key_Right, Qt::Key_7, Qt::Key_Return}) QTest::keyClick(widget, key);
                ++touched;
            }
        }
        EXPECT_GT(touched, 20);
        EXPECT_TRUE(eventually([] { return !AnyActWaits(); }));
        board.tell(back);
        for (const auto& [entry, name] : Pages) {
            Page& page = *FindLoadedPage(name);
            EXPECT_TRUE(QTest::qWaitFor([&] { return isBack() && isRead(page); }, 4 * Soon)) << name;
            close(page);
        }
        EXPECT_EQ(board.writes(), QStringList());
    }
    EXPECT_EQ(witness.boxes, 0);
}

TEST_F(Intents, BoardThatWasNotThereAtTheStartHearsNothing) {
    stop();
    board.tell("silent 1 on");
    start();
    board.tell("silent 1 off");
    const auto heard = [this] { return board.exchanges({QStringLiteral("hot-drink")}).size(); };
    const qsizetype asked = heard();
    auto& page = open<FrmInOut>("ssmnuTest", "FrmInOut");
    ASSERT_TRUE(eventually([&] { return widgetOf(page, page.Command1).isEnabled() && page.arrivals() > 30; }));
    click(page, page.Command1);
    EXPECT_TRUE(eventually([&] { return board.writes().contains(QStringLiteral("sector 284 1")); }));
    EXPECT_TRUE(goesOn(page, 20)) << "the others are served";
    EXPECT_EQ(board.writes(), QStringList({QStringLiteral("master 368 255"), QStringLiteral("sector 285 60"),
                                           QStringLiteral("sector 284 1")}));
    EXPECT_EQ(heard(), asked);
}

TEST_F(Intents, OrderThatItsPageHasGivenUpNeverGoes) {
    auto& pair = open<FrmTestCedar>("ssmnuCedar", "FrmTestCedar");
    auto& outputs = open<FrmInOut>("ssmnuTest", "FrmInOut");
    const auto areLive = [&] { return pair.Label1[0].usable() && outputs.SwitchLed1[0].usable(); };
    ASSERT_TRUE(eventually([&] { return pair.Label1[0].usable() && outputs.Command1.usable(); }));
    click(outputs, outputs.Command1);
    ASSERT_TRUE(eventually(areLive));
    for (const auto& [away, back] : Absences) {
        SCOPED_TRACE(away);
        const qsizetype before = board.writes().size();
        takeAway(away);
        for (int zone = 0; zone < 2; ++zone) click(pair, pair.Label1[zone]);
        const bool both = back == std::string("plug");
        if (both) click(outputs, outputs.SwitchLed1[0]);
        ASSERT_TRUE(eventually([&] { return !pair.Label1[0].usable() && outputs.SwitchLed1[0].usable() != both; }));
        ASSERT_TRUE(QTest::qWaitFor(areLive, 2 * Soon)) << "given up";
        board.tell(back);
        ASSERT_TRUE(goesOn(outputs, 40));
        // A page that is open says so to a machine that is plugged in.
        for (const QString& heard : board.writes().mid(before)) EXPECT_EQ(heard, QStringLiteral("master 368 255"));
    }
}

TEST_F(Intents, AfterAnInterruptionTheMachineHearsWhatTheUserSaysThen) {
    FrmTempi& page = openTimes();
    const QString waiting = QString::fromStdString(page.Caption.get() + ": 1");
    for (const bool send : {false, true}) {
        const int value = page.HScroll1[0].Value + 1;
        takeAway("unplug");
        step(page);
        const QString asked = answered(send ? QMessageBox::Yes : QMessageBox::No, [&] { board.tell("plug"); });
        EXPECT_TRUE(asked.contains(waiting)) << asked.toStdString();
        EXPECT_TRUE(goesOn(page, 4) && showsTheBoards(page));
        EXPECT_EQ(board.writes(), send ? writesOf(value) : QStringList());
    }
    BoardProcess alike(installation.program(), {}, SecondLine);
    alike.tell("set 1 1143 99");
    takeAway("unplug");
    step(page);
    const QString asked = answered(QMessageBox::No, [&] { choose(MDIForm1().mnuCox(2)); });
    EXPECT_TRUE(asked.contains(waiting)) << asked.toStdString();
    EXPECT_TRUE(goesOn(page, 4) && page.HScroll1[0].Value == 99);
    EXPECT_EQ(alike.writes(), QStringList());

    const Installation newer;
    std::filesystem::rename(newer.program() / "W0292AP07.inx", newer.program() / "W0292AP08.inx");
    alike.tell("unplug");
    ASSERT_TRUE(eventually([] { return !notice().empty(); }));
    step(page);
    std::optional<BoardProcess> other;
    answered(QMessageBox::No, [&] { other.emplace(newer.program(), QStringList(), alike.device().c_str()); });
    QTest::qWait(300);
    EXPECT_TRUE(LineIsClosed());
    for (const QString& heard : other->exchanges())
        EXPECT_TRUE(heard.contains(u"identity") || heard.contains(u"[00 00 00 00 00]")) << heard.toStdString();
}

}  // namespace
}  // namespace kestrel::testing
