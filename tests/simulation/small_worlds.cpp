// Worlds so small that they can be played out in full.
// See small_worlds.h.
#include "simulation/small_worlds.h"

#include "link/fan_out.h"
#include "link/subscriptions.h"
#include "link/value_helpers.h"
#include "shell/main_window.h"

namespace kestrel::testing {

namespace {

constexpr int Setting = 16;  ///< of the master: two bytes, read once a subscription
constexpr int Polled = 7;    ///< one byte, read on every second pass
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
    }
    ScrollBar bar;
    Label setting, polled;

    Layout Arrange() override { return Column{bar, setting, polled}; }
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
    plan.hotDrinkBoard = plan.sectorBoard = plan.moving = plan.rough = plan.strange = false;
    plan.chunk = 0;
    plan.aim = Plan::Aim::All;
    plan.strength.fill(0);
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
    if (letter == 'o') ShowPage(Name);
    if (letter == 'p') MDIForm1().mnuCox(1).UserClick();
    if (!page) return;
    if (letter == 'c') page->UserClose();
    if (letter == 'e' || letter == 'f') page->bar.UserMove(letter == 'e' ? 1234 : 21'000);
}

std::vector<Plan> smallWorlds() {
    std::vector<Plan> worlds;
    const std::string letters = "oefcp";
    for (const char first : letters)
        for (const char second : letters)
            for (const char third : letters) {
                Plan plan = smallWorld();
                plan.script = std::string("o") + first + second + third;
                worlds.push_back(plan);
            }
    constexpr int Frames = 8;
    constexpr int Events = 48;
    for (std::size_t fault = 0; fault < FaultCount; ++fault)
        for (int place = 1; place <= (fault < FirstIncident ? Frames : Events); ++place) {
            Plan plan = smallWorld();
            plan.script = "oefco";
            plan.single = static_cast<Fault>(fault);
            plan.singleAt = place;
            worlds.push_back(plan);
        }
    return worlds;
}

}  // namespace kestrel::testing
