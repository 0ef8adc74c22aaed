// zelutil conflicts: all actions that are in each other's way.
#include <zelutil/host/start.h>

#include <algorithm>
#include <memory>

#include "command/arguments.h"
#include "command/shortcuts/columns.h"
#include "command/shortcuts/key_conflicts.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/shortcuts/unread_actions.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::Cell;
using shortcuts::KeyConflict;
using shortcuts::KnownShortcuts;
using shortcuts::ShortcutRow;

std::vector<Cell> cellsOfConflict(const KeyConflict& conflict, const KnownShortcuts& known) {
    const ShortcutRow* const row = findRow(known.rows(), conflict.action);
    return {{conflict.shortcut, Role::Value},
            {conflict.context, Role::Faint},
            {std::to_string(conflict.action), Role::Faint},
            {row == nullptr ? "" : row->action.item.command, Role::Name},
            {effectOf(conflict), Role::Faint}};
}

std::vector<KeyConflict> conflictsAround(const std::string& context, const KnownShortcuts& known) {
    std::vector<KeyConflict> conflicts = shortcuts::keyConflicts(known.rows());
    conflicts.erase(std::remove_if(conflicts.begin(), conflicts.end(),
                                   [&](const KeyConflict& conflict) {
                                       return !context.empty() && conflict.context != context &&
                                              conflict.otherContext != context;
                                   }),
                    conflicts.end());
    return conflicts;
}

bool isActionOf(const std::string& context, int id, const KnownShortcuts& known) {
    const ShortcutRow* const row = findRow(known.rows(), id);
    return row != nullptr && row->action.item.context == context;
}

constexpr char kMoreOfEntries[] = "\"zelutil roundtrip\" says more.";

/// The user's file may ask for a shortcut that another action holds by then, and have sections that are not read, of
/// any context.
void tellRefusedEntries(const std::string& context, const KnownShortcuts& known, Output& output) {
    for (const host::StartWarning& warning : shortcuts::unreadActions().warnings) {
        output.add({Severity::Warning, warning.text, kMoreOfEntries, std::nullopt});
    }
    for (const host::StartWarning& warning : host::startWarnings()) {
        const bool isAround =
            context.empty() || isActionOf(context, warning.action, known) || isActionOf(context, warning.holder, known);
        if (warning.kind == host::StartWarning::Kind::ShortcutRefused && isAround) {
            output.add({Severity::Warning, warning.text, kMoreOfEntries, std::nullopt});
        }
    }
}

void tellNumber(std::size_t number, Output& output) {
    if (number != 0) {
        output.add({Severity::Warning,
                    number == 1 ? "There is 1 conflict." : "There are " + std::to_string(number) + " conflicts.",
                    "\"zelutil free\" lists shortcuts that are free, and \"zelutil plan\" gives them.", std::nullopt});
    }
}

void showConflicts(const std::string& context, Output& output) {
    const KnownShortcuts known(output);
    if (!known.areThere() || (!context.empty() && !known.hasContext(context, output))) {
        return;
    }
    const std::vector<KeyConflict> conflicts = conflictsAround(context, known);
    std::vector<std::vector<Cell>> lines;
    for (const KeyConflict& conflict : conflicts) {
        lines.push_back(cellsOfConflict(conflict, known));
    }
    if (lines.empty()) {
        output.line("No two actions are in each other's way now.");
    }
    shortcuts::showColumns({"SHORTCUT", "CONTEXT", "ID", "COMMAND", "CONFLICT"}, lines, output);
    output.members([&](JsonWriter& json) {
        json.objects("conflicts", conflicts, [&](const KeyConflict& conflict) { writeConflict(json, conflict); });
    });
    tellRefusedEntries(context, known, output);
    tellNumber(conflicts.size(), output);
}

Work declareConflicts(CLI::App& arguments) {
    const auto context = std::make_shared<std::string>();
    addName(arguments, "--context", *context, "Show only those that concern that context")->type_name("CONTEXT");
    return [context](Output& output) { showConflicts(*context, output); };
}

}  // namespace

const Subcommand kConflicts{"conflicts", "Show all actions that are in each other's way",
                            "$ zelutil conflicts --context library\n"
                            "SHORTCUT  CONTEXT  ID   COMMAND    CONFLICT\n"
                            "F2        library  409  pin check  runs 404 instead\n"
                            "warning: There is 1 conflict.",
                            FindingsAre::TheResult, declareConflicts};

}  // namespace zelutil::command
