#ifndef ZELUTIL_PREFS_CATALOGUE_H
#define ZELUTIL_PREFS_CATALOGUE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "prefs/entry_finding.h"
#include "prefs/handed_over.h"
#include "prefs/section.h"
#include "prefs/setting.h"
#include "prefs/setting_index.h"
#include "prefs/setting_journal.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {

class SaveLayout;

/// Every section and setting there is, as values: the catalogue knows neither the files they come from nor the parts
/// of the library that use them. A reader fills it once (catalogue_reader.h); afterwards only values of the user
/// change, when a save puts new ones in force.
///
/// A copy shares the records of settings and sections with the original, and so the journal of the settings and what
/// was handed over.
class Catalogue {
public:
    /// A value of the user for the setting found under `key`.
    struct NewValue {
        std::uint64_t key;
        std::string value;
    };

    const Sections& sections() const { return sections_; }

    /// Returns the setting of that name, bare or in full, in any case; null for an unknown one.
    const Setting* find(std::string_view name) const { return settings().find(keyOf(name)); }
    const Setting* find(const char* name) const { return settings().find(keyOf(name)); }

    const SettingIndex& settings() const { return *settings_; }
    /// Whoever gets it may change values.
    SettingIndex& settings() {
        ++*changes_;
        return *settings_;
    }

    /// Returns a number that is another one after each change of values, whichever copy made it.
    std::uint64_t changes() const { return *changes_; }

    /// Returns the setting that an entry of the user's file sets, in the section with that attribute path; null for
    /// one without a setting.
    const Setting* findEntry(std::string_view name, std::string_view attributePath) const;

    /// Returns whom the section belongs to; `None` also for an unknown one.
    SubManagerType subManagerOf(const std::string& attributePath) const;

    /// The text of the defaults, as it was read.
    const std::string& defaultsText() const { return defaultsText_; }

    /// Return what the sections of sub-managers hold in the defaults, and in the user's text.
    const SubManagerTexts& defaultSubManagerTexts() const { return defaultSubManagerTexts_; }
    const SubManagerTexts& userSubManagerTexts() const { return userSubManagerTexts_; }

    /// Makes the values the user's, one after another, and then takes the user's values of other settings back, so that
    /// the default is in force. A key without a setting is ignored. The journal has the settings as touched afterwards.
    /// Throws only for lack of memory, and then nothing has changed.
    void putInForce(std::vector<NewValue> newValues, const std::vector<std::uint64_t>& takenBack = {});

    const SettingJournal& journal() const { return *journal_; }

    /// Begins the journal anew with these entries, after the file was written.
    void restartJournal(SettingJournal journal) noexcept { *journal_ = std::move(journal); }

    /// Has the journal say that everything the user set was set here and that the file has nothing of it, as it is for
    /// a file that this process neither read nor wrote.
    void restartJournalForUnknownFile();

    HandedOver& handedOver() { return *handedOver_; }
    const HandedOver& handedOver() const { return *handedOver_; }

    /// Holds what one save makes of the defaults for the next ones. Other defaults begin with nothing.
    struct KeptForSaves {
        std::shared_ptr<SaveLayout> layout;
        /// The numbers of the settings that have a value of the user, in order, as of `changes()` then.
        std::vector<std::uint32_t> usersSettings;
        std::optional<std::uint64_t> changesThen;
    };
    KeptForSaves& keptForSaves() const { return *keptForSaves_; }

    /// Returns what was odd in the user's text, in its order.
    const std::vector<EntryFinding>& findings() const { return findings_; }

    // For the reader. What is there already stays: the first of a path, and the first text of a type.
    void addSection(std::shared_ptr<Section> section);
    void addDefaultSubManagerText(SubManagerType type, std::string text);
    void addUserSubManagerText(SubManagerType type, std::string text);
    void setSettings(SettingIndex settings);
    void setDefaultsText(std::string text);
    void addFinding(EntryFinding finding) { findings_.push_back(std::move(finding)); }

private:
    void forgetKeptForSaves();
    void enterInJournal(std::uint64_t key);
    void markTouched(const Setting& setting) noexcept { journal_->find(setting.number)->second.touched = true; }

    Sections sections_;
    std::shared_ptr<SettingIndex> settings_ = std::make_shared<SettingIndex>();
    std::shared_ptr<std::uint64_t> changes_ = std::make_shared<std::uint64_t>(0);
    std::shared_ptr<SettingJournal> journal_ = std::make_shared<SettingJournal>();
    std::shared_ptr<HandedOver> handedOver_ = std::make_shared<HandedOver>();
    std::shared_ptr<KeptForSaves> keptForSaves_ = std::make_shared<KeptForSaves>();
    std::vector<EntryFinding> findings_;
    SubManagerTexts defaultSubManagerTexts_;
    SubManagerTexts userSubManagerTexts_;
    std::string defaultsText_;
};

}  // namespace zelutil::prefs

#endif
