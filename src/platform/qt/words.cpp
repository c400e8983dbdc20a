// The words of the views and the frame window.
// See words.h.
#include "platform/qt/words.h"

#include <array>

#include "platform/qt/text.h"
#include "shell/language_files.h"

namespace kestrel::qt {

namespace {

/// Files of other makers end before this line or have texts of their own there: the mark tells them apart.
constexpr int MarkLine = 616;

constexpr std::array English = {"Next",
                                "Previous",
                                "Cascade",
                                "Tile",
                                "Close all",
                                "Send",
                                "Receive",
                                "Error",
                                "Yes",
                                "No",
                                "waiting for the board",
                                "on",
                                "off",
                                "out of range",
                                "no time",
                                "Pause (Space)",
                                "Show all (F)",
                                "Follow (End)",
                                "paused",
                                "no values yet",
                                "chart"};
static_assert(English.size() == static_cast<std::size_t>(Word::Chart) + 1);

}  // namespace

QString word(Word which) {
    const auto index = static_cast<int>(which);
    const bool isOurs = LanguageTable(MarkLine).starts_with(SectionMark);
    const std::string& text = LanguageTable(MarkLine + 1 + index);
    if (isOurs && !text.empty()) return toQt(text);
    return QString::fromLatin1(English.at(static_cast<std::size_t>(index)));
}

QString outOfRange(const QString& number) { return number + QStringLiteral(", ") + word(Word::OutOfRange); }

}  // namespace kestrel::qt
