// The rules after an interruption of the line, as a part of the reference model: the boards that are there are asked
// who they are; where they are others the line stays closed, and where they are the same all that is watched is read
// again before anything is written.
#pragma once

#include <array>
#include <set>
#include <utility>

#include "simulation/reference_parts.h"

namespace kestrel::testing::reference {

class Recheck {
  public:
    /// Numbers of the identity records in the order of asking; the last is asked of bank 0 alone.
    static constexpr std::array<int, 7> questions{1, 17, 11, 12, 13, 14, 18};
    static constexpr std::size_t probe = 0;  ///< whose answer means nothing
    static constexpr int silencesAllowed = 10, readingsAllowed = 3;

    enum Phase { Open, Asking, Reading, Closed };
    Phase phase = Open;
    bool isClosed() const { return phase == Asking || phase == Closed; }

    /// An answer at the start of the program.
    void learn(int bank, int record, int value) { known_[at(bank)][placeOf(record)] = value; }
    void interrupt() {
        different_ = 0;
        ++interruptions;
        begin();
    }
    void forget() {
        phase = Open;
        known_ = {};
    }
    /// What the question that was out has brought: a value, or a negative number for silence.
    void take(int answer, const std::array<bool, BankCount>& present) {
        if (!std::exchange(out_, false)) return;
        if (answer < 0) {
            if (bank_ != 0 && ++silences_ == silencesAllowed) phase = Closed;
            return;
        }
        silences_ = 0;
        if (question_ != probe) said_[question_] = answer;
        differs_ = differs_ || (question_ != probe && answer != known_[at(bank_)][question_]);
        if (++question_ < questions.size() - (bank_ == 0 ? 0 : 1)) return;
        if (differs_) return differs();
        question_ = 0;
        while (++bank_ < BankCount && !present[at(bank_)]) continue;
        if (bank_ == BankCount) phase = Reading;
    }
    /// Bank and number of the record that is asked for now.
    std::pair<int, int> ask() {
        out_ = true;
        return {bank_, questions[question_]};
    }

    long interruptions = 0;
    std::set<std::pair<int, int>> unread;  ///< what is to be read before anything is written

  private:
    static std::size_t at(int bank) { return static_cast<std::size_t>(bank); }
    static std::size_t placeOf(int record) {
        std::size_t place = 0;
        while (questions.at(place) != record) ++place;
        return place;
    }
    void begin() {
        phase = Asking;
        bank_ = silences_ = 0;
        question_ = 0;
        out_ = differs_ = false;
    }
    /// One reading may be noise; the same one again and again is not.
    void differs() {
        different_ = said_ == saidBefore_ ? different_ + 1 : 1;
        saidBefore_ = said_;
        if (different_ < readingsAllowed) return begin();
        phase = Closed;
    }

    std::array<std::array<int, questions.size()>, BankCount> known_{};
    std::array<int, questions.size()> said_{}, saidBefore_{};
    int bank_ = 0, silences_ = 0, different_ = 0;
    std::size_t question_ = 0;
    bool out_ = false, differs_ = false;
};

}  // namespace kestrel::testing::reference
