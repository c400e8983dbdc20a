// Reading and writing many parameters over the link.
#include "ctl/line_work.h"

#include <algorithm>

#include "ctl/words.h"
#include "link/frames.h"
#include "link/line_rest.h"
#include "link/link_engine.h"
#include "link/recheck.h"
#include "link/settings.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr int SecondMs = 1000;
constexpr int SilencesAllowed = 2;  ///< of one record, in a row
constexpr int LongRestMs = 6000;    ///< after a silence: its answer may be so late
constexpr int ShortRestMs = 300;    ///< after spoiled bytes: what is under way, and the adapter's delay
constexpr int NotSilent = -1;
constexpr int SecondsToEndAtOnce = 2;  ///< of silence, when the user has asked for the end

/// The mirror's operations work in the current bank, which is the scan's and stays where it is.
template <class Operation>
void at(const Place& place, Operation operation) {
    const int bank = std::exchange(CurrentBank, BankOf(place.board));
    operation(place.number);
    CurrentBank = bank;
}

void readAnew(const Place& place) {
    at(place, ParamRelease);
    at(place, ParamWatch);
}

bool canBeAsked(const Place& place) {
    return BoardPresent(BankOf(place.board)) && place.number < RecordCount(BankOf(place.board));
}

std::uint32_t valueAt(const Place& place) {
    return static_cast<std::uint32_t>(ParamRead(place.number, BankOf(place.board)));
}

}  // namespace

LineWork::LineWork(Context& context)
    : context_(context),
      spoiled_(Link().SpoiledArrivals),
      second_(SecondMs, Timer::OfTheLink),
      rest_(LongRestMs, Timer::OfTheLink) {
    silentSince_.fill(NotSilent);
    second_.OnTimer([this] {
        ++seconds_;
        quietSeconds_ = std::exchange(anythingCame_, false) ? 0 : quietSeconds_ + 1;
    });
    rest_.OnTimer([this] { rest_.Enabled = false; });
    second_.Enabled = true;
    if (LateAnswerIsExpected() || spoiled_ > 0) letRest(LongRestMs);
    SetObserver(this);
}

LineWork::~LineWork() { SetObserver(nullptr); }

void LineWork::exchangeOpened() { isClean_ = !rest_.Enabled; }

void LineWork::frameSent(const Bytes& frame) {
    if (seesAll) seesAll->frameSent(frame);
    if (answer_ == Answer::None) noteSilence();  // it goes again after a time-out
    answer_ = Answer::None;
    asked_ = {static_cast<Board>(CurrentBank), Link().LinkSetup ? 0 : Link().ScanIndex};
}

void LineWork::replyJudged(const Bytes& reply, bool good) {
    if (seesAll) seesAll->replyJudged(reply, good);
    answer_ = good ? Answer::Good : Answer::Bad;
    // The link takes the first bytes of a longer reply, whose sum may fit by chance.
    const Request& request = Link().RequestBytes;
    const std::size_t length = AnswersWithValue(request.Command) ? static_cast<std::size_t>(request.n) + 2 : 1;
    if (good && reply.size() == length) return;
    spoiled_ = Link().SpoiledArrivals;
    isClean_ = false;
    letRest(ShortRestMs);
}

void LineWork::exchangeClosed() {
    if (seesAll) seesAll->exchangeClosed();
    if (std::exchange(answer_, Answer::Good) != Answer::Good) noteSilence();
}

void LineWork::noteSilence() {
    silent_.push_back(asked_);
    int& since = silentSince_[static_cast<std::size_t>(asked_.board)];
    if (since == NotSilent) since = seconds_;
    isClean_ = false;
    letRest(LongRestMs);
}

void LineWork::recordStored(int index) {
    stored_.push_back({{static_cast<Board>(CurrentBank), index}, isClean_});
    silentSince_[static_cast<std::size_t>(CurrentBank)] = NotSilent;
    anythingCame_ = true;
}

void LineWork::neverRests() {
    rests_ = false;
    rest_.Enabled = false;
}

/// A longer rest is not cut short.
void LineWork::letRest(int milliseconds) {
    if (!rests_ || (rest_.Enabled && rest_.Interval > milliseconds)) return;
    rest_.Enabled = false;
    rest_.Interval = milliseconds;
    rest_.Enabled = true;
}

void LineWork::open(const std::vector<Place>& places) {
    open_.clear();
    stored_.clear();
    silent_.clear();
    putOff_ = 0;
    newest_.number = 0;
    isDisturbed_ = false;
    for (const Place& place : places)
        if (canBeAsked(place) && open_.emplace(place, Reading{}).second) at(place, ParamWatch);
}

Ending LineWork::step() {
    platform().PumpEvents();
    if (std::exchange(spoiled_, Link().SpoiledArrivals) != Link().SpoiledArrivals) {
        isDisturbed_ = true;
        letRest(ShortRestMs);
    }
    // While the scan stands, the link takes the loss of a port for nothing.
    LinkState& link = Link();
    if (!link.Timer1.Enabled && !link.Comm1->PortOpen() && !LineIsClosed()) InterruptLine();
    wasInterrupted_ = wasInterrupted_ || LineIsClosed();
    const bool mayAsk = !rest_.Enabled || !link.LinkIdle || LineIsClosed();
    if (link.Timer1.Enabled != mayAsk) link.Timer1.Enabled = mayAsk;
    if (hasOtherBoards_) return Ending::OtherBoards;
    if (context_.endsWanted() > endsHeard) return Ending::Stopped;
    return quietSeconds_ >= context_.options.wait ? Ending::LineLost : Ending::Whole;
}

void LineWork::takeStored(Values& values) {
    if (std::exchange(isDisturbed_, false)) reconsider(values);
    if (stored_.empty()) return;
    for (const auto& [place, isClean] : std::exchange(stored_, {})) {
        const auto found = open_.find(place);
        if (found == open_.end() || found->second.turn == Reading::PutOff) continue;
        if (!isClean) {
            readAnew(place);
            continue;
        }
        values[place] = valueAt(place);
        newest_ = place;
        at(place, ParamRelease);
        open_.erase(found);
    }
}

/// What was taken last may have been a wrong one's answer, of which only what came behind it tells.
void LineWork::reconsider(Values& values) {
    const auto found = values.find(newest_);
    if (found == values.end() || open_.contains(newest_)) return;
    open_.emplace(newest_, Reading());
    values.erase(found);
    at(newest_, ParamWatch);
    newest_.number = 0;
}

bool LineWork::isSilent(Board board) const {
    const int since = silentSince_[static_cast<std::size_t>(board)];
    return since != NotSilent && seconds_ - since >= context_.options.wait;
}

void LineWork::takeSilent() {
    for (const Place& place : std::exchange(silent_, {})) {
        const auto found = open_.find(place);
        if (found == open_.end()) continue;
        if (isSilent(place.board)) {
            giveUp(place.board);
        } else if (++found->second.silences >= SilencesAllowed) {
            at(place, ParamRelease);
            giveUpExchange(place);
            if (std::exchange(found->second.turn, Reading::PutOff) == Reading::Last)
                open_.erase(found);
            else
                ++putOff_;
        }
    }
    if (putOff_ > 0 && putOff_ == open_.size()) askAgain();
}

void LineWork::askAgain() {
    putOff_ = 0;
    for (auto& [place, reading] : open_) {
        reading.silences = 0;
        reading.turn = Reading::Last;
        at(place, ParamWatch);
    }
}

void LineWork::giveUp(Board board) {
    std::erase_if(open_, [&](const auto& each) {
        const auto& [place, reading] = each;
        if (place.board != board) return false;
        if (reading.turn == Reading::PutOff)
            --putOff_;
        else
            at(place, ParamRelease);
        return true;
    });
    giveUpExchange(asked_);
}

/// A record may be repeated without end while its board is silent.
void LineWork::giveUpExchange(const Place& place) const {
    if (!Link().LinkIdle && asked_ == place && !LineIsClosed()) CloseExchange();
}

void LineWork::showProgress(std::size_t done, std::size_t all) {
    if (label.empty() || done == 0) return;
    const auto left = static_cast<std::size_t>(seconds_ - from_) * (all - done) / done;
    const std::string state =
        quietSeconds_ > SecondsToEndAtOnce ? say(Word::LineIsSilent) : say(Word::TimeLeft, {std::to_string(left)});
    context_.out.progress(label + ' ' + std::to_string(done) + '/' + std::to_string(all) + ", " + state);
}

Ending LineWork::read(const std::vector<Place>& places, Values& values) {
    open(places);
    const std::size_t all = open_.size();
    Ending how = Ending::Whole;
    int shown = from_ = seconds_;
    Timer behind(ShortRestMs, Timer::OfTheLink);  // what comes behind the last value may speak against it
    behind.OnTimer([&behind] { behind.Enabled = false; });
    bool isOver = open_.empty();
    while (!isOver && how == Ending::Whole) {
        const bool wasOpen = !open_.empty();
        how = step();
        takeSilent();
        takeStored(values);
        if (std::exchange(shown, seconds_) != seconds_) showProgress(all - std::min(all, open_.size()), all);
        behind.Enabled = open_.empty() && (wasOpen || behind.Enabled);
        isOver = open_.empty() && !behind.Enabled;
    }
    for (const auto& [place, reading] : open_)
        if (reading.turn != Reading::PutOff) at(place, ParamRelease);
    open_.clear();
    context_.out.progress("");
    return how;
}

Ending LineWork::write(const std::vector<std::pair<Place, std::uint32_t>>& values, Values& confirmed) {
    if (wasInterrupted_ || LineIsClosed()) return Ending::Interrupted;
    open({});
    for (const auto& [place, value] : values) {
        if (!canBeAsked(place)) continue;
        open_.emplace(place, Reading{});
        at(place, [number = value](int index) { ParamWrite(index, number); });
    }
    Ending how = Ending::Whole;
    while (!open_.empty() && how == Ending::Whole) {
        how = step();
        for (const auto& [place, isClean] : std::exchange(stored_, {}))
            if (open_.erase(place) > 0) confirmed[place] = valueAt(place);
        for (const Place& place : std::exchange(silent_, {}))
            if (const auto found = open_.find(place);
                found != open_.end() && ++found->second.silences >= SilencesAllowed)
                open_.erase(found);
        if (how == Ending::Stopped && quietSeconds_ < SecondsToEndAtOnce)
            how = Ending::Whole;  // what is begun is finished
        if (wasInterrupted_ && how == Ending::Whole) how = Ending::Interrupted;
    }
    for (const auto& [place, value] : values) {
        if (!canBeAsked(place)) continue;
        at(place, ParamWithdraw);
        readAnew(place);
        at(place, ParamRelease);
        giveUpExchange(place);
    }
    open_.clear();
    return how;
}

Ending LineWork::follow(const std::vector<Place>& places, int seconds,
                        const std::function<void(const Place&, std::uint32_t)>& seen) {
    open(places);
    from_ = seconds_;
    Ending how = Ending::Whole;
    while (how == Ending::Whole && !context_.out.isLost() && (seconds == 0 || seconds_ - from_ < seconds)) {
        how = step();
        for (const auto& [place, isClean] : std::exchange(stored_, {})) {
            if (!open_.contains(place)) continue;
            if (isClean) seen(place, valueAt(place));
            if (ParamTable(BankOf(place.board), place.number).Period == 0) readAnew(place);
        }
        silent_.clear();
    }
    for (const auto& [place, reading] : open_) at(place, ParamRelease);
    open_.clear();
    return how;
}

}  // namespace kestrel::ctl
