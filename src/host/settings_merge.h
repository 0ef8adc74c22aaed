#ifndef ZELUTIL_HOST_SETTINGS_MERGE_H
#define ZELUTIL_HOST_SETTINGS_MERGE_H

#include <optional>
#include <string_view>

#include "host/setting_definition.h"
#include "host/settings_plan.h"
#include "host/settings_wishes.h"
#include "host/user_file_reading.h"

namespace zelutil::host {

/// Decides for each setting what the file is to hold: what is in force here where it was changed here, and else what
/// the file has. Where nothing is known of the file, everything that the user set here.
class SettingsMerge {
public:
    /// `plan` gets all that the decisions bring along. Its `fileKnown` is set.
    SettingsMerge(const prefs::Catalogue& catalogue, const SettingsWishes& wishes, const UserFileReading& now,
                  SettingsPlan& plan);

    /// Returns the user's value that the file is to hold; nothing for none. To be called once for a setting.
    std::optional<std::string_view> fileValueOf(const SettingDefinition& definition);

private:
    using Value = std::optional<std::string_view>;

    /// The three states of a setting.
    struct State {
        Value base;    ///< The file held it when it was last read or written here.
        Value theirs;  ///< The file holds it now.
        Value ours;    ///< It is in force here.
        bool touched;  ///< Whether ours was changed here since base.
    };

    State stateOf(const prefs::Setting& setting) const;
    void fulfil(const SettingsWishes::Wish& wish, const SettingDefinition& definition, State& state);
    bool isWritable(const SettingDefinition& definition) const;
    Value merged(const SettingDefinition& definition, const State& state);
    void reportNotRestored(const SettingDefinition& definition);

    const prefs::Catalogue& catalogue_;
    const SettingsWishes& wishes_;
    const UserFileReading& now_;
    SettingsPlan& plan_;
    bool hasPlainSection_;
};

}  // namespace zelutil::host

#endif
