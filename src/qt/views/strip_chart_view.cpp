// Shows a strip chart.
#include "qt/views/strip_chart_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "qt/style/drawing.h"
#include "qt/style/scale.h"
#include "qt/views/chart_button.h"
#include "qt/window/words.h"

namespace kestrel::qt {

namespace {

constexpr double LeastRange = 10;  // of values, so that a steady value is no noise
constexpr double ZoomStep = 1.25;
constexpr int MarkSize = 9;
const QString WidestNumber = QStringLiteral("-000.0 ");

/// The marks of the channels differ in shape as well as in colour.
void drawMark(QPainter& painter, std::size_t channel, const QPointF& centre) {
    const QColor color = colors().channels[channel % colors().channels.size()];
    QRectF mark(0, 0, MarkSize, MarkSize);
    mark.moveCenter(centre);
    drawShape(painter, mark, channel % 2 == 0 ? MarkSize / 2.0 : 1, color, colors().field);
}

QString timeText(double days) {
    const auto minutes = static_cast<int>(std::lround(days / ChartWindow::Minute));
    return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QChar(u'0'));
}

/// With its seconds.
QString exactTimeText(double days) {
    const auto seconds = static_cast<int>(std::lround(days / ChartWindow::Minute * 60));
    const int minutes = seconds / 60;
    return timeText(minutes * ChartWindow::Minute) + QStringLiteral(":%1").arg(seconds % 60, 2, 10, QChar(u'0'));
}

}  // namespace

StripChartView::StripChartView(StripChart& chart)
    : View(chart),
      pause_(new ChartButton(ChartButton::Sign::Pause, Word::Pause, this)),
      fit_(new ChartButton(ChartButton::Sign::Fit, Word::Fit, this)),
      follow_(new ChartButton(ChartButton::Sign::Follow, Word::Follow, this)) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setPolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(pause_, &QToolButton::clicked, this, [this](bool on) { setPaused(on); });
    connect(fit_, &QToolButton::clicked, this, [this] {
        window_.fit();
        windowMoved();
    });
    connect(follow_, &QToolButton::clicked, this, [this] {
        window_.follow();
        windowMoved();
    });
    windowMoved();
}

void StripChartView::showState() {
    for (ChartButton* button : {pause_, fit_, follow_}) button->renamed();
    if (newestShown_ != model().times().size()) {
        newestShown_ = model().times().size();
        if (!paused_ && newestShown_ > 0) window_.setNewest(model().times().back());
    }
    valueShown();
}

std::size_t StripChartView::timesShown() const { return paused_ ? pausedAt_ : model().times().size(); }

void StripChartView::setPaused(bool paused) {
    paused_ = paused;
    pausedAt_ = model().times().size();
    if (!paused && pausedAt_ > 0) window_.setNewest(model().times().back());
    windowMoved();
}

void StripChartView::windowMoved() {
    pause_->setChecked(paused_);
    fit_->setChecked(window_.mode() == ChartWindow::Mode::Fit);
    follow_->setChecked(window_.mode() == ChartWindow::Mode::Follow);
    update();
}

QString StripChartView::valueText(std::size_t channel, std::size_t point) const {
    const std::optional<double> value = valueAt(model().channels()[channel], point);
    if (!value) return dash();
    const QString number = toQt(FormatDecimals(*value, 1));
    return model().Unit.get().empty() ? number : number + u' ' + toQt(model().Unit);
}

QString StripChartView::presentValue(std::size_t channel) const {
    return model().times().empty() ? dash() : valueText(channel, model().times().size() - 1);
}

QSize StripChartView::sizeHint() const { return {fontMetrics().height() * 34, fontMetrics().height() * 20}; }

QSize StripChartView::minimumSizeHint() const { return {fontMetrics().height() * 22, fontMetrics().height() * 13}; }

void StripChartView::resizeEvent(QResizeEvent* event) {
    View::resizeEvent(event);
    int right = width();
    for (ChartButton* button : {follow_, fit_, pause_}) {
        const QSize size = button->sizeHint();
        right -= size.width();
        button->setGeometry(right, 0, size.width(), size.height());
    }
}

QRectF StripChartView::plot() const {
    const double line = fontMetrics().height();
    const double left = figuresWidth(fontMetrics(), QStringLiteral("-000")) + GridStep;
    return QRectF(rect()).adjusted(left, rowHeight(*this) + line + GridStep, -MarkSize,
                                   -((model().TimeAxis.get().empty() ? 1.5 : 2.5) * line + 2));
}

ChartScale StripChartView::scale() const {
    ChartScale scale{window_.from(), window_.to(), 0, 0, plot()};
    double lowest = HUGE_VAL;
    double highest = -HUGE_VAL;
    for (const auto& channel : model().channels()) {
        const SampleRange range = samplesWithin(channel, model().times(), timesShown(), scale.from, scale.to);
        for (std::size_t i = range.first; i < range.end; ++i) {
            if (!std::isfinite(channel.samples[i].value)) continue;
            lowest = std::min(lowest, channel.samples[i].value);
            highest = std::max(highest, channel.samples[i].value);
        }
    }
    if (lowest > highest) lowest = 0, highest = 100;
    const double middle = (lowest + highest) / 2;
    const double half = std::max(highest - lowest, LeastRange) / 2;
    const int most = std::max(2, static_cast<int>(scale.place.height() / (fontMetrics().height() * 2.5)));
    const double step = roundStep(2 * half, most);
    scale.lowest = std::floor((middle - half) / step) * step;
    scale.highest = std::ceil((middle + half) / step) * step;
    return scale;
}

void StripChartView::paintEvent(QPaintEvent* /*event*/) {
    Brush brush(*this);
    const ChartScale scale = this->scale();
    paintHead(brush);
    paintAxes(brush, scale);
    paintChannels(brush, scale);
    paintReading(brush, scale);
}

void StripChartView::paintHead(Brush& brush) const {
    const double line = fontMetrics().height();
    const QRectF head(0, 0, pause_->x() - GridStep, rowHeight(*this));
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    brush.setFont(bold);
    brush.setPen(textColor(*this));
    const QString title =
        paused_ ? toQt(model().Title) + QStringLiteral(" — ") + word(Word::Paused) : toQt(model().Title);
    brush.drawText(head, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), title);
    brush.setFont(font());
    double x = plot().left();
    for (std::size_t i = 0; i < model().channels().size(); ++i) {
        const QString name = toQt(model().channels()[i].name);
        drawMark(brush, i, QPointF(x + MarkSize / 2.0, head.bottom() + line / 2));
        x += MarkSize + GridStep;
        brush.setPen(textColor(*this));
        const int nameWidth = fontMetrics().horizontalAdvance(name);
        brush.drawText(QRectF(x, head.bottom(), nameWidth + 1, line), static_cast<int>(Qt::AlignVCenter), name);
        x += nameWidth;
        const int valueWidth = figuresWidth(fontMetrics(), WidestNumber + toQt(model().Unit));
        drawFigures(brush, QRectF(x, head.bottom(), valueWidth + 2, line), presentValue(i));
        x += valueWidth + 4 * GridStep;
    }
}

void StripChartView::paintAxes(Brush& brush, const ChartScale& scale) const {
    const QRectF place = scale.place;
    const double line = fontMetrics().height();
    drawShape(brush, place, 0, colors().field, colors().line);
    brush.setPen(isEnabled() ? colors().quietText : colors().disabledText);
    const int mostValues = std::max(2, static_cast<int>(place.height() / (line * 2.5)));
    const double step = roundStep(scale.highest - scale.lowest, mostValues);
    for (int i = 0; scale.lowest + i * step <= scale.highest + step / 100; ++i) {
        const double value = scale.lowest + i * step;
        const double y = std::round(scale.y(value));
        brush.fillRect(QRectF(place.left(), y, place.width(), 1), colors().line);
        drawFigures(brush, QRectF(0, y - line / 2, place.left() - GridStep, line), toQt(formatShort(value)));
    }
    drawFigures(brush, QRectF(0, place.top() - line - GridStep, place.left() - GridStep, line), toQt(model().Unit));
    paintTimes(brush, scale);
}

void StripChartView::paintTimes(Brush& brush, const ChartScale& scale) const {
    const QRectF place = scale.place;
    const double line = fontMetrics().height();
    const double timeWidth = fontMetrics().horizontalAdvance(QStringLiteral("000:00")) + 2.0 * GridStep;
    const double timeStep = roundTimeStep(window_.span(), static_cast<int>(place.width() / timeWidth));
    const auto first = static_cast<int>(std::ceil(scale.from / timeStep - 1e-9));
    for (int i = first; i * timeStep <= scale.to + timeStep * 1e-9; ++i) {
        const double x = std::round(scale.x(i * timeStep));
        brush.fillRect(QRectF(x, place.top(), 1, place.height()), colors().line);
        const double left = std::min(x - timeWidth / 2, width() - timeWidth + GridStep);
        brush.drawText(QRectF(left, place.bottom() + line / 2 + 1, timeWidth, line), static_cast<int>(Qt::AlignCenter),
                       timeText(i * timeStep));
    }
    brush.drawText(QRectF(0, place.bottom() + 1.5 * line + 1, width(), line), static_cast<int>(Qt::AlignCenter),
                   toQt(model().TimeAxis));
}

void StripChartView::paintChannels(Brush& brush, const ChartScale& scale) const {
    bool any = false;
    for (std::size_t i = 0; i < model().channels().size(); ++i) {
        const auto& channel = model().channels()[i];
        const SampleRange range = samplesWithin(channel, model().times(), timesShown(), scale.from, scale.to);
        if (range.first >= range.end) continue;
        any = true;
        brush.save();
        brush.setClipRect(scale.place.adjusted(0, 0, MarkSize, 0));
        brush.setPen(
            QPen(colors().channels[i % colors().channels.size()], 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        brush.setBrush(Qt::NoBrush);
        const auto lines = chartLine(channel, model().times(), range, scale);
        for (const QPolygonF& line : lines) {
            if (line.size() == 1) brush.drawPoint(line.front());
            // Piece by piece: one long line of thousands of sharp turns takes the toolkit a hundred times as long.
            QList<QLineF> pieces;
            for (qsizetype at = 1; at < line.size(); ++at) pieces.append({line[at - 1], line[at]});
            brush.drawLines(pieces);
        }
        if (!lines.back().isEmpty()) drawMark(brush, i, lines.back().back());
        brush.restore();
    }
    if (any) return;
    brush.setPen(textColor(*this));
    brush.drawText(scale.place, static_cast<int>(Qt::AlignCenter), word(Word::NoSamples));
}

QStringList StripChartView::readingInWords() const {
    const std::size_t point = *reading_.at();
    QStringList lines{exactTimeText(model().times()[point])};
    for (std::size_t i = 0; i < model().channels().size(); ++i)
        lines << toQt(model().channels()[i].name) + u' ' + valueText(i, point);
    return lines;
}

/// A line through the point and a box beside it with what the channels have there.
void StripChartView::paintReading(Brush& brush, const ChartScale& scale) const {
    if (!reading_.at()) return;
    const double x = std::round(scale.x(model().times()[*reading_.at()]));
    if (x < scale.place.left() || x > scale.place.right()) return;
    brush.fillRect(QRectF(x, scale.place.top(), 1, scale.place.height()), colors().outline);
    for (std::size_t i = 0; i < model().channels().size(); ++i)
        if (const auto value = valueAt(model().channels()[i], *reading_.at()))
            drawMark(brush, i, QPointF(x, scale.y(*value)));
    const QStringList lines = readingInWords();
    double width = 0;
    for (const QString& each : lines) width = std::max<double>(width, fontMetrics().horizontalAdvance(each));
    const double line = fontMetrics().height();
    QRectF box(x + GridStep, scale.place.top() + GridStep, width + 2 * GridStep,
               line * static_cast<double>(lines.size()) + GridStep);
    if (box.right() > scale.place.right()) box.moveRight(x - GridStep);
    drawShape(brush, box, CornerRadius, colors().panel, colors().outline);
    brush.setPen(textColor(*this));
    brush.drawText(box.adjusted(GridStep, GridStep / 2.0, 0, 0), static_cast<int>(Qt::AlignLeft | Qt::AlignTop),
                   lines.join(u'\n'));
}

void StripChartView::readingMoved(const std::optional<std::size_t>& before) {
    if (before != reading_.at()) valueShown();
}

void StripChartView::readAt(const QPointF& place) {
    const std::optional<std::size_t> before = reading_.at();
    const ChartScale scale = this->scale();
    if (scale.place.contains(place)) {
        const double time =
            scale.from + (place.x() - scale.place.left()) / scale.place.width() * (scale.to - scale.from);
        reading_.pointTo(time, model().times(), timesShown());
    } else {
        reading_.drop();
    }
    readingMoved(before);
}

void StripChartView::readByKeys(int points) {
    const std::optional<std::size_t> before = reading_.at();
    reading_.step(points, timesShown());
    if (reading_.at()) window_.bringIntoSight(model().times()[*reading_.at()]);
    windowMoved();
    readingMoved(before);
}

void StripChartView::leaveEvent(QEvent* event) {
    const std::optional<std::size_t> before = reading_.at();
    reading_.drop();
    readingMoved(before);
    View::leaveEvent(event);
}

void StripChartView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return event->ignore();
    dragFrom_ = event->position().x();
}

void StripChartView::mouseMoveEvent(QMouseEvent* event) {
    if (bound() && dragFrom_ < 0) readAt(event->position());
    if (dragFrom_ < 0) return;
    window_.pan((dragFrom_ - event->position().x()) / plot().width());
    dragFrom_ = event->position().x();
    windowMoved();
}

void StripChartView::mouseReleaseEvent(QMouseEvent* /*event*/) { dragFrom_ = -1; }

void StripChartView::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    const double part = (event->position().x() - plot().left()) / plot().width();
    window_.zoom(std::pow(ZoomStep, -event->angleDelta().y() / 120.0), std::clamp(part, 0.0, 1.0));
    windowMoved();
    event->accept();
}

void StripChartView::keyPressEvent(QKeyEvent* event) {
    const bool reads = event->modifiers() & Qt::ShiftModifier;
    if (reads && event->key() == Qt::Key_Left) return readByKeys(-1);
    if (reads && event->key() == Qt::Key_Right) return readByKeys(1);
    switch (event->key()) {
        case Qt::Key_Left:
            window_.pan(-0.1);
            break;
        case Qt::Key_Right:
            window_.pan(0.1);
            break;
        case Qt::Key_PageDown:
            window_.pan(-0.9);
            break;
        case Qt::Key_PageUp:
            window_.pan(0.9);
            break;
        case Qt::Key_Plus:
        case Qt::Key_Up:
            window_.zoom(1 / ZoomStep, 0.5);
            break;
        case Qt::Key_Minus:
        case Qt::Key_Down:
            window_.zoom(ZoomStep, 0.5);
            break;
        case Qt::Key_F:
        case Qt::Key_Home:
            window_.fit();
            break;
        case Qt::Key_End:
            window_.follow();
            break;
        case Qt::Key_Space:
            setPaused(!paused_);
            break;
        default:
            return View::keyPressEvent(event);
    }
    windowMoved();
}

QString StripChartView::spokenName() const {
    const QString title = ViewBase::spokenName();
    return title.isEmpty() ? word(Word::Chart) : title;
}

QString StripChartView::valueInWords() const {
    if (reading_.at()) return readingInWords().join(QStringLiteral(", "));
    QStringList values;
    for (std::size_t i = 0; i < model().channels().size(); ++i)
        values << toQt(model().channels()[i].name) + u' ' + presentValue(i);
    return values.join(QStringLiteral(", "));
}

}  // namespace kestrel::qt
