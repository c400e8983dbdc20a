// The window of no size that carries the serial control and the link's timers.
#include "shell/frm_ser.h"

#include "link/index_files.h"
#include "link/link_engine.h"
#include "link/port_search.h"
#include "shell/main_window.h"

namespace kestrel {

namespace {

constexpr int StatusBarTwips = 255;
constexpr int LampPanels = 3;

}  // namespace

void BuildStatusBar() {
    StatusBar& bar = MDIForm1().StatusBar1;
    bar.height = StatusBarTwips;
    for (int lamp = 1; lamp <= LampPanels; ++lamp) {
        StatusPanel& panel = bar.addPanel();
        panel.minWidth = StatusBarTwips;
        panel.Picture = lamp;
        panel.Tag = lamp;
    }
    bar.Panels(1).alignment = StatusPanel::Alignment::Right;
    bar.Panels(1).sizing = StatusPanel::Sizing::Spring;
}

void FrmSer_Load() {
    MainWindow& window = MDIForm1();
    BuildStatusBar();
    std::array<MenuItem*, PortCount + 1> ports{};
    for (int port = 1; port <= PortCount; ++port) ports[static_cast<std::size_t>(port)] = &window.mnuCox(port);
    SetUpLink(window.StatusBar1, ports);
    LinkState& link = Link();
    link.LinkSetup = true;
    OpenPort(0);
    FrmSer_Identify();
}

void FrmSer_Identify() {
    LinkState& link = Link();
    link.Timer1.Enabled = false;
    link.LinkSetup = true;
    LoadIndexFiles();
    link.LinkSetup = false;
    EndExchange();
    link.Timer1.Enabled = true;
}

void FrmSer_Unload() { StopLink(); }

}  // namespace kestrel
