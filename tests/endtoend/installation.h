// An installation of a test's own: the files of the built one in a family directory that goes with the test.
// Its launcher leaves a mark, so that a test sees whether it has been started.
#pragma once

#include <QTemporaryDir>
#include <filesystem>

namespace kestrel::testing {

class Installation {
  public:
    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    std::filesystem::path program() const { return family_ / "kestrel"; }
    std::filesystem::path configuration(const std::string& programName) const {
        return program() / (programName + ".ini");
    }
    std::filesystem::path family() const { return family_; }
    bool launcherRan() const;
    /// Name of the file, in the family directory, by which the launcher tells that it has run.
    static std::string launcherMark();

  private:
    QTemporaryDir temporary_;
    std::filesystem::path family_;
};

}  // namespace kestrel::testing
