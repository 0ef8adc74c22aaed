#ifndef ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_TABLE_H
#define ZELUTIL_COMMAND_SHORTCUTS_SHORTCUT_TABLE_H

#include <zelutil/host/actions.h>

#include <string>
#include <vector>

#include "command/json_writer.h"

/// The shortcuts in force, as the library's own manager of the actions has them.
namespace zelutil::shortcuts {

/// One action and its shortcut.
struct ShortcutRow {
    /// Has the id, the context, the command, the shortcut in force and the shipped one, the parent and the menu flag.
    host::ActionInfo action;
    /// The shortcut that the action shows after a start without the user's changes; empty for none.
    std::string shortcutWithoutUser;
    /// Whether the user's changes are why the action shows another shortcut than after a start without them. A child
    /// that follows its parent to the user's shortcut counts, too.
    bool changedByUser = false;
    /// The same for the menu flag.
    bool menuChangedByUser = false;
    /// Whether the action runs by its shortcut only because of the user's changes, or for them no longer does, although
    /// it shows the same one: where a text ships a shortcut twice, another action may have come to hold it.
    bool runsChangedByUser = false;
    /// Says in a few English words where the shortcut comes from, and where it runs something else, what runs instead.
    std::string why;
};

/// Returns every action, ordered by context and id. Where nothing has loaded the actions yet, the preferences do, as
/// `host::actions` says.
std::vector<ShortcutRow> shortcutTable();

/// Returns whether the user's changes make anything of the row different.
bool isChangedByUser(const ShortcutRow& row);

/// Returns the row of the action, or null.
const ShortcutRow* findRow(const std::vector<ShortcutRow>& rows, int id);

/// Returns the contexts of the rows, each once, in their order. A stand-in for a missing parent has none.
std::vector<std::string> contextsOf(const std::vector<ShortcutRow>& rows);

/// Returns "shipped", "user", "parent" or "standIn".
const char* nameOf(host::ShortcutSource source);

/// Writes the members of the JSON form of a row.
void writeRow(command::JsonWriter& json, const ShortcutRow& row);

}  // namespace zelutil::shortcuts

#endif
