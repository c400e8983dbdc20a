// What a page is for.
#include "qt/window/page_help.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <algorithm>
#include <iterator>

#include "language/window_texts.h"
#include "qt/io/text.h"
#include "qt/window/access_words.h"
#include "qt/window/manual.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr int FirstLine = 750;
/// In the order of their lines; the line behind the last is that of the program.
constexpr const char* Pages[] = {"FrmConMac", "FrmInter",     "FrmProUni",      "FrmPresel",   "FrmTempi",
                                 "FrmDosi",   "FrmPagamento", "FrmPrezzi",      "FrmSconti",   "FrmAssSel",
                                 "FrmAssSet", "FrmTotali",    "FrmBattute",     "FrmGratis",   "FrmBricco",
                                 "FrmProva",  "FrmMonete",    "FrmMDBaudit",    "FrmCancella", "FrmOpzioni",
                                 "FrmAzione", "FrmPassword",  "FrmTemperatura", "FrmGrafico",  "FrmOrologio",
                                 "FrmInOut",  "FrmTestCedar", "FrmSchema",      "FrmAllarmi",  "FrmInfo"};
constexpr const char* Unknown = "There is no help in this language.";

}  // namespace

QString purposeOf(const std::string& page) {
    const auto line = std::find(std::begin(Pages), std::end(Pages), page) - std::begin(Pages);
    return toQt(WindowText(FirstLine + static_cast<int>(line), Unknown));
}

void showHelp(QWidget& parent, const std::string& page, const std::string& title) {
    if (showManual(parent, toQt(page))) return;
    auto* box = new QMessageBox(QMessageBox::NoIcon, accessWord(AccessWord::PageHelp), purposeOf(page),
                                QMessageBox::Close, &parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->button(QMessageBox::Close)->setText(word(Word::CloseWindow));
    if (!title.empty()) box->setWindowTitle(toQt(title));
    box->setModal(false);
    box->show();
}

}  // namespace kestrel::qt
