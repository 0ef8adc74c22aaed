#ifndef ZELUTIL_COMMAND_SHORTCUTS_ACTION_RESET_H
#define ZELUTIL_COMMAND_SHORTCUTS_ACTION_RESET_H

#include <zelutil/host/result.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command/explain/setting_account.h"
#include "command/output.h"
#include "command/shortcuts/shortcut_table.h"

/// Takes the user's entries for actions out of the user's file, so that the next start gives what is shipped.
namespace zelutil::shortcuts {

/// The user's texts without the entries of some actions.
struct EntriesCut {
    /// The text of the file, of which every other byte stays; nothing where it has no such entry.
    std::optional<std::string> file;
    /// Holds what the file then has for the actions, as a load takes it.
    std::string userActions;
    /// Whether a start then finds these actions and all below them as they are shipped, and every other one as it is
    /// now, unless it has what is shipped for it again.
    bool isEnough = false;
};

/// Plans that for the actions of these ids. Nothing is written.
EntriesCut planEntriesCut(const command::SettingAccounts& accounts, const std::vector<int>& ids);

struct ActionReset {
    host::SaveResult save;
    /// Says why the file stays, where that has a reason of its own.
    std::string reason;
    /// Whether other processes were kept from saving meanwhile.
    bool hasTurn = true;
};

/// Gives the actions what is shipped for them: by a cut of their entries, or where that is not enough, because an entry
/// of another action has what is shipped for one of these, by the library's own reset. The manager of the actions has
/// it, too, afterwards.
ActionReset resetActions(const std::vector<int>& ids);

/// Holds what is known of a reset that was done.
struct ResetTold {
    std::set<int> asked;
    /// Whether these are all actions, and not named one by one.
    bool isAll = false;
    /// The actions that keep what they have, of which the save has told.
    std::set<int> refused;
};

/// Tells `output` the actions that do not get back what is shipped for them, and what can be done.
void tellRefused(const std::vector<host::NotRestored>& refused, const ResetTold& told, command::Output& output);

/// Tells `output` the actions that show a shortcut after a reset and do not run by it, if that is new or they were
/// named for the reset, and those that run by theirs again. `before` has the actions as they were.
void tellWhoRuns(const std::vector<ShortcutRow>& before, const ResetTold& told, command::Output& output);

}  // namespace zelutil::shortcuts

#endif
