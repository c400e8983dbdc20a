// What the parts of the simulated machine share: the memories of the boards, the agenda and the seed.
// Behaviours keep their visible state in the memories, since that is where the PC looks.
#pragma once

#include <array>

#include "simulator/agenda.h"
#include "simulator/bits.h"
#include "simulator/board_memory.h"
#include "simulator/types.h"

namespace kestrel::simulator {

struct World {
    std::array<BoardMemory, boardCount> memory;
    std::array<bool, boardCount> fitted{};
    Agenda agenda;
    std::uint64_t seed = 1;
    bool moving = true;  // false: nothing happens by itself but the clock and what was commanded

    bool isFitted(Board board) const { return fitted[indexOf(board)]; }
    BoardMemory& at(Board board) { return memory[indexOf(board)]; }
    const BoardMemory& at(Board board) const { return memory[indexOf(board)]; }

    // A parameter that the board's file does not have reads as 0 and takes nothing.
    std::uint32_t get(const Setting& parameter) const { return at(parameter.board).value(parameter.number); }
    void set(const Setting& parameter, std::uint32_t value) { at(parameter.board).setValue(parameter.number, value); }
    void add(const Setting& parameter, std::uint32_t amount) { set(parameter, get(parameter) + amount); }
    // Which of the price list a product's price number names; one beyond the list counts from its start again.
    int priceIndex(const Setting& priceNumber) const {
        return static_cast<int>(get(priceNumber) % static_cast<std::uint32_t>(master::Price.size()));
    }
    bool hasBit(const Setting& parameter, unsigned bit) const { return (get(parameter) & bit) != 0; }
    void setBit(const Setting& parameter, unsigned bit, bool on) {
        const std::uint32_t value = get(parameter);
        set(parameter, on ? value | bit : value & ~bit);
    }
};

}  // namespace kestrel::simulator
