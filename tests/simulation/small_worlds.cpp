// Worlds so small that they can be played out in full.
#include "simulation/small_worlds.h"

#include "link/loaded_pages.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "shell/main_window.h"
#include "simulation/random_user.h"

namespace kestrel::testing {

namespace {

constexpr int Setting = 16;  ///< of the master: two bytes, read once a subscription
constexpr int Polled = 7;    ///< one byte, read on every second pass
constexpr int Absent = 2;    ///< of the hot-drink board, which these worlds have not
constexpr const char* Name = "FrmSmall";

class FrmSmall : public Page {
  public:
    FrmSmall() : Page(Name) {
        bar.design(0, 30'000, 100);
        for (Label* label : {&setting, &polled}) label->showsValue("65535");
        bar.OnChange([this] {
            if (Updating) return;
            CurrentBank = 0;
            ParamWrite(Setting, static_cast<unsigned>(bar.Value.get()));
        });
        key.OnClick([] {
            CurrentBank = 1;
            ParamWrite(Absent, 60);
        });
    }
    ScrollBar bar;
    CommandButton key;  ///< orders something of a board that is not there
    Label setting, polled;

    Layout Arrange() override { return Column{bar, key, setting, polled}; }
    void Form_Load() override { WatchAll(Subscriptions); }
    void Form_Unload() override { ReleaseAll(Subscriptions); }
    void SLabel_Change(int n, ParamValue value) override {
        Updating = true;
        if (CurrentBank == 0 && n == Setting) SetBar(setting, bar, value);
        if (CurrentBank == 0 && n == Polled) polled.Caption = std::to_string(value);
        Updating = false;
    }

  private:
    static constexpr std::array<ParamRun, 2> Subscriptions = {{{0, Setting}, {0, Polled}}};
};

Plan smallWorld() {
    Plan plan = Plan::draw(1);
    plan.seconds = 4;
    plan.hot = plan.sector = plan.moving = plan.rough = plan.strange = plan.chunk = plan.other = plan.late = 0;
    plan.aim = Plan::All;
    plan.faults.clear();
    plan.incidents.clear();
    plan.acts.clear();
    plan.pages = {Name};
    return plan;
}

}  // namespace

PageRegistry withSmallPage(PageRegistry pages) {
    pages[Name] = [] { return std::make_unique<FrmSmall>(); };
    return pages;
}

void actInSmallWorld(char letter) {
    auto* page = dynamic_cast<FrmSmall*>(FindLoadedPage(Name));
    if (letter == 'o') RandomUser::open(Name);
    if (letter == 'p') MDIForm1().mnuCox(1).UserClick();
    if (!page) return;
    if (letter == 'c') page->UserClose();
    if (letter == 'k') page->key.UserClick();
    if (letter == 'e' || letter == 'f') page->bar.UserMove(letter == 'e' ? 1234 : 21'000);
}

std::vector<Plan> smallWorlds() {
    std::vector<Plan> worlds;
    const auto add = [&](const std::string& script, const std::string& fault, int Plan::*place, int at) {
        worlds.push_back(smallWorld());
        worlds.back().script = script;
        worlds.back().single = fault;
        worlds.back().*place = at;
    };
    const std::string letters = "oefcpk";
    for (const char first : letters)
        for (const char second : letters)
            for (const char third : letters) add({'o', first, second, third}, "", &Plan::frame, 0);
    constexpr int Frames = 8;
    constexpr int Events = 48;
    for (const std::string& fault : allFaults())
        for (int at = 1; at <= Frames; ++at) add("oefco", fault, &Plan::frame, at);
    for (const std::string& incident : allIncidents())
        for (int at = 1; at <= Events; ++at) add("oefco", incident, &Plan::event, at);
    return worlds;
}

}  // namespace kestrel::testing
