// What the user has changed in this run, with what stood there before and what became of it.
// In memory alone. Orders, and what only chooses what a page shows, are no changes.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {

class Control;
class Page;

/// What became of a change; of one that wrote several records, the last of these that is true of any of them.
enum class Fate {
    Confirmed,
    Waiting,
    Replaced,   ///< by another change of the same, before the board had it
    Withdrawn,  ///< by the user's word, or since its page gave it up
    NotTaken,   ///< the board has another value
    Unknown,    ///< it went out, and its page was closed before the board had answered
};

/// A control of a page by its place in reading order, and what it held.
struct HeldAt {
    std::size_t place = 0;
    std::string held;
};

struct PastChange {
    struct Record {
        int bank;
        int index;
        bool isOpen;
    };

    int number = 0;    ///< from 1 on
    std::string time;  ///< of day, such as "10:32"
    std::string page;  ///< class name
    std::string pageCaption;
    std::string control;      ///< its name on the page
    std::string before, now;  ///< as the control showed it
    bool isTwoState = false;  ///< they are "1" for on and "0" for off
    std::size_t place = 0;    ///< of the control on its page, in reading order
    std::string heldBefore, held;
    std::vector<HeldAt> selectors;  ///< what chose what the page showed then
    std::vector<Record> records;
    Fate fate = Fate::Waiting;
    int putsBack = 0;         ///< the number of the change that it puts back, or 0
    bool isOfOthers = false;  ///< it was made on boards that are no longer on the line
};

/// Oldest first; at most the last thousand.
const std::vector<PastChange>& PastChanges();
/// Null where it is none, or has been dropped as too old.
const PastChange* FindPastChange(int number);
/// Whether another change has put it back.
bool IsPutBack(const PastChange& change);
/// Runs whenever one is added or its fate is another.
void OnHistory(std::function<void()> handler);

/// A control of the page by its place in reading order, or null.
Control* ControlAt(Page& page, std::size_t place);

/// The user's act on the control has queued a write.
void NotePast(const Control& control, int bank, int index);
/// The change of the record has ended so.
void EndPast(int bank, int index, Fate fate);
/// The page goes, and its controls with it.
void EndActsOn(const Page& page);
/// Other boards are on the line: nothing can be put back any more.
void EndHistoryOfBoards();
/// The next change of this control puts that one back; null: no control's.
void ExpectPutBack(const Control* control, int number);

}  // namespace kestrel
