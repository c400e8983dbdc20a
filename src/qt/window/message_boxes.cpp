// Message boxes, one at a time.
#include "qt/window/message_boxes.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QPushButton>
#include <cstdio>

#include "language/port_words.h"
#include "qt/io/text.h"
#include "qt/window/mnemonics.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

QMessageBox::Icon iconOf(const Message& message) {
    return message.icon == Message::Icon::Critical ? QMessageBox::Critical : QMessageBox::Warning;
}

/// The questions are in the language of the pages, and so are their answers.
void nameAnswers(const QMessageBox& box) {
    const QStringList texts = withMnemonics({word(Word::Yes), word(Word::No)});
    box.button(QMessageBox::Yes)->setText(texts[0]);
    box.button(QMessageBox::No)->setText(texts[1]);
}

/// Escape and the window's cross take the answer that changes nothing; so does Enter, where something could be lost.
void addButtons(QMessageBox& box, Message::Buttons buttons) {
    switch (buttons) {
        case Message::Buttons::Ok:
            box.setStandardButtons(QMessageBox::Ok);
            box.setEscapeButton(QMessageBox::Ok);
            break;
        case Message::Buttons::RetryCancel:
            box.setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
            box.setDefaultButton(QMessageBox::Retry);
            box.setEscapeButton(QMessageBox::Cancel);
            break;
        case Message::Buttons::YesNo:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            nameAnswers(box);
            box.setDefaultButton(QMessageBox::No);
            box.setEscapeButton(QMessageBox::No);
            break;
    }
}

std::string detailOf(const Message& message) {
    if (!message.isAboutTheLine) return message.detail;
    return portWord(PortWord::IsMachineOn) + "\n" + portWord(PortWord::IsCableIn) + "\n\n" + portWord(PortWord::Tried) +
           "\n" + message.detail;
}

/// Where the demo was chosen and could not be opened, the answer is the one that changes nothing.
Message::Answer answerOf(int button) {
    switch (button) {
        case QMessageBox::Retry:
            return Message::Answer::Retry;
        case QMessageBox::Cancel:
            return Message::Answer::Cancel;
        case QMessageBox::Yes:
            return Message::Answer::Yes;
        case QMessageBox::No:
            return Message::Answer::No;
        default:
            return Message::Answer::Ok;
    }
}

}  // namespace

Message::Answer MessageBoxes::ask(const Message& message, QWidget* parent, const std::function<void()>& openDemo) {
    waitForOpenBox();
    QMessageBox box(iconOf(message), toQt(message.title), toQt(message.text), QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(toQt(detailOf(message)));
    addButtons(box, message.buttons);
    const QAbstractButton* demo = nullptr;
    if (message.isAboutTheLine && openDemo)
        demo = box.addButton(toQt(portWord(PortWord::OpenDemo)), QMessageBox::ActionRole);
    open_ = &box;
    const int button = box.exec();
    if (open_ == &box) open_.clear();
    if (demo && box.clickedButton() == demo) openDemo();
    return answerOf(button);
}

void MessageBoxes::waitForOpenBox() {
    if (!open_) return;
    QEventLoop loop;
    QObject::connect(open_, &QMessageBox::finished, &loop, &QEventLoop::quit);
    loop.exec();
}

Message::Answer printMessage(const Message& message) {
    std::string text = message.title + ": " + message.text;
    if (!message.detail.empty()) text += " (" + message.detail + ")";
    for (char& letter : text)
        if (letter == '\n') letter = ' ';
    std::fprintf(stderr, "kestrel: %s\n", text.c_str());
    switch (message.buttons) {
        case Message::Buttons::RetryCancel:
            return Message::Answer::Cancel;
        case Message::Buttons::YesNo:
            return Message::Answer::No;
        case Message::Buttons::Ok:
            break;
    }
    return Message::Answer::Ok;
}

}  // namespace kestrel::qt
