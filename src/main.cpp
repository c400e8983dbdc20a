// The program: reads the command line, finds the display and runs.
// What it does is said by shell/start_up; what it runs on by the floor qt.
#include <QApplication>
#include <cstdio>
#include <stdexcept>

#include "pages/registry.h"
#include "platform/errors.h"
#include "platform/platform.h"
#include "program_version.h"
#include "qt/io/display.h"
#include "qt/io/text.h"
#include "qt/window/program.h"
#include "qt/window/tour.h"
#include "shell/options.h"
#include "shell/session.h"
#include "shell/windows.h"
#include "simulator/faults.h"

namespace {

using namespace kestrel;

/// What the command line alone cannot know.
void checkOptions(const Options& options) {
    for (const std::string& page : options.pages)
        if (!PageIsRegistered(page)) throw BadOption("--open: there is no page \"" + page + "\"");
    try {
        simulator::parseFaults(options.faults);
    } catch (const std::invalid_argument& error) {
        throw BadOption(std::string("--fault: ") + error.what());
    }
}

int failWith(int status, const std::string& reason) {
    std::fprintf(stderr, "kestrel: %s\n", reason.c_str());
    return status;
}

int answer(const std::string& text) {
    std::printf("%s", text.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const Session session;
    RegisterPages(AllPages());
    Options options;
    try {
        options = parseOptions({argv + 1, argv + argc});
        if (options.help) return answer(helpText(programText()));
        if (options.version) return answer(std::string("kestrel ") + ProgramVersion + "\n");
        checkOptions(options);
    } catch (const BadOption& error) {
        return failWith(EndedByBadOption, error.what());
    }
    if (!qt::prepareDisplay(options.tour.empty())) return EndedByTrouble;
    std::string about;
    try {
        about = "--directory: ";
        qt::pathToQt(options.directory);
        about = "--tour: ";
        if (!options.tour.empty()) qt::prepareTourDirectory(options.tour);
    } catch (const RunTimeError& error) {
        return failWith(EndedByTrouble, about + error.what());
    }
    int ownName = 1;  // the other arguments are the program's, not the toolkit's
    const qt::FatalMessagesInOneLine whileRunning;
    qt::chooseEventLoop();
    QApplication application(ownName, argv);
    qt::runProgram(application, options);
}
