// The entries of a menu, as a tree that a menu bar shows.
// An entry is a control: it has Enabled and Visible, and a view may be bound to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/control.h"

namespace kestrel {

class MenuItem : public Control {
  public:
    explicit MenuItem(std::string name) : name_(std::move(name)) {}

    Property<std::string> Caption{*this, {}};
    Property<bool> Checked{*this, false};
    Property<std::string> Detail{*this, {}};  ///< shown beside the caption, such as a port's device

    const std::string& name() const { return name_; }
    MenuItem& add(std::string name);
    const std::vector<std::unique_ptr<MenuItem>>& items() const { return items_; }

    void OnClick(Handler handler) { onClick_ = std::move(handler); }
    /// Just before the entry's submenu is shown.
    void OnOpening(Handler handler) { onOpening_ = std::move(handler); }
    void UserClick();
    void UserOpen() { raise(onOpening_); }
    std::string accessibleName() const override { return Caption; }

  private:
    std::string name_;
    std::vector<std::unique_ptr<MenuItem>> items_;
    Handler onClick_;
    Handler onOpening_;
};

}  // namespace kestrel
