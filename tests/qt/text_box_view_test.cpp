// Text boxes: what is typed reaches the page when it is committed, once, and never when it is given up.
#include "platform/qt/text_box_view.h"

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

    Label caption;
    TextBox box;
    CommandButton other;
    std::vector<std::string> told;
};

using Told = std::vector<std::string>;

TEST_F(Box, KeepsTheTypingToItselfUntilEnter) {
    type("45");
    EXPECT_EQ(box.Text.get(), "123");
    QTest::keyClick(&edit(), Qt::Key_Return);
    EXPECT_EQ(told, Told{"key 13 45"});
    EXPECT_EQ(box.Text.get(), "45");
    leave(edit());
    EXPECT_EQ(told, (Told{"key 13 45", "left 45"})) << "leaving is told even after Enter: the page decides";
}

TEST_F(Box, TellsThePageOnLeavingWithAndWithoutAnEdit) {
    leave(edit());
    EXPECT_EQ(told, Told{"left 123"});
    edit().setFocus();
    type("9");
    leave(edit());
    EXPECT_EQ(told, (Told{"left 123", "left 1239"}));
    endGestures(edit().window());
    EXPECT_EQ(told.size(), 2u) << "left already";
}

TEST_F(Box, BringsBackTheBoardsValueOnEscape) {
    type("77");
    QTest::keyClick(&edit(), Qt::Key_Escape);
    EXPECT_EQ(edit().text(), QStringLiteral("123"));
    type("77");
    box.Text = "888";
    QTest::keyClick(&edit(), Qt::Key_Escape);
    EXPECT_EQ(edit().text(), QStringLiteral("888")) << "as it is now";
    leave(edit());
    EXPECT_EQ(told, Told{"left 888"});
}

TEST_F(Box, ShowsWhatThePagePutBack) {
    type("bad");
    QTest::keyClick(&edit(), Qt::Key_Enter);
    EXPECT_EQ(edit().text(), QStringLiteral("123"));
}

TEST_F(Box, IsNotOverwrittenByTheBoardWhileTheUserTypes) {
    type("4");
    box.Text = "888";
    EXPECT_EQ(edit().text(), QStringLiteral("4"));
    QTest::keyClick(&edit(), Qt::Key_Return);
    EXPECT_EQ(told, Told{"key 13 4"});
    box.Text = "888";
    EXPECT_EQ(edit().text(), QStringLiteral("888"));
}

TEST_F(Box, TakesNoMoreLettersThanItHolds) {
    type("1234567");
    EXPECT_EQ(edit().text(), QStringLiteral("12345"));
}

TEST_F(Box, CommitsBeforeThePageCloses) {
    type("5");
    endGestures(edit().window());
    EXPECT_EQ(told, Told{"left 5"});
}

}  // namespace
}  // namespace kestrel::qt::testing
