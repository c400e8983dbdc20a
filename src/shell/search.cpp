// Finding a page or a setting by a part of its name.
#include "shell/search.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "link/history.h"
#include "platform/names_on_page.h"
#include "platform/outside.h"
#include "shell/main_window.h"
#include "shell/windows.h"

namespace kestrel {

namespace {

/// What the accented letters of the code page are looked for as, from U+00C0 to U+00FF; in UTF-8 all begin with one
/// byte.
constexpr unsigned char AccentedLead = 0xC3;
constexpr std::string_view Plain = "aaaaaaaceeeeiiiidnooooo ouuuuypsaaaaaaaceeeeiiiidnooooo ouuuuypy";

std::string keyOf(const std::string& text) {
    std::string key;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == AccentedLead && i + 1 < text.size())
            key += Plain[static_cast<unsigned char>(text[++i]) & 63U];
        else
            key += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : text[i];
    }
    return key;
}

void addPage(std::vector<Findable>& all, Page& page) {
    all.push_back({page.name(), page.Caption, {}, 0, keyOf(page.Caption)});
    const std::vector<NamedControl> named = NamedControls(page);
    std::size_t place = 0;
    auto next = named.begin();
    eachControl(page.Arrange(), [&](const Control& control) {
        if (next != named.end() && next->control == &control) {
            if (next->name != page.Caption.get())
                all.push_back(
                    {page.name(), page.Caption, next->name, place, keyOf(next->name + " " + page.Caption.get())});
            ++next;
        }
        ++place;
    });
}

/// The lower, the sooner; nothing where not every word is found.
int rankOf(const Findable& each, const std::vector<std::string>& words) {
    constexpr int NotFound = -1;
    for (const std::string& word : words)
        if (each.key.find(word) == std::string::npos) return NotFound;
    if (each.control.empty()) return 0;
    return !words.empty() && each.key.starts_with(words.front()) ? 1 : 2;
}

}  // namespace

std::vector<Findable> AllFindable() {
    std::vector<Findable> all;
    for (const MenuRow& row : MenuTree()) {
        if (!row.page || !PageIsRegistered(row.page)) continue;
        if (Page* const open = FindLoadedPage(row.page)) {
            addPage(all, *open);
            continue;
        }
        const std::unique_ptr<Page> made = MakePage(row.page);
        settleLayout(made->Arrange());
        made->ShowTexts();
        addPage(all, *made);
    }
    return all;
}

std::vector<Findable> Matching(const std::vector<Findable>& all, const std::string& typed) {
    std::vector<std::string> words;
    std::istringstream split(keyOf(typed));
    for (std::string word; split >> word;) words.push_back(word);
    std::vector<Findable> found;
    for (int rank = 0; rank <= (words.empty() ? 0 : 2); ++rank)
        for (const Findable& each : all)
            if (rankOf(each, words) == rank) found.push_back(each);
    return found;
}

void OpenFound(const Findable& found, const std::function<void(Control*)>& then) {
    ChooseEntryOf(found.page);
    FromOutside(&MDIForm1(), [found, then] {
        if (Page* const page = FindLoadedPage(found.page))
            then(found.control.empty() ? nullptr : ControlAt(*page, found.place));
    });
}

}  // namespace kestrel
