// What is on the line, in words: the device, the boards with their revisions, the machine's number, and what is wrong.
#pragma once

namespace kestrel {

/// Has the main window's line status follow the link from now on.
void FollowLine();
/// Says it anew, such as in another language.
void ShowLineStatus();

}  // namespace kestrel
