// The stretch of time that a strip chart shows: it follows the newest value, shows all, or stays where the user put it.
// All times are in days since the chart began.
#pragma once

namespace kestrel::qt {

class ChartWindow {
  public:
    enum class Mode { Follow, Fit, Free };

    static constexpr double Minute = 1.0 / (24 * 60);
    static constexpr double ShortestSpan = 2 * Minute;
    static constexpr double FirstSpan = 10 * Minute;

    Mode mode() const { return mode_; }
    double from() const { return from_; }
    double to() const { return from_ + span_; }
    double span() const { return span_; }

    /// The newest time of the chart; a window that follows or shows all goes along.
    void setNewest(double time);
    void follow();
    void fit();
    /// By a part of the span; above 0 towards newer times.
    void pan(double part);
    /// Moves only if the time is out of sight.
    void bringIntoSight(double time);
    /// Factor below 1 shows less time. The time at this part of the width (0 left, 1 right) stays where it is, but a
    /// window that follows keeps its newest time.
    void zoom(double factor, double part);

  private:
    double longestSpan() const;
    void settle();

    Mode mode_ = Mode::Follow;
    double newest_ = 0;
    double from_ = 0;
    double span_ = FirstSpan;
};

}  // namespace kestrel::qt
