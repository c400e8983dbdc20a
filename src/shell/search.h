// Finding a page or a setting by a part of its name, in the active language.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kestrel {

class Control;

/// A page, or a control on it.
struct Findable {
    std::string page;  ///< class name
    std::string pageCaption;
    std::string control;    ///< its name on the page; empty: the page itself
    std::size_t place = 0;  ///< of the control on its page, in reading order
    std::string key;        ///< both names as letters without case and accents
};

/// All pages that the menu opens and what can be worked or read on them, by the texts of the moment. Pages that are
/// not open are made for it and touch no board.
std::vector<Findable> AllFindable();
/// Those in whose names all the words stand that were typed, as whole words or in part: pages first, then controls
/// whose own name begins so, then the rest, in the order of the menu. With nothing typed, the pages.
std::vector<Findable> Matching(const std::vector<Findable>& all, const std::string& typed);
/// Opens its page as the menu does, and calls with the control, or with null where it is the page itself: at once, or
/// after an open exchange; not at all where the menu does not open it now.
void OpenFound(const Findable& found, const std::function<void(Control*)>& then);

}  // namespace kestrel
