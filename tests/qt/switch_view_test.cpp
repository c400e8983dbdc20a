// Switches, buttons and click zones: each user's action reaches the model once, and what the page then sets is shown.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>

#include "platform/switches.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Switches : public ViewTest {
  protected:
    Switches() {
        slider.PositionLabels = "Off, On, Auto";
        many.PositionLabels = "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16";
        rotary.PositionLabels = "0, 1, 2, 3, 4";
        for (SteppedSwitch* each : steppedSwitches) {
            each->Position = 1;
            each->OnPositionChangeUser([this, each] { positions.push_back(each->Position); });
        }
        const auto count = [this] { ++clicks; };
        toggle.OnClick(count);
        led.OnClick(count);
        button.OnClick(count);
        zone.Caption = "key";
        zone.OnClick(count);
        button.Caption = "Start & stop";
        show([this] { return Column{slider, many, rotary, Row{toggle, led, button, zone}, other}; });
    }
    void click(Control& control, double part = 0.5) const {
        QWidget& widget = widgetOf(control);
        clickIn(widget, {static_cast<int>(widget.width() * part), widget.height() / 2});
    }

    void press(Control& control, const std::vector<Qt::Key>& keys) const {
        widgetOf(control).setFocus();
        ViewTest::press(widgetOf(control), keys);
    }

    SliderSwitch slider, many;
    RotarySwitch rotary;
    const std::vector<SteppedSwitch*> steppedSwitches{&slider, &many, &rotary};
    ToggleSwitch toggle;
    LedSwitch led;
    CommandButton button, other;
    Label zone;
    std::vector<int> positions;
    int clicks = 0;
};

using Positions = std::vector<int>;

TEST_F(Switches, ChooseALabelledPositionByOneClick) {
    for (const double part : {0.9, 0.9, 0.1}) click(slider, part);
    EXPECT_EQ(positions, (Positions{2, 0})) << "the second click finds it already there";
}

TEST_F(Switches, StepByKeysAndArrowsAsOneGesture) {
    for (SteppedSwitch* each : steppedSwitches) {
        press(*each, {Qt::Key_Right, Qt::Key_Up, Qt::Key_Left, Qt::Key_End});
        EXPECT_EQ(positions, Positions());
        leave(widgetOf(*each));
        press(*each, {Qt::Key_Right, Qt::Key_Home});
        leave(widgetOf(*each));
        EXPECT_EQ(positions, (Positions{each->top(), 0}));
        positions.clear();
    }
}

TEST_F(Switches, OfferTheirPositionsInAListWhereTheyAreManyOrWordsInAnyLanguage) {
    auto* list = widgetOf(many).findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count(), 16);
    EXPECT_EQ(list->currentIndex(), 1);
    list->showPopup();
    QTest::keyClick(list->view(), Qt::Key_End);
    QTest::keyClick(list->view(), Qt::Key_Return);
    EXPECT_EQ(positions, Positions{15});
    for (const auto& [labels, isList] :
         {std::pair{"no, 1, 2, 3, 4, 5", false}, {"none, add, more, less", false}, {"ja, ab, zu, am, um", true}}) {
        slider.PositionLabels = labels;
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(widgetOf(slider).findChild<QAbstractButton*>() == nullptr, isList) << labels;
    }
}

TEST_F(Switches, OfferNoPositionBeyondTheHighestThatIsOffered) {
    rotary.highestOffered = 2;
    rotary.PositionLabels = "0, 1, 2, 3, 4";
    settle();
    press(rotary, {Qt::Key_Right, Qt::Key_Up, Qt::Key_End});
    leave(widgetOf(rotary));
    EXPECT_EQ(positions, Positions{2});
    rotary.Position = 4;
    EXPECT_TRUE(viewOf(rotary).spokenValue().contains(u'4')) << "what the board has is shown all the same";
}

TEST_F(Switches, ShowAPositionThatNoLabelStandsForAndComeBackFromIt) {
    slider.Position = 9;
    EXPECT_TRUE(viewOf(slider).spokenValue().contains(u'9'));
    EXPECT_EQ(slider.Position.get(), 9) << "the view changes nothing by itself";
    press(slider, {Qt::Key_Left});
    leave(widgetOf(slider));
    EXPECT_EQ(positions, Positions{2});
}

TEST_F(Switches, TakeEveryClickAndKeyOnce) {
    int expected = 0;
    for (Control* control : std::initializer_list<Control*>{&toggle, &led, &button, &zone}) {
        QWidget& widget = widgetOf(*control);
        click(*control);
        EXPECT_EQ(clicks, ++expected);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
            press(*control, {key});
            EXPECT_EQ(clicks, ++expected);
        }
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), true);
        QApplication::sendEvent(&widget, &held);
        QTest::mousePress(&widget, Qt::LeftButton);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, QPoint(-20, -20));
        QTest::mouseClick(&widget, Qt::RightButton);
        EXPECT_EQ(clicks, expected) << "a key that is held, a button let go elsewhere, or another one";
        control->Enabled = false;
        click(*control);
        EXPECT_EQ(clicks, expected) << "disabled";
    }
}

TEST_F(Switches, ShowWhatThePageMakesOfTheClick) {
    led.OnClick([this] { led.Active = false; });  // put back until the board's echo comes
    click(led);
    EXPECT_EQ(viewOf(led).checked(), false);
    led.Active = true;
    EXPECT_EQ(viewOf(led).checked(), true);
}

TEST_F(Switches, AreReachedByAClickAnywhereInTheirRowUnlessTheyAreLocked) {
    Label number, name;
    LedSwitch output;
    name.Caption = "Water valve 1";
    output.OnClick([this] { ++clicks; });
    QWidget& page = show([&] { return Column{Target{number, output, name}, other}; });
    page.resize(page.width() + 200, page.height());
    settle();
    QWidget& row = *widgetOf(output).parentWidget();
    EXPECT_GE(row.height(), 32);
    for (const int x : {2, widgetOf(name).geometry().center().x(), row.width() - 3})
        QTest::mouseClick(&row, Qt::LeftButton, {}, {x, row.height() / 2});
    QTest::mouseClick(&widgetOf(name), Qt::LeftButton);
    click(output);
    EXPECT_EQ(clicks, 5);
    EXPECT_TRUE(widgetOf(output).hasFocus());
    output.Enabled = false;
    QTest::mouseClick(&widgetOf(name), Qt::LeftButton);
    EXPECT_EQ(clicks, 5);
    closeAll();
}

}  // namespace
}  // namespace kestrel::qt::testing
