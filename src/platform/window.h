// A child window of the frame: what the logic and its view know of each other.
// Pages derive from it; the view shows the layout and passes the user's actions on.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/layout.h"
#include "platform/movable.h"

namespace kestrel {

/// Lengths on the screen as the system counts them: 1440 twips to the inch, 15 to a pixel at 96 dots an inch.
inline constexpr int TwipsPerPixel = 15;

class Window : public Control {
  public:
    explicit Window(std::string name) : name_(std::move(name)) {}

    Property<std::string> Caption{*this, {}};
    Property<int> Left{*this, 0};  ///< twips, inside the frame window
    Property<int> Top{*this, 0};   ///< twips, inside the frame window

    /// Its fields are a sheet: Enter goes on to the next one.
    bool isSheet = false;

    /// Class name of the page, such as "FrmTempi".
    const std::string& name() const { return name_; }
    std::string accessibleName() const override { return Caption; }

    /// How much of the page's first values has come, in hundredths.
    Property<int> FirstValues{*this, AllCame};
    static constexpr int AllCame = 100;

    /// The values that this board told are old since that time of day; with an empty text they are no longer.
    void setOldSince(int board, const std::string& time);
    const std::string& oldSince(int board) const;
    /// Since when values that stand on the page are old; empty where none is.
    const std::string& oldSince() const { return oldHere_; }

    /// Where the controls stand.
    virtual Layout Arrange() = 0;
    virtual void Form_Load() {}
    /// The window came to the front.
    virtual void Form_Activate() {}
    virtual void Form_Unload() {}

    /// The user brought the window to the front.
    void UserActivate() {
        userAct([this] { Form_Activate(); });
    }
    /// The user closed the window; whoever opened it unloads it, at once or when what is due has gone out.
    void UserClose() {
        FinishGestures(this);
        userAct([this] {
            const Handler unload = onClose_;
            raise(unload);
        });
    }
    void OnClose(Handler handler) { onClose_ = std::move(handler); }

    /// The user has closed it, and it waits for what is due: its controls are dead meanwhile.
    bool closing() const { return closing_; }
    void beginClosing() { setClosing(true); }
    /// It stays open after all.
    void endClosing() { setClosing(false); }

  private:
    void setClosing(bool closing);

    std::string name_;
    std::map<int, std::string> oldSince_;  ///< by board
    std::string oldHere_;
    Handler onClose_;
    bool closing_ = false;
};

}  // namespace kestrel
