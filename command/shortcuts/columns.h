#ifndef ZELUTIL_COMMAND_SHORTCUTS_COLUMNS_H
#define ZELUTIL_COMMAND_SHORTCUTS_COLUMNS_H

#include <string>
#include <vector>

#include "command/output.h"

namespace zelutil::shortcuts {

struct Cell {
    std::string text;
    command::Role role = command::Role::Value;
};

/// Tells the rows as lines for people, each column as wide as its widest cell, with a first line of headings. Nothing
/// is told where there are no rows. Where the lines are too long for the terminal, the widest column of explanations,
/// which are faint, is shortened, and an ellipsis stands where a text ends early.
void showColumns(const std::vector<std::string>& headings, const std::vector<std::vector<Cell>>& rows,
                 command::Output& output);

}  // namespace zelutil::shortcuts

#endif
