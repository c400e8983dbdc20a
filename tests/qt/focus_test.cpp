// Where the focus is while a page is locked, and afterwards.
// A key that the user presses in that time must reach no other control.
#include "view_fixture.h"

namespace kestrel::qt::testing {
namespace {

class FocusTest : public ViewTest {
  protected:
    FocusTest() {
        page_ = &show([this] { return Column{Group(frame_, Row{locked_}), Row{other_}}; });
        widgetOf(locked_).setFocus();
        settle();
    }
    static QWidget* focused() { return QApplication::focusWidget(); }
    void pressRight() {
        if (focused()) QTest::keyClick(focused(), Qt::Key_Right);
        FinishGestures();
    }

    Frame frame_;
    ScrollBar locked_, other_;
    QWidget* page_ = nullptr;
};

TEST_F(FocusTest, AKeyPressedWhileAControlIsLockedChangesNoOther) {
    for (Control* lock : {static_cast<Control*>(&locked_), static_cast<Control*>(&frame_)}) {
        ASSERT_EQ(focused(), &widgetOf(locked_));
        lock->Enabled = false;
        settle();
        pressRight();
        EXPECT_EQ(other_.Value, 0);
        EXPECT_EQ(locked_.Value, 0);
        lock->Enabled = true;
        settle();
        EXPECT_EQ(focused(), &widgetOf(locked_)) << "it is back where the user left it";
    }
}

TEST_F(FocusTest, AUserWhoHasGoneOnMeanwhileIsNotCalledBack) {
    locked_.Enabled = false;
    settle();
    widgetOf(other_).setFocus();
    settle();
    locked_.Enabled = true;
    settle();
    EXPECT_EQ(focused(), &widgetOf(other_));
}

}  // namespace
}  // namespace kestrel::qt::testing
