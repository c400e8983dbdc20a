// What a command of kestrelctl works with, and the list of the commands.
#pragma once

#include <ctime>
#include <functional>

#include "ctl/options.h"
#include "ctl/output.h"

namespace kestrel::ctl {

struct Device {
    std::string path;
    std::string about;   ///< maker, product and number of an adapter; empty where nothing is known
    std::string driver;  ///< by which the system works it
    bool isUsb = false;
};

struct Context {
    const Options& options;
    Output& out;
    std::function<int()> endsWanted;                  ///< how often the user has asked for the end
    std::function<std::tm()> now;                     ///< the time of day
    std::function<bool(const std::string&)> confirm;  ///< asks the user a question that yes or no answers
    std::function<double()> clock;                    ///< seconds that have passed
    std::function<void()> findDevice;                 ///< that is to be opened; a RunTimeError where it is not clear
    std::function<std::vector<Device>()> devices;     ///< the serial ones of this computer
    std::function<void(const std::string&)> use;      ///< opens this one from now on
    int silences = 0;                                 ///< questions that the master has not answered
};

// Each does its work and gives the exit status. What makes it impossible is a RunTimeError.
int listPorts(Context& context);
int identify(Context& context);
int read(Context& context);
int compare(Context& context);
int write(Context& context);
int report(Context& context);
int watch(Context& context);
int monitor(Context& context);
int doctor(Context& context);

/// Runs the command of the options in the language that they or the environment name.
int runCommand(Context& context);

}  // namespace kestrel::ctl
