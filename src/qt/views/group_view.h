// Shows a frame: a quiet panel with its title, round the widget of what stands in it.
// Its flags rule the contents through the widget tree.
#pragma once

#include <QGroupBox>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class GroupView : public View<Frame, QGroupBox> {
  public:
    using View::View;

    QString spokenName() const override { return toQt(model().Caption); }
    QAccessible::Role spokenRole() const override { return QAccessible::Grouping; }
    QSize minimumSizeHint() const override;

    /// Puts the contents in, once. `grows`: they take what height there is; otherwise they stay at the top.
    void setContents(QWidget* contents, bool grows);

  protected:
    void showState() override;
};

}  // namespace kestrel::qt
