// How a value label writes the number of its bar: the decimals and the offset of raw amounts.
// It is read off the label, so that a preview can be written alike.
#pragma once

#include <QString>
#include <optional>

namespace kestrel::qt {

class FigureForm {
  public:
    /// The form in which this text writes this value, or nothing when the text does not follow from the value: the
    /// bar's number divided by a power of ten, of a bar that begins at -32768 the raw amount from 0.
    static std::optional<FigureForm> of(const QString& text, int value, int lowest);
    QString text(int value) const;

  private:
    FigureForm(int offset, qsizetype decimals, QChar separator)
        : offset_(offset), decimals_(decimals), separator_(separator) {}

    int offset_;
    qsizetype decimals_;
    QChar separator_;
};

}  // namespace kestrel::qt
