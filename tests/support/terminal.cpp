// kestrelctl in a test.
#include "support/terminal.h"

#include <iterator>
#include <sstream>

namespace kestrel::testing {

std::vector<std::string> Terminal::Said::lines() const {
    std::vector<std::string> all;
    std::istringstream text(results);
    for (std::string line; std::getline(text, line);) all.push_back(line);
    return all;
}

Terminal::Said Terminal::command(const std::string& line) {
    std::istringstream words(line);
    const ctl::Options options = ctl::parseOptions({std::istream_iterator<std::string>(words), {}});
    std::ostringstream results, remarks;
    ctl::Output out(results, remarks, nullptr);
    ctl::Context context{options,
                         out,
                         [this] { return ends; },
                         [] {
                             std::tm time{};
                             time.tm_year = 124, time.tm_mon = 4, time.tm_mday = 14, time.tm_hour = 9, time.tm_min = 41;
                             return time;
                         },
                         [](const std::string&) { return true; },
                         [this] { return static_cast<double>(now()) / 1e6; },
                         [] {},
                         [] {
                             return std::vector<ctl::Device>{{"COM1", "", "usb-serial", true}};
                         },
                         [](const std::string&) {}};
    context_ = &context;
    Said said;
    said.status = ctl::runCommand(context);
    session_.reset();
    session_ = std::make_unique<ctl::Session>();
    said.results = results.str();
    said.remarks = remarks.str();
    return said;
}

std::string field(const std::string& object, const std::string& name) {
    const std::string key = "\"" + name + "\": ";
    const auto at = object.find(key);
    if (at == std::string::npos) return {};
    const auto from = at + key.size();
    if (object[from] != '"') return object.substr(from, object.find_first_of(",}", from) - from);
    return object.substr(from + 1, object.find('"', from + 1) - from - 1);
}

}  // namespace kestrel::testing
