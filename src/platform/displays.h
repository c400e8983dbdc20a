// Lamps and gauges: what only shows.
// All take their state from the page and raise nothing.
#pragma once

#include <string>
#include <vector>

#include "platform/control.h"

namespace kestrel {

/// A lamp. Its tooltip, where it has one, names the device that it stands for.
class Led : public Control {
  public:
    enum class Shape { Round, Rectangle };
    Property<bool> Active{*this, false};
    Shape shape = Shape::Rectangle;
    std::string accessibleName() const override;

  protected:
    const void* valueProperty() const override { return &Active; }
};

/// A bar of segments, lit from 0 up to Position.
class LedBar : public Control {
  public:
    Property<int> Position{*this, 0};
    Property<int> PositionMax{*this, 100};

  protected:
    const void* valueProperty() const override { return &Position; }
};

/// A numeric display.
class SevenSegment : public Control {
  public:
    Property<double> Value{*this, 0.0};
    int digits = 4;
    int decimals = 0;

  protected:
    const void* valueProperty() const override { return &Value; }
};

/// A clock display of hours and minutes; shows dashes until it has been given a time.
class ClockDisplay : public Control {
  public:
    static constexpr int NoTime = -1;
    Property<int> Minutes{*this, NoTime};  ///< minutes since midnight, or NoTime

  protected:
    const void* valueProperty() const override { return &Minutes; }
};

/// A vertical gauge.
class Thermometer : public Control {
  public:
    Property<double> Min{*this, 0.0};
    Property<double> Max{*this, 120.0};
    Property<double> Value{*this, 0.0};

  protected:
    const void* valueProperty() const override { return &Value; }
};

/// A strip chart: channels of samples over a common time axis.
class StripChart : public Control {
  public:
    struct Sample {
        int index;  ///< number of the sample, the index into the time axis
        double value;
    };
    struct Channel {
        std::string name;
        std::vector<Sample> samples;
    };

    explicit StripChart(std::size_t channelCount = 2) : channels_(channelCount) {}

    Property<std::string> Title{*this, {}};
    Property<std::string> Unit{*this, {}};      ///< of all channels
    Property<std::string> TimeAxis{*this, {}};  ///< what stands along it
    void setChannelName(std::size_t channel, const std::string& name);
    void beginUpdate() { updating_ = true; }
    /// Adds a point of the time axis, in days.
    void addTime(double days);
    /// Adds a sample of a channel at the point of the time axis with this number.
    void addSample(std::size_t channel, int index, double value);
    void endUpdate();

    const std::vector<double>& times() const { return times_; }
    const std::vector<Channel>& channels() const { return channels_; }
    std::string accessibleName() const override { return Title; }

  private:
    std::vector<double> times_;
    std::vector<Channel> channels_;
    bool updating_ = false;
};

}  // namespace kestrel
