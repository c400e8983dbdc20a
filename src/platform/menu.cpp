// The entries of a menu.
#include "platform/menu.h"

namespace kestrel {

MenuItem& MenuItem::add(std::string name) {
    items_.push_back(std::make_unique<MenuItem>(std::move(name)));
    return *items_.back();
}

void MenuItem::UserClick() {
    userAct([this] {
        if (usable()) raise(onClick_);
    });
}

}  // namespace kestrel
