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
    const std::uint32_t slot = (world_.get(Board::Master, master::newestAlarm) + 1) % master::alarmCount;
    int parameter = master::alarms + static_cast<int>(slot) * master::alarmRecord;
    for (const int part : {master::minute, master::hour, master::day, master::month, master::year}) {
        world_.set(Board::Master, parameter++, world_.get(Board::Master, part));
    }
    world_.set(Board::Master, parameter, code);
    world_.set(Board::Master, master::newestAlarm, slot);
}

}  // namespace kestrel::simulator
