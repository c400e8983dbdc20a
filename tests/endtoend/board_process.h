// The board program as a child process: the machine at the other end of a pseudo-terminal.
// What it prints of every exchange is how a test sees what really went over the line.
#pragma once

#include <QProcess>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <ostream>

/// For failures of tests.
inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }

namespace kestrel::testing {

class BoardProcess {
  public:
    explicit BoardProcess(const std::filesystem::path& installation, const QStringList& more = {},
                          const char* link = "line");
    ~BoardProcess();
    BoardProcess(const BoardProcess&) = delete;
    BoardProcess& operator=(const BoardProcess&) = delete;

    /// A link that leads to the pseudo-terminal, also after the machine has been unplugged and plugged in again.
    std::string device() const { return link_; }
    void tell(const char* command);
    /// The exchanges so far that contain all of these words, such as {"hot-drink", "write", "1143"}.
    QStringList exchanges(const QStringList& words = {}) const;
    /// The writes among them, in the order in which they were heard: board, parameter and value.
    QStringList writes() const;
    /// What the board holds.
    std::optional<int> value(int board, int parameter);

  private:
    void read();

    QProcess process_;
    std::string link_;
    QStringList lines_;
    QByteArray rest_;
};

}  // namespace kestrel::testing
