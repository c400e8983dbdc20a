// Message boxes: one at a time, and the key that is pressed without reading destroys nothing.
// The user is played from the event loop that the box itself runs.
#include "platform/qt/message_boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>

namespace kestrel::qt {
namespace {

std::vector<QMessageBox*> openBoxes() {
    std::vector<QMessageBox*> boxes;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) boxes.push_back(box);
    return boxes;
}

/// Runs when the event loop of the next box is running.
void whenOpen(const std::function<void()>& act) { QTimer::singleShot(0, qApp, act); }

struct Keys {
    const char* what;
    Message::Buttons buttons;
    Qt::Key key;
    Message::Answer answer;
};

class BoxKeys : public ::testing::TestWithParam<Keys> {};

TEST_P(BoxKeys, GiveTheAnswerThatLosesNothing) {
    MessageBoxes boxes;
    whenOpen([] { QTest::keyClick(openBoxes().front(), GetParam().key); });
    EXPECT_EQ(boxes.ask({"text", "title", Message::Icon::Exclamation, GetParam().buttons}, nullptr), GetParam().answer);
}

using Buttons = Message::Buttons;
using Answer = Message::Answer;
INSTANTIATE_TEST_SUITE_P(MessageBoxes, BoxKeys,
                         ::testing::Values(Keys{"OkEnter", Buttons::Ok, Qt::Key_Return, Answer::Ok},
                                           Keys{"OkEscape", Buttons::Ok, Qt::Key_Escape, Answer::Ok},
                                           Keys{"RetryEnter", Buttons::RetryCancel, Qt::Key_Return, Answer::Retry},
                                           Keys{"RetryEscape", Buttons::RetryCancel, Qt::Key_Escape, Answer::Cancel},
                                           Keys{"YesNoEnter", Buttons::YesNo, Qt::Key_Return, Answer::No},
                                           Keys{"YesNoEscape", Buttons::YesNo, Qt::Key_Escape, Answer::No}),
                         [](const auto& row) { return row.param.what; });

TEST(MessageBoxes, ShowTheReasonAsPlainText) {
    MessageBoxes boxes;
    Message message{"Check serial !", "ERROR"};
    message.detail = "<b>/dev/x</b>: in use";
    QString reason;
    bool plain = false;
    whenOpen([&] {
        reason = openBoxes().front()->informativeText();
        plain = openBoxes().front()->textFormat() == Qt::PlainText;
        openBoxes().front()->reject();
    });
    boxes.ask(message, nullptr);
    EXPECT_EQ(reason.toStdString(), message.detail);
    EXPECT_TRUE(plain);
}

TEST(MessageBoxes, StandOneAfterTheOther) {
    MessageBoxes boxes;
    std::vector<std::string> shown;
    std::size_t most = 0;
    const auto look = [&] {
        most = std::max(most, openBoxes().size());
        shown.push_back(openBoxes().front()->text().toStdString());
    };
    Answer second = Answer::Ok;
    whenOpen([&] {
        QTimer::singleShot(0, qApp, [&] {
            look();
            QTest::keyClick(openBoxes().front(), Qt::Key_Return);
            whenOpen([&] {
                look();
                QTest::keyClick(openBoxes().front(), Qt::Key_Return);
            });
        });
        second = boxes.ask({"second", "", Message::Icon::Critical, Buttons::YesNo}, nullptr);
    });
    const Answer first = boxes.ask({"first", "", Message::Icon::Critical, Buttons::RetryCancel}, nullptr);
    EXPECT_EQ(shown, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(most, 1U);
    EXPECT_EQ(first, Answer::Retry);
    EXPECT_EQ(second, Answer::No);
}

}  // namespace
}  // namespace kestrel::qt
