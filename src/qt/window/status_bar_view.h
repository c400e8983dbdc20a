// Shows the status bar: panels of text or of a lamp.
// A panel that the program adds appears with the next event.
#pragma once

#include <QObject>
#include <QStatusBar>
#include <functional>
#include <memory>
#include <vector>

#include "platform/status_bar.h"

namespace kestrel::qt {

class LineStatusView;
class StatusPanelView;

class StatusBarView : public ControlView {
  public:
    /// All outlive the view. `lineChanged` runs when something else is on the line.
    StatusBarView(StatusBar& model, LineStatus& line, QStatusBar& bar, std::function<void()> lineChanged);
    ~StatusBarView() override;

    void controlChanged() override;
    /// The language may have changed.
    void renamed();
    /// Takes the panels that were added since the last event.
    void bringUpToDate();

  private:
    void rebuild();

    StatusBar& model_;
    QStatusBar& bar_;
    QObject context_;
    std::unique_ptr<LineStatusView> line_;
    std::vector<std::unique_ptr<StatusPanelView>> panels_;
    bool isStale_ = false;
};

}  // namespace kestrel::qt
