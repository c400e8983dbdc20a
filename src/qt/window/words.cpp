// The words of the views and the frame window.
#include "qt/window/words.h"

#include <array>

#include "language/window_texts.h"
#include "qt/io/text.h"

namespace kestrel::qt {

namespace {

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
                                "chart",
                                "Close",
                                "no device",
                                "not read yet",
                                "you set %1, the board has %2",
                                "you set %1, the board's second copy has another value"};
static_assert(English.size() == static_cast<std::size_t>(Word::CopyNotTaken) + 1);

}  // namespace

QString word(Word which) {
    const auto index = static_cast<int>(which);
    return toQt(WindowText(WindowSectionLine + 1 + index, English.at(static_cast<std::size_t>(index))));
}

QString outOfRange(const QString& number) { return number + QStringLiteral(", ") + word(Word::OutOfRange); }

}  // namespace kestrel::qt
