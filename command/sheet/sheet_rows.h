#ifndef ZELUTIL_COMMAND_SHEET_SHEET_ROWS_H
#define ZELUTIL_COMMAND_SHEET_SHEET_ROWS_H

#include <string>
#include <vector>

#include "command/sheet/sheet.h"
#include "command/shortcuts/shortcut_table.h"

namespace zelutil::command::sheet {

/// Returns a name for people: the action's own, else its parent's, since children often have none, else the command.
std::string nameOf(const shortcuts::ShortcutRow& row, const std::vector<shortcuts::ShortcutRow>& rows);

/// Returns the sheet of a table that is ordered by context; of that one context alone unless it is the empty text.
Sheet sheetOf(const std::vector<shortcuts::ShortcutRow>& rows, const std::string& context);

}  // namespace zelutil::command::sheet

#endif
