#include "prefs/catalogue.h"

#include <utility>

namespace zelutil::prefs {

SubManagerType Catalogue::subManagerOf(const std::string& attributePath) const {
    const auto section = sections_.find(attributePath);
    return section == sections_.end() ? SubManagerType::None : SubManagerType{section->second->submanagerId};
}

// Kept deliberately: a name is tried bare or in full before it is tried within its section, so it may mean a setting of
// another section, even though a save wrote it. Part of the published behaviour; hosts may depend on it.
const Setting* Catalogue::findEntry(std::string_view name, std::string_view attributePath) const {
    if (name.empty()) {
        return nullptr;
    }
    const Setting* const setting = settings().find(keyOf(name));
    return setting != nullptr ? setting : settings().find(keyOf(name, keyOf(kNameSeparator, keyOf(attributePath))));
}

void Catalogue::putInForce(std::vector<NewValue> newValues, const std::vector<std::uint64_t>& takenBack) {
    // First what needs memory. An untouched entry with the value of the record says no more than none.
    for (const NewValue& newValue : newValues) {
        enterInJournal(newValue.key);
    }
    for (const std::uint64_t key : takenBack) {
        enterInJournal(key);
    }
    ++*changes_;
    for (NewValue& newValue : newValues) {
        if (Setting* const setting = settings_->find(newValue.key)) {
            markTouched(*setting);
            setting->setUserValue(std::move(newValue.value));
        }
    }
    for (const std::uint64_t key : takenBack) {
        if (Setting* const setting = settings_->find(key)) {
            markTouched(*setting);
            setting->clearUserValue();
        }
    }
}

void Catalogue::restartJournalForUnknownFile() {
    SettingJournal journal;
    for (std::uint32_t number = 0; number < settings_->recordCount(); ++number) {
        if (settings_->record(number).hasUserValue) {
            journal.emplace_hint(journal.end(), number, JournalEntry{std::nullopt, true});
        }
    }
    restartJournal(std::move(journal));
}

void Catalogue::enterInJournal(std::uint64_t key) {
    const Setting* const setting = settings_->find(key);
    if (setting == nullptr || journal_->count(setting->number) != 0) {
        return;
    }
    JournalEntry entry;
    if (setting->hasUserValue) {
        entry.inFile = setting->userValue;
    }
    journal_->emplace(setting->number, std::move(entry));
}

// NOLINTBEGIN(performance-unnecessary-value-param): try_emplace moves them, which the check does not see.
void Catalogue::addSection(std::shared_ptr<Section> section) {
    const std::string& path = section->attributePath;
    forgetKeptForSaves();
    sections_.try_emplace(path, std::move(section));
}

void Catalogue::addDefaultSubManagerText(SubManagerType type, std::string text) {
    defaultSubManagerTexts_.try_emplace(type, std::move(text));
}

void Catalogue::addUserSubManagerText(SubManagerType type, std::string text) {
    userSubManagerTexts_.try_emplace(type, std::move(text));
}
// NOLINTEND(performance-unnecessary-value-param)

void Catalogue::setSettings(SettingIndex settings) {
    settings_ = std::make_shared<SettingIndex>(std::move(settings));
    changes_ = std::make_shared<std::uint64_t>(0);
    forgetKeptForSaves();
}

void Catalogue::setDefaultsText(std::string text) {
    defaultsText_ = std::move(text);
    forgetKeptForSaves();
}

/// Copies, which have the old defaults, keep it, or make one of their own later.
void Catalogue::forgetKeptForSaves() {
    if (keptForSaves_->layout != nullptr || keptForSaves_.use_count() > 1) {
        keptForSaves_ = std::make_shared<KeptForSaves>();
    }
}

}  // namespace zelutil::prefs
