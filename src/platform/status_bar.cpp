// The status bar at the foot of the main window.
#include "platform/status_bar.h"

namespace kestrel {

StatusPanel& StatusBar::addPanel() {
    panels_.push_back(std::make_unique<StatusPanel>());
    show();
    return *panels_.back();
}

StatusPanel& StatusBar::Panels(int number) {
    if (number < 1 || number > count()) throw RunTimeError(error_number::SubscriptOutOfRange, "Index out of bounds");
    return *panels_[static_cast<std::size_t>(number - 1)];
}

}  // namespace kestrel
