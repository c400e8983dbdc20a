// Bars under the user's hand: however it is moved, a gesture writes one value to the board, and none by accident.
#include "platform/qt/bar_view.h"

#include <QWheelEvent>

#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Bar : public ViewTest {
  protected:
    Bar() {
        bar.design(0, 255, 10);
        bar.Value = 100;
        value.showsValue("25.5");
        value.Caption = "10.0";
        bar.OnChange([this] { changes.push_back(bar.Value); });
        show([this] { return Row{caption, bar, value, other}; });
        widgetOf(bar).setFocus();
    }
    QWidget& view() const { return widgetOf(bar); }
    BarView& barView() const { return dynamic_cast<BarView&>(viewOf(bar)); }
    QPoint at(double part) const { return {static_cast<int>(view().width() * part), view().height() / 2}; }
    QPoint leftEnd() const { return {6, view().height() / 2}; }
    QPoint rightEnd() const { return {view().width() - 6, view().height() / 2}; }
    void wheel(int eighths) const {
        QWheelEvent event(at(0.5), view().mapToGlobal(at(0.5)), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view(), &event);
    }
    /// Waits until quick steps count as ended.
    static void rest() { QTest::qWait(Gesture::SettleTime + 60); }

    Label caption, value;
    ScrollBar bar;
    CommandButton other;
    std::vector<int> changes;
};

using Values = std::vector<int>;

TEST_F(Bar, IsWrittenOnceForADragHoweverFarItWent) {
    const QPoint handle(static_cast<int>(view().width() * 0.42), view().height() / 2);
    QTest::mousePress(&view(), Qt::LeftButton, {}, handle);
    for (int x = 0; x < 40; x += 4) QTest::mouseMove(&view(), handle + QPoint(x, 0));
    EXPECT_EQ(changes, Values()) << "the board hears of it at the end";
    EXPECT_EQ(value.Caption.get(), "10.0") << "the label shows what the board has confirmed";
    EXPECT_NE(barView().spokenValue(), QStringLiteral("10.0")) << "the preview is shown in the bar";
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, handle + QPoint(40, 0));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_GT(changes[0], 120);
}

TEST_F(Bar, CollectsStepsThatFollowEachOtherQuickly) {
    struct Case {
        const char* what;
        std::function<void()> act;
        int end;
    };
    const std::vector<Case> cases = {
        {"arrow ends",
         [this] {
             for (int i = 0; i < 3; ++i) QTest::mouseClick(&view(), Qt::LeftButton, {}, rightEnd());
         },
         103},
        {"arrow back", [this] { QTest::mouseClick(&view(), Qt::LeftButton, {}, leftEnd()); }, 99},
        {"trough", [this] { QTest::mouseClick(&view(), Qt::LeftButton, {}, at(0.75)); }, 110},
        {"wheel",
         [this] {
             wheel(120);
             wheel(60);
             wheel(60);
         },
         102},
        {"keys",
         [this] {
             for (const auto key : {Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_Left})
                 QTest::keyClick(&view(), key);
         },
         120},
        {"home",
         [this] {
             QTest::keyClick(&view(), Qt::Key_Home);
             QTest::keyClick(&view(), Qt::Key_Left);
         },
         0},
        {"end",
         [this] {
             QTest::keyClick(&view(), Qt::Key_End);
             QTest::keyClick(&view(), Qt::Key_PageUp);
         },
         255},
    };
    for (const Case& c : cases) {
        bar.Value = 100;
        changes.clear();
        view().setFocus();
        c.act();
        EXPECT_EQ(changes, Values()) << c.what;
        leave(view());
        EXPECT_EQ(changes, Values{c.end}) << c.what;
    }
}

TEST_F(Bar, WritesByItselfWhenNoOtherStepFollows) {
    QTest::keyClick(&view(), Qt::Key_Right);
    rest();
    EXPECT_EQ(changes, Values{101});
}

TEST_F(Bar, StepsOnWhileAnEndIsHeldAndWritesOnce) {
    QTest::mousePress(&view(), Qt::LeftButton, {}, rightEnd());
    QTest::qWait(700);
    EXPECT_EQ(changes, Values());
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, rightEnd());
    rest();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_GT(changes[0], 103);
}

TEST_F(Bar, HandsOverWhatWasBegunWhenTheUserTurnsAway) {
    QTest::keyClick(&view(), Qt::Key_Right);
    leave(view());
    EXPECT_EQ(changes, Values{101}) << "focus lost";

    view().setFocus();
    QTest::keyClick(&view(), Qt::Key_Right);
    endGestures(view().window());
    EXPECT_EQ(changes, (Values{101, 102})) << "page about to close";

    QTest::keyClick(&view(), Qt::Key_Right);
    view().window()->hide();
    EXPECT_EQ(changes, (Values{101, 102, 103})) << "page hidden";
}

TEST_F(Bar, DropsTheGestureOnEscapeAndWhenItIsLocked) {
    QTest::keyClick(&view(), Qt::Key_Right);
    QTest::keyClick(&view(), Qt::Key_Escape);
    QTest::keyClick(&view(), Qt::Key_Right);
    bar.Enabled = false;
    bar.Enabled = true;
    rest();
    EXPECT_EQ(changes, Values());
    EXPECT_EQ(bar.Value.get(), 100);
}

TEST_F(Bar, LeavesTheWheelToThePageWithoutTheFocus) {
    leave(view());
    wheel(120);
    rest();
    EXPECT_EQ(changes, Values());
}

TEST_F(Bar, KeepsThePreviewWhenTheBoardReportsAnotherValue) {
    QTest::keyClick(&view(), Qt::Key_Right);
    bar.Value = 50;
    changes.clear();
    rest();
    EXPECT_EQ(changes, Values{101}) << "the user's last word counts";
}

TEST_F(Bar, TakesTypedValuesInTheScaleOfThePage) {
    struct Case {
        const char* typed;
        Qt::Key end;
        Values written;
    };
    bar.scale = {0, 1};
    for (const Case& c : std::initializer_list<Case>{{"12,5", Qt::Key_Return, {125}},
                                                     {"7", Qt::Key_Enter, {70}},
                                                     {"7.5", Qt::Key_Tab, {75}},
                                                     {"8.5", Qt::Key_Escape, {}},
                                                     {"25.6", Qt::Key_Return, {}},
                                                     {"-1", Qt::Key_Tab, {}},
                                                     {"1.-2", Qt::Key_Return, {}}}) {
        bar.Value = 100;
        view().setFocus();
        changes.clear();
        QTest::keyClicks(&view(), QString::fromLatin1(c.typed));
        EXPECT_EQ(changes, Values()) << c.typed;
        EXPECT_EQ(barView().spokenValue(), QString::fromLatin1(c.typed));
        QTest::keyClick(&view(), c.end);
        leave(view());
        EXPECT_EQ(changes, c.written) << c.typed;
        EXPECT_EQ(barView().spokenValue().toStdString(), bar.textOf(bar.Value)) << "no typing is left over";
    }
}

TEST_F(Bar, OpensItsFieldOnEnterAndOnADoubleClickOnItsValue) {
    bar.scale = {0, 1};
    const std::function<void()> openers[] = {
        [this] { QTest::keyClick(&view(), Qt::Key_Return); },
        [this] { QTest::mouseDClick(&widgetOf(value), Qt::LeftButton); },
    };
    for (const auto& open : openers) {
        bar.Value = 100;
        changes.clear();
        leave(view());
        view().setFocus();
        open();
        EXPECT_EQ(barView().spokenValue(), QStringLiteral("10.0"));
        QTest::keyClicks(&view(), QStringLiteral("12.5"));
        EXPECT_EQ(barView().spokenValue(), QStringLiteral("12.5")) << "the first figure replaces what stood there";
        QTest::keyClick(&view(), Qt::Key_Return);
        EXPECT_EQ(changes, Values{125});
        open();
        QTest::keyClick(&view(), Qt::Key_Escape);
        open();
        bar.Value = 50;
        leave(view());
        EXPECT_EQ(changes, (Values{125, 50}))
            << "a field that was only looked at writes nothing over the board's value";
    }
    bar.Enabled = false;
    QTest::mouseDClick(&widgetOf(value), Qt::LeftButton);
    EXPECT_EQ(barView().spokenValue(), QStringLiteral("5.0"));
    QTest::keyClicks(&view(), QStringLiteral("7"));
    EXPECT_EQ(bar.Value.get(), 50);
}

TEST_F(Bar, WaitsForTheBoardUntilItsPageSetsIt) {
    QTest::keyClick(&view(), Qt::Key_Right);
    leave(view());
    EXPECT_TRUE(barView().waiting());
    bar.Value = 101;
    EXPECT_FALSE(barView().waiting());
}

}  // namespace
}  // namespace kestrel::qt::testing
