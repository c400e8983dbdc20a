// The program's life outside the pages.
#include "shell/start_up.h"

#include "language/language_files.h"
#include "link/history.h"
#include "link/identification.h"
#include "link/index_files.h"
#include "link/leaving.h"
#include "link/link_engine.h"
#include "link/loaded_pages.h"
#include "link/observer.h"
#include "link/port_search.h"
#include "link/recheck.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "platform/platform.h"
#include "shell/configuration.h"
#include "shell/frm_ser.h"
#include "shell/language_menu.h"
#include "shell/line_attendant.h"
#include "shell/line_status.h"
#include "shell/main_window.h"
#include "shell/session.h"
#include "shell/windows.h"

namespace kestrel {

struct ModelState {
    std::vector<std::string> names;
};
template class Module<ModelState>;

namespace {

constexpr const char* FamilyLauncher = "KESTREL.EXE";
constexpr const char* ClearingPage = "FrmCancella";
constexpr const char* PortMenu = "mnuCom";

LineAttendant& attendant() {
    static LineAttendant instance;
    return instance;
}

void openFromMenu(const std::string& page) {
    // No page may hold subscriptions, or be changed behind the user's back, while data are cleared.
    if (page == ClearingPage) ClosePages();
    ShowPage(page);
}

/// The port menu shows each port's device, or why it cannot be used.
void describePorts() {
    for (int port = 1; port <= PortCount; ++port) {
        MenuItem& entry = MDIForm1().mnuCox(port);
        if (entry.Enabled) entry.Detail = platform().portDevice(port);
    }
}

/// Pages open, and another port is chosen, only once the boards are known: the byte of a probe must not be taken for
/// the answer of a board. Entries of pages that do not exist stay disabled.
void enableEntries(bool boardsAreKnown) {
    for (const MenuRow& row : MenuTree())
        if (row.page) MDIForm1().entry(row.name).Enabled = boardsAreKnown && PageIsRegistered(row.page);
    MDIForm1().entry(PortMenu).Enabled = boardsAreKnown;
}

void choosePort(int port) {
    if (!MDIForm1().entry(PortMenu).Enabled) return;
    Link().Timer1.Enabled = true;  // the scan begins anew after an exit that found no launcher
    OpenPort(port);
}

void bindMenu() {
    MainWindow& window = MDIForm1();
    for (const MenuRow& row : MenuTree())
        if (row.page) window.entry(row.name).OnClick([page = std::string(row.page)] { openFromMenu(page); });
    enableEntries(false);
    window.entry("smnuExit").OnClick(smnuExit_Click);
    for (int i = 0; i < MainWindow::LanguageEntries; ++i) window.smnuLingue(i).OnClick([i] { smnuLingue_Click(i); });
    for (int port = 1; port <= PortCount; ++port) window.mnuCox(port).OnClick([port] { choosePort(port); });
    window.entry(PortMenu).OnOpening(describePorts);
    describePorts();
}

}  // namespace

const std::vector<std::string>& ModelNames() { return stateOf<ModelState>().names; }

void InitModelNames() {
    stateOf<ModelState>().names = {"Ash",     "Alder", "Birch",       "Cedar",      "Alder S",      "Birch S",
                                   "Dogwood", "Elm",   "Alder North", "Cedar Plus", "Alder S North"};
}

void MDIForm_Load(const std::string& title) {
    platform().changeDirectory(platform().programDirectory());
    InitModelNames();
    ReadConfig();
    if (!SelectLanguage()) EndProcess(EndedByTrouble);
    InitBoardTables();
    bindMenu();
    SetAttendant(&attendant());
    MDIForm1().SetMenuCaptions();  // before the window shows them
    platform().showMainWindow();
    FrmSer_Load();
    enableEntries(true);
    MDIForm1().Caption = title;
    FollowLine();
}

namespace {

void leave() {
    // The start's wait for a board goes on, should there be no launcher: nothing else would end it.
    if (!Link().LinkSetup || LineIsClosed()) FrmSer_Unload();
    try {
        if (const auto family = platform().familyDirectory()) {
            platform().changeDirectory(*family);
            platform().startProgram(*family / FamilyLauncher);
        }
    } catch (const RunTimeError&) {
        return;  // without a launcher the program does not end by this path
    }
    EndProcess(0);
}

}  // namespace

void smnuExit_Click() { EndWhenSettled(leave, true); }

void MDIForm_Unload() {
    const auto leaveAnyway = [] {
        leave();
        EndProcess(0);
    };
    EndWhenSettled(leaveAnyway, true);
}

void StartAnew() {
    ClosePages();
    EndHistoryOfBoards();
    enableEntries(false);
    Module<BoardsOnTheLine>::renew();
    FrmSer_Identify();
    enableEntries(true);
    FollowLine();
    tell(&LinkObserver::startedAnew);
}

}  // namespace kestrel
