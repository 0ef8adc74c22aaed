#ifndef ZELUTIL_COMMAND_SHORTCUTS_KEY_CONFLICTS_H
#define ZELUTIL_COMMAND_SHORTCUTS_KEY_CONFLICTS_H

#include <string>
#include <vector>

#include "command/shortcuts/shortcut_table.h"

namespace zelutil::shortcuts {

/// Two actions that show one shortcut, as the library's rules see it: they are not parent and child, and their contexts
/// are one or linked. Or one action that shows a shortcut which no action holds.
struct KeyConflict {
    enum class Kind {
        SameContext,    ///< Only `other` runs.
        LinkedContext,  ///< Each may run in its own context, and neither could be given the shortcut again.
        HeldByNobody,   ///< Nothing runs; `other` is 0.
    };

    Kind kind = Kind::SameContext;
    std::string shortcut;
    /// The action that shows the shortcut, and its context.
    int action = 0;
    std::string context;
    /// The action that is in its way, and its context.
    int other = 0;
    std::string otherContext;
    /// The parents from which they took the shortcut over; 0 for an action that has it by itself.
    int inheritedFrom = 0;
    int otherInheritedFrom = 0;
};

/// Returns all conflicts of the actions in force, in the order of the rows, each pair once for a shortcut.
std::vector<KeyConflict> keyConflicts(const std::vector<ShortcutRow>& rows);

/// Returns "sameContext", "linkedContext" or "heldByNobody".
const char* nameOf(KeyConflict::Kind kind);

/// Says in a few English words what the conflict does.
std::string effectOf(const KeyConflict& conflict);

/// Writes the members of the JSON form of a conflict.
void writeConflict(command::JsonWriter& json, const KeyConflict& conflict);

}  // namespace zelutil::shortcuts

#endif
