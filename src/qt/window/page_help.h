// What a page is for, in two sentences of the user's language.
#pragma once

#include <QString>
#include <string>

class QWidget;

namespace kestrel::qt {

/// By the class name of the page; with an empty or unknown one, how to get about in the program.
QString purposeOf(const std::string& page);

/// The manual at the page's section; where the installation has no manual, what the page is for.
void showHelp(QWidget& parent, const std::string& page, const std::string& title);

}  // namespace kestrel::qt
