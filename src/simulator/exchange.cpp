// Exchanges in readable form.
// The columns are wide enough to stand below each other in ordinary traffic.
#include "simulator/exchange.h"

#include <array>
#include <iomanip>
#include <sstream>

#include "catalogue/rows.h"

namespace kestrel::simulator {
namespace {

std::string subjectOf(const Exchange& exchange) {
    if (exchange.parameter != 0) return std::to_string(exchange.parameter);
    if (exchange.identity != 0) return "identity " + std::to_string(exchange.identity);
    std::ostringstream text;
    text << "at " << std::hex << std::uppercase << std::setfill('0') << std::setw(6) << exchange.request.address;
    return text.str();
}

}  // namespace

std::string_view nameOf(Board board) {
    constexpr std::array<std::string_view, boardCount> names{"master", "hot-drink", "sector"};
    return names[indexOf(board)];
}

std::string hexOf(const Bytes& bytes) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0');
    for (std::size_t i = 0; i < bytes.size(); ++i) text << (i == 0 ? "" : " ") << std::setw(2) << int{bytes[i]};
    return text.str();
}

std::string describe(const Exchange& exchange) {
    std::ostringstream line;
    line << std::fixed << std::setprecision(6) << std::setw(12)
         << static_cast<double>(exchange.time) / static_cast<double>(second) << "  ";
    if (exchange.request.verdict == Frame::Verdict::Good) {
        line << std::left << std::setw(9) << nameOf(exchange.request.board) << ' '
             << (exchange.request.write ? "write " : "read  ") << std::setw(11) << subjectOf(exchange) << std::right;
        if (exchange.request.write || !exchange.reply.empty()) line << " = " << exchange.value;
    }
    line << "  [" << hexOf(exchange.request.raw) << "] -> [" << hexOf(exchange.reply) << ']';
    const std::string name = exchange.parameter == 0 ? "" : ParameterName(exchange.request.board, exchange.parameter);
    if (!name.empty()) line << "  " << name;
    if (!exchange.note.empty()) line << "  " << exchange.note;
    return line.str();
}

}  // namespace kestrel::simulator
