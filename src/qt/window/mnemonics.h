// Keys for the entries of a menu: each entry gets an underlined letter that none of its neighbours has.
// Texts come from any language file, so the letters are chosen anew whenever a text changes.
#pragma once

#include <QString>
#include <QStringList>

namespace kestrel::qt {

/// The captions with the mark before their letter, in the same order; ampersands of the captions themselves are kept as
/// text. First letters are given before the first letters of further words, and those before the rest, of which
/// short captions choose first; a caption whose letters and digits are all taken goes without.
QStringList withMnemonics(const QStringList& captions);

}  // namespace kestrel::qt
