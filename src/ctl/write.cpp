// kestrelctl write: what differs from a file goes into the machine.
#include <algorithm>
#include <map>

#include "ctl/plan.h"
#include "ctl/words.h"
#include "ctl/writing.h"
#include "link/money.h"
#include "link/settings.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr Place MachineNumber = PlaceOf(master::MachineNumber);
constexpr Place Decimals = PlaceOf(master::MoneyDecimals);

/// What became of a step, for scripts and for people.
std::pair<const char*, Word> outcomeOf(const Step& step) {
    if (step.isDone()) return {"written", Word::Written};
    if (!step.isTouched) return {"left", Word::LeftAsItWas};
    if (!step.now) return {"unknown", Word::OldOrNew};
    return step.now == step.before ? std::pair{"refused", Word::Refused} : std::pair{"other", Word::HasAnother};
}

class Writing {
  public:
    explicit Writing(Context& context) : context_(context), name_(context.options.arguments.front()) {}

    int run() {
        const SettingsFile file = parse(platform().readFile(name_), name_, context_.options.edited);
        Connection connection(context_);
        connection.begin();
        refuseOtherIdentity(file, connection);
        LineWork& work = connection.work();
        learn(work, file);
        Plan plan = makePlan(file, name_, context_.options, connection, present_);
        tellLeftOut(plan.leftOut);
        const auto clock = context_.options.clock ? clockSteps(context_.now(), present_) : std::vector<Step>();
        if (plan.steps.empty() && clock.empty()) {
            context_.out.heading(say(Word::NothingToWrite));
            return leavesOut_ ? status::Differs : status::Well;
        }
        if (context_.options.dryRun) {
            plan.steps.insert(plan.steps.end(), clock.begin(), clock.end());
            return tellPlan(plan.steps);
        }
        const std::string count = std::to_string(plan.steps.size() + clock.size());
        if (!context_.options.yes && !context_.confirm(say(Word::MayWrite, {count, std::to_string(machine_)})))
            throw RunTimeError(error_number::DeviceUnavailable, say(Word::NothingWritten));
        work.label = say(Word::IsWriting);
        Ending how = carryOut(context_, work, plan.steps, machine_);
        if (how == Ending::Whole && context_.options.clock) {
            std::vector<Step> steps = clockSteps(context_.now(), present_);
            how = carryOut(context_, work, steps, machine_);
            plan.steps.insert(plan.steps.end(), steps.begin(), steps.end());
        }
        return conclude(plan.steps, how);
    }

  private:
    /// Reads what the machine has.
    void learn(LineWork& work, const SettingsFile& file) {
        Options wanted = context_.options;
        std::vector<Entry> entries;
        std::ranges::copy_if(file.entries, std::back_inserter(entries),
                             [&](const Entry& each) { return isWanted(wanted, each.item); });
        std::vector<Place> places = placesFor(entries);
        if (context_.options.clock) std::ranges::copy(clockPlaces(), std::back_inserter(places));
        work.label = say(Word::Reading);
        const Ending how = work.read(places, present_);
        const auto number = present_.find(MachineNumber);
        if (how == Ending::OtherBoards || work.wasInterrupted())
            throw RunTimeError(error_number::DeviceUnavailable, say(Word::OtherMachine));
        if (how != Ending::Whole || number == present_.end())
            throw RunTimeError(error_number::DeviceUnavailable, say(Word::NothingWritten));
        machine_ = number->second;
        if (const auto found = present_.find(Decimals); found != present_.end()) decimals_ = DecimalsOf(found->second);
    }

    /// How many for which reason; single ones by name.
    void tellLeftOut(const std::vector<LeftOut>& leftOut) {
        std::map<std::string, std::vector<std::string>> byReason;
        for (const LeftOut& each : leftOut) {
            byReason[each.why].push_back(BoardName(each.item.board()) + ' ' + each.item.name());
            const CatalogueRow::Kind kind = each.item.row->kind;
            leavesOut_ = leavesOut_ || kind == CatalogueRow::Kind::Setting;
        }
        for (const auto& [why, names] : byReason)
            context_.out.remark(say(Word::LeftOut, {std::to_string(names.size()), why}) + ": " + listInShort(names));
    }

    std::string figure(const Step& step, std::uint32_t raw) const {
        return FigureWithUnit(step.item, raw, decimals_, platform().decimalSeparator());
    }

    void tell(const Step& step, const char* outcome, const std::string& words) {
        const std::string change = figure(step, step.before) + " -> " + figure(step, step.wanted);
        const std::string has =
            step.isTouched && step.now && !step.isDone() ? " (" + figure(step, *step.now) + ')' : "";
        context_.out.result(step.name() + ": " + change + ": " + words + has,
                            {{"board", BoardName(step.item.board())},
                             {"name", step.item.name() + (step.isCopy ? ".copy" : "")},
                             {"before", std::int64_t{step.before}},
                             {"wanted", std::int64_t{step.wanted}},
                             {"now", step.now ? FieldValue(std::int64_t{*step.now}) : FieldValue(nullptr)},
                             {"outcome", std::string(outcome)}});
    }

    int tellPlan(const std::vector<Step>& steps) {
        for (const Step& each : steps) tell(each, "planned", say(Word::WouldBeWritten));
        return status::Differs;
    }

    int conclude(const std::vector<Step>& steps, Ending how) {
        for (const Step& each : steps) {
            const auto [outcome, word] = outcomeOf(each);
            tell(each, outcome, say(word));
        }
        const auto done = std::ranges::count_if(steps, &Step::isDone);
        if (how == Ending::OtherBoards) context_.out.remark(say(Word::OtherMachine));
        if (how == Ending::Interrupted) context_.out.remark(say(Word::WasInterrupted));
        if (how == Ending::LineLost) context_.out.remark(say(Word::LineIsSilent));
        const bool isWhole = done == std::ssize(steps);
        context_.out.remark(say(Word::WrittenOf, {std::to_string(done), std::to_string(steps.size())}) +
                            (isWhole ? "" : "; " + say(Word::RunAgain)));
        return isWhole && !leavesOut_ ? status::Well : status::Differs;
    }

    Context& context_;
    const std::string& name_;
    Values present_;
    std::uint32_t machine_ = 0;
    int decimals_ = 0;
    bool leavesOut_ = false;
};

}  // namespace

int write(Context& context) { return Writing(context).run(); }

}  // namespace kestrel::ctl
