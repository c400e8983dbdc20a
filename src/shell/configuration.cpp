// What the two configuration files settle.
#include "shell/configuration.h"

#include "link/configuration_file.h"
#include "link/link_engine.h"
#include "platform/errors.h"
#include "platform/module_state.h"
#include "shell/language_menu.h"
#include "shell/main_window.h"

namespace kestrel {

struct ConfigurationState {
    std::string language;
};
template class Module<ConfigurationState>;

namespace {

struct Settings {
    int port = 0;
    std::string language;
};

/// The settings of a file, or the defaults as soon as anything of it is not right.
template <class Use>
Settings settingsOf(ConfigurationLines (*read)(), const std::string& defaultLanguage, const Use& usePort) {
    try {
        const ConfigurationLines lines = read();
        const int port = lines.port();
        usePort(port);
        return {port, lines.language()};
    } catch (const RunTimeError&) {
        return {0, defaultLanguage};
    }
}

/// While the configuration is being read, a file that cannot be written is passed over: the settings hold all the same.
void writeIfPossible() {
    try {
        WriteConfig();
    } catch (const RunTimeError&) {
        return;
    }
}

void settlePort(int familyPort) {
    int& port = Link().ComPort;
    if (familyPort != port) {
        if (familyPort == 0) return;
        port = familyPort;
        writeIfPossible();
    } else if (port == 0) {
        port = FirstPort;
        writeIfPossible();
    }
}

void checkPortEntry(int port) {
    if (port >= 1 && port <= MainWindow::PortEntries) MDIForm1().mnuCox(port).Checked = true;
}

void settleLanguage(const std::string& familyLanguage) {
    if (familyLanguage.empty() || familyLanguage == ActiveLanguage()) return;
    for (int i = 0; i < MainWindow::LanguageEntries; ++i) {
        MenuItem& entry = MDIForm1().smnuLingue(i);
        if (entry.Caption.get() != familyLanguage) continue;
        entry.Checked = true;
        ActiveLanguage() = familyLanguage;
        writeIfPossible();
        return;
    }
}

}  // namespace

std::string& ActiveLanguage() { return stateOf<ConfigurationState>().language; }

void ReadConfig() {
    MainWindow& window = MDIForm1();
    const std::string firstCaption = window.smnuLingue(0).Caption;
    const Settings own =
        settingsOf(ConfigurationLines::own, firstCaption, [&](int port) { window.mnuCox(port).Checked = true; });
    const Settings family = settingsOf(ConfigurationLines::ofFamily, firstCaption, [](int) {});
    Link().ComPort = own.port;
    ActiveLanguage() = own.language;
    settlePort(family.port);
    checkPortEntry(Link().ComPort);
    FillLanguageMenu();
    settleLanguage(family.language);
}

void WriteConfig() {
    int checked = 0;
    for (int i = MainWindow::LanguageEntries - 1; i >= 0; --i)
        if (MDIForm1().smnuLingue(i).Checked) checked = i;
    WriteConfigurationFile(Link().ComPort, MDIForm1().smnuLingue(checked).Caption);
}

}  // namespace kestrel
