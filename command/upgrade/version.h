#ifndef ZELUTIL_COMMAND_UPGRADE_VERSION_H
#define ZELUTIL_COMMAND_UPGRADE_VERSION_H

#include <zelutil/host/start.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/action_state.h"
#include "host/setting_names.h"
#include "json/view.h"
#include "prefs/catalogue.h"

/// One version of the shipped defaults, and the state that a start with it and a user's file leaves.
namespace zelutil::command::upgrade {

/// A value that a user's file sets.
struct UserValue {
    std::string name;  ///< The full one.
    std::string value;
    std::string defaultValue;
};

/// An action as a start leaves it.
struct ActionRecord {
    std::string context;
    std::string command;
    std::string shortcut;
    bool inMenu = false;
    /// Whether the user's file gave it the shortcut or the menu flag itself, and no parent.
    bool hasUsersShortcut = false;
    bool hasUsersMenu = false;
};

/// The actions after a start.
struct Actions {
    std::map<int, ActionRecord> byId;
    /// The holder of each shortcut, by context and shortcut.
    std::map<host::ActionState::Place, int> holders;
    /// Lists what the start says of the entries of the user's file.
    std::vector<host::StartWarning> warnings;
};

/// Holds what a start with one user's file leaves.
struct Start {
    /// By the key of the full name, which is the same in every version.
    std::map<std::uint64_t, UserValue> userValues;
    std::vector<prefs::EntryFinding> findings;
    Actions actions;
};

/// Starts with one file after another. Each thread has its own.
class Version {
public:
    /// Takes a text of shipped defaults.
    explicit Version(std::string defaults);

    /// Returns whether the text has a section with settings or with actions.
    bool hasSections() const { return !catalogue_.sections().empty(); }

    /// Returns what a start with a user's text leaves; an absent one stands for no file.
    Start startWith(json::View user);

    /// Returns the shipped value of a setting, by the key of its full name; null for an unknown one.
    const std::string* defaultOf(std::uint64_t key) const;

private:
    void takeBackValues();
    Actions actionsOf(const prefs::Catalogue& loaded);

    prefs::Catalogue catalogue_;
    std::optional<host::SettingNames> names_;
    std::map<std::uint64_t, std::uint32_t> numbers_;
    /// The actions of a user without an entry for them, which most are.
    std::optional<Actions> shippedActions_;
};

}  // namespace zelutil::command::upgrade

#endif
