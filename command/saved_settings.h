#ifndef ZELUTIL_COMMAND_SAVED_SETTINGS_H
#define ZELUTIL_COMMAND_SAVED_SETTINGS_H

#include <zelutil/host/result.h>
#include <zelutil/host/settings.h>

#include <optional>
#include <string>
#include <vector>

#include "command/before_save.h"
#include "command/output.h"

/// Tells what a save or a reset has done.
namespace zelutil::command {

/// Returns the outcome as the JSON form names it: "saved", "unchanged", "noDefaults" and so on.
std::string nameOf(host::SaveResult::Status status);

/// Returns the result of a save without need: what is wanted was in force at the start. A save would spell anew what
/// the file says already. Nothing where saves go to another file than the one that was read.
std::optional<host::SaveResult> nothingToSave();

/// A setting before the save and after it.
struct SettingChange {
    host::SettingInfo before;
    std::string value;
    /// Whether it has a value of the user afterwards.
    bool isUsers = false;
};

/// Tells `output` the values of the settings before and now, and the result: what was written where, or why nothing was
/// and what to do next, and as findings whatever somebody may want to know of. `before` has the settings as they were
/// before the save, and `places` what it found where it writes.
void tellSaved(const std::vector<host::SettingInfo>& before, const BeforeSave& places, const host::SaveResult& result,
               Output& output);

/// Does the same for changes that are known. Where nothing was written for a reason of its own, `reason` has the
/// sentence for it.
void tellChanged(const std::vector<SettingChange>& changes, const BeforeSave& places, const host::SaveResult& result,
                 Output& output, const std::string& reason = {});

}  // namespace zelutil::command

#endif
