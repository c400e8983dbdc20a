// The window of no size that carries the serial control and the link's timers.
// Loading it opens the link and identifies the boards; failures there end the process.
#pragma once

namespace kestrel {

void FrmSer_Load();
void FrmSer_Unload();
/// Asks the boards who they are, loads their tables, and opens the line to the pages.
void FrmSer_Identify();

/// Gives the main window's status bar its four panels: text, and the send, receive and error lamps.
void BuildStatusBar();

}  // namespace kestrel
