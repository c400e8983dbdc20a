// The words of finding, going back and helping.
#include "qt/window/access_words.h"

#include <array>

#include "language/window_texts.h"
#include "qt/io/text.h"

namespace kestrel::qt {

namespace {

constexpr int FirstLine = 725;
constexpr std::array English = {"Go to page or setting",
                                "Read this page again",
                                "Copy this page as a table",
                                "Changes of this run",
                                "Put the last change back",
                                "Help on this page",
                                "Tabs of the open pages",
                                "Put back",
                                "Time",
                                "Page",
                                "Setting",
                                "Before",
                                "After",
                                "State",
                                "confirmed",
                                "waiting",
                                "replaced",
                                "withdrawn",
                                "not taken",
                                "not answered",
                                "put back",
                                "no lamp lit",
                                "lit",
                                "Nothing has been changed.",
                                "Nothing found"};
static_assert(English.size() == static_cast<std::size_t>(AccessWord::NothingFound) + 1);

}  // namespace

QString accessWord(AccessWord which) {
    const auto index = static_cast<std::size_t>(which);
    return toQt(WindowText(FirstLine + static_cast<int>(index), English.at(index)));
}

}  // namespace kestrel::qt
