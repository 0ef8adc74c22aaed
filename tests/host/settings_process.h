#ifndef ZELUTIL_TESTS_HOST_SETTINGS_PROCESS_H
#define ZELUTIL_TESTS_HOST_SETTINGS_PROCESS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/settings_plan.h"
#include "prefs/catalogue_of.h"
#include "prefs/definition_walk.h"
#include "prefs/save_plan.h"

namespace zelutil::test {

using Values = std::map<std::string, std::string>;
using Names = std::vector<std::string>;

/// The user's file, as far as processes are concerned; nothing where there is none.
using FileText = std::optional<std::string>;

/// The user's value of one setting.
using UserValue = std::optional<std::string>;

inline UserValue userValueOf(const prefs::Setting& setting) {
    return setting.hasUserValue ? UserValue(setting.userValue) : std::nullopt;
}

/// The user's values by the numbers of the records.
inline std::vector<UserValue> userValuesOf(const prefs::Catalogue& catalogue) {
    std::vector<UserValue> values;
    for (std::size_t number = 0; number < catalogue.settings().recordCount(); ++number) {
        values.push_back(userValueOf(catalogue.settings().record(number)));
    }
    return values;
}

/// Full names by the numbers of the records.
inline std::vector<std::string> fullNames(const Catalogue& catalogue) {
    std::vector<std::string> names;
    const json::Document defaults(catalogue.defaultsText());
    prefs::DefinitionCount count;
    prefs::forEachSection(defaults.root(), [&](const prefs::VisitedSection& visited) {
        count.inSection(visited, [&](std::uint32_t, const prefs::DefaultSetting& setting) {
            names.push_back(visited.attributePath + "::" + std::string(setting.name));
        });
    });
    return names;
}

/// A process of the user as far as settings go: it reads both texts at its start, and saves.
class SettingsProcess {
public:
    SettingsProcess(const std::string& defaults, const FileText& file)
        : catalogue_(catalogueOfTexts(defaults, file.value_or(""))) {}

    /// Saves through the plan for hosts. `succeeds` tells whether the file can be written.
    host::SettingsPlan save(FileText& file, const Values& values, const Names& resets = {}, bool succeeds = true) {
        auto plan = host::planSettings(catalogue_, {&values, &resets}, file);
        catalogue_.putInForce(plan.newValues, plan.takenBack);
        const auto text = host::fileText(plan, std::nullopt);
        if (text && succeeds) {
            file = text;
            catalogue_.restartJournal(plan.journal);
        }
        return plan;
    }

    /// Saves as `UserPreferenceManager::updateUserPrefSettings` does, and returns whether it wrote the file.
    bool saveThroughOldDoor(FileText& file, const Values& values) {
        if (auto plan = prefs::planSave(catalogue_, prefs::SaveValues(catalogue_, {values, {}}))) {
            catalogue_.putInForce(plan->newValues);
            if (plan->fileText) {
                file = plan->fileText;
                catalogue_.restartJournal(plan->journal);
                return true;
            }
        }
        return false;
    }

    const prefs::Catalogue& catalogue() const { return catalogue_; }
    std::vector<UserValue> userValues() const { return userValuesOf(catalogue_); }

private:
    prefs::Catalogue catalogue_;
};

}  // namespace zelutil::test

#endif
