// Bars and their fields under the user's hand: what keys, wheel, mouse and typing do, told to the model as gestures.
#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QToolTip>
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
        value.Unit = "s";
        price.design(-32768, 32767, 100);
        price.scale = {32768, 2};
        amount.showsValue("655.35");
        price.OnChange([this] { prices.push_back(price.text()); });
        settleLayout(page.Arrange());
        show(page);
        widgetOf(value).setFocus();
    }
    QWidget& view() const { return widgetOf(bar); }
    QWidget& field() const { return widgetOf(value); }
    std::string shown(const Label& label) const { return viewOf(label).spokenValue().toStdString(); }
    QPoint at(double part) const { return {static_cast<int>(view().width() * part), view().height() / 2}; }
    QPoint leftEnd() const { return {6, view().height() / 2}; }
    QPoint rightEnd() const { return {view().width() - 6, view().height() / 2}; }
    void wheel(QWidget& over, int eighths) const {
        QWheelEvent event(at(0.5), over.mapToGlobal(at(0.5)), {}, {0, eighths}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &event);
    }
    void press(const std::vector<Qt::Key>& keys) const { ViewTest::press(field(), keys); }
    void click(QPoint place, int times) const {
        for (int i = 0; i < times; ++i) QTest::mouseClick(&view(), Qt::LeftButton, {}, place);
    }
    /// The bar has the focus and the board's value, and nothing has changed.
    void startFrom(int confirmed) {
        const Control::Speaking board(nullptr, 0);
        bar.Value = confirmed;
        value.Caption = bar.text();
        changes.clear();
        field().setFocus();
    }

    Label caption, value, amount;
    ScrollBar bar, price;
    CommandButton other;
    TestPage page{[this] { return Grid(6, {caption, bar, value, price, amount, other}); }};
    std::vector<int> changes;
    std::vector<std::string> prices;
};

using Values = std::vector<int>;

TEST_F(Bar, IsWrittenOnceForADragHoweverFarItWent) {
    const QPoint handle(static_cast<int>(view().width() * 0.42), view().height() / 2);
    QTest::mousePress(&view(), Qt::LeftButton, {}, handle);
    for (int x = 0; x < 40; x += 4) QTest::mouseMove(&view(), handle + QPoint(x, 0));
    EXPECT_EQ(changes, Values()) << "the board hears of it at the end";
    EXPECT_TRUE(shown(value).starts_with("10.0 → 1")) << shown(value) << ": what the board has, and what is to come";
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, handle + QPoint(40, 0));
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_GT(changes[0], 120);
}

TEST_F(Bar, CollectsStepsThatFollowEachOtherQuickly) {
    const auto expectOneWrite = [this](int end, const std::function<void()>& act) {
        startFrom(100);
        act();
        EXPECT_EQ(changes, Values()) << "on the way to " << end;
        leave(field());
        EXPECT_EQ(changes, Values{end});
    };
    expectOneWrite(103, [this] { click(rightEnd(), 3); });
    expectOneWrite(99, [this] { click(leftEnd(), 1); });
    expectOneWrite(110, [this] { click(at(0.75), 1); });
    expectOneWrite(90, [this] { click(at(0.25), 1); });
    expectOneWrite(102, [this] {
        for (const int eighths : {120, 60, 60}) wheel(view(), eighths);
    });
    expectOneWrite(99, [this] { wheel(field(), -120); });
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
    leave(field());
    for (QWidget* over : {&view(), &field()}) wheel(*over, 120);
    EXPECT_FALSE(bar.isMoving());
    press({Qt::Key_Right});
    view().window()->hide();
    EXPECT_EQ(changes, Values{101});
}

TEST_F(Bar, TakesTypedValuesInTheScaleOfThePageAndExplainsWhatIsNone) {
    struct Case {
        const char* typed;
        Qt::Key end;
        Values written;
        const char* shown;
        const char* said = "";
    };
    bar.scale = {0, 1};
    startFrom(100);
    for (const Qt::KeyboardModifier modifier : {Qt::AltModifier, Qt::ControlModifier})
        for (const char key : {'-', '7'}) QTest::keyClick(&field(), key, modifier);
    EXPECT_EQ(shown(value), "10.0 s") << "no character that is a command";
    for (const Case& c : {Case{"12,5", Qt::Key_Return, {125}, "10.0 → 12.5", "waiting for the board: 10.0 → 12.5"},
                          Case{"7", Qt::Key_Enter, {70}, "10.0 → 7.0", "waiting for the board: 10.0 → 7.0"},
                          Case{"x7.5", Qt::Key_Tab, {75}, "10.0 → 7.5", "waiting for the board: 10.0 → 7.5"},
                          Case{"8.5", Qt::Key_Escape, {}, "10.0 s"}, Case{"25.6", Qt::Key_Return, {}, "25.6"},
                          Case{"-1", Qt::Key_Tab, {}, "10.0 ≠ -1", "-1 cannot be set here"},
                          Case{"7.25", Qt::Key_Tab, {}, "10.0 ≠ 7.25", "7.25 cannot be set here"},
                          Case{"1.-2", Qt::Key_Return, {}, "1.-2"}}) {
        SCOPED_TRACE(c.typed);
        startFrom(100);
        bar.UserDrop();
        QTest::keyClicks(&field(), QString::fromLatin1(c.typed));
        EXPECT_EQ(changes, Values());
        QToolTip::showText({}, QStringLiteral("before"), &field());
        press({c.end});
        EXPECT_EQ(shown(value), c.shown);
        const std::string stays = c.shown;
        const bool isExplained = stays == c.typed;
        EXPECT_EQ(QToolTip::text().contains(QStringLiteral("0.0 to 25.5")), isExplained);
        EXPECT_EQ(viewOf(value).tip().toStdString(), std::string(c.said) + (*c.said ? "\n" : "") + "0.0 to 25.5");
        leave(field());
        EXPECT_EQ(changes, c.written);
        EXPECT_EQ(bar.standing() == kestrel::Standing::NotTaken, isExplained || stays.find("≠") != std::string::npos);
    }
}

TEST_F(Bar, OpensItsFieldOnOneClickAndOnEnterAndLosesNothingThatTheBoardSays) {
    bar.scale = {0, 1};
    auto& line = *field().findChild<QLineEdit*>();
    for (const std::function<void()>& open :
         {std::function<void()>([this] { field().setFocus(), press({Qt::Key_Return}); }),
          std::function<void()>([&line] { QTest::mouseClick(&line, Qt::LeftButton); })}) {
        startFrom(100);
        leave(field());
        changes.clear();
        open();
        QTest::keyClicks(&field(), QStringLiteral("12.5"));
        EXPECT_EQ(shown(value), "12.5") << "the first figure replaces what stood there";
        press({Qt::Key_Escape});
        EXPECT_EQ(shown(value), "10.0 s");
        startFrom(50);
        leave(field());
        EXPECT_EQ(changes, Values()) << "a field that was only looked at writes nothing over the board's value";
    }
    bar.Enabled = false;
    QTest::mouseClick(&line, Qt::LeftButton);
    QTest::keyClicks(&field(), QStringLiteral("7"));
    EXPECT_EQ(bar.Value.get(), 50);
    EXPECT_EQ(shown(value), "5.0 s");
}

TEST_F(Bar, IsAFieldAloneWhereItsRangeIsTooWideForATrough) {
    closeAll();
    page.isSheet = true;
    show(page);
    EXPECT_THROW(viewOf(price), std::logic_error) << "no trough to slip on";
    QWidget& sheet = widgetOf(amount);
    const auto part = [&sheet](QStyle::SubControl which) {
        QStyleOptionSpinBox option;
        option.initFrom(&sheet);
        option.buttonSymbols = QAbstractSpinBox::PlusMinus;
        return sheet.style()->subControlRect(QStyle::CC_SpinBox, &option, which, &sheet).center();
    };
    EXPECT_LT(part(QStyle::SC_SpinBoxDown).x(), part(QStyle::SC_SpinBoxUp).x());
    sheet.setFocus();
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End}) QTest::keyClick(&sheet, key);
    EXPECT_FALSE(price.isMoving()) << "one key sets no end of such a range";
    for (int i = 0; i < 3; ++i) QTest::mouseClick(&sheet, Qt::LeftButton, {}, part(QStyle::SC_SpinBoxUp));
    QTest::mouseClick(&sheet, Qt::LeftButton, {}, part(QStyle::SC_SpinBoxDown));
    price.UserFinish();
    EXPECT_EQ(prices, std::vector<std::string>{"327.70"}) << "one write for the gesture";
    QTest::keyClicks(&sheet, QStringLiteral("1.5"));
    QTest::keyClick(&sheet, Qt::Key_Return);
    EXPECT_EQ(prices.back(), "1.50");
    EXPECT_EQ(QApplication::focusWidget(), &widgetOf(other)) << "Enter goes on in a sheet";
}

TEST_F(Bar, OfAPageThatOpensHasNotTheFocus) {
    closeAll();
    show(page);
    for (const Control* each :
         {static_cast<Control*>(&bar), static_cast<Control*>(&value), static_cast<Control*>(&other)})
        EXPECT_FALSE(widgetOf(*each).hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(field().hasFocus()) << "and is the first that Tab reaches";
}

}  // namespace
}  // namespace kestrel::qt::testing
