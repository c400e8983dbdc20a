// Position labels of switches: lists with commas between.
// The number of labels is the number of positions.
#pragma once

#include <string>

#include "link/param_table.h"

namespace kestrel {

/// A first label, then "1", "2" up to the highest position, which is taken as at most 255.
std::string NumberedPositions(const std::string& first, ParamValue highest);

/// The labels of a switch of two positions that are texts of the language.
std::string TwoPositions(int leftLine, int rightLine);

}  // namespace kestrel
