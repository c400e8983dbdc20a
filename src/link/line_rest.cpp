// Waiting for the line.
#include "link/line_rest.h"

#include "link/link_engine.h"
#include "platform/platform.h"

namespace kestrel {

void Await(const std::function<void()>& begin, const std::function<bool()>& isDone) {
    LinkState& link = Link();
    link.ReplyTimedOut = false;
    link.Timer5.Enabled = false;
    link.Timer5.Enabled = true;
    begin();
    do platform().PumpEvents();
    while (!isDone() && !link.ReplyTimedOut);
}

void LetLineRest(int milliseconds) {
    LinkState& link = Link();
    std::int64_t known = 0;
    const auto begin = [&] {
        known = link.SpoiledArrivals;
        link.RestTimer.Interval = milliseconds;
        link.RestTimer.Enabled = true;
    };
    Await(begin, [&] {
        if (link.RestTimer.Enabled) return false;
        if (known == link.SpoiledArrivals) return true;
        begin();
        return false;
    });
    link.RestTimer.Enabled = false;
}

void ExpectLateAnswer() {
    Link().LateTimer.Enabled = false;
    Link().LateTimer.Enabled = true;
}

bool LateAnswerIsExpected() { return Link().LateTimer.Enabled; }

void LetLateAnswersPass() {
    while (LateAnswerIsExpected()) Await([] {}, [] { return !LateAnswerIsExpected(); });
}

}  // namespace kestrel
