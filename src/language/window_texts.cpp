// Texts that the program itself adds to those of the installation.
#include "language/window_texts.h"

#include "language/language_files.h"

namespace kestrel {

std::string WindowText(int line, const char* english) {
    const bool own = LanguageTable(WindowSectionLine).starts_with(SectionMark) && !LanguageTable(line).empty();
    return own ? LanguageTable(line) : english;
}

}  // namespace kestrel
