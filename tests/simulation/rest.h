// What must hold when the trouble is over: everything comes right within its time, mirror, boards and pages agree, and
// closed pages leave nothing behind but what their own lists say.
#pragma once

#include "simulation/fault_line.h"
#include "simulation/stage.h"

namespace kestrel::testing {

/// Calls of all these throw CheckFailed.
class Rest {
  public:
    Rest(const Plan& plan, Stage& stage, FaultLine& line) : plan_(plan), stage_(stage), line_(line) {}

    /// The line is well again: lets what is late come in, and all that is watched be read.
    void comeRight();
    void compareWithBoards() const;
    void nothingWaits() const;
    /// A page that lived through it all shows what a page shows that is opened anew.
    void comparePagesWithNewOnes();
    /// To be called before a run: learns which subscriptions the pages leave behind in any case.
    static void learn();
    /// All pages are closed: no other subscription is left.
    void onlyUnlikeListsAreLeft() const;

  private:
    /// Has all that is watched read, and waits for it. Throws EndedByRules where the link can never come that far.
    void readAll();

    const Plan& plan_;
    Stage& stage_;
    FaultLine& line_;
};

}  // namespace kestrel::testing
