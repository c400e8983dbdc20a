// Shows folding frames below one another: those in use first, each of the others behind a button that unfolds it.
// The button is none of the frame's own controls: it works while the frame is locked.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "platform/folding_frame.h"
#include "qt/views/group_view.h"

class QBoxLayout;
class QToolButton;

namespace kestrel::qt {

class FoldingView : public GroupView {
  public:
    explicit FoldingView(FoldingFrame& frame) : GroupView(frame) {}

    bool inUse() const { return static_cast<const FoldingFrame&>(model()).InUse; }
    bool folded() const { return static_cast<const FoldingFrame&>(model()).Folded; }
    void userFold();
    /// To be called whenever the frame may have changed.
    void whenChanged(const std::function<void()>& changed) { changed_ = changed; }

  protected:
    void showState() override;

  private:
    std::function<void()> changed_;
};

class FoldingColumn : public QWidget {
  public:
    explicit FoldingColumn(int spacing);
    void add(FoldingView& view);

  private:
    struct Part {
        FoldingView* view;
        QToolButton* button;
        QWidget* holder;  ///< of the view, whose own visibility is the frame's
    };
    void arrange();

    QBoxLayout* lines_;
    std::vector<Part> parts_;
};

}  // namespace kestrel::qt
