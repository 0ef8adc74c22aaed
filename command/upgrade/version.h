#ifndef ZELUTIL_COMMAND_UPGRADE_VERSION_H
#define ZELUTIL_COMMAND_UPGRADE_VERSION_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "actions/action_catalogue.h"
#include "actions/observer_registry.h"
#include "host/action_warnings.h"
#include "host/setting_names.h"
#include "json/view.h"
#include "prefs/catalogue.h"

/// One version of the shipped defaults, and the state that a start with it and a user's file leaves.
namespace zelutil::command::upgrade {

/// A value that a user's file sets.
struct UserValue {
    std::uint64_t key = 0;  ///< That of the full name, which is the same in every version.
    std::uint32_t number = 0;
    std::string value;
};

/// An element of the user's list of changed actions.
struct ActionEntryEffect {
    int action = 0;
    /// Hold what the element says.
    std::optional<std::string> shortcut;
    std::optional<bool> inMenu;
    bool givesShortcut = false;
    bool givesMenuFlag = false;
    /// Lists what the start says of the element. Their views are void.
    std::vector<host::ActionEntryFinding> findings;

    bool isAny() const { return givesShortcut || givesMenuFlag; }
};

/// The actions after a start.
struct Actions {
    /// Never null. Starts with the same texts share it.
    std::shared_ptr<const actions::ActionCatalogue> catalogue;
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
    /// In the order of their keys.
    std::vector<UserValue> userValues;
    /// Without members that nobody reads, which have an effect in no version.
    std::vector<PlacedFinding> findings;
    /// The entries that set something, by the place of their text in the user's document, in order.
    std::vector<const char*> accepted;
    /// The sections in which they stand. One may be there several times.
    std::vector<std::string> acceptedSections;
    Actions actions;

    bool hasAccepted(const char* entry) const;
    bool hasAcceptedIn(const std::string& section) const;
    /// Returns null for a setting that the user's file does not set.
    const std::string* userValueOf(std::uint64_t key) const;
};

/// Starts with one file after another. Each thread has its own.
class Version {
public:
    /// Takes a text of shipped defaults.
    explicit Version(std::string defaults);
    Version(const Version&) = delete;
    Version& operator=(const Version&) = delete;
    ~Version() = default;

    /// Returns whether the text has a section with settings or with actions.
    bool hasSections() const { return !catalogue_.sections().empty(); }

    /// Returns what a start with a user's text leaves; an absent one stands for no file. `known` are the actions of
    /// another version that ships the same ones, after its start with the same text, or null.
    Start startWith(json::View user, const Actions* known = nullptr);

    /// Returns the shipped text of the actions; empty for none.
    const std::string& actionsText() const;

    /// Returns whom the section belongs to; `None` also for an unknown one.
    prefs::SubManagerType subManagerOf(const std::string& section) const { return catalogue_.subManagerOf(section); }

    /// Returns the shipped value of a setting, by the key of its full name; null for an unknown one.
    const std::string* defaultOf(std::uint64_t key) const;

    /// Returns the full name of a setting that a user's file sets.
    std::string nameOf(const UserValue& value) const;

    /// Returns the actions of a user without an entry for them, which most are.
    const Actions& shippedActions() const { return shippedActions_; }

private:
    /// Moves the user's values out of the records, which are the shared ones, so that the next user finds none.
    std::vector<UserValue> takeUserValues(std::vector<std::uint32_t> numbers);
    Actions actionsOf(const prefs::Catalogue& loaded, const Actions* known) const;
    Actions loadActions(const std::string& defaults, const std::string& user) const;

    prefs::Catalogue catalogue_;
    std::optional<host::SettingNames> names_;
    /// The settings by the keys of their full names.
    std::unordered_map<std::uint64_t, std::uint32_t> numbers_;
    actions::ObserverRegistry nobody_;
    Actions shippedActions_;
};

}  // namespace zelutil::command::upgrade

#endif
