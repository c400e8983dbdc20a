// The ring of alarms.
// The record is complete before the pointer moves to it.
#include "simulator/alarms.h"

namespace kestrel::simulator {

Alarms::Alarms(World& world) : world_(world), random_(world.seed, Stream::Alarms) {
    if (world_.moving) waitForAlarm();
}

void Alarms::waitForAlarm() {
    world_.agenda.after(random_.between(4 * minute, 10 * minute), [this] {
        store(static_cast<std::uint32_t>(random_.between(0, highestAlarmCode)));
        waitForAlarm();
    });
}

void Alarms::store(std::uint32_t code) {
    const std::uint32_t slot = (world_.get(master::AlarmNewest) + 1) % alarmCount;
    int value = static_cast<int>(slot) * alarmRecord;
    for (const Setting& part :
         {master::ClockMinute, master::ClockHour, master::ClockDay, master::ClockMonth, master::ClockYear}) {
        world_.set(master::AlarmRing[value++], world_.get(part));
    }
    world_.set(master::AlarmRing[value], code);
    world_.set(master::AlarmNewest, slot);
}

}  // namespace kestrel::simulator
