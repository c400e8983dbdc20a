// An installation of a test's own.
#include "installation.h"

#include <fstream>
#include <system_error>

namespace kestrel::testing {

namespace fs = std::filesystem;

namespace {
constexpr const char* Launcher = "KESTREL.EXE";
constexpr const char* Mark = "launcher-ran";
}  // namespace

Installation::Installation() : family_(temporary_.path().toStdString()) {
    fs::create_directory(program());
    for (const auto& entry : fs::directory_iterator(KESTREL_INSTALLATION)) {
        const fs::path ending = entry.path().extension();
        if (ending == ".inx" || ending == ".lng") fs::copy(entry.path(), program());
    }
    std::ofstream(program() / "\xD6l.txt") << "a name that is no text\n";
    std::ofstream(family_ / Launcher) << "#!/bin/sh\ntouch '" << (family_ / Mark).string() << "'\n";
    fs::permissions(family_ / Launcher, fs::perms::owner_all);
}

/// The toolkit cannot remove a file whose name is no text.
Installation::~Installation() {
    std::error_code ignored;
    fs::remove_all(program(), ignored);
}

std::string Installation::launcherMark() { return Mark; }

bool Installation::launcherRan() const { return fs::exists(family_ / Mark); }

}  // namespace kestrel::testing
