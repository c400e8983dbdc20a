// The main window as a model.
#include "shell/main_window.h"

#include <array>

#include "language/language_files.h"
#include "platform/errors.h"
#include "platform/module_state.h"

namespace kestrel {

template class Module<MainWindow>;

namespace {

constexpr int PortCaptionLine = 39;

MenuItem* find(MenuItem& root, const std::string& name) {
    for (const auto& item : root.items()) {
        if (item->name() == name) return item.get();
        if (MenuItem* below = find(*item, name)) return below;
    }
    return nullptr;
}

}  // namespace

const std::vector<MenuRow>& MenuTree() {
    static const std::vector<MenuRow> tree = {
        {1, "mnuFile", 1, "File", nullptr},
        {2, "smnuExit", 2, "Exit", nullptr},
        {1, "mnuConfigura", 45, "Configurazione", nullptr},
        {2, "smnuConfMacc", 46, "conf. macchina", "FrmConMac"},
        {2, "smnuIntermitt", 47, "intermittenza", "FrmInter"},
        {2, "smnuProdUnic", 48, "prodotti unici", "FrmProUni"},
        {2, "smnuPreselez", 49, "preselezioni", "FrmPresel"},
        {1, "mnuTempiDosi", 3, "Tempi/Dosi", nullptr},
        {2, "smnuTempi", 4, "Tempi", "FrmTempi"},
        {2, "smnuDosi", 5, "Dosi", "FrmDosi"},
        {1, "mnuVending", 6, "Vending", nullptr},
        {2, "smnuPagamento", 7, "Sist. di pagamento", "FrmPagamento"},
        {2, "smnuPrezzi", 8, "Prezzi", nullptr},
        {3, "ssmnuImposta", 9, "Impostazione prezzi", "FrmPrezzi"},
        {3, "ssmnuSconti", 10, "Impostazione sconti", "FrmSconti"},
        {3, "ssmnuPrsel", 11, "Associazione prezzi selezioni", "FrmAssSel"},
        {3, "ssmnuPrsett", 12, "Associazione prezzi settori", "FrmAssSet"},
        {2, "smnuDati", 14, "Dati di vendita", nullptr},
        {3, "ssmnuTotali", 15, "Totali", "FrmTotali"},
        {3, "ssmnuBattute", 16, "Battute", "FrmBattute"},
        {3, "ssmnuGratis", 17, "Gratis", "FrmGratis"},
        {3, "ssmnuBricco", 18, "Bricco", "FrmBricco"},
        {3, "ssmnuProva", 19, "Prova", "FrmProva"},
        {3, "ssmnuMonete", 20, "Monete", "FrmMonete"},
        {3, "ssmnuMDBaudit", 44, "MDB Audit", "FrmMDBaudit"},
        {3, "ssmnuCancella", 21, "Cancella i dati", "FrmCancella"},
        {1, "mnuOpzioni", 22, "Opzioni", nullptr},
        {2, "smnuOpzioni", 23, "Opzioni", "FrmOpzioni"},
        {2, "smnuAzione", 13, "Azione Prev", "FrmAzione"},
        {2, "smnuPassword", 25, "Password", "FrmPassword"},
        {1, "mnuTemperatura", 26, "Temperatura", nullptr},
        {2, "smnuSet", 27, "Set", "FrmTemperatura"},
        {2, "smnuGrafico", 28, "Grafico", "FrmGrafico"},
        {1, "mnuOrologio", 29, "Orologio", "FrmOrologio"},
        {1, "mnuTest", 30, "Test", nullptr},
        {2, "smnuInOut", 31, "In/Out", nullptr},
        {3, "ssmnuTest", 32, "Test", "FrmInOut"},
        {3, "ssmnuCedar", 33, "Cedar", "FrmTestCedar"},
        {3, "ssmnuSchema", 34, "Schema idraulico", "FrmSchema"},
        {2, "smnuAllarmi", 35, "Allarmi", "FrmAllarmi"},
        {1, "mnuLingue", 36, "Lingue", nullptr},
        {1, "mnuWL", 37, "Windows", nullptr},
        {1, "mnuCom", 38, "Com", nullptr},
        {1, "mnuVer", 0, "?", "FrmInfo"},
    };
    return tree;
}

MainWindow::MainWindow() {
    std::array<MenuItem*, 4> parents{&menuBar_, nullptr, nullptr, nullptr};
    for (const MenuRow& row : MenuTree()) {
        const auto level = static_cast<std::size_t>(row.level);
        MenuItem& item = parents.at(level - 1)->add(row.name);
        item.Caption = row.caption;
        parents.at(level) = &item;
    }
    MenuItem& languages = entry("mnuLingue");
    for (int i = 0; i < LanguageEntries; ++i) languages.add("smnuLingue(" + std::to_string(i) + ")").Visible = i == 0;
    MenuItem& ports = entry("mnuCom");
    for (int i = 1; i <= PortEntries; ++i)
        ports.add("mnuCox(" + std::to_string(i) + ")").Caption = "Com" + std::to_string(i);
}

MenuItem& MainWindow::entry(const std::string& name) {
    MenuItem* found = find(menuBar_, name);
    if (!found) throw RunTimeError(error_number::NoSuchElement, "No menu entry \"" + name + "\"");
    return *found;
}

void MainWindow::SetMenuCaptions() {
    for (const MenuRow& row : MenuTree())
        if (row.line > 0) entry(row.name).Caption = LanguageTable(row.line);
    for (int i = 1; i <= PortEntries; ++i) mnuCox(i).Caption = LanguageTable(PortCaptionLine) + std::to_string(i);
}

void ChooseEntryOf(const std::string& page) {
    for (const MenuRow& row : MenuTree())
        if (row.page && row.page == page) return MDIForm1().entry(row.name).UserClick();
}

MainWindow& MDIForm1() { return stateOf<MainWindow>(); }

}  // namespace kestrel
