// Texts that the program itself adds to those of the installation.
#include "language/window_texts.h"

#include "language/language_files.h"

namespace kestrel {

namespace {

constexpr int SimulatedLine = 719;

}  // namespace

std::string WindowText(int line, const char* english) {
    const bool own = LanguageTable(WindowSectionLine).starts_with(SectionMark) && !LanguageTable(line).empty();
    return own ? LanguageTable(line) : english;
}

std::string SimulatedDeviceText() { return WindowText(SimulatedLine, "demo: simulated machine"); }

}  // namespace kestrel
