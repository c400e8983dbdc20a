// The base of the pages: it does what every page does by hand otherwise, from what the page says of itself when it is
// made. A plain page is its tables, its layout and its oddities.
#pragma once

#include <functional>
#include <initializer_list>
#include <span>
#include <vector>

#include "link/page.h"
#include "link/subscriptions.h"
#include "platform/basic_controls.h"

namespace kestrel {

/// What a page takes from the boards, in its order, and gives back when it goes.
struct PageLists {
    std::span<const ParamRun> subscriptions;
    std::span<const ParamRun> releases = subscriptions;
};

/// A setting that is shown by a caption, a bar and a value, and written twice when the user moves the bar.
struct BarRow {
    int line;  ///< of the caption; 0: it keeps its text
    int min;   ///< raw, as the board has it
    int max;
    int largeStep;
    Setting setting;
    int decimals = 0;                           ///< of the value
    std::string (*text)(ParamValue) = nullptr;  ///< of the value, in place of the decimals
    const char* longest = nullptr;              ///< text of the value; by default that of 255
};

class TablePage : public Page {
  public:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void SLabel_Change(int n, ParamValue value) override;
    void ReadAgain() override;
    void ShowTexts() override { PageCaptions(); }

  protected:
    /// A title line of 0 leaves the caption to the page. The lists stay the page's own.
    TablePage(const char* name, int titleLine, const PageLists& lists);

    virtual void PageSubscribe();
    virtual void PageRelease();
    virtual void PageCaptions();
    /// What the rows of the page do not take, or do not take alone; called after them.
    virtual void valueCame(int /*n*/, ParamValue /*value*/) {}

    /// The text is that line of the language, anew whenever the page comes to the front.
    void caption(Property<std::string>& text, int line) { captions_.push_back({&text, line}); }
    /// As many following lines as there are texts.
    template <std::size_t N>
    void captions(ControlArray<Label, N>& labels, int firstLine) {
        for (int i = 0; i < labels.size(); ++i) caption(labels[i].Caption, firstLine + i);
    }

    /// What is to be done with each value of the setting that comes.
    void whenComes(const Setting& setting, std::function<void(ParamValue)> take);

    void bar(const BarRow& row, Label& caption, ScrollBar& bar, Label& value);
    /// A counter, as it comes.
    void number(const Setting& setting, Label& value);
    /// Unsigned 16-bit settings on signed bars.
    void offsetBar(int line, const Setting& setting, Label& caption, ScrollBar& bar, Label& value);

    /// These are live only while the presence word says that their board is there; a word that repeats touches nothing.
    void liveWith(const Setting& presence, std::initializer_list<Control*> controls);
    /// Runs while the page is open; each time it subscribes anew, so that all is read again.
    void readsAgain(Timer& timer);

  private:
    struct Text {
        Property<std::string>* text;
        int line;
    };
    struct Taker {
        Setting setting;
        std::function<void(ParamValue)> take;
    };

    const int titleLine_;
    const PageLists lists_;
    std::vector<Text> captions_;
    std::vector<Taker> takers_;
    Timer* timer_ = nullptr;
};

}  // namespace kestrel
