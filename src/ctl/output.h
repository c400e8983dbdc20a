// What kestrelctl prints: texts for people, or an object a line for scripts.
// Results go to standard output; what is said beside them goes to standard error.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace kestrel::ctl {

using FieldValue = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string>;
/// Names are English in every language.
using Fields = std::vector<std::pair<const char*, FieldValue>>;

class Output {
  public:
    /// Where `progress` is null nobody sees how far the work is.
    Output(std::ostream& results, std::ostream& remarks, std::ostream* progress)
        : results_(results), remarks_(remarks), progress_(progress) {}

    void useJson() { json_ = true; }
    bool isJson() const { return json_; }

    /// One result: the text, or the fields.
    void result(const std::string& text, const Fields& fields);
    /// A line that structures the text and is no result.
    void heading(const std::string& text);
    /// A whole text that is its own format.
    void document(const std::string& text);
    void remark(const std::string& text);
    /// Whether results have been lost: nobody reads them any more, or there is no room.
    bool isLost() const { return results_.fail(); }
    /// Replaces the last line of progress; an empty text takes it away.
    void progress(const std::string& text);

  private:
    std::ostream& results_;
    std::ostream& remarks_;
    std::ostream* progress_;
    bool json_ = false;
    bool showsProgress_ = false;
};

/// The first and the last of them.
std::string listInShort(const std::vector<std::string>& names);

/// The text as a string of JSON, in quotes.
std::string quoted(const std::string& text);

}  // namespace kestrel::ctl
