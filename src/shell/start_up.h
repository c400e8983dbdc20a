// The program's life outside the pages: from the start of the process to its end.
// Failures at start-up show a message and end the process; they do not start the family launcher.
#pragma once

#include <string>
#include <vector>

namespace kestrel {

/// Loads the main window: configuration, language, tables, menus, link and boards. `title` becomes its caption.
void MDIForm_Load(const std::string& title);
/// The way out: starts the family launcher and ends the process. Without a launcher the program goes on. What is due
/// may go out first; with nothing due this does not return.
void smnuExit_Click();
/// The main window is being closed: the way out, and the end of the process in any case.
void MDIForm_Unload();
/// Other boards are on the line: closes all pages, and asks and loads as at the start.
void StartAnew();

/// The eleven model names. Pages tell models apart by number, and nothing prints them.
const std::vector<std::string>& ModelNames();
void InitModelNames();

}  // namespace kestrel
