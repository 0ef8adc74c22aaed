#ifndef ZELUTIL_COMMAND_SHORTCUTS_FREE_KEYS_H
#define ZELUTIL_COMMAND_SHORTCUTS_FREE_KEYS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/shortcuts/shortcut_table.h"

namespace zelutil::shortcuts {

/// A shortcut that an action of a context can be given.
struct FreeKey {
    std::string shortcut;
    std::string modifiers;
    /// The action that the shortcut runs there by the fallback, and would no longer run; 0 for none.
    int runsByFallback = 0;
};

/// Returns the combinations of modifiers that are looked at: none, Shift, Ctrl and so on, without a plus sign behind.
const std::vector<std::string>& modifierSets();

/// Returns the one of them that somebody means by "shift + ALT"; nothing where that is none of them.
std::optional<std::string> modifierSetNamed(std::string_view text);

/// Returns the keys that are looked at: A to Z, 0 to 9, F1 to F12 and those with names, such as "PgUp".
const std::vector<std::string>& keyNames();

/// Returns those of `modifierSets` with `keyNames` that no action of the context holds or shows, and none of the one
/// linked with it, in no spelling. An action with children elsewhere may be refused one of them all the same.
std::vector<FreeKey> freeKeys(const std::string& context, const std::vector<ShortcutRow>& rows);

}  // namespace zelutil::shortcuts

#endif
