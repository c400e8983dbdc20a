// What a screen reader, a search and a list of changes call the controls of a page: each by a name that no other
// control of the page has.
#pragma once

#include <string>
#include <vector>

#include "platform/window.h"

namespace kestrel {

struct NamedControl {
    Control* control;
    std::string name;
};

/// What can be worked or read on the page, in reading order, by the texts that stand there now. A name is what the
/// control says of itself, or the caption of its row; where several are alike, what tells them apart comes before it:
/// row, column head, frame; and a number behind it where nothing does. Captions, units and frames are names themselves
/// and stand not in the list, and neither does the figure of a bar.
std::vector<NamedControl> NamedControls(Window& page);
/// The name of one of them, and of a bar's figure that of the bar; empty for any other control.
std::string NameOnPage(Window& page, const Control& control);

}  // namespace kestrel
