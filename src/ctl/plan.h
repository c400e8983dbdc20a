// What a file of settings means for the machine on the line: what is to be written, in which order, and what is not.
// The rules are those of the pages, which let a user change no more than this.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ctl/connection.h"
#include "ctl/line_work.h"
#include "ctl/settings_file.h"

namespace kestrel::ctl {

/// One write: of a parameter, or of the copy that the board keeps beside it.
struct Step {
    Item item;
    bool isCopy;
    std::uint32_t before;
    std::uint32_t wanted;
    std::optional<std::uint32_t> now;  ///< what the board has, as far as it is known
    bool isTouched = false;            ///< a write may have gone out

    Place place() const { return isCopy ? item.copy() : item.place(); }
    std::string name() const { return BoardName(item.board()) + ' ' + item.name() + (isCopy ? ".copy" : ""); }
    bool isDone() const { return now == wanted; }
};

/// What is left out, with the reason for the user.
struct LeftOut {
    Item item;
    std::string why;
};

struct Plan {
    std::vector<Step> steps;  ///< a parameter is followed by its copy
    std::vector<LeftOut> leftOut;
};

/// Whether the options name the parameter: its group, and what it is.
bool isWanted(const Options& options, const Item& item);

/// All that a plan, or a comparison, has to know of the machine.
std::vector<Place> placesFor(const std::vector<Entry>& entries);

/// `present` has the values of placesFor(). Another identity of a board and a value that cannot be are RunTimeErrors,
/// the latter with the line of the file.
Plan makePlan(const SettingsFile& file, const std::string& fileName, const Options& options,
              const Connection& connection, const Values& present);

/// The writes that set the clock to this time.
std::vector<Step> clockSteps(const std::tm& time, const Values& present);
std::vector<Place> clockPlaces();

/// Another identity of a board than the file's is a RunTimeError.
void refuseOtherIdentity(const SettingsFile& file, const Connection& connection);

}  // namespace kestrel::ctl
