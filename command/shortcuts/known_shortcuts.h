#ifndef ZELUTIL_COMMAND_SHORTCUTS_KNOWN_SHORTCUTS_H
#define ZELUTIL_COMMAND_SHORTCUTS_KNOWN_SHORTCUTS_H

#include <string>
#include <vector>

#include "command/output.h"
#include "command/shortcuts/shortcut_table.h"

namespace zelutil::shortcuts {

/// The shortcuts of this installation and user, as the subcommands read them.
class KnownShortcuts {
public:
    /// Reads them. Where no shipped defaults were read, `output` is told a failure; where these have no actions or
    /// the user's file was not read, it is told a finding.
    explicit KnownShortcuts(command::Output& output);

    bool areThere() const { return !rows_.empty(); }
    const std::vector<ShortcutRow>& rows() const { return rows_; }

    /// Returns whether there is such a context, and tells `output` of one that there is not, with the nearest names.
    bool hasContext(const std::string& context, command::Output& output) const;

private:
    std::vector<ShortcutRow> rows_;
};

/// Returns "12 (ucpedit, view zoom)", as people may know the action; the id alone for an unknown one.
std::string labelOf(const std::vector<ShortcutRow>& rows, int id);

}  // namespace zelutil::shortcuts

#endif
