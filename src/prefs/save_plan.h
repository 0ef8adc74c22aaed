#ifndef ZELUTIL_PREFS_SAVE_PLAN_H
#define ZELUTIL_PREFS_SAVE_PLAN_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "prefs/catalogue.h"

namespace zelutil::prefs {

/// What a host hands over to a save.
struct SaveRequest {
    const std::map<std::string, std::string>& settings;  ///< Values by name, bare or in full, in any case.
    const SubManagerTexts& subManagerTexts;
};

/// What a save does.
struct SavePlan {
    /// The text of the user's file; nothing when it could not be read back.
    std::optional<std::string> fileText;
    std::vector<Catalogue::NewValue> newValues;
    std::set<std::string> changedNames;
    SubManagerTexts changedTexts;
};

/// Returns what a save of the request does, or nothing when it changes nothing. Planning has no effects; everything in
/// the plan is its own.
///
/// The settings are met in the order of the defaults, and one that two of them define may be changed by either: the
/// later one finds the value that the earlier one gave it.
std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveRequest& request);

}  // namespace zelutil::prefs

#endif
