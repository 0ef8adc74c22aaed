#ifndef ZELUTIL_HOST_SAVE_STATE_H
#define ZELUTIL_HOST_SAVE_STATE_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "host/action_restore.h"
#include "prefs/catalogue.h"
#include "prefs/user_settings_file.h"

namespace zelutil::host {

struct SavePlan;

/// Holds what this process remembers of its saves. The catalogue of the settings remembers what concerns these.
struct SaveState {
    /// The file for which all of this, and the journal of the settings, holds; nothing before the first save.
    std::optional<std::string> path;
    ActionsBase actions;
    /// Actions that were reset and whose entries no save has taken out of the file yet.
    std::set<int> resetActions;
    /// The load of the actions for which they were.
    std::uint64_t resetLoad = 0;
    /// The text for the actions of which the observers of sub-managers were told and that no file has yet.
    std::optional<std::string> toldActions;
};

/// Returns the state of this process.
SaveState& saveState();

/// Brings the state up to the last time that this process read or wrote the file, also by the old calls.
void bringUpToDate(prefs::Catalogue& settings, const actions::ActionCatalogue& actions,
                   const prefs::UserSettingsFile& file);

/// Forgets what is known where the file at `path`, which holds `textNow`, is another one: nothing is known of a file
/// that this process has neither read nor written, as after the home has changed. One of the same contents is the known
/// one, under another name.
void forgetOtherFile(prefs::Catalogue& settings, const prefs::UserSettingsFile& file, const std::string& path,
                     const std::optional<std::string>& textNow);

/// Remembers the state with which the next save compares what is in force and what is in the file, once a plan is
/// carried out. A `path` is that of the file from now on.
void remember(prefs::Catalogue& settings, SavePlan& plan, std::optional<std::string> path) noexcept;

/// Remembers that these actions were reset.
void rememberReset(const actions::ActionCatalogue& actions, std::set<int> touched);

}  // namespace zelutil::host

#endif
