// Temperatures of boiler and tank.
// What the board measures is shown without the tank's correction, but the thermostat works on the corrected value.
#include "simulator/climate.h"

#include <cmath>

#include "simulator/outputs.h"

namespace kestrel::simulator {
namespace {

constexpr Micros stepTime = 2 * second;
constexpr double roomTemperature = 23;
constexpr double coldStart = 15;  // degrees between a thermostat's set-point and the start of the machine

// Degrees a step, and the part of the distance to the room's temperature that is lost or gained in a step.
constexpr double heating = 0.8;
constexpr double cooling = 0.12;
constexpr double boilerLoss = 0.002;
constexpr double tankGain = 0.002;
constexpr double boilerHysteresis = 1;

constexpr std::uint32_t tankOff = 16;
constexpr std::uint32_t offsetZero = 5;
constexpr unsigned compressorBit = 0x80;

double boilerSetPoint(const World& world) { return world.get(hot_drink::BoilerSetPoint); }
double tankSetPoint(const World& world) { return world.get(sector::TankSetPoint); }

double correction(const World& world) { return static_cast<double>(world.get(sector::TankOffset)) - offsetZero; }

}  // namespace

Climate::Climate(World& world)
    : world_(world),
      boiler_(boilerSetPoint(world) - (world.moving ? coldStart : 0)),
      tank_(tankSetPoint(world) - correction(world) + (world.moving ? 4 : 0)) {
    show();
    if (world_.moving) step();
}

void Climate::step() {
    world_.agenda.after(stepTime, [this] {
        stepBoiler();
        stepTank();
        show();
        step();
    });
}

void Climate::stepBoiler() {
    if (!world_.hasBit(hot_drink::TestState, inTestBit)) {
        const double wanted = boilerSetPoint(world_);
        if (boiler_ <= wanted - boilerHysteresis) drive(world_, boilerHeater, true);
        if (boiler_ >= wanted) drive(world_, boilerHeater, false);
    }
    boiler_ += isDriven(world_, boilerHeater) ? heating : 0;
    boiler_ += (roomTemperature - boiler_) * boilerLoss;
}

void Climate::stepTank() {
    if (world_.hasBit(sector::TestState, inTestBit)) {
        compressor_ = world_.hasBit(sector::OutputGroup, compressorBit);
    } else {
        const double measured = tank_ + correction(world_);
        const double wanted = tankSetPoint(world_);
        const double delta = world_.get(sector::TankDelta) / 10.0;
        if (measured >= wanted + delta) compressor_ = true;
        if (measured <= wanted || world_.get(sector::TankSetPoint) >= tankOff) compressor_ = false;
    }
    tank_ -= compressor_ ? cooling : 0;
    tank_ += (roomTemperature - tank_) * tankGain;
}

void Climate::show() {
    world_.set(hot_drink::BoilerTemperature, static_cast<std::uint32_t>(std::lround(boiler_)));
    world_.set(sector::TankTemperature, static_cast<std::uint32_t>(std::lround(tank_ * 256)));
}

}  // namespace kestrel::simulator
