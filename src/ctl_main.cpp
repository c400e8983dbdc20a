// kestrelctl: the link without a window, for terminals and scripts.
// Reads the command line, sets the machine up and runs the command.
#include <unistd.h>

#include <chrono>
#include <iostream>

#include "command_line/data_directory.h"
#include "ctl/connection.h"
#include "ctl/session.h"
#include "ctl/words.h"
#include "demo/demo_port.h"
#include "language/window_texts.h"
#include "platform/errors.h"
#include "posix/posix_platform.h"
#include "posix/serial_devices.h"
#include "posix/time_of_day.h"
#include "program_version.h"

namespace {

using namespace kestrel;

constexpr const char* Name = "kestrelctl";

std::unique_ptr<SerialControl> switchOn(const ctl::Options& options) {
    simulator::MachineOptions machine;
    machine.directory = options.directory;
    machine.faults = simulator::parseFaults(options.faults);
    try {
        return std::make_unique<DemoPort>(std::make_shared<simulator::Machine>(machine));
    } catch (const std::runtime_error& error) {
        throw RunTimeError(error_number::FileNotFound, error.what());
    }
}

/// The only serial device of the computer.
std::string onlyDevice() {
    const auto devices = posix::serialDevices();
    if (devices.empty()) throw RunTimeError(error_number::SerialBadPort, say(ctl::Word::NoDevices));
    std::string list;
    for (const posix::SerialDevice& each : devices) list += (list.empty() ? "" : ", ") + each.path;
    if (devices.size() > 1) throw RunTimeError(error_number::SerialBadPort, say(ctl::Word::SeveralDevices, {list}));
    return devices.front().path;
}

std::vector<ctl::Device> devices() {
    std::vector<ctl::Device> all;
    for (const posix::SerialDevice& each : posix::serialDevices())
        all.push_back({each.path, each.about, each.driver, each.isUsb});
    return all;
}

/// The first letter of yes, in the five languages.
bool confirm(const std::string& question) {
    std::cerr << question << ' ' << std::flush;
    if (!isatty(STDIN_FILENO)) {
        std::cerr << '\n';
        return false;
    }
    std::string answer;
    std::getline(std::cin, answer);
    return !answer.empty() && std::string("yYsSjJoO").find(answer.front()) != std::string::npos;
}

int run(const ctl::Options& options) {
    ctl::Output out(std::cout, std::cerr, isatty(STDERR_FILENO) ? &std::cerr : nullptr);
    const auto start = std::chrono::steady_clock::now();
    posix::PosixPlatform* machine = nullptr;
    ctl::Context context{
        options,
        out,
        [] { return posix::EndSignals::wanted(); },
        posix::timeOfDay,
        confirm,
        [start] { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); },
        [&] {
            if (options.demo) machine->useDevice(SimulatedDeviceText());
            if (!options.demo && options.device.empty()) machine->useDevice(onlyDevice());
        },
        devices,
        [&](const std::string& device) { machine->useDevice(device); }};
    posix::PosixPlatform::Setup setup;
    setup.directory = options.directory;
    setup.program = Name;
    setup.device = options.device;
    if (options.demo) setup.simulated = [&options] { return switchOn(options); };
    setup.onMessage = [&context](const Message& message) { return answerMessage(context, message); };
    posix::PosixPlatform platform(std::move(setup));
    machine = &platform;
    setPlatform(&platform);
    const ctl::Session session;
    return runCommand(context);
}

}  // namespace

int main(int argc, char** argv) {
    ctl::Options options;
    try {
        options = ctl::parseOptions({argv + 1, argv + argc});
    } catch (const BadOption& error) {
        std::cerr << Name << ": " << error.what() << '\n';
        return EndedByBadOption;
    }
    if (options.help || options.version) {
        std::cout << (options.help ? helpText(ctl::programText(options.command))
                                   : std::string(Name) + ' ' + ProgramVersion + '\n');
        return 0;
    }
    if (options.directory.empty()) options.directory = dataDirectory(ownExecutable());
    try {
        return run(options);
    } catch (const posix::ProcessEnd& end) {
        return end.status == 0 ? 0 : ctl::status::Trouble;
    } catch (const std::exception& error) {
        std::cerr << Name << ": " << error.what() << '\n';
        return ctl::status::Trouble;
    }
}
