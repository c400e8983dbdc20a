// The one question before data are destroyed.
#include "pages/common/confirmation.h"

#include "language/language_files.h"
#include "pages/common/own_words.h"
#include "platform/platform.h"

namespace kestrel {

namespace {

constexpr int TextLine = 476;
constexpr int TitleLine = 21;

}  // namespace

void ConfirmClearing(Control& asker, const std::function<void()>& clear) {
    Message question;
    question.text = LanguageTable(TextLine);
    question.title = LanguageTable(TitleLine);
    question.icon = Message::Icon::Exclamation;
    question.buttons = Message::Buttons::YesNo;
    question.detail = OwnWord(Own::Chosen) + " " + asker.accessibleName();
    if (ShowMessage(question) == Message::Answer::Yes) asker.carryOn(clear);
}

}  // namespace kestrel
