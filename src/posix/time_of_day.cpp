// The time of day where this computer stands.
#include "posix/time_of_day.h"

namespace kestrel::posix {

std::tm timeOfDay() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

}  // namespace kestrel::posix
