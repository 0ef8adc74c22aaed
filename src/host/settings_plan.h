#ifndef ZELUTIL_HOST_SETTINGS_PLAN_H
#define ZELUTIL_HOST_SETTINGS_PLAN_H

#include <zelutil/host/result.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/user_file_content.h"
#include "prefs/catalogue.h"

/// Plans what a save does with the settings. Planning has no effects; everything in the plan is its own, so that
/// nothing that happens to the catalogue or to the file's text afterwards changes it.
namespace zelutil::host {

/// Holds what a host asks for; null for nothing.
struct SettingsRequest {
    /// Values by name, bare or in full, in any case. Of several names of one setting the last counts.
    const std::map<std::string, std::string>* values = nullptr;
    /// Names of settings that are to lose the user's value, after the values are given.
    const std::vector<std::string>* resets = nullptr;
    /// Whether actions were to be reset just before, so that the file stays as it is where none was.
    bool followsResetOfActions = false;
};

/// Everything that a save does with the settings:
///
///     SettingsPlan plan = planSettings(catalogue, request, textOfTheFileNow);
///     catalogue.putInForce(plan.newValues, plan.takenBack);
///     ... write fileText(plan, textOfTheActions), and where that succeeded, or the file has that text already:
///     catalogue.restartJournal(std::move(plan.journal));
struct SettingsPlan {
    /// For `Catalogue::putInForce`.
    std::vector<prefs::Catalogue::NewValue> newValues;
    std::vector<std::uint64_t> takenBack;
    /// For `Catalogue::restartJournal`, once the file has the text of this plan.
    prefs::SettingJournal journal;

    // For the result of the save, in the order of the defaults, but the unknown names in that of the request.
    std::set<std::string> changedSettings;
    std::vector<std::string> unknownSettings;
    std::vector<NotRestored> notRestored;
    std::vector<Conflict> conflicts;
    std::vector<std::string> settingsOfOthers;

    /// False where the defaults have no section at all, so that there is nothing to write.
    bool hasSections = false;
    /// Whether the file could be parsed. Otherwise nothing is known of what others saved.
    bool fileKnown = false;
    /// The compact text that the file holds now for the actions; nothing where it has nothing for them.
    std::optional<std::string> actionsInFile;

    /// Whether the file is to get a value that it does not have, or is to lose one. Those of the actions do not count.
    bool changesValues = false;

    /// Holds the values of sub-managers in later sections of the file; only the first section of each is read.
    std::vector<prefs::UnreadContent> secondValues;

    /// Whether the text that `fileText` has made lacks something that the file holds now, so that a copy of the file is
    /// to be kept.
    bool losesContent = false;

    /// For `fileText`.
    UserFileContent content;
};

/// Plans a save. `fileNow` is the text of the user's file as it is; nothing when there is none or it cannot be read.
SettingsPlan planSettings(const prefs::Catalogue& catalogue, const SettingsRequest& request,
                          std::optional<std::string_view> fileNow);

/// Returns the text of the user's file, with `actionsValue` as what the sections of the actions hold: a JSON value,
/// such as [{"actions":[...]}]. Without one, or with one that is no JSON, they keep what they have. Returns nothing
/// where there is nothing to write, and where the text could not be read back: it would nest too deep or be too long.
/// Before that, it leaves out what means nothing to the defaults, and then the values of sub-managers, which the plan
/// tells as lost.
std::optional<std::string> fileText(SettingsPlan& plan, std::optional<std::string_view> actionsValue);

}  // namespace zelutil::host

#endif
