// Text boxes: what is typed reaches the page when it is committed, once, and never when it is given up.
#include "qt/views/text_box_view.h"

#include "platform/switches.h"
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Box : public ViewTest {
  protected:
    Box() {
        box.maxLength = 5;
        box.Text = "123";
        box.OnKeyPress([this](int key) {
            told.push_back("key " + std::to_string(key) + " " + box.Text.get());
            if (box.Text.get() == "bad") box.Text = "123";
        });
        box.OnLostFocus([this] { told.push_back("left " + box.Text.get()); });
        show([this] { return Row{caption, box, other}; });
        edit().setFocus();
        QTest::keyClick(&edit(), Qt::Key_A, Qt::ControlModifier);
    }
    QLineEdit& edit() const { return dynamic_cast<QLineEdit&>(widgetOf(box)); }
    void type(const char* text) const { QTest::keyClicks(&edit(), QString::fromLatin1(text)); }
    void press(Qt::Key key) const { QTest::keyClick(&edit(), key); }
    std::string shown() const { return edit().text().toStdString(); }

    Label caption;
    TextBox box;
    CommandButton other;
    std::vector<std::string> told;
};

using Told = std::vector<std::string>;

TEST_F(Box, KeepsTheTypingToItselfUntilEnter) {
    type("45");
    EXPECT_EQ(box.Text.get(), "123");
    press(Qt::Key_Return);
    EXPECT_EQ(told, Told{"key 13 45"});
    leave(edit());
    EXPECT_EQ(told, (Told{"key 13 45", "left 45"})) << "leaving is told even after Enter: the page decides";
}

TEST_F(Box, TellsThePageOnLeavingWithAndWithoutAnEditButNothingOnceItIsClosing) {
    leave(edit());
    EXPECT_EQ(told, Told{"left 123"});
    edit().setFocus();
    type("9");
    press(Qt::Key_Tab);
    EXPECT_EQ(told, (Told{"left 123", "left 1239"}));
    edit().setFocus();
    QTest::mouseClick(edit().parentWidget(), Qt::LeftButton);
    EXPECT_EQ(told.size(), 3u) << "a click beside it leaves it";
    edit().setFocus();
    type("8");
    dropTyping(edit().window());
    EXPECT_EQ(shown(), "1239") << "dropped";
    leave(edit());
    EXPECT_EQ(told.size(), 3u);
}

TEST_F(Box, BringsBackTheBoardsValueOnEscape) {
    type("77");
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), "123");
    box.Text = "888";
    EXPECT_EQ(shown(), "888") << "it follows the board again";
    type("77");
    box.Text = "999";
    EXPECT_NE(shown(), "999") << "what is being typed is not taken away";
    press(Qt::Key_Escape);
    EXPECT_EQ(shown(), "999") << "as it is now";
    leave(edit());
    EXPECT_EQ(told, Told{"left 999"});
}

TEST_F(Box, ShowsWhatThePagePutBackAndThenTheBoardsValue) {
    type("bad");
    press(Qt::Key_Enter);
    EXPECT_EQ(shown(), "123");
    box.Text = "888";
    EXPECT_EQ(shown(), "888");
}

TEST_F(Box, TakesNoMoreLettersThanItHoldsAndNoneThatIsACommand) {
    QTest::keyClick(&edit(), '-', Qt::AltModifier);
    QTest::keyClick(&edit(), '7', Qt::AltModifier | Qt::ControlModifier);
    EXPECT_EQ(shown(), "123");
    type("1234567");
    EXPECT_EQ(shown(), "12345");
}

TEST_F(Box, TellsNobodyWhatItConcealsUntilTheEyeIsPressed) {
    RevealSwitch eye;
    TextBox code;
    code.Text = "12345";
    code.Concealed = true;
    eye.OnClick([&] { code.Concealed = !eye.Active; });
    show([&] { return Row{code, eye}; });
    auto* spoken = QAccessible::queryAccessibleInterface(&widgetOf(code));
    const auto heard = [&] {
        return spoken->text(QAccessible::Value) + spoken->textInterface()->text(0, 9) + viewOf(code).spokenValue() +
               dynamic_cast<QLineEdit&>(widgetOf(code)).displayText() + QString::fromStdString(code.text());
    };
    EXPECT_FALSE(heard().contains(u'1')) << heard().toStdString();
    QTest::mouseClick(&widgetOf(eye), Qt::LeftButton);
    EXPECT_EQ(heard(), QStringLiteral("12345").repeated(5));
    closeAll();
}

}  // namespace
}  // namespace kestrel::qt::testing
