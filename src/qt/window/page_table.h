// A page as a table for another program: a row a control, its name and what it shows.
#pragma once

#include <QString>

namespace kestrel {
class Page;
}
class QWidget;

namespace kestrel::qt {

/// Cells are parted by tabs, rows by line ends; the page's title stands first, and a list brings its own rows.
QString tableOf(Page& page, const QWidget& shown);

}  // namespace kestrel::qt
