// The command line of the program.
#include "shell/options.h"

#include <system_error>

#include "link/link_engine.h"
#include "shell/main_window.h"

namespace kestrel {

namespace {

/// The program changes its directory when it starts, so that a relative path would lead elsewhere.
std::filesystem::path absolutePath(const std::string& path) {
    std::error_code trouble;
    std::filesystem::path found = std::filesystem::absolute(path, trouble);
    if (trouble) throw BadOption("\"" + path + "\": the working directory is not there: " + trouble.message());
    return found;
}

void takeDirectory(Options& options, const std::string& value) {
    std::error_code trouble;
    options.directory = std::filesystem::canonical(value, trouble);
    if (trouble || !std::filesystem::is_directory(options.directory, trouble))
        throw BadOption("--directory: there is no directory \"" + value + "\"");
}

/// A bare name is the system's name of a device.
std::string devicePath(const std::string& device) {
#ifdef _WIN32
    return device;
#else
    return device.find('/') == std::string::npos ? "/dev/" + device : absolutePath(device).string();
#endif
}

void takeDevice(Options& options, const std::string& value) {
    const bool wellFormed = value.size() > 2 && value[0] >= '1' && value[0] <= '0' + PortCount && value[1] == '=';
    if (!wellFormed) throw BadOption("--com: \"" + value + "\" is not N=DEVICE with N from 1 to 4");
    const int port = value[0] - '0';
    if (!options.devices.emplace(port, devicePath(value.substr(2))).second)
        throw BadOption("--com: port " + std::to_string(port) + " is given twice");
}

void takeTheme(Options& options, const std::string& value) {
    static const std::map<std::string, Theme> themes = {
        {"light", Theme::Light}, {"dark", Theme::Dark}, {"contrast", Theme::Contrast}, {"system", Theme::System}};
    const auto found = themes.find(value);
    if (found == themes.end()) throw BadOption("--theme: \"" + value + "\" is not light, dark, contrast or system");
    options.theme = found->second;
}

std::vector<std::string> pageNames() {
    std::vector<std::string> names;
    for (const MenuRow& row : MenuTree())
        if (row.page) names.emplace_back(row.page);
    return names;
}

OptionTable tableFor(Options& options) {
    using enum Option::Times;
    return {
        {"--demo", "", "work on a simulated machine instead of a serial port", setTo(options.demo, true)},
        {"--directory", "DIR",
         "directory of the configuration, index and language files\n(default: the installed ones, or where the program "
         "lies)",
         [&options](const std::string& value) { takeDirectory(options, value); }},
        {"--com", "N=DEVICE",
         "device behind port N, 1 to 4 (default: the serial devices\nof this computer, USB adapters first)",
         [&options](const std::string& value) { takeDevice(options, value); }, Often},
        {"--open", "PAGE", "open this page at start, by its class name, such as FrmTempi", addTo(options.pages), Often,
         pageNames()},
        {"--tour", "DIR", "open every page in turn, save a picture of each in DIR, print\nwhat came in, and end",
         [&options](const std::string& value) {
             options.tour = std::filesystem::weakly_canonical(absolutePath(value));
         }},
        {"--theme",
         "NAME",
         "light, dark, contrast or system (default: system)",
         [&options](const std::string& value) { takeTheme(options, value); },
         Once,
         {"light", "dark", "contrast", "system"}},
        {"--fault", "LIST",
         "faults of the simulated machine, such as drop=0.01,flip=0.02\n(with --demo; kestrel-board --help lists them)",
         keepIn(options.faults)},
        {"--version", "", "print the version and end", setTo(options.version, true), Last},
        helpOption(options.help),
    };
}

void refuseContradictions(const Options& options) {
    if (options.demo && !options.devices.empty())
        throw BadOption("--demo and --com contradict each other: the demo uses no serial port");
    if (!options.faults.empty() && !options.demo) throw BadOption("--fault works with --demo only");
    if (!options.tour.empty() && !options.pages.empty())
        throw BadOption("--tour and --open contradict each other: the tour opens every page itself");
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    readCommandLine(tableFor(options), arguments);
    if (!options.help && !options.version) refuseContradictions(options);
    return options;
}

ProgramText programText() {
    Options none;
    return {"kestrel",
            "service tool for vending-machine controller boards on a serial line",
            {"[OPTION]..."},
            "",
            tableFor(none),
            {{"Files",
              "  kestrel.ini   port and language: in the program's directory where that\n"
              "                can be written, else in $XDG_CONFIG_HOME/kestrel or ~/.config/kestrel\n"
              "  *.inx, *.lng  what the boards hold, and the texts of each language\n"}}};
}

}  // namespace kestrel
