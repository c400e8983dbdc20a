// The serial control over a simulated machine in the same process.
#include "demo/demo_port.h"

#include <algorithm>
#include <utility>

#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel {

DemoPort::DemoPort(std::shared_ptr<simulator::Machine> machine) : machine_(std::move(machine)) {
    next_ = platform().makeTimer([this] { serve(); });
    waitForMachine();
}

simulator::Micros DemoPort::now() const {
    const auto passed = std::chrono::steady_clock::now() - switchedOn_;
    return std::chrono::duration_cast<std::chrono::microseconds>(passed).count();
}

void DemoPort::CommPort(int /*port*/) {
    if (isOpen_) throw RunTimeError(error_number::SerialFirst, "The port is open");
}

void DemoPort::PortOpen(bool open) {
    if (open && !machine_->portOpen())
        throw RunTimeError(error_number::SerialBadPort, "The simulated machine is unplugged");
    collect();
    received_.clear();
    isOpen_ = open;
}

Bytes DemoPort::Input() {
    collect();
    return std::exchange(received_, {});
}

void DemoPort::write(const Bytes& bytes) {
    if (!isOpen_) throw RunTimeError(error_number::SerialNotOpen, "The port is not open");
    machine_->send(now(), bytes);
    waitForMachine();
}

void DemoPort::serve() {
    machine_->advance(now());
    const bool anyCame = collect();
    waitForMachine();
    if (isOpen_ && !machine_->portOpen()) {
        isOpen_ = false;
        received_.clear();
        raiseLost();
    } else if (anyCame) {
        raiseComm();
    }
}

bool DemoPort::collect() {
    const simulator::Bytes bytes = machine_->takeOutput(now());
    if (!isOpen_ || bytes.empty()) return false;
    received_.insert(received_.end(), bytes.begin(), bytes.end());
    return true;
}

void DemoPort::waitForMachine() {
    if (isOpen_ && !machine_->portOpen()) return next_->start(0);
    const auto due = machine_->nextEvent();
    if (!due) return next_->stop();
    const simulator::Micros left = std::max<simulator::Micros>(0, *due - now());
    next_->start(static_cast<int>((left + simulator::millisecond - 1) / simulator::millisecond));
}

}  // namespace kestrel
