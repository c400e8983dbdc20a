// Message boxes: one at a time, and the key that is pressed without reading destroys nothing.
// The user is played from the event loop that the box itself runs.
#include "qt/window/message_boxes.h"
#include "shell/session.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
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

struct MessageBoxesTest : ::testing::Test {
    Session session;
};

using Buttons = Message::Buttons;
using Answer = Message::Answer;

TEST_F(MessageBoxesTest, GiveTheAnswerThatLosesNothing) {
    struct Row {
        Buttons buttons;
        Qt::Key key;
        Answer answer;
    };
    for (const Row& row :
         {Row{Buttons::Ok, Qt::Key_Return, Answer::Ok}, Row{Buttons::Ok, Qt::Key_Escape, Answer::Ok},
          Row{Buttons::RetryCancel, Qt::Key_Return, Answer::Retry},
          Row{Buttons::RetryCancel, Qt::Key_Escape, Answer::Cancel}, Row{Buttons::YesNo, Qt::Key_Return, Answer::No},
          Row{Buttons::YesNo, Qt::Key_Escape, Answer::No}}) {
        MessageBoxes boxes;
        whenOpen([&] { QTest::keyClick(openBoxes().front(), row.key); });
        EXPECT_EQ(boxes.ask({"text", "title", Message::Icon::Exclamation, row.buttons}, nullptr), row.answer)
            << static_cast<int>(row.buttons) << " " << row.key;
    }
}

TEST_F(MessageBoxesTest, ShowTheReasonAsPlainText) {
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

TEST_F(MessageBoxesTest, AboutTheLineKeepTheirTextAndSayWhatToCheckAndOpenTheDemoOnlyWhenAsked) {
    for (const bool demoIsChosen : {false, true}) {
        MessageBoxes boxes;
        Message message{"Check serial !", "ERROR"};
        message.detail = "/dev/x: in use";
        message.isAboutTheLine = true;
        QString text;
        QString advice;
        bool demoOpened = false;
        whenOpen([&] {
            QMessageBox& box = *openBoxes().front();
            text = box.text();
            advice = box.informativeText();
            if (!demoIsChosen) return QTest::keyClick(&box, Qt::Key_Return);
            for (QAbstractButton* button : box.buttons())
                if (button->text().remove(u'&') == QLatin1String("Open the demo")) button->click();
        });
        EXPECT_EQ(boxes.ask(message, nullptr, [&] { demoOpened = true; }), Answer::Ok);
        EXPECT_EQ(demoOpened, demoIsChosen);
        EXPECT_EQ(text, QStringLiteral("Check serial !"));
        for (const char* part : {"machine", "cable", "/dev/x: in use"})
            EXPECT_TRUE(advice.contains(QLatin1String(part))) << part << ": " << advice.toStdString();
    }
}

TEST_F(MessageBoxesTest, StandOneAfterTheOther) {
    MessageBoxes boxes;
    std::vector<std::string> shown;
    const auto confirm = [&] {
        EXPECT_EQ(openBoxes().size(), 1U);
        shown.push_back(openBoxes().front()->text().toStdString());
        QTest::keyClick(openBoxes().front(), Qt::Key_Return);
    };
    Answer second = Answer::Ok;
    whenOpen([&] {
        whenOpen([&] {
            confirm();
            whenOpen(confirm);
        });
        second = boxes.ask({"second", "", Message::Icon::Critical, Buttons::YesNo}, nullptr);
    });
    const Answer first = boxes.ask({"first", "", Message::Icon::Critical, Buttons::RetryCancel}, nullptr);
    EXPECT_EQ(shown, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(first, Answer::Retry);
    EXPECT_EQ(second, Answer::No);
}

}  // namespace
}  // namespace kestrel::qt
