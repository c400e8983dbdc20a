// Choosing the language.
#include "shell/language_menu.h"

#include <string>

#include "language/language_files.h"
#include "link/loaded_pages.h"
#include "platform/platform.h"
#include "shell/configuration.h"
#include "shell/line_status.h"
#include "shell/main_window.h"

namespace kestrel {

namespace {

constexpr std::size_t EndingLength = 4;
constexpr int LastEntry = MainWindow::LanguageEntries - 1;

std::string fileOf(const std::string& stem) { return stem + ".lng"; }

std::string stemOf(const std::string& file) { return file.substr(0, file.size() - EndingLength); }

void useEntry(int index) {
    MenuItem& entry = MDIForm1().smnuLingue(index);
    entry.Checked = true;
    ActiveLanguage() = entry.Caption.get();
}

/// Unchecks all entries; the index of the one that was checked, the last where there were several, else 0.
int uncheckEntries() {
    int old = 0;
    for (int i = 0; i <= LastEntry; ++i) {
        MenuItem& entry = MDIForm1().smnuLingue(i);
        if (entry.Checked) old = i;
        entry.Checked = false;
    }
    return old;
}

void refuseLanguage(const std::string& oldFile, int old) {
    LoadLanguage(oldFile);
    useEntry(old);
    Message message;
    message.title = "Wrong file";
    message.text = "Check file message !!!";
    message.icon = Message::Icon::Exclamation;
    ShowMessage(message);
}

/// The choice holds for this run even where it cannot be saved.
void saveChoice() {
    try {
        WriteConfig();
    } catch (const RunTimeError& error) {
        Message message;
        message.title = "Kestrel";
        message.text = "The choice of language could not be saved";
        message.icon = Message::Icon::Exclamation;
        message.detail = error.what();
        ShowMessage(message);
    }
}

void showAgain(Window& window) {
    platform().isMinimized(window) ? window.Form_Activate() : platform().showWindow(window);
}

/// Brings each window to the front once, so that it takes its captions anew, and the one that was in front at last.
/// Those that the user has put away stay away.
void showWindowsAgain() {
    Window* front = platform().activeWindow();
    for (Page* page : LoadedPages()) showAgain(*page);
    if (front) showAgain(*front);
}

}  // namespace

void FillLanguageMenu() {
    const std::vector<std::string> files = FindLanguageFiles();
    if (files.empty()) {
        Message message;
        message.title = "Error";
        message.text = "File missing!\nReinstall program";
        message.detail = "No language file (*.lng) in " + platform().programDirectory().string();
        ShowMessage(message);
        EndProcess(EndedByTrouble);
    }
    for (int i = 0; i <= LastEntry && i < static_cast<int>(files.size()); ++i) {
        MenuItem& entry = MDIForm1().smnuLingue(i);
        entry.Caption = stemOf(files[static_cast<std::size_t>(i)]);
        entry.Visible = true;
    }
}

bool SelectLanguage() {
    FillLanguageMenu();
    int found = LastEntry;
    for (int i = LastEntry - 1; i >= 0; --i)
        if (MDIForm1().smnuLingue(i).Caption.get() == ActiveLanguage()) found = i;
    if (ActiveLanguage().empty() || found == LastEntry) found = 0;
    LoadLanguage(fileOf(MDIForm1().smnuLingue(found).Caption));
    useEntry(found);
    return true;
}

void smnuLingue_Click(int index) {
    const int old = uncheckEntries();
    const std::string oldFile = fileOf(MDIForm1().smnuLingue(old).Caption);
    const std::string newFile = fileOf(MDIForm1().smnuLingue(index).Caption);
    if (CheckLanguageFile(oldFile, newFile))
        useEntry(index);
    else
        refuseLanguage(oldFile, old);
    MDIForm1().SetMenuCaptions();
    ShowLineStatus();
    saveChoice();
    showWindowsAgain();
}

}  // namespace kestrel
