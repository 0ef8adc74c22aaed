#ifndef ZELUTIL_COMMAND_UPGRADE_VERSION_H
#define ZELUTIL_COMMAND_UPGRADE_VERSION_H

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/action_state.h"
#include "host/action_warnings.h"
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

/// An element of the user's list of changed actions.
struct ActionEntryEffect {
    bool givesShortcut = false;
    bool givesMenuFlag = false;
    /// Lists what the start says of the element. Their views are void.
    std::vector<host::ActionEntryFinding> findings;

    bool isAny() const { return givesShortcut || givesMenuFlag; }
};

/// The actions after a start.
struct Actions {
    std::map<int, ActionRecord> byId;
    /// The holder of each shortcut, by context and shortcut.
    std::map<host::ActionState::Place, int> holders;
    /// The user's text that was read; empty for none.
    std::string usersList;
    /// The elements of that list that are read, in its order.
    std::vector<ActionEntryEffect> entries;
};

/// Something in the user's text that does not do what it says.
struct PlacedFinding {
    prefs::EntryFinding finding;
    /// In the user's document: the value of the entry, or the element or section as a whole.
    json::View place;
};

/// Holds what a start with one user's file leaves.
struct Start {
    /// By the key of the full name, which is the same in every version.
    std::map<std::uint64_t, UserValue> userValues;
    /// Without members that nobody reads, which have an effect in no version.
    std::vector<PlacedFinding> findings;
    /// The entries that set something, by the place of their text in the user's document.
    std::set<const char*> accepted;
    /// The sections in which they stand.
    std::set<std::string> acceptedSections;
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

    /// Returns whom the section belongs to; `None` also for an unknown one.
    prefs::SubManagerType subManagerOf(const std::string& section) const { return catalogue_.subManagerOf(section); }

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
