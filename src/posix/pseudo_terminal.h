// One end of a pseudo-terminal, at which a simulated machine stands; a program opens the other end by its path.
// The path can be kept behind a symbolic link.
#pragma once

#include <filesystem>
#include <string>

#include "platform/serial_control.h"

namespace kestrel::posix {

/// While nobody has the other end open, it is held open from here: otherwise a wait for input would return at once,
/// over and over. The first bytes from there end the holding, so that its going away can be noticed.
class PseudoTerminal {
  public:
    explicit PseudoTerminal(std::filesystem::path link) : link_(std::move(link)) {}
    ~PseudoTerminal() { close(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    bool isOpen() const { return own_ >= 0; }
    int descriptor() const { return own_; }
    const std::string& path() const { return path_; }

    /// A std::runtime_error where the system has none.
    void open();
    void close();
    /// What came. When the other side has gone, what it left unread goes too, as on a real port.
    Bytes read();
    /// Bytes that nobody takes are lost, as they are on a wire.
    void write(const Bytes& bytes);

  private:
    void hold();
    void release();
    /// The new link takes the place of an old one in one step, so that the path never leads nowhere.
    void placeLink() const;
    void removeLink() const;

    std::filesystem::path link_;
    std::string path_;
    int own_ = -1;
    int held_ = -1;
};

}  // namespace kestrel::posix
