#include "command/known_settings.h"

#include <algorithm>
#include <utility>

#include "command/command_line_text.h"
#include "command/explain/unread_user_file.h"
#include "command/pattern.h"
#include "command/text.h"
#include "file/hierarchy_root.h"
#include "host/current_preferences.h"
#include "platform/environment.h"
#include "prefs/preference_files.h"

namespace zelutil::command {

bool areDefaultsNamed() {
    ZelU::File::Path root;
    text::SearchTrace silent(text::SearchTrace::Until::Found);
    return file::locateRoot(root, silent) || prefs::namedDefaultsFile();
}

std::string adviceWithoutDefaults(bool areNamed) {
    if (areNamed) {
        return "\"zelutil doctor\" says where they are looked for.";
    }
    for (const char* const variable : {"QTXROOT", "QTX_ROOT", "QTXINSTDIR"}) {
        const auto value = platform::environment(variable);
        if (value && value->empty()) {
            return "Set the variable " + std::string(variable) +
                   ", which is set but empty, to the installation's directory, or unset it.";
        }
        if (value) {
            return "Let the variable " + std::string(variable) + " name an installation: it is \"" + *value +
                   "\", and \"zelutil doctor\" says why that is none.";
        }
    }
    return "Name the installation by the variable QTXROOT, or run the command that lies in its tools/bin.";
}

void failWithoutDefaults(const std::string& thing, Output& output) {
    const bool areNamed = areDefaultsNamed();
    const std::string file = areNamed ? nativeOrAsItStands(prefs::defaultsFilePath()) : std::string();
    if (file.empty()) {
        output.fail("No " + thing + " is known, because no shipped defaults were read.",
                    adviceWithoutDefaults(areNamed));
    } else {
        output.fail("No " + thing + " is known, because the shipped defaults \"" + file +
                        "\" are not there, cannot be read or hold none.",
                    "\"zelutil doctor\" says what is wrong with the file.");
    }
}

KnownSettings::KnownSettings(Output& output) {
    if (areDefaultsNamed()) {
        all_ = host::settings();
    }
    if (all_.empty()) {
        failWithoutDefaults("setting", output);
        return;
    }
    tellUnreadUserFile(output);
}

std::vector<std::string> KnownSettings::names() const {
    std::vector<std::string> names;
    for (const host::SettingInfo& setting : all_) {
        names.push_back(setting.fullName);
        names.insert(names.end(), setting.bareNames.begin(), setting.bareNames.end());
    }
    return names;
}

std::vector<std::string> sectionsAndGroups() {
    std::vector<std::string> all;
    for (const std::string& section : host::sectionsInFileOrder()) {
        for (std::size_t end = section.find("::"); end != std::string::npos; end = section.find("::", end + 1)) {
            all.push_back(section.substr(0, end));
        }
        all.push_back(section);
    }
    return all;
}

namespace {

bool isOfActions(const std::string& section) {
    const prefs::Preferences* const preferences = host::currentPreferences();
    return preferences != nullptr && preferences->catalogue.subManagerOf(section) == prefs::SubManagerType::Actions;
}

}  // namespace

UnknownSettings::UnknownSettings(std::vector<std::string> known)
    : known_(std::move(known)), sections_(sectionsAndGroups()) {}

Finding UnknownSettings::finding(const std::string& name) {
    const auto section = std::find_if(sections_.begin(), sections_.end(), [&](const std::string& one) {
        return one.size() == name.size() && beginsWith(one, name);
    });
    if (section != sections_.end() && isOfActions(*section)) {
        return {Severity::Error, '"' + name + "\" is the section of the actions, and no setting.",
                "\"zelutil shortcuts\" shows them.", std::nullopt};
    }
    if (section != sections_.end()) {
        return {Severity::Error, '"' + name + "\" is a section of settings, and no setting.",
                "\"zelutil list --section " + quotedForShell(name) + "\" lists what is in it.", std::nullopt};
    }
    std::string advice = hints_.take() ? questionAbout(nearestFullNames(name, known_)) : std::string();
    if (advice.empty()) {
        advice = "\"zelutil list\" shows all names.";
    }
    return {Severity::Error, "There is no setting \"" + name + "\".", std::move(advice), std::nullopt};
}

std::vector<host::SettingInfo> KnownSettings::find(const std::vector<std::string>& names, Output& output) const {
    std::vector<host::SettingInfo> found;
    std::optional<UnknownSettings> unknown;
    for (const std::string& name : names) {
        if (auto setting = host::setting(name)) {
            found.push_back(*std::move(setting));
            continue;
        }
        if (!unknown) {
            unknown.emplace(this->names());
        }
        output.add(unknown->finding(name));
    }
    return found;
}

std::optional<std::vector<host::SettingInfo>> KnownSettings::findAll(const std::vector<std::string>& names,
                                                                     Output& output) const {
    std::vector<host::SettingInfo> found = find(names, output);
    if (found.size() == names.size()) {
        return found;
    }
    output.add({Severity::Note, "Nothing was done.", "", std::nullopt});
    return std::nullopt;
}

const std::string& findableName(const host::SettingInfo& setting) {
    return setting.foundByFullName ? setting.fullName : setting.bareNames.front();
}

void writeMembers(JsonWriter& json, const host::SettingInfo& setting) {
    json.member("name", setting.fullName);
    json.list("bareNames", setting.bareNames, [&](const std::string& name) { json.text(name); });
    json.member("section", setting.section);
    json.member("default", setting.defaultValue);
    json.member("value", setting.value);
    json.member("setByUser", setting.setByUser);
}

void showSettings(const std::vector<host::SettingInfo>& settings, Output& output) {
    for (const host::SettingInfo& setting : settings) {
        output.line("{}={}", output.shown(Role::Name, setting.fullName), output.shownValue(Role::Value, setting.value));
    }
    writeSettings(settings, output);
}

void writeSettings(const std::vector<host::SettingInfo>& settings, Output& output) {
    output.members([&](JsonWriter& json) {
        json.objects("settings", settings, [&](const auto& setting) { writeMembers(json, setting); });
    });
}

}  // namespace zelutil::command
