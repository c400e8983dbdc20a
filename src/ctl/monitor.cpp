// Every exchange on the line as it is seen from this end.
#include "ctl/monitor.h"

#include <algorithm>

#include "catalogue/rows.h"
#include "ctl/words.h"
#include "link/link_engine.h"
#include "simulator/exchange.h"
#include "simulator/receiver.h"

namespace kestrel::ctl {

namespace {

constexpr std::string_view Good = "ok";
constexpr std::string_view Bad = "bad";
constexpr std::string_view Silence = "silence";

/// The exchange as the other end would describe it.
simulator::Exchange exchangeOf(const Bytes& frame, int parameter, const Bytes& reply, bool isGood) {
    simulator::Receiver receiver;
    simulator::Exchange exchange;
    for (const std::uint8_t byte : frame)
        if (auto heard = receiver.take(0, byte)) exchange.request = std::move(*heard);
    exchange.parameter = parameter;
    exchange.reply = reply;
    const Bytes& value = exchange.request.write ? exchange.request.data : reply;
    const auto width = std::min(value.size(), static_cast<std::size_t>(exchange.request.width));
    if (isGood || exchange.request.write)
        for (std::size_t i = width; i-- > 0;) exchange.value = exchange.value << 8 | value[i];
    return exchange;
}

}  // namespace

void Traffic::frameSent(const Bytes& frame) {
    if (!frame_.empty()) tell({}, Silence);
    frame_ = frame;
    sent_ = context_.clock();
    if (first_ == 0) first_ = sent_;
    parameter_ = Link().LinkSetup ? 0 : Link().ScanIndex;
}

void Traffic::replyJudged(const Bytes& reply, bool good) {
    if (!frame_.empty()) tell(reply, good ? Good : Bad);
    frame_.clear();
}

void Traffic::exchangeClosed() {
    if (!frame_.empty()) tell({}, Silence);
    frame_.clear();
}

void Traffic::tell(const Bytes& reply, std::string_view verdict) {
    ++exchanges_;
    bad_ += verdict == Bad ? 1 : 0;
    silent_ += verdict == Silence ? 1 : 0;
    simulator::Exchange exchange = exchangeOf(frame_, parameter_, reply, verdict == Good);
    exchange.time = static_cast<simulator::Micros>((sent_ - begun_) * 1e6);
    exchange.note = std::string(verdict);
    const simulator::Frame& request = exchange.request;
    context_.out.result(describe(exchange), {{"time", static_cast<double>(exchange.time) / 1e6},
                                             {"board", std::string(simulator::nameOf(request.board))},
                                             {"direction", std::string(request.write ? "write" : "read")},
                                             {"name", ParameterName(request.board, exchange.parameter)},
                                             {"request", simulator::hexOf(frame_)},
                                             {"reply", simulator::hexOf(reply)},
                                             {"verdict", exchange.note}});
}

void Traffic::conclude() {
    const double rate = static_cast<double>(exchanges_) / std::max(context_.clock() - first_, 1e-3);
    const long errors = bad_ + silent_;
    const double share = exchanges_ == 0 ? 0 : 100.0 * static_cast<double>(errors) / static_cast<double>(exchanges_);
    const auto tenths = [](double value) {
        return std::to_string(value).substr(0, std::to_string(value).find('.') + 2);
    };
    context_.out.result(say(Word::TrafficInSum, {std::to_string(exchanges_), tenths(rate), std::to_string(bad_),
                                                 std::to_string(silent_), tenths(share)}),
                        {{"exchanges", std::int64_t{exchanges_}},
                         {"rate", rate},
                         {"bad", std::int64_t{bad_}},
                         {"silent", std::int64_t{silent_}},
                         {"error_share", share / 100}});
}

}  // namespace kestrel::ctl
