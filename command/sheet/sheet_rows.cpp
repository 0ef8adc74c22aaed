// The sheet's entries from the table of actions.
#include "command/sheet/sheet_rows.h"

namespace zelutil::command::sheet {
namespace {

using shortcuts::ShortcutRow;
using Rows = std::vector<ShortcutRow>;

Entry entryOf(const ShortcutRow& row, const Rows& rows) {
    const host::ActionInfo& action = row.action;
    Entry entry;
    entry.id = action.id;
    entry.name = nameOf(row, rows);
    entry.command = action.item.command;
    entry.shortcut = action.shortcut;
    entry.shipped = row.shortcutWithoutUser;
    entry.changed = row.changedByUser;
    entry.runs = action.runs;
    if (const ShortcutRow* const holder = action.heldBy == 0 ? nullptr : shortcuts::findRow(rows, action.heldBy)) {
        entry.heldBy = nameOf(*holder, rows);
    }
    return entry;
}

/// Returns whether the row is on the sheet. A stand-in for a missing parent has no context.
bool isWanted(const ShortcutRow& row, const std::string& context) {
    const std::string& own = row.action.item.context;
    return !own.empty() && (context.empty() || own == context) && (!row.action.shortcut.empty() || row.changedByUser);
}

}  // namespace

std::string nameOf(const ShortcutRow& row, const Rows& rows) {
    const UCPActionItem& item = row.action.item;
    if (!item.name.empty()) {
        return item.name;
    }
    const ShortcutRow* const parent = item.parent_id == 0 ? nullptr : shortcuts::findRow(rows, item.parent_id);
    return parent == nullptr || parent->action.item.name.empty() ? item.command : parent->action.item.name;
}

Sheet sheetOf(const Rows& rows, const std::string& context) {
    Sheet sheet;
    for (const ShortcutRow& row : rows) {
        if (!isWanted(row, context)) {
            continue;
        }
        if (sheet.empty() || sheet.back().name != row.action.item.context) {
            sheet.push_back({row.action.item.context, {}});
        }
        sheet.back().entries.push_back(entryOf(row, rows));
    }
    return sheet;
}

}  // namespace zelutil::command::sheet
