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
                                "graph",
                                "Close",
                                "no device",
                                "not read yet",
                                "you set %1, the board has %2",
                                "you set %1, the board's second copy has another value",
                                "from before: the board has been silent since %1",
                                "%1 cannot be set here",
                                "changed here, before: %1",
                                "%1 to %2",
                                "figures only",
                                "too many decimals",
                                "too many figures: the last ones will not count",
                                "values from before %1"};
static_assert(English.size() == static_cast<std::size_t>(Word::ValuesFrom) + 1);

}  // namespace

QString word(Word which) {
    const auto index = static_cast<int>(which);
    return toQt(WindowText(WindowSectionLine + 1 + index, English.at(static_cast<std::size_t>(index))));
}

QString limitsInWords(const EntryLimits& limits) {
    const QString range = word(Word::Limits).arg(toQt(limits.lowest), toQt(limits.highest));
    return limits.unit.empty() ? range : range + u' ' + toQt(limits.unit);
}

QString objectionInWords(Objection objection, const EntryLimits& limits) {
    switch (objection) {
        case Objection::NoNumber:
            return word(Word::FiguresOnly) + QStringLiteral(": ") + limitsInWords(limits);
        case Objection::TooFine:
            return word(Word::TooManyDecimals) + QStringLiteral(": ") + limitsInWords(limits);
        case Objection::OutOfRange:
            return limitsInWords(limits);
        case Objection::TooLong:
            return word(Word::TooManyFigures);
        case Objection::None:
            break;
    }
    return {};
}

QString changing(const QString& from, const QString& to) { return from + QStringLiteral(" → ") + to; }

QString unlike(const QString& has, const QString& wanted) { return has + QStringLiteral(" ≠ ") + wanted; }

QString outOfRange(const QString& number) { return number + QStringLiteral(", ") + word(Word::OutOfRange); }

}  // namespace kestrel::qt
