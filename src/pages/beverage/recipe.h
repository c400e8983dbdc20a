// What a beverage is on the hot-drink board: the parameters of a selection's recipe and the masks of its properties.
// There is no recipe object: the board is the store.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "link/param_table.h"
#include "link/subscriptions.h"

namespace kestrel {

inline constexpr int SelectionKeys = 9;
inline constexpr int RecipeSelections = 2 * SelectionKeys;  ///< from index 9 on the same keys with preselection
inline constexpr int RecipeSteps = 3;
inline constexpr int RecipeFields = 11;
inline constexpr int PowderSolenoids = 3;

/// Fields of a step, in the order in which a page shows them.
inline constexpr int ValveField = 0;        ///< 0: none; in step 1 also the codes of the brewers
inline constexpr int ValveTimeField = 1;    ///< this one and those behind it: tenths of a second
inline constexpr int FirstPowderField = 5;  ///< time of powder solenoid 1, then its delay, then the next solenoid

/// Codes of step 1's valve, whatever the machine's number of valves.
inline constexpr int FirstBrewerCode = 5;
inline constexpr int SecondBrewerCode = 6;

/// Where the board keeps a field; step and selection count from 0.
Setting RecipeSetting(int selection, int step, int field);

struct RecipePlace {
    int step;
    int field;
};
/// The field that the hot-drink board's parameter holds for this selection; nothing for another selection's or no
/// recipe parameter.
std::optional<RecipePlace> RecipePlaceOf(int parameter, int selection);

/// Yes-or-no properties of the selections, in the order of the page's switches.
enum Mask { IncludedMask, CupMask, JugMask, Step2Mask, Step3Mask, ColdMask, FreeMask };
inline constexpr int Masks = 7;

/// The masks' bytes as they last arrived or were last changed. A byte holds eight selections, lowest bit first.
class SelectionMasks {
  public:
    struct Place {
        Mask mask;
        int byte;  ///< 0 to 3
        bool holds(int selection) const { return selection / 8 == byte; }
    };
    /// Which mask the hot-drink board's parameter belongs to; nothing for a copy or any other parameter.
    static std::optional<Place> placeOf(int parameter);

    void store(Place place, ParamValue value);
    bool bit(Mask mask, int selection) const;
    /// Changes the bit in the stored byte and writes the byte to the mask and to its copy.
    void change(Mask mask, int selection, bool on);

  private:
    std::array<std::array<std::uint8_t, 4>, Masks> bytes_{};
};

/// Gives all that a page needs of a selection to Watch or to Release, in the order of its subscriptions.
void EachParameterOfSelection(int selection, void (*subscribe)(const ParamRun&));

}  // namespace kestrel
