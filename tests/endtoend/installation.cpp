// An installation of a test's own.
// See installation.h.
#include "installation.h"

#include <fstream>

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
    std::ofstream(family_ / Launcher) << "#!/bin/sh\ntouch '" << (family_ / Mark).string() << "'\n";
    fs::permissions(family_ / Launcher, fs::perms::owner_all);
}

void Installation::removeLauncher() const { fs::remove(family_ / Launcher); }

std::string Installation::launcherMark() { return Mark; }

bool Installation::launcherRan() const { return fs::exists(family_ / Mark); }

}  // namespace kestrel::testing
