// zelutil plan: the fewest edits that give the shortcuts of a wish list.
#include <zelutil/actions/action_manager.h>

#include <map>
#include <memory>

#include "actions/manager_access.h"
#include "command/arguments.h"
#include "command/input_file.h"
#include "command/shortcuts/columns.h"
#include "command/shortcuts/importing.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/shortcut_changes.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::Cell;
using shortcuts::KeyWish;
using shortcuts::KnownShortcuts;
using shortcuts::NamedWishes;
using shortcuts::WishPlan;
using PlanOutcome = WishPlan::Outcome;

struct PlanChoices {
    std::string file;
    bool apply = false;
};

const char* nameOfOutcome(PlanOutcome outcome) {
    switch (outcome) {
        case PlanOutcome::Possible:
            return "possible";
        case PlanOutcome::Impossible:
            return "impossible";
        case PlanOutcome::Unknown:
            break;
    }
    return "unknown";
}

/// A list is granted as a whole, so a line that nobody understands stops all.
bool isUnderstood(const shortcuts::WishText& text, const NamedWishes& wishes, Output& output) {
    std::vector<Finding> findings;
    for (const shortcuts::SkippedWish& skipped : wishes.skipped) {
        findings.push_back({Severity::Error, "In " + placeIn(text, skipped.place) + ": " + skipped.text, skipped.advice,
                            std::nullopt});
    }
    shortcuts::addTheFirst(std::move(findings), output);
    if (!wishes.skipped.empty()) {
        output.members([&](JsonWriter& json) { writeSkipped(json, wishes.skipped); });
        output.add({Severity::Note, "Nothing was planned.", "", std::nullopt});
    }
    return wishes.skipped.empty();
}

void showEdits(const WishPlan& plan, const KnownShortcuts& known, Output& output) {
    std::vector<std::vector<Cell>> lines;
    for (const KeyWish& edit : plan.edits) {
        const shortcuts::ShortcutRow* const row = findRow(known.rows(), edit.action);
        lines.push_back({{std::to_string(lines.size() + 1), Role::Faint},
                         {std::to_string(edit.action), Role::Faint},
                         {row->action.item.context, Role::Faint},
                         {row->action.item.command, Role::Name},
                         {edit.shortcut.empty() ? "take away" : edit.shortcut, Role::Value}});
    }
    shortcuts::showColumns({"STEP", "ID", "CONTEXT", "COMMAND", "SHORTCUT"}, lines, output);
}

void tellPossible(const WishPlan& plan, const std::map<int, bool>& flags, const KnownShortcuts& known, Output& output) {
    if (plan.edits.empty() && flags.empty()) {
        output.line("All is as wished for.");
    }
    if (!plan.edits.empty()) {
        output.line("{} {}{}.", plan.edits.size(), plan.edits.size() == 1 ? "edit" : "edits",
                    plan.isMinimal ? ", and no fewer do" : "");
    }
    tellMenuFlags(flags, known.rows(), output);
}

void tellOutcome(const WishPlan& plan, const NamedWishes& wishes, const KnownShortcuts& known, Output& output) {
    const bool isPossible = plan.outcome == PlanOutcome::Possible;
    const auto flags = isPossible ? changedFlags(wishes.menuFlags, known.rows()) : std::map<int, bool>();
    output.members([&](JsonWriter& json) {
        json.member("outcome", nameOfOutcome(plan.outcome));
        json.member("minimal", plan.isMinimal);
        writeEdits(json, plan.edits);
        shortcuts::writeMenuFlags(json, flags);
        writeInTheWay(json, plan.inTheWay);
        writeSideEffects(json, plan);
    });
    showEdits(plan, known, output);
    tellInTheWay(plan.inTheWay, known.rows(), output);
    switch (plan.outcome) {
        case PlanOutcome::Possible:
            tellPossible(plan, flags, known, output);
            break;
        case PlanOutcome::Impossible:
            output.add({Severity::Error, "The wishes cannot be granted together.",
                        "Change or take away one of those that the warnings name.", std::nullopt});
            break;
        case PlanOutcome::Unknown:
            output.add({Severity::Error, "No order was found in which the wishes can be granted; there may be one.",
                        "Wish less at a time: part of the list may be found an order for.", std::nullopt});
    }
}

void planKeys(const PlanChoices& choices, Output& output) {
    const std::optional<std::string> bytes = readInput(choices.file, output);
    if (!bytes) {
        return;
    }
    const shortcuts::WishText text = shortcuts::readWishes(*bytes);
    if (!text.unreadable.empty()) {
        output.fail("\"" + choices.file + "\" is no wish list. " + text.unreadable,
                    "\"zelutil plan --help\" shows one.");
        return;
    }
    const KnownShortcuts known(output);
    if (!known.areThere()) {
        return;
    }
    const auto& catalogue = actions::ManagerAccess::catalogueOf(UCPActionManager::instance());
    const NamedWishes wishes = nameWishes(text, catalogue);
    if (!isUnderstood(text, wishes, output)) {
        return;
    }
    const WishPlan plan = planWishes(catalogue, wishes.keys);
    tellOutcome(plan, wishes, known, output);
    if (plan.outcome != PlanOutcome::Possible) {
        return;
    }
    tellOtherSpellings(wishes.keys, known.rows(), output);
    if (choices.apply) {
        const BeforeSave places = lookBeforeSave();
        const host::SaveResult result = applyWishes(plan, wishes.menuFlags);
        tellSideEffects(plan, result.ok(), known.rows(), output);
        tellSavedShortcuts(known.rows(), places, result, output);
        output.members([&](JsonWriter& json) { shortcuts::writeNotRestored(json, result.notRestored); });
    } else {
        tellSideEffects(plan, false, known.rows(), output);
        const std::vector<host::NotRestored> lost = notRestoredAfter(catalogue, plan.edits);
        shortcuts::tellLost(lost, output);
        output.members([&](JsonWriter& json) { shortcuts::writeNotRestored(json, lost); });
    }
}

Work declarePlan(CLI::App& arguments) {
    const auto choices = std::make_shared<PlanChoices>();
    addName(arguments, "FILE", choices->file,
            "A wish a line: ID = KEY or CONTEXT COMMAND = KEY, without a key for none; or a profile")
        ->required();
    arguments.add_flag("--apply", choices->apply, "Do it, and save it in the user's file");
    return [choices](Output& output) { planKeys(*choices, output); };
}

}  // namespace

const Subcommand kPlan{"plan", "Find the fewest edits that give the shortcuts of a wish list, or who is in the way",
                       "$ zelutil plan wishes.txt\n"
                       "STEP  ID  CONTEXT  COMMAND      SHORTCUT\n"
                       "1     1   ucpedit  design new   take away\n"
                       "2     2   ucpedit  design open  Ctrl+N\n"
                       "3     1   ucpedit  design new   Ctrl+O\n"
                       "3 edits, and no fewer do.\n"
                       "$ cat wishes.txt\n"
                       "1 = Ctrl+O\n"
                       "ucpedit design open = Ctrl+N",
                       FindingsAre::BesideResult, declarePlan};

}  // namespace zelutil::command
