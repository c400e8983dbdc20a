// A child window of the frame.
#include "platform/window.h"

namespace kestrel {

void Window::setOldSince(int board, const std::string& time) {
    if (oldSince(board) == time) return;
    oldSince_[board] = time;
    oldHere_.clear();
    eachControl(Arrange(), [this](Control& control) {
        if (const std::string& since = oldSince(control.board()); !since.empty()) oldHere_ = since;
        control.followBoard();
    });
    show();
}

const std::string& Window::oldSince(int board) const {
    static const std::string never;
    const auto found = oldSince_.find(board);
    return found == oldSince_.end() ? never : found->second;
}

void Window::setClosing(bool closing) {
    closing_ = closing;
    DropLockedGestures();
    show();
}

}  // namespace kestrel
