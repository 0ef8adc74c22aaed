// zelutil shortcuts: the table of shortcuts in force.
#include <algorithm>
#include <memory>

#include "command/arguments.h"
#include "command/shortcuts/columns.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::Cell;
using shortcuts::KnownShortcuts;
using shortcuts::ShortcutRow;

struct TableChoices {
    std::string context;
    bool changed = false;
};

bool isInTable(const ShortcutRow& row, const TableChoices& choices) {
    return (choices.context.empty() || row.action.item.context == choices.context) &&
           (!choices.changed || isChangedByUser(row));
}

/// Says why the menu flag is another one than without the user's changes; empty where it is the same.
std::string whyOfMenuFlag(const ShortcutRow& row) {
    if (!row.menuChangedByUser) {
        return {};
    }
    const std::string where = row.action.inMenu ? "into the menu" : "out of the menu";
    if (row.action.item.parent_id >= 1) {
        return "; follows it " + where;
    }
    return (row.action.inMenu ? "; put " : "; taken ") + where + " by the user";
}

std::vector<Cell> cellsOf(const ShortcutRow& row) {
    const host::ActionInfo& action = row.action;
    return {{action.item.context, Role::Faint},         {std::to_string(action.id), Role::Faint},
            {action.item.command, Role::Name},          {action.shortcut, Role::Value},
            {action.shippedShortcut, Role::Old},        {action.inMenu ? "yes" : "", Role::Value},
            {row.why + whyOfMenuFlag(row), Role::Faint}};
}

void showTable(const TableChoices& choices, Output& output) {
    const KnownShortcuts known(output);
    if (!known.areThere() || (!choices.context.empty() && !known.hasContext(choices.context, output))) {
        return;
    }
    std::vector<ShortcutRow> rows;
    std::copy_if(known.rows().begin(), known.rows().end(), std::back_inserter(rows),
                 [&](const ShortcutRow& row) { return isInTable(row, choices); });
    if (rows.empty()) {
        output.add({Severity::Note, "No action is as asked for.", "", std::nullopt});
    }
    std::vector<std::vector<Cell>> lines;
    std::transform(rows.begin(), rows.end(), std::back_inserter(lines), cellsOf);
    shortcuts::showColumns({"CONTEXT", "ID", "COMMAND", "SHORTCUT", "SHIPPED", "MENU", "WHY"}, lines, output);
    output.members([&](JsonWriter& json) {
        json.objects("shortcuts", rows, [&](const ShortcutRow& row) { writeRow(json, row); });
    });
}

Work declareShortcuts(CLI::App& arguments) {
    const auto choices = std::make_shared<TableChoices>();
    addName(arguments, "--context", choices->context, "Show only the actions of that context")->type_name("CONTEXT");
    arguments.add_flag("--changed", choices->changed, "Show only what the user's changes make different");
    return [choices](Output& output) { showTable(*choices, output); };
}

}  // namespace

const Subcommand kShortcuts{"shortcuts", "Show the actions with their shortcuts in force, and why they have them",
                            "$ zelutil shortcuts --changed\n"
                            "CONTEXT  ID  COMMAND     SHORTCUT  SHIPPED  MENU  WHY\n"
                            "ucpedit  1   design new  Ctrl+K    Ctrl+N         given by the user",
                            FindingsAre::BesideResult, declareShortcuts};

}  // namespace zelutil::command
