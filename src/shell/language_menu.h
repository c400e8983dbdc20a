// Choosing the language: at start-up from the configuration, at run time from the menu.
// A language is added by adding a file; its stem is what the menu shows.
#pragma once

namespace kestrel {

/// Gives the language entries the stems of the files that are there, at most ten. With no file at all it shows a
/// message and ends the process.
void FillLanguageMenu();

/// Loads the configured language, or the first one where it is not found (the tenth entry counts as not found).
/// True; or ends the process.
bool SelectLanguage();

/// The user chose an entry: the new file is taken only when its section marks stand as in the old one.
void smnuLingue_Click(int index);

}  // namespace kestrel
