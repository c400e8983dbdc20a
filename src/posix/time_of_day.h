// The time of day where this computer stands.
#pragma once

#include <ctime>

namespace kestrel::posix {

std::tm timeOfDay();

}  // namespace kestrel::posix
