#ifndef ZELUTIL_COMMAND_EXPLAIN_SETTING_ACCOUNT_H
#define ZELUTIL_COMMAND_EXPLAIN_SETTING_ACCOUNT_H

// Why every setting has the value that it has. The library's own readers read the two files here and tell of each
// definition and each entry, so that what is in force and what is explained come from the same code.

#include <zelutil/host/settings.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/located_document.h"

namespace zelutil::command {

/// The place of a member of a preference file, or of a definition's name and value.
struct PairPlace {
    json::Position name;   ///< The name's first sign, which is its quote.
    json::Position value;  ///< The value's first sign.
};

/// An entry of the user's file, as one setting sees it.
struct UserEntry {
    enum class Effect {
        InForce,          ///< Its value is the user's.
        Overruled,        ///< An entry that is read later sets the same setting.
        SetsAnother,      ///< Its name means another setting first, which gets the value.
        NoText,           ///< Its value is no string.
        NoList,           ///< The entries of its section do not stand in an array.
        UnknownSection,   ///< The defaults have no section as the one around it.
        GroupingSection,  ///< The defaults have that section, which has no settings.
        OfSubManager,     ///< The section around it belongs to a sub-manager and has no settings.
        UnknownName,      ///< No setting has its name.
        NotRead,          ///< It stands where no entry is read.
    };

    std::string section;               ///< The attribute path where it stands; empty for outside of sections.
    std::string name;                  ///< As it is written.
    std::optional<std::string> value;  ///< Nothing where it is no string.
    Effect effect = Effect::InForce;
    /// Another setting that the entry concerns, by its full name: the one that its name means, or, where that is this
    /// setting, the one of its section with that name. Empty where there is none.
    std::string other;
    /// Whether the name means `other`, and not this setting.
    bool meansOther = false;
    PairPlace place;
    /// The place of the name of the entry that counts in its stead; nothing where it is not overruled.
    std::optional<json::Position> overruledBy;
};

/// Returns the name in the form for programs: "in-force", "overruled".
const char* nameOf(UserEntry::Effect effect);

/// Returns sentences that say why the entry has no effect on the setting; empty for one in force.
std::string reasonOf(const UserEntry& entry);

/// Returns what the entry does instead of setting the setting: "has no effect" or "sets another setting".
const char* outcomeOf(const UserEntry& entry);

/// All that is known of one setting.
struct SettingAccount {
    /// A definition that shares a name with the setting.
    struct Namesake {
        std::string fullName;
        PairPlace place;
    };

    /// Returns the entry that gives the user's value; null where the user has set none.
    const UserEntry* entryInForce() const;

    host::SettingInfo info;
    PairPlace definition;
    /// The entries that set it or look as if they did, in the order of the file.
    std::vector<UserEntry> entries;
    /// Later definitions with the same full name, which have no effect.
    std::vector<Namesake> repetitions;
};

/// A preference file as a start of the library finds it.
struct PreferenceFile {
    std::string path;     ///< As the library writes it; empty for none.
    bool isRead = false;  ///< Whether its text is JSON that the library reads.
    /// Whether it is there, and nothing of it is read: it may be empty, no JSON, or JSON without a section.
    bool isUnread = false;
};

/// Reads both preference files as a start of the library does, and accounts for each setting.
class SettingAccounts {
public:
    /// Reads the files of this installation and user. Nothing is printed; without defaults there are no settings.
    SettingAccounts();
    /// Reads these texts in their place. One that is no JSON, as the empty one, says nothing.
    SettingAccounts(std::string defaults, std::string user);
    SettingAccounts(SettingAccounts&&) noexcept;
    SettingAccounts& operator=(SettingAccounts&&) noexcept;
    ~SettingAccounts();

    const PreferenceFile& defaultsFile() const;
    const PreferenceFile& userFile() const;

    /// Returns whether there is no setting.
    bool empty() const;

    /// Returns the numbers of all settings that some name finds, in the order of the defaults.
    const std::vector<std::uint32_t>& numbers() const;

    /// Returns the number of the setting of that name, bare or in full, in any case; nothing for an unknown one.
    std::optional<std::uint32_t> find(std::string_view name) const;

    /// Returns whether the name is the full one of the setting that it finds.
    bool isFullName(std::string_view name, std::uint32_t number) const;

    /// Returns what hosts are told of a setting.
    host::SettingInfo info(std::uint32_t number) const;

    /// Returns the account of a setting.
    SettingAccount account(std::uint32_t number) const;

    /// Returns the settings, this one among them, whose sections lend the same bare name, in the order of the defaults:
    /// it means the first of them, unless that is some setting's full name. Many may share one.
    std::vector<SettingAccount::Namesake> lenders(std::uint32_t number) const;

    /// Returns the entries of the user's file that mean no setting, in the order of the file.
    const std::vector<UserEntry>& entriesWithoutSetting() const;

    /// Returns the full and the bare names that find something.
    std::vector<std::string> names() const;

    /// Returns the values of the entries that set one of these settings, in the order of the file.
    std::vector<json::View> entriesThatSet(const std::vector<std::uint32_t>& numbers) const;
    /// Returns what the user's file has for the actions, as the library reads it; absent where it has nothing.
    json::View userActions() const;
    /// Returns the shipped actions, in the text that the library loads; empty where there are none.
    std::string shippedActions() const;
    /// Returns the document to which the entries and the user's actions belong.
    const json::LocatedDocument& userDocument() const;

private:
    class Readings;

    std::unique_ptr<Readings> readings_;
};

}  // namespace zelutil::command

#endif
