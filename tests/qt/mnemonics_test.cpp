// Keys of menu entries: every entry must be reachable by a letter of its own, in any language.
// Captions are those of whatever language file is loaded.
#include "qt/window/mnemonics.h"

#include <gtest/gtest.h>

namespace kestrel::qt {
namespace {

TEST(Mnemonics, GiveEachEntryALetterOfItsOwn) {
    // By what is marked: first letters, and an entry's own one before another's second; the start of a second word
    // before a letter inside; short captions choose first; accents, ampersands, and entries for which nothing is left.
    for (const std::string marked :
         {"&File|&Test|?", "&Com|Cl&ock|&Lingue", "&Prezzi|Prezzi &Sconti", "&Com|C&lima|Co&mo|C&o", "&com|C&am",
          "&Übersicht|&Öffnen|Ü&ber", "&Tempi && Dosi|&&&&", "&A|A|a", "|&A", "Com&1|Com&2|&Clock", "&Com12|C&om3"}) {
        const QString expected = QString::fromStdString(marked);
        // The caption of a marked entry: && stands for an ampersand, a single one is the mark.
        QString plain = expected;
        plain.replace(QStringLiteral("&&"), QStringLiteral("\1")).remove(u'&').replace(u'\1', u'&');
        EXPECT_EQ(withMnemonics(plain.split(u'|')).join(u'|').toStdString(), marked);
    }
}

}  // namespace
}  // namespace kestrel::qt
