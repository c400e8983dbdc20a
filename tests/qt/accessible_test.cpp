// What a screen reader gets: every control has a name and a value, can be operated, and tells of changes.
#include <QAccessible>
#include <QLineEdit>
#include <vector>

#include "pages/controls/frm_controls.h"
#include "platform/qt/words.h"
#include "spoken_tree.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Accessibility : public ViewTest {
  protected:
    Accessibility() {
        settleLayout(controls.Arrange());
        controls.Form_Load();
        page = &show(controls);
    }
    ~Accessibility() override { closeAll(); }
    QAccessibleInterface& of(const Control& control) const {
        return *QAccessible::queryAccessibleInterface(&widgetOf(control));
    }

    FrmControls controls;
    QWidget* page;
};

TEST_F(Accessibility, NamesEverythingThatCanBeOperatedAndGivesItsValue) {
    EXPECT_GT(expectNamesAndValues(*QAccessible::queryAccessibleInterface(page)), 50);
}

TEST_F(Accessibility, FollowsTheCaptionsOfTheLanguage) {
    controls.BarCaption[0].Caption = "Wasser";
    controls.TextCaption[0].Caption = "Code";
    QApplication::processEvents();
    EXPECT_EQ(of(controls.Bar[0]).text(QAccessible::Name), QStringLiteral("Wasser"));
    EXPECT_EQ(of(controls.Text[0]).text(QAccessible::Name), QStringLiteral("Code"));
}

TEST_F(Accessibility, SaysWhatWaitsForTheBoard) {
    for (Control* control : std::initializer_list<Control*>{&controls.Bar[2], &controls.Slider[4], &controls.Toggle[4],
                                                            &controls.Switch[4], &controls.Text[2]}) {
        EXPECT_EQ(of(*control).text(QAccessible::Description), word(Word::WaitingForTheBoard));
    }
    controls.Bar[2].Value = 96;
    EXPECT_TRUE(of(controls.Bar[2]).text(QAccessible::Description).isEmpty());
}

TEST_F(Accessibility, OperatesTheControls) {
    auto* value = of(controls.Bar[0]).valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->maximumValue().toInt(), 255);
    value->setCurrentValue(33);
    viewOf(controls.Bar[0]).endGesture();
    EXPECT_EQ(controls.Bar[0].Value.get(), 33);

    auto* toggle = of(controls.Toggle[0]).actionInterface();
    ASSERT_TRUE(toggle->actionNames().contains(QAccessibleActionInterface::pressAction()));
    toggle->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(controls.Toggle[0].Active);
    EXPECT_TRUE(of(controls.Toggle[0]).state().checked);

    auto* locked = of(controls.Toggle[2]).actionInterface();
    locked->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(controls.Toggle[2].Active) << "disabled";

    auto* slider = of(controls.Slider[0]).actionInterface();
    slider->doAction(QAccessibleActionInterface::decreaseAction());
    viewOf(controls.Slider[0]).endGesture();
    EXPECT_EQ(controls.Slider[0].Position.get(), 0);
    EXPECT_EQ(of(controls.Slider[0]).text(QAccessible::Value), QStringLiteral("Off"));
}

std::vector<std::pair<QObject*, QAccessible::Event>> announced;

TEST_F(Accessibility, AnnouncesValuesThatArrive) {
    announced.clear();
    QAccessible::setActive(true);
    if (!QAccessible::isActive()) GTEST_SKIP() << "needs a screen with assistive technology, such as X";
    const auto before = QAccessible::installUpdateHandler(
        [](QAccessibleEvent* event) { announced.emplace_back(event->object(), event->type()); });
    controls.BarValue[0].Caption = "1.0";
    controls.SquareLamp[0].Active = true;
    controls.SquareLamp[1].Active = true;  // as it was
    QAccessible::installUpdateHandler(before);
    QAccessible::setActive(false);
    const std::vector<std::pair<QObject*, QAccessible::Event>> expected = {
        {&widgetOf(controls.BarValue[0]), QAccessible::ValueChanged},
        {&widgetOf(controls.SquareLamp[0]), QAccessible::ValueChanged}};
    EXPECT_EQ(announced, expected);
}

}  // namespace
}  // namespace kestrel::qt::testing
