// What must hold when the trouble is over: everything comes right within its time, mirror, boards and pages agree, and
// closed pages leave nothing behind but what their own lists say. Calls of all these throw CheckFailed.
#pragma once

#include "simulation/fault_line.h"
#include "simulation/stage.h"

namespace kestrel::testing {

struct Rest {
    const Plan& plan;
    Stage& stage;
    FaultLine& line;
    Checks& checks;

    /// To be called before a run: learns which subscriptions the pages leave behind in any case.
    static void learn();
    /// The line is well again: lets what is late come in, and all that is watched be read; then mirror, boards and
    /// pages agree, and a page that lived through it all shows what a page shows that is opened anew.
    void comeRight();
    void compareWithBoards() const;
    /// All pages are closed: no other subscription is left.
    void onlyUnlikeListsAreLeft() const;

    // The steps of coming right.
    void letTheTroubleEbb();
    void openTheLine();
    /// The end of an open exchange: then an act is taken at once.
    void awaitIdle();
    void close(Page& page);
    /// Has all that is watched read, and waits for it.
    void readAll();
    void nothingWaits() const;
    void comparePagesWithNewOnes();
    bool showsWhatANewOneShows(Page& page);
};

}  // namespace kestrel::testing
