// Keys of menu entries: every entry must be reachable by a letter of its own, in any language.
// Captions are those of whatever language file is loaded.
#include "platform/qt/mnemonics.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kestrel::qt {
namespace {

struct Row {
    const char* what;
    QStringList captions;
    QStringList expected;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.what; }

class Mnemonics : public ::testing::TestWithParam<Row> {};

TEST_P(Mnemonics, GiveEachEntryALetterOfItsOwn) {
    const QStringList marked = withMnemonics(GetParam().captions);
    EXPECT_EQ(marked, GetParam().expected) << marked.join(u'|').toStdString();
}

QStringList list(const char* words) { return QString::fromUtf8(words).split(u'|'); }

INSTANTIATE_TEST_SUITE_P(
    Menu, Mnemonics,
    ::testing::Values(Row{"FirstLetters", list("File|Test|?"), list("&File|&Test|?")},
                      Row{"OwnFirstLetterBeforeAnothersSecond", list("Com|Clock|Lingue"), list("&Com|Cl&ock|&Lingue")},
                      Row{"SecondWordBeforeInnerLetter", list("Prezzi|Prezzi Sconti"), list("&Prezzi|Prezzi &Sconti")},
                      Row{"ShortWordsChooseFirst", list("Com|Clima|Como|Co"), list("&Com|C&lima|Co&mo|C&o")},
                      Row{"CaseDoesNotTellApart", list("com|Cam"), list("&com|C&am")},
                      Row{"Accents", list("Übersicht|Öffnen|Über"), list("&Übersicht|&Öffnen|Ü&ber")},
                      Row{"Ampersand", list("Tempi & Dosi|&&"), list("&Tempi && Dosi|&&&&")},
                      Row{"NothingLeft", list("A|A|a"), list("&A|A|a")}, Row{"Empty", list("|A"), list("|&A")},
                      Row{"Digits", list("Com1|Com2"), list("&Com1|C&om2")}),
    [](const auto& row) { return row.param.what; });

}  // namespace
}  // namespace kestrel::qt
