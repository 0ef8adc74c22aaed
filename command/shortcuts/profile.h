#ifndef ZELUTIL_COMMAND_SHORTCUTS_PROFILE_H
#define ZELUTIL_COMMAND_SHORTCUTS_PROFILE_H

#include <string>
#include <vector>

#include "command/shortcuts/shortcut_table.h"

/// Takes the user's shortcuts and menu flags from one installation to another.
namespace zelutil::shortcuts {

/// Returns the rows of the actions that a profile has: those without a parent which the user's changes make different.
std::vector<ShortcutRow> rowsOfProfile(const std::vector<ShortcutRow>& rows);

/// Returns the profile of these rows, which `readProfile` reads: the id, context, command and name of each, and what is
/// changed of it.
std::string profileOf(const std::vector<ShortcutRow>& rows);

}  // namespace zelutil::shortcuts

#endif
