// zelutil set: gives settings values, by the library's own save.
#include <zelutil/host/save.h>

#include <map>
#include <memory>
#include <utility>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/saved_settings.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "host/current_preferences.h"
#include "prefs/setting_name.h"

namespace zelutil::command {
namespace {

struct Assignment {
    std::string name;
    std::string value;
};

void checkForm(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (text.find('=') == std::string::npos) {
            throw UsageError("\"" + text + "\" has no equals sign: write NAME=VALUE, such as grid=0.25.");
        }
        if (text.front() == '=') {
            throw UsageError("\"" + text + "\" names no setting: write NAME=VALUE, such as grid=0.25.");
        }
        if (validUtf8(text) != text) {
            throw UsageError("\"" + validUtf8(text) + "\" is not in UTF-8, as the user's file is.");
        }
    }
}

/// Takes a text apart at the first equals sign before which the name of a setting stands, which may have such signs in
/// it; at the first of all where there is none.
Assignment assignmentOf(const std::string& text) {
    std::size_t equals = text.find('=');
    for (std::size_t at = equals; at != std::string::npos; at = text.find('=', at + 1)) {
        if (host::setting(text.substr(0, at))) {
            equals = at;
            break;
        }
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::vector<Assignment> assignmentsOf(const std::vector<std::string>& texts) {
    std::vector<Assignment> assignments;
    for (const std::string& text : texts) {
        assignments.push_back(assignmentOf(text));
    }
    return assignments;
}

/// Bare and full names may mean one setting, which has one value.
void checkEachOnce(const std::vector<Assignment>& assignments, const std::vector<host::SettingInfo>& settings) {
    std::map<std::string, std::string> names;
    for (std::size_t number = 0; number < settings.size(); ++number) {
        const auto [other, isNew] = names.emplace(settings[number].fullName, assignments[number].name);
        if (!isNew) {
            throw UsageError("\"" + other->second + "\" and \"" + assignments[number].name +
                             "\" are the same setting.");
        }
    }
}

/// Whether the user's file gives the settings these values already. A save would spell the names in it anew.
bool isInFile(const std::vector<Assignment>& assignments, const std::vector<host::SettingInfo>& settings) {
    for (std::size_t number = 0; number < settings.size(); ++number) {
        if (!settings[number].setByUser || settings[number].value != assignments[number].value) {
            return false;
        }
    }
    return true;
}

/// Has values that are the defaults be the user's own, which the save then writes: by itself it takes a value that is
/// in force for one that nobody has changed.
void makeUsersOwn(const std::vector<Assignment>& assignments, const std::vector<host::SettingInfo>& settings) {
    std::vector<prefs::Catalogue::NewValue> values;
    for (std::size_t number = 0; number < settings.size(); ++number) {
        const host::SettingInfo& setting = settings[number];
        if (!setting.setByUser && setting.value == assignments[number].value) {
            values.push_back({prefs::keyOf(findableName(setting)), setting.value});
        }
    }
    if (prefs::Preferences* const preferences = host::currentPreferences()) {
        preferences->catalogue.putInForce(std::move(values));
    }
}

host::SaveResult saveAll(const std::vector<Assignment>& assignments, const std::vector<host::SettingInfo>& before) {
    if (isInFile(assignments, before)) {
        if (const auto nothing = nothingToSave()) {
            return *nothing;
        }
    }
    std::map<std::string, std::string> values;
    for (const auto& [name, value] : assignments) {
        values[name] = value;
    }
    makeUsersOwn(assignments, before);
    return host::save(values);
}

void set(const std::vector<std::string>& texts, Output& output) {
    checkForm(texts);
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    const std::vector<Assignment> assignments = assignmentsOf(texts);
    std::vector<std::string> names;
    for (const Assignment& assignment : assignments) {
        names.push_back(assignment.name);
    }
    const std::optional<std::vector<host::SettingInfo>> before = known.findAll(names, output);
    if (!before) {
        return;
    }
    checkEachOnce(assignments, *before);
    const BeforeSave places = lookBeforeSave();
    tellSaved(*before, places, saveAll(assignments, *before), output);
}

Work declareSet(CLI::App& arguments) {
    const auto assignments = std::make_shared<std::vector<std::string>>();
    addTexts(arguments, "SETTING", *assignments, "Settings, by bare or full name, with their new values")
        ->required()
        ->type_name("NAME=VALUE");
    return [assignments](Output& output) { set(*assignments, output); };
}

}  // namespace

const Subcommand kSet{"set",
                      "Give settings values and save them in the user's file",
                      "$ zelutil set grid=0.25 units=mil",
                      FindingsAre::BesideResult,
                      declareSet,
                      Completes::Assignments};

}  // namespace zelutil::command
