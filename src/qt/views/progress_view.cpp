// Shows a progress bar.
#include "qt/views/progress_view.h"

#include <algorithm>

namespace kestrel::qt {

ProgressView::ProgressView(ProgressBar& bar) : View(bar) {
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setTextVisible(false);
}

void ProgressView::showState() {
    const int highest = std::max(1, model().Max.get());
    const int come = std::clamp(model().Value.get(), 0, highest);
    if (value() == come && maximum() == highest) return;
    setMaximum(highest);
    setValue(come);
    valueShown();
}

QString ProgressView::valueInWords() const {
    return QStringLiteral("%1 %").arg((100 * std::max(0, value()) + maximum() / 2) / maximum());
}

}  // namespace kestrel::qt
