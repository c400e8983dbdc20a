// The gallery: the demo with one page, on which every kind of control is in every state. Options are the program's own.
#include <QApplication>
#include <cstdio>
#include <memory>

#include "gallery/frm_controls.h"
#include "platform/platform.h"
#include "qt/io/display.h"
#include "qt/window/program.h"
#include "shell/options.h"
#include "shell/session.h"
#include "shell/windows.h"

int main(int argc, char** argv) {
    using namespace kestrel;
    const Session session;
    RegisterPages({{"FrmControls", [] { return std::make_unique<FrmControls>(); }}});
    Options options;
    try {
        options = parseOptions({argv + 1, argv + argc});
        ProgramText text = programText();
        text.name = "kestrel-gallery";
        if (options.help) return std::printf("%s", helpText(text).c_str()) < 0;
    } catch (const BadOption& error) {
        std::fprintf(stderr, "kestrel-gallery: %s\n", error.what());
        return EndedByBadOption;
    }
    options.demo = true;
    options.pages = {"FrmControls"};
    if (!qt::prepareDisplay(true)) return EndedByTrouble;
    qt::chooseEventLoop();
    int ownName = 1;
    QApplication application(ownName, argv);
    qt::runProgram(application, options);
}
