// Position labels of switches.
#include "pages/common/position_labels.h"

#include <algorithm>

#include "language/language_files.h"

namespace kestrel {

namespace {

/// Of a parameter of one byte; a board's table that names a wider one does not make a list without end.
constexpr ParamValue HighestPosition = 255;

}  // namespace

std::string NumberedPositions(const std::string& first, ParamValue highest) {
    std::string list = first;
    for (ParamValue p = 1; p <= std::min(highest, HighestPosition); ++p) list += "," + std::to_string(p);
    return list;
}

std::string TwoPositions(int leftLine, int rightLine) {
    return LanguageTable(leftLine) + "," + LanguageTable(rightLine);
}

}  // namespace kestrel
