// One page in the frame window: its title, place and size.
// The page itself is built by page_view.
#pragma once

#include <QMdiSubWindow>
#include <QPointer>

#include "platform/platform.h"
#include "platform/window.h"

class QHelpEvent;

namespace kestrel::qt {

class PageArea;

class ChildWindow : public QMdiSubWindow, public ControlView {
  public:
    /// Builds the page; it is shown later. Run-time errors of the page's own code pass through.
    ChildWindow(Window& model, PageArea& area);
    ~ChildWindow() override;

    Window& model() const { return *model_; }
    /// Width and height that the page takes with its present texts, inside the area.
    QSize fittingSize() const;
    /// Takes the size that the present texts need and lays them out, before anything is painted: else each level of the
    /// layout has a turn of the event loop and a painting of its own, with scroll bars that come and go.
    void settle();
    /// It has just come: it goes beside the pages that stand already.
    void standBeside();
    /// The user closes the page or the program: see page_view.h.
    void dropTyping();
    /// Lets go of the page, which is being unloaded; the window goes with the next event.
    void dismiss();

    void controlChanged() override;

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void place();
    void fit();
    bool showTip(const QHelpEvent& event);

    Window* model_;
    PageArea& area_;
    QPointer<QWidget> page_;
    QPoint placedAt_;
    QSize fitted_;
};

}  // namespace kestrel::qt
