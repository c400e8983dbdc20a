// Who listens to the link and the mirror: it is told what they do, at the moment when they do it.
// For simulated runs, monitors and benches. A listener only looks on: it changes nothing from inside of these calls.
#pragma once

#include <cstdint>

#include "link/param_table.h"
#include "platform/module_state.h"
#include "platform/serial_control.h"

namespace kestrel {

class Page;

/// Abstract because the link must not know who looks on; all methods are empty, so that a listener writes those alone
/// that it wants.
class LinkObserver {
  public:
    virtual ~LinkObserver() = default;

    // The port.
    virtual void searchingPort() {}  ///< a port is opened and probed, and perhaps others after it
    virtual void portOpened() {}     ///< the search ends; where there is no board the process ends instead

    // The boards.
    virtual void readingIndexFiles() {}  ///< all tables are filled anew
    virtual void startedAnew() {}        ///< with other boards than before

    // An exchange, in the bank that CurrentBank names.
    virtual void askingIdentity() {}  ///< the request is filled, and its frame goes out next
    virtual void exchangeOpened() {}
    virtual void frameSent(const Bytes& /*frame*/) {}
    virtual void frameLost(const Bytes& /*frame*/) {}  ///< in a port that does not open or take it
    virtual void replyJudged(const Bytes& /*reply*/, bool /*good*/) {}
    virtual void exchangeClosed() {}
    virtual void exchangeGivenUp() {}  ///< whether or not it was still open

    // A record of CurrentBank.
    virtual void recordStored(int /*index*/) {}  ///< the reply stands in the mirror, and pages are told next
    virtual void recordWatched(int /*index*/) {}
    virtual void recordReleased(int /*index*/) {}
    virtual void recordWritten(int /*index*/, std::uint32_t /*value*/) {}
    virtual void withdrawingRecord(int /*index*/) {}

    // The pages.
    virtual void loadingPage(const Page& /*page*/) {}
    virtual void tellingPage(const Page& /*page*/, int /*index*/, ParamValue /*value*/) {}
    virtual void pageTold(const Page& /*page*/) {}
};

/// One at a time; null: nobody. The caller keeps it alive.
void SetObserver(LinkObserver* observer);

struct Listening {
    LinkObserver* observer = nullptr;
};

/// Tells the listener, where there is one: `tell(&LinkObserver::frameSent, frame)`.
template <class... Parameters, class... Arguments>
void tell(void (LinkObserver::*what)(Parameters...), const Arguments&... arguments) {
    const Listening* const here = stateInForce<Listening>;
    if (here && here->observer) (here->observer->*what)(arguments...);
}

}  // namespace kestrel
