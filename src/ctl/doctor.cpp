// kestrelctl doctor: why a machine cannot be reached, one finding a line, with its remedy.
#include <algorithm>

#include "ctl/connection.h"
#include "ctl/line_work.h"
#include "ctl/monitor.h"
#include "ctl/parameters.h"
#include "ctl/words.h"
#include "language/port_words.h"
#include "link/settings.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr int ListenMs = 400;
constexpr int AnswerMs = 300;
constexpr int Probes = 4;
constexpr int TrialSeconds = 3;
const Bytes Probe(5, 0);  ///< a read of the master's first byte

/// Counts what happens on the line.
class Counter : public LinkObserver {
  public:
    void frameSent(const Bytes&) override { ++frames; }
    void replyJudged(const Bytes&, bool isGood) override { good += isGood ? 1 : 0; }
    long frames = 0, good = 0;
};

class Examination {
  public:
    explicit Examination(Context& context) : context_(context) {}

    int run() {
        if (portSpeaks()) boardsSpeak();
        if (findings_ == 0) tell("well", say(Word::DoctorWell));
        return findings_ == 0 ? status::Well : status::Differs;
    }

  private:
    void tell(const char* what, const std::string& text) {
        context_.out.result(text, {{"finding", std::string(what)}, {"text", text}});
    }
    void find(const char* what, const std::string& text) {
        ++findings_;
        tell(what, text);
    }

    /// What comes back on single questions tells silence, echo, garbage and boards apart.
    bool portSpeaks() {
        const std::unique_ptr<SerialControl> port = platform().makeSerialControl();
        try {
            context_.findDevice();
            port->CommPort(1);
            port->PortOpen(true);
        } catch (const RunTimeError& error) {
            find("port", error.what());
            return false;
        }
        platform().BusyWait(ListenMs);
        const std::size_t unasked = port->Input().size();
        int good = 0, echoed = 0, spoiled = 0;
        std::size_t added = unasked;  // bytes beyond what was asked for
        for (int i = 0; i < Probes; ++i) {
            port->Output(Probe);
            platform().BusyWait(AnswerMs);
            const Bytes reply = port->Input();
            const bool isEcho =
                reply.size() >= Probe.size() && std::ranges::equal(Probe, std::span(reply).first(Probe.size()));
            const bool isAnswer = reply.size() >= 2 && reply[0] == reply[1];
            if (isEcho) {
                ++echoed;
            } else if (isAnswer) {
                ++good;
                added += reply.size() - 2;
            } else if (!reply.empty()) {
                ++spoiled;
            }
        }
        port->PortOpen(false);
        if (added > 0) find("noise", say(Word::DoctorNoise, {std::to_string(added)}));
        if (echoed > Probes / 2) {
            find("echo", say(Word::DoctorEcho));
        } else if (good == 0 && added == 0) {
            spoiled > 0 ? find("speed", say(Word::DoctorSpeed)) : find("silence", say(Word::DoctorSilence));
        }
        if (good > 0) tell("answers", say(Word::DoctorAnswers, {platform().portDevice(1)}));
        return good > 0;
    }

    void boardsSpeak() {
        try {
            Connection connection(context_);
            for (const Board which : {Board::Master, Board::HotDrink, Board::Sector})
                if (const BoardOnTheLine& board = connection.board(which); !board.fileTrouble.empty())
                    find("index_file", board.fileTrouble + "; " + say(Word::DoctorFile));
            if (!connection.masterTrouble().empty()) {
                if (connection.board(Board::Master).fileTrouble.empty())
                    find("incompatible", connection.masterTrouble());
                return;
            }
            connection.begin();
            for (const Board which : connection.missing()) find("board", say(Word::DoctorBoard, {BoardName(which)}));
            tryLine(connection.work());
        } catch (const RunTimeError& error) {
            find("line", error.what());
        }
    }

    void tryLine(LineWork& work) {
        Counter counter;
        work.seesAll = &counter;
        work.neverRests();
        std::vector<Place> places;
        places.reserve(static_cast<std::size_t>(master::Price.size()));
        for (int i = 0; i < master::Price.size(); ++i) places.push_back(PlaceOf(master::Price[i]));
        work.follow(places, TrialSeconds, [](const Place&, std::uint32_t) {});
        if (counter.good < counter.frames - 1)
            find("spoiled", say(Word::DoctorSpoiled,
                                {std::to_string(counter.frames - counter.good), std::to_string(counter.frames)}));
    }

    Context& context_;
    int findings_ = 0;
};

}  // namespace

int doctor(Context& context) { return Examination(context).run(); }

}  // namespace kestrel::ctl
