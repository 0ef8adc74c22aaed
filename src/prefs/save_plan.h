#ifndef ZELUTIL_PREFS_SAVE_PLAN_H
#define ZELUTIL_PREFS_SAVE_PLAN_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "prefs/catalogue.h"
#include "prefs/save_values.h"

namespace zelutil::prefs {

/// Everything that a save does.
struct SavePlan {
    /// The text of the user's file; nothing when it could not be read back.
    std::optional<std::string> fileText;
    std::vector<Catalogue::NewValue> newValues;
    std::set<std::string> changedNames;
    SubManagerTexts changedTexts;
    /// The compact text that the file gets for the actions; empty for nothing.
    std::string actionsText;
    /// For `Catalogue::restartJournal`, once the file is written: the settings that the file does not bring back as
    /// they are, because a name in it means another one. They count as touched, so that a save for hosts writes them
    /// anew.
    SettingJournal journal;
    /// The numbers of the settings that have a value of the user once the plan is in force, in order; nothing where
    /// that is not known.
    std::optional<std::vector<std::uint32_t>> usersSettings;
};

/// Returns what a save of the values does, or nothing when it changes nothing. Planning has no effects; everything in
/// the plan is its own.
///
/// The settings are met in the order of the defaults. A setting that the defaults define twice is met twice; the second
/// time its current value is the new one.
std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveValues& values);

}  // namespace zelutil::prefs

#endif
