// The base of every page: a window that hears of every value that a board has confirmed.
// A page filters for itself; the bank of a value is what CurrentBank holds at that moment.
#pragma once

#include <string>

#include "link/param_table.h"
#include "platform/timer.h"
#include "platform/window.h"

namespace kestrel {

class Page : public Window {
  public:
    using Window::Window;

    /// Parameter `n` of the current bank has this value. Called once for every accepted reply.
    virtual void SLabel_Change(int n, ParamValue value) = 0;

    /// The line was interrupted: an order that has not gone out is given up.
    virtual void LineInterrupted() {}
    /// The boards are known to be the same again.
    virtual void LineResumed() {}

    /// Reads all that it shows once more, in the boards' own time: what stands there stays until it comes.
    virtual void ReadAgain() {}
    /// Gives the texts of the language to its controls, as when it comes to the front.
    virtual void ShowTexts() {}
    /// The user wants it read again.
    void UserReadAgain() {
        FinishGestures(this);
        userAct([this] {
            if (!closing()) ReadAgain();
        });
    }

    /// Values that this page has been told of since it was loaded.
    long arrivals() const { return arrivals_; }
    /// The notification of this one page: a run-time error ends it and, when it is news, leaves a line on standard
    /// error, and the next page still gets its own.
    void notify(int n, ParamValue value);

  protected:
    /// Set while a value from the board is being shown: the change events of the page's own controls then write
    /// nothing. So it is in all of SLabel_Change.
    bool Updating = false;

    /// In force while the page moves its own controls outside of a notification.
    class ByThePage {
      public:
        explicit ByThePage(Page& page) : page_(page), before_(page.Updating) { page_.Updating = true; }
        ~ByThePage() { page_.Updating = before_; }
        ByThePage(const ByThePage&) = delete;
        ByThePage& operator=(const ByThePage&) = delete;

      private:
        Page& page_;
        const bool before_;
    };

    /// The value has been shown: what follows from it, with the user's moves being written again.
    virtual void valueShown() {}
    /// The value ends here: until the next one the user's moves write nothing, and nothing follows from it.
    void keepUpdating() { keepsUpdating_ = true; }

  private:
    long arrivals_ = 0;
    std::string lastError_;  ///< which is told once, however often a board sends the same
    bool keepsUpdating_ = false;
};

}  // namespace kestrel
