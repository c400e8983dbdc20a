// What kestrelctl prints.
#include "ctl/output.h"

#include <cstdio>

namespace kestrel::ctl {

namespace {

constexpr const char* EraseLine = "\r\x1b[K";

struct InJson {
    std::string operator()(std::nullptr_t) const { return "null"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        char text[32];
        std::snprintf(text, sizeof text, "%.12g", value);
        return text;
    }
    std::string operator()(const std::string& value) const { return quoted(value); }
};

}  // namespace

std::string listInShort(const std::vector<std::string>& names) {
    return names.size() == 1 ? names.front() : names.front() + " ... " + names.back();
}

std::string quoted(const std::string& text) {
    std::string all = "\"";
    for (const char letter : text) {
        if (letter == '"' || letter == '\\') all += '\\';
        if (static_cast<unsigned char>(letter) >= ' ') {
            all += letter;
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(letter));
            all += escaped;
        }
    }
    return all + '"';
}

void Output::result(const std::string& text, const Fields& fields) {
    progress("");
    if (!json_) {
        results_ << text << std::endl;
        return;
    }
    std::string object;
    for (const auto& [name, value] : fields)
        object += (object.empty() ? "{" : ", ") + quoted(name) + ": " + std::visit(InJson(), value);
    results_ << object << '}' << std::endl;
}

void Output::heading(const std::string& text) {
    progress("");
    if (!json_) results_ << text << std::endl;
}

void Output::document(const std::string& text) {
    progress("");
    results_ << text << std::flush;
}

void Output::remark(const std::string& text) {
    progress("");
    remarks_ << text << std::endl;
}

void Output::progress(const std::string& text) {
    if (!progress_ || (text.empty() && !showsProgress_)) return;
    *progress_ << EraseLine << text << std::flush;
    showsProgress_ = !text.empty();
}

}  // namespace kestrel::ctl
