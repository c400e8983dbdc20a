// Shows a strip chart: its channels over the elapsed time, with a legend of the present values.
// It follows the newest value until the user pauses it, shows all, or moves about by mouse, wheel or keys.
#pragma once

#include "platform/displays.h"
#include "qt/views/chart_line.h"
#include "qt/views/chart_reading.h"
#include "qt/views/view.h"
#include "qt/window/chart_window.h"

namespace kestrel::qt {

class ChartButton;

class StripChartView : public View<StripChart> {
  public:
    explicit StripChartView(StripChart& chart);

    QAccessible::Role spokenRole() const override { return QAccessible::Chart; }
    QString spokenName() const override;
    QString valueInWords() const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    bool paused() const { return paused_; }
    const ChartWindow& timeWindow() const { return window_; }

  protected:
    void showState() override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// How many points of the time axis are on show; while paused no new ones join.
    std::size_t timesShown() const;
    QRectF plot() const;
    ChartScale scale() const;
    /// What the channel shows at a point of the time axis, or a dash when it has no sample there.
    QString valueText(std::size_t channel, std::size_t point) const;
    /// The same at the newest point.
    QString presentValue(std::size_t channel) const;
    QStringList readingInWords() const;
    void readAt(const QPointF& place);
    void readByKeys(int points);
    void readingMoved(const std::optional<std::size_t>& before);
    void paintHead(class Brush& brush) const;
    void paintAxes(class Brush& brush, const ChartScale& scale) const;
    void paintTimes(class Brush& brush, const ChartScale& scale) const;
    void paintChannels(class Brush& brush, const ChartScale& scale) const;
    void paintReading(class Brush& brush, const ChartScale& scale) const;
    void setPaused(bool paused);
    void windowMoved();

    ChartWindow window_;
    ChartReading reading_;
    ChartButton* pause_;
    ChartButton* fit_;
    ChartButton* follow_;
    bool paused_ = false;
    std::size_t pausedAt_ = 0;
    double dragFrom_ = -1;
    std::size_t newestShown_ = 0;
};

}  // namespace kestrel::qt
