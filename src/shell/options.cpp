// The command line of the program.
#include "shell/options.h"

#include <set>
#include <system_error>

#include "link/link_engine.h"

namespace kestrel {

namespace {

struct Option {
    const char* name;
    const char* value;  ///< what its value is called in the help, or null when it takes none
    const char* help;
    bool mayRepeat;
    void (*take)(Options& options, const std::string& value);
};

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
        {"light", Theme::Light}, {"dark", Theme::Dark}, {"system", Theme::System}};
    const auto found = themes.find(value);
    if (found == themes.end()) throw BadOption("--theme: \"" + value + "\" is not light, dark or system");
    options.theme = found->second;
}

const std::vector<Option>& table() {
    static const std::vector<Option> options = {
        {"--demo", nullptr, "work on a simulated machine instead of a serial port", true,
         [](Options& o, const std::string&) { o.demo = true; }},
        {"--directory", "DIR",
         "directory of the configuration, index and language files\n(default: where the program lies)", false,
         takeDirectory},
        {"--com", "N=DEVICE",
         "device behind port N, 1 to 4 (default: the serial devices\nof this computer, USB adapters first)", true,
         takeDevice},
        {"--open", "PAGE", "open this page at start, by its class name, such as FrmTempi", true,
         [](Options& o, const std::string& v) { o.pages.push_back(v); }},
        {"--tour", "DIR", "open every page in turn, save a picture of each in DIR, print\nwhat came in, and end", false,
         [](Options& o, const std::string& v) { o.tour = std::filesystem::weakly_canonical(absolutePath(v)); }},
        {"--theme", "NAME", "light, dark or system (default: system)", false, takeTheme},
        {"--fault", "LIST",
         "faults of the simulated machine, such as drop=0.01,flip=0.02\n(with --demo; kestrel-board --help lists them)",
         false, [](Options& o, const std::string& v) { o.faults = v; }},
        {"--version", nullptr, "print the version and end", true,
         [](Options& o, const std::string&) { o.version = true; }},
        {"--help", nullptr, "print this help and end", true, [](Options& o, const std::string&) { o.help = true; }},
    };
    return options;
}

const Option& find(const std::string& name) {
    for (const Option& option : table())
        if (name == option.name) return option;
    throw BadOption(name.starts_with("-") ? "unknown option " + name + " (--help lists the options)"
                                          : "unexpected argument \"" + name + "\"");
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
    std::set<std::string> seen;
    for (auto next = arguments.begin(); next != arguments.end(); ++next) {
        const auto sign = next->starts_with("--") ? next->find('=') : std::string::npos;
        const bool joined = sign != std::string::npos;
        const std::string name = next->substr(0, sign);
        const Option& option = find(name);
        if (!option.value && joined) throw BadOption(name + " takes no value");
        if (!seen.insert(name).second && !option.mayRepeat) throw BadOption(name + " is given twice");
        std::string value;
        if (option.value) {
            if (!joined && ++next != arguments.end()) value = *next;
            if (joined) value = next->substr(sign + 1);
            if (value.empty()) throw BadOption(name + " needs a value: " + name + " " + option.value);
        }
        option.take(options, value);
        if (options.help || options.version) return options;
    }
    refuseContradictions(options);
    return options;
}

std::string usage() {
    constexpr std::size_t HelpColumn = 22;
    std::string text =
        "Usage: kestrel [OPTION]...\nService tool for vending-machine controller boards on a serial line.\n\n";
    for (const Option& option : table()) {
        std::string left = std::string("  ") + option.name;
        if (option.value) left.append(" ").append(option.value);
        left.resize(std::max(left.size() + 1, HelpColumn), ' ');
        std::string help = option.help;
        if (const auto line = help.find('\n'); line != std::string::npos)
            help.replace(line, 1, "\n" + std::string(HelpColumn, ' '));
        text.append(left).append(help).append("\n");
    }
    return text;
}

}  // namespace kestrel
