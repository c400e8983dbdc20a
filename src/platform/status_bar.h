// The status bar at the foot of the main window: panels of text or of a picture.
// Panels are numbered from 1, as the system numbers them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/control.h"

namespace kestrel {

class StatusPanel : public Control {
  public:
    enum class Alignment { Left = 0, Center = 1, Right = 2 };
    enum class Sizing { Fixed = 0, Spring = 1 };

    Property<std::string> Text{*this, {}};
    Property<int> Picture{*this, 0};  ///< number in the image list of lamp pictures, 0 for none
    int Tag = 0;                      ///< remembers the number of the picture on show
    Alignment alignment = Alignment::Left;
    Sizing sizing = Sizing::Fixed;
    int minWidth = 0;  ///< twips
    std::string accessibleName() const override { return ToolTip; }
};

/// What is on the line, and what is wrong with it.
class LineStatus : public Control {
  public:
    Property<std::string> Text{*this, {}};
    Property<std::string> Alarm{*this, {}};  ///< empty while all is well
    std::string text() const override { return Alarm.get().empty() ? Text : Alarm; }
};

class StatusBar : public Control {
  public:
    StatusBar() { addPanel(); }

    int height = 0;  ///< twips
    StatusPanel& addPanel();
    /// Panel by its number, from 1. A number without a panel is a programming error.
    StatusPanel& Panels(int number);
    int count() const { return static_cast<int>(panels_.size()); }

  private:
    std::vector<std::unique_ptr<StatusPanel>> panels_;
};

}  // namespace kestrel
