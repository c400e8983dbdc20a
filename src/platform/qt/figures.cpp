// How a value label writes the number of its bar.
// See figures.h.
#include "platform/qt/figures.h"

namespace kestrel::qt {

namespace {

constexpr int LowestOfRaw = -32768;

}  // namespace

std::optional<FigureForm> FigureForm::of(const QString& text, int value, int lowest) {
    qsizetype point = text.indexOf(u'.');
    if (point < 0) point = text.indexOf(u',');
    const qsizetype decimals = point < 0 ? 0 : text.size() - point - 1;
    const FigureForm form(lowest == LowestOfRaw ? -LowestOfRaw : 0, decimals, point < 0 ? QChar(u'.') : text[point]);
    if (form.text(value) != text) return std::nullopt;
    return form;
}

QString FigureForm::text(int value) const {
    const int number = value + offset_;
    QString digits = QString::number(number < 0 ? -number : number).rightJustified(decimals_ + 1, u'0');
    if (decimals_ > 0) digits.insert(digits.size() - decimals_, separator_);
    return number < 0 ? u'-' + digits : digits;
}

}  // namespace kestrel::qt
