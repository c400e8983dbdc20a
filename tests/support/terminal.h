// kestrelctl in a test: a command on a line in virtual time, and what it says.
// The platform is the test's; the machine stands on port 1.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ctl/connection.h"
#include "ctl/session.h"
#include "support/virtual_platform.h"

namespace kestrel::testing {

class Terminal : public VirtualPlatform {
  public:
    struct Said {
        int status = 0;
        std::string results;
        std::string remarks;
        std::vector<std::string> lines() const;  ///< of the results
    };

    /// Runs a command line; the answer to a question is yes.
    Said command(const std::string& line);
    int ends = 0;  ///< so often the user has asked for the end

    Message::Answer showMessage(const Message& message) override { return ctl::answerMessage(*context_, message); }

  private:
    ctl::Context* context_ = nullptr;
    std::unique_ptr<ctl::Session> session_ = std::make_unique<ctl::Session>();  ///< of one command, then of the next
};

/// What an object of JSON says of a field; empty where it has none.
std::string field(const std::string& object, const std::string& name);

}  // namespace kestrel::testing
