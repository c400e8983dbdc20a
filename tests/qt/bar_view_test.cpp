// Bars under the user's hand: what keys, wheel, mouse and typing do, told to the model as gestures.
#include "qt/views/bar_view.h"

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
    void press(const std::vector<Qt::Key>& keys) const { ViewTest::press(view(), keys); }
    void click(QPoint place, int times) const {
        for (int i = 0; i < times; ++i) QTest::mouseClick(&view(), Qt::LeftButton, {}, place);
    }
    /// The bar has the focus and the board's value, and nothing has changed.
    void startFrom(int confirmed) {
        bar.Value = confirmed;
        changes.clear();
        view().setFocus();
    }

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
    EXPECT_NE(barView().spokenValue(), QStringLiteral("100")) << "the preview is shown in the bar";
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, handle + QPoint(40, 0));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_GT(changes[0], 120);
}

TEST_F(Bar, CollectsStepsThatFollowEachOtherQuickly) {
    const auto expectOneWrite = [this](int end, const std::function<void()>& act) {
        startFrom(100);
        act();
        EXPECT_EQ(changes, Values()) << "on the way to " << end;
        leave(view());
        EXPECT_EQ(changes, Values{end});
    };
    expectOneWrite(103, [this] { click(rightEnd(), 3); });
    expectOneWrite(99, [this] { click(leftEnd(), 1); });
    expectOneWrite(110, [this] { click(at(0.75), 1); });
    expectOneWrite(90, [this] { click(at(0.25), 1); });
    expectOneWrite(102, [this] {
        for (const int eighths : {120, 60, 60}) wheel(eighths);
    });
    const std::pair<int, std::vector<Qt::Key>> ends[] = {
        {120, {Qt::Key_Right, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_Left}},
        {79, {Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_Down}},
        {0, {Qt::Key_Home, Qt::Key_Left}},
        {255, {Qt::Key_End}},
        {255, {Qt::Key_End, Qt::Key_PageUp}},
    };
    for (const auto& [end, keys] : ends) expectOneWrite(end, [this, &keys = keys] { press(keys); });
}

TEST_F(Bar, StepsOnWhileAnEndIsHeldUntilItIsLetGoOrDropped) {
    QTest::mousePress(&view(), Qt::LeftButton, {}, rightEnd());
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.shownValue() > 102; }, 5'000));
    EXPECT_TRUE(bar.isHeld());
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, rightEnd());
    EXPECT_TRUE(bar.isMoving() && !bar.isHeld()) << "a step may follow";
    press({Qt::Key_Escape});
    QTest::mousePress(&view(), Qt::LeftButton, {}, rightEnd());
    press({Qt::Key_Escape});
    QTest::qWait(500);
    EXPECT_FALSE(bar.isMoving());
    EXPECT_EQ(changes, Values());
}

TEST_F(Bar, HandsStepsOverWhenItIsHiddenAndLeavesTheWheelToThePageWithoutTheFocus) {
    leave(view());
    wheel(120);
    EXPECT_FALSE(bar.isMoving());
    press({Qt::Key_Right});
    view().window()->hide();
    EXPECT_EQ(changes, Values{101});
}

TEST_F(Bar, TakesTypedValuesInTheScaleOfThePageAndNoCharacterThatIsACommand) {
    struct Case {
        const char* typed;
        Qt::Key end;
        Values written;
    };
    bar.scale = {0, 1};
    for (const Qt::KeyboardModifier modifier : {Qt::AltModifier, Qt::ControlModifier})
        for (const char key : {'-', '7'}) QTest::keyClick(&view(), key, modifier);
    EXPECT_EQ(barView().spokenValue().toStdString(), bar.textOf(100));
    for (const Case& c :
         {Case{"12,5", Qt::Key_Return, {125}}, Case{"7", Qt::Key_Enter, {70}}, Case{"7.5", Qt::Key_Tab, {75}},
          Case{"8.5", Qt::Key_Escape, {}}, Case{"25.6", Qt::Key_Return, {}}, Case{"-1", Qt::Key_Tab, {}},
          Case{"1.-2", Qt::Key_Return, {}}}) {
        startFrom(100);
        QTest::keyClicks(&view(), QString::fromLatin1(c.typed));
        EXPECT_EQ(changes, Values()) << c.typed;
        EXPECT_EQ(barView().spokenValue(), QString::fromLatin1(c.typed));
        press({c.end});
        leave(view());
        EXPECT_EQ(changes, c.written) << c.typed;
        EXPECT_EQ(barView().spokenValue().toStdString(), bar.textOf(bar.Value)) << "no typing is left over";
    }
}

TEST_F(Bar, OpensItsFieldOnEnterAndOnADoubleClickOnItsValue) {
    bar.scale = {0, 1};
    const std::function<void()> openers[] = {
        [this] { press({Qt::Key_Return}); },
        [this] { QTest::mouseDClick(&widgetOf(value), Qt::LeftButton); },
    };
    for (const auto& open : openers) {
        leave(view());
        startFrom(100);
        open();
        EXPECT_EQ(barView().spokenValue(), QStringLiteral("10.0"));
        QTest::keyClicks(&view(), QStringLiteral("12.5"));
        EXPECT_EQ(barView().spokenValue(), QStringLiteral("12.5")) << "the first figure replaces what stood there";
        press({Qt::Key_Return});
        EXPECT_EQ(changes, Values{125});
        open();
        press({Qt::Key_Escape});
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

}  // namespace
}  // namespace kestrel::qt::testing
