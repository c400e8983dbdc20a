// The master's memory of its last ten alarms, a ring that a new alarm joins every few minutes.
// A slot that was never used has a code that no alarm has.
#pragma once

#include "simulator/random.h"
#include "simulator/world.h"

namespace kestrel::simulator {

inline constexpr int alarmRecord = 6;  // minute, hour, day, month, year, code
inline constexpr int alarmCount = master::AlarmRing.size() / alarmRecord;
inline constexpr std::uint32_t highestAlarmCode = 137;
inline constexpr std::uint32_t noAlarmCode = 255;

class Alarms {
  public:
    explicit Alarms(World& world);

  private:
    void waitForAlarm();
    void store(std::uint32_t code);

    World& world_;
    Random random_;
};

}  // namespace kestrel::simulator
