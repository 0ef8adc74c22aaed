#ifndef ZELUTIL_COMMAND_KNOWN_SETTINGS_H
#define ZELUTIL_COMMAND_KNOWN_SETTINGS_H

#include <zelutil/host/settings.h>

#include <optional>
#include <string>
#include <vector>

#include "command/nearest_names.h"
#include "command/output.h"

namespace zelutil::command {

/// The settings of this installation and user, as the subcommands read them.
class KnownSettings {
public:
    /// Reads them. Where there are none, `output` is told a failure; where the user's file could not be read, it is
    /// told a finding.
    explicit KnownSettings(Output& output);

    bool areThere() const { return !all_.empty(); }
    const std::vector<host::SettingInfo>& all() const { return all_; }

    /// Returns the settings of these names, and tells `output` the unknown ones with the nearest known names. The
    /// result is shorter than the list of names where some are unknown.
    std::vector<host::SettingInfo> find(const std::vector<std::string>& names, Output& output) const;

    /// Does the same for work that is done for all or not at all: returns nothing where one is unknown.
    std::optional<std::vector<host::SettingInfo>> findAll(const std::vector<std::string>& names, Output& output) const;

private:
    std::vector<std::string> names() const;

    std::vector<host::SettingInfo> all_;
};

/// Returns whether something says where the shipped defaults are. The library prints an error of its own, on standard
/// output too, when it is asked for them without that.
bool areDefaultsNamed();

/// Returns what somebody does for whom no shipped defaults were read; `areNamed` is what `areDefaultsNamed` returns.
std::string adviceWithoutDefaults(bool areNamed);

/// Tells `output` that no `thing`, such as "setting", is known, because nothing leads to the shipped defaults, or
/// because they cannot be used.
void failWithoutDefaults(const std::string& thing, Output& output);

/// Returns the sections with those that only group others.
std::vector<std::string> sectionsAndGroups();

/// Makes findings for names that no setting has, each with the nearest of the known names, or for a section.
class UnknownSettings {
public:
    explicit UnknownSettings(std::vector<std::string> known);

    Finding finding(const std::string& name);

private:
    std::vector<std::string> known_;
    std::vector<std::string> sections_;
    HintBudget hints_;
};

/// Returns a name under which the setting is found: the full one, or where that means another setting, a bare one.
const std::string& findableName(const host::SettingInfo& setting);

/// Tells the settings as NAME=VALUE lines, and in the JSON form as the member "settings".
void showSettings(const std::vector<host::SettingInfo>& settings, Output& output);

/// Writes the members of one setting in the JSON form.
void writeMembers(JsonWriter& json, const host::SettingInfo& setting);

/// Writes the member "settings" of the JSON form only.
void writeSettings(const std::vector<host::SettingInfo>& settings, Output& output);

}  // namespace zelutil::command

#endif
