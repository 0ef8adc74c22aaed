#ifndef ZELUTIL_HOST_SAVE_PLAN_H
#define ZELUTIL_HOST_SAVE_PLAN_H

#include <zelutil/host/result.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "actions/action_catalogue.h"
#include "host/action_restore.h"
#include "host/save_state.h"
#include "host/settings_plan.h"
#include "prefs/catalogue.h"

namespace zelutil::host {

/// Everything that a save does.
struct SavePlan {
    SettingsPlan settings;
    ActionsPlan actions;
    /// Whether the shipped defaults have a section for the actions.
    bool hasPlaceForActions = false;
    /// The actions that are not as they are shipped, where the defaults have no such section.
    std::set<int> actionsWithoutPlace;
    /// False where the actions are just being loaded, so that the file keeps what it has of them.
    bool savesActions = true;
    /// Whether the file gets a text for the actions that brings about something else than the one it has.
    bool changesActions = false;
    /// The text of the file; nothing where there is nothing to write and where it could not be read back.
    std::optional<std::string> text;
    /// Whether the text lacks something that the file's list of actions holds.
    bool losesActions = false;
    /// Whether the text lacks something that the file holds, so that a copy of the file is kept first.
    bool losesContent = false;
    /// False where the file says the same already, and where there is nothing to say and no file, or one that cannot be
    /// read.
    bool isToBeWritten = false;
};

/// Plans a save of what is in force in the two catalogues and of the request. `fileNow` is the text of the user's file;
/// nothing when there is none or it cannot be read. Planning has no effects.
SavePlan planSave(const prefs::Catalogue& settings, const actions::ActionCatalogue& actions, const SaveState& state,
                  const SettingsRequest& request, std::optional<std::string_view> fileNow);

/// Adds what the plan says to the result of its save.
void report(SavePlan& plan, SaveResult& result);

}  // namespace zelutil::host

#endif
