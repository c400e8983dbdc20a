// Shows a progress bar.
#pragma once

#include <QProgressBar>

#include "platform/basic_controls.h"
#include "qt/views/view.h"

namespace kestrel::qt {

class ProgressView : public View<ProgressBar, QProgressBar> {
  public:
    explicit ProgressView(ProgressBar& bar);

    QAccessible::Role spokenRole() const override { return QAccessible::ProgressBar; }
    QString valueInWords() const override;
    QSize sizeHint() const override { return {rowHeight(*this) * 5, textHeight(*this)}; }

  protected:
    void showState() override;
};

}  // namespace kestrel::qt
