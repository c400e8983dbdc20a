// Keys for the entries of a menu.
#include "qt/window/mnemonics.h"

#include <QSet>
#include <QVector>
#include <algorithm>
#include <numeric>

namespace kestrel::qt {

namespace {

constexpr qsizetype NoLetter = -1;

/// A name with a number behind it, such as those of ports.
bool isNumbered(const QString& caption) {
    const qsizetype last = caption.size() - 1;
    return last > 0 && caption[last].isDigit() && !caption[last - 1].isDigit();
}

/// Entries of one name are told apart by their numbers.
bool isToldByNumber(const QStringList& captions, qsizetype which) {
    if (!isNumbered(captions[which])) return false;
    const QString name = captions[which].chopped(1);
    return std::count_if(captions.begin(), captions.end(), [&name](const QString& caption) {
               return isNumbered(caption) && caption.chopped(1) == name;
           }) > 1;
}

enum class Pass { FirstLetter, WordStart, AnyLetter };

bool isOffered(const QString& caption, qsizetype at, Pass pass) {
    if (!caption[at].isLetterOrNumber()) return false;
    const bool startsWord = at == 0 || !caption[at - 1].isLetterOrNumber();
    switch (pass) {
        case Pass::FirstLetter:
            return at == 0;
        case Pass::WordStart:
            return startsWord;
        case Pass::AnyLetter:
            return true;
    }
    return false;
}

qsizetype freeLetter(const QString& caption, Pass pass, const QSet<QChar>& taken) {
    for (qsizetype at = 0; at < caption.size(); ++at)
        if (isOffered(caption, at, pass) && !taken.contains(caption[at].toUpper())) return at;
    return NoLetter;
}

QString marked(const QString& caption, qsizetype letter) {
    QString text;
    for (qsizetype at = 0; at < caption.size(); ++at) {
        if (at == letter) text += u'&';
        text += caption[at];
        if (caption[at] == u'&') text += u'&';
    }
    return text;
}

}  // namespace

QStringList withMnemonics(const QStringList& captions) {
    QSet<QChar> taken;
    QVector<qsizetype> letters(captions.size(), NoLetter);
    QVector<qsizetype> shortestFirst(captions.size());
    std::iota(shortestFirst.begin(), shortestFirst.end(), 0);
    std::stable_sort(shortestFirst.begin(), shortestFirst.end(),
                     [&](qsizetype a, qsizetype b) { return captions[a].size() < captions[b].size(); });
    const auto give = [&](qsizetype i, Pass pass) {
        if (letters[i] != NoLetter) return;
        letters[i] = freeLetter(captions[i], pass, taken);
        if (letters[i] != NoLetter) taken.insert(captions[i][letters[i]].toUpper());
    };
    for (qsizetype i = 0; i < captions.size(); ++i) {
        const QChar number = captions[i].isEmpty() ? QChar() : captions[i].back();
        if (!isToldByNumber(captions, i) || taken.contains(number)) continue;
        letters[i] = captions[i].size() - 1;
        taken.insert(number);
    }
    for (const Pass pass : {Pass::FirstLetter, Pass::WordStart})
        for (qsizetype i = 0; i < captions.size(); ++i) give(i, pass);
    for (const qsizetype i : shortestFirst) give(i, Pass::AnyLetter);
    QStringList result;
    for (qsizetype i = 0; i < captions.size(); ++i) result += marked(captions[i], letters[i]);
    return result;
}

}  // namespace kestrel::qt
