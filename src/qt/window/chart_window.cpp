// The stretch of time that a strip chart shows.
#include "qt/window/chart_window.h"

#include <algorithm>

namespace kestrel::qt {

double ChartWindow::longestSpan() const { return std::max(newest_, FirstSpan); }

void ChartWindow::settle() {
    if (mode_ == Mode::Fit) span_ = std::max(newest_, ShortestSpan);
    span_ = std::clamp(span_, ShortestSpan, longestSpan());
    const double latest = std::max(0.0, newest_ - span_);
    from_ = mode_ == Mode::Free ? std::clamp(from_, 0.0, latest) : latest;
}

void ChartWindow::setNewest(double time) {
    newest_ = time;
    settle();
}

void ChartWindow::follow() {
    if (mode_ == Mode::Fit) span_ = FirstSpan;
    mode_ = Mode::Follow;
    settle();
}

void ChartWindow::fit() {
    mode_ = Mode::Fit;
    settle();
}

void ChartWindow::pan(double part) {
    mode_ = Mode::Free;
    from_ += part * span_;
    settle();
}

void ChartWindow::bringIntoSight(double time) {
    if (time >= from_ && time <= to()) return;
    mode_ = Mode::Free;
    from_ = time - span_ / 2;
    settle();
}

void ChartWindow::zoom(double factor, double part) {
    const double still = from_ + part * span_;
    if (mode_ == Mode::Fit) mode_ = Mode::Free;
    span_ = std::clamp(span_ * factor, ShortestSpan, longestSpan());
    from_ = still - part * span_;
    settle();
}

}  // namespace kestrel::qt
