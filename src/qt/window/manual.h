// The manual of the installation, in a window of its own.
// A file of Markdown a language, whose sections have marks: <a id="FrmDosi"></a> before the heading of a page's.
#pragma once

#include <QString>

class QWidget;

namespace kestrel::qt {

/// Opens the manual at a section, by its mark, or at its beginning where it has no such one: in the language of the
/// pages, else in English. False where the installation has no manual.
bool showManual(QWidget& parent, const QString& section);

}  // namespace kestrel::qt
