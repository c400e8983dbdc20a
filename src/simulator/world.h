// What the parts of the simulated machine share: the memories of the boards, the agenda and the seed.
// Behaviours keep their visible state in the memories, since that is where the PC looks.
#pragma once

#include <array>

#include "simulator/agenda.h"
#include "simulator/board_memory.h"
#include "simulator/parameters.h"
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
    std::uint32_t get(Board board, int parameter) const { return at(board).value(parameter); }
    void set(Board board, int parameter, std::uint32_t value) { at(board).setValue(parameter, value); }
    void add(Board board, int parameter, std::uint32_t amount) {
        set(board, parameter, get(board, parameter) + amount);
    }
    bool hasBit(Board board, int parameter, unsigned bit) const { return (get(board, parameter) & bit) != 0; }
    void setBit(Board board, int parameter, unsigned bit, bool on) {
        const std::uint32_t value = get(board, parameter);
        set(board, parameter, on ? value | bit : value & ~bit);
    }
};

}  // namespace kestrel::simulator
