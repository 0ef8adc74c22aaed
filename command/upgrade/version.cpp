#include "command/upgrade/version.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "actions/action_text.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"
#include "prefs/sub_managers.h"

namespace zelutil::command::upgrade {
namespace {

using actions::ActionCatalogue;
using prefs::Catalogue;
using prefs::Setting;

constexpr auto kActions = prefs::SubManagerType::Actions;

/// Takes from an element what a finding says that it does not give.
void apply(host::ActionEntryFinding finding, ActionEntryEffect& entry) {
    using Kind = host::ActionEntryFinding::Kind;
    const bool isAll = finding.kind == Kind::UnknownAction;
    const bool isShortcut = finding.kind == Kind::ShortcutRefused || finding.isOfShortcut;
    const bool isMenuFlag = finding.kind == Kind::InVain && !finding.isOfShortcut;
    entry.givesShortcut = entry.givesShortcut && !isAll && !isShortcut;
    entry.givesMenuFlag = entry.givesMenuFlag && !isAll && !isMenuFlag;
    finding.entry = json::View();
    entry.findings.push_back(std::move(finding));
}

/// Loads into the catalogue and returns what the elements of the user's list bring about.
std::vector<ActionEntryEffect> loadEntries(ActionCatalogue& catalogue, const std::string& defaults,
                                           const std::string& user) {
    const json::Document document(user);
    auto findings = host::actionEntryFindings(catalogue, defaults, document.root());
    auto next = findings.begin();
    std::vector<ActionEntryEffect> entries;
    for (const json::View element : actions::userEntriesOf(document.root()).elements()) {
        const actions::UserEntry entry = actions::userEntryOf(element);
        if (entry.id < 1) {
            break;
        }
        entries.push_back(
            {entry.id, std::nullopt, entry.inMenu, entry.shortcut.has_value(), entry.inMenu.has_value(), {}});
        if (entry.shortcut) {
            entries.back().shortcut = *entry.shortcut;
        }
        for (; next != findings.end() && next->entry.isSame(element); ++next) {
            apply(std::move(*next), entries.back());
        }
    }
    return entries;
}

}  // namespace

bool Start::hasAccepted(const char* entry) const { return std::binary_search(accepted.begin(), accepted.end(), entry); }

bool Start::hasAcceptedIn(const std::string& section) const {
    return std::find(acceptedSections.begin(), acceptedSections.end(), section) != acceptedSections.end();
}

const std::string* Start::userValueOf(std::uint64_t key) const {
    const auto found = std::lower_bound(userValues.begin(), userValues.end(), key,
                                        [](const UserValue& one, std::uint64_t wanted) { return one.key < wanted; });
    return found == userValues.end() || found->key != key ? nullptr : &found->value;
}

Version::Version(std::string defaults) {
    prefs::readDefaults(std::move(defaults), catalogue_);
    names_.emplace(catalogue_);
    // Each start copies the catalogue. What it asks of the text is only which unread members stand there too.
    catalogue_.setDefaultsText("");
    for (const host::SettingNames::Names& named : names_->settings()) {
        numbers_.emplace(catalogue_.settings().record(named.number).key, named.number);
    }
    if (actionsText().empty()) {
        shippedActions_.catalogue = std::make_shared<ActionCatalogue>(nobody_);
    } else {
        shippedActions_ = loadActions(actionsText(), prefs::kNoUserSettings);
    }
}

const std::string& Version::actionsText() const {
    static const std::string kNone;
    const auto text = catalogue_.defaultSubManagerTexts().find(kActions);
    return text == catalogue_.defaultSubManagerTexts().end() ? kNone : text->second;
}

const std::string* Version::defaultOf(std::uint64_t key) const {
    const auto number = numbers_.find(key);
    return number == numbers_.end() ? nullptr : &catalogue_.settings().record(number->second).defaultValue;
}

std::string Version::nameOf(const UserValue& value) const {
    const host::SettingNames::Names& named = *names_->find(catalogue_.settings().record(value.number));
    return names_->sections()[named.section] + std::string(prefs::kNameSeparator) + named.name;
}

Start Version::startWith(json::View user, const Actions* known) {
    // The copy shares the records of the settings, and has findings and texts for the actions of its own.
    Catalogue loaded = catalogue_;
    Start start;
    std::vector<std::uint32_t> numbers;
    prefs::readUserSettings(user, loaded,
                            prefs::EntrySinks{[&](const prefs::EntryFinding& finding, json::View place) {
                                                  if (!place.isSame(user)) {
                                                      start.findings.push_back({finding, place});
                                                  }
                                              },
                                              [&](const prefs::AcceptedEntry& accepted) {
                                                  numbers.push_back(accepted.setting.number);
                                                  start.accepted.push_back(accepted.entry.value.text()->data());
                                                  auto& sections = start.acceptedSections;
                                                  if (sections.empty() || sections.back() != accepted.attributePath) {
                                                      sections.push_back(accepted.attributePath);
                                                  }
                                              }});
    std::sort(start.accepted.begin(), start.accepted.end());
    start.userValues = takeUserValues(std::move(numbers));
    start.actions = actionsOf(loaded, known);
    return start;
}

std::vector<UserValue> Version::takeUserValues(std::vector<std::uint32_t> numbers) {
    std::vector<UserValue> values;
    prefs::SettingIndex& settings = catalogue_.settings();
    for (const std::uint32_t number : numbers) {
        Setting& setting = settings.record(number);
        // Of several entries for one setting the first one met here takes what the last one has set.
        if (setting.hasUserValue) {
            values.push_back({setting.key, number, std::move(setting.userValue)});
            setting.clearUserValue();
        }
    }
    std::sort(values.begin(), values.end(), [](const UserValue& left, const UserValue& right) {
        return std::tie(left.key, left.number) < std::tie(right.key, right.number);
    });
    // Of several definitions with one full name the first counts.
    const auto isRepetition = [](const UserValue& first, const UserValue& second) { return first.key == second.key; };
    values.erase(std::unique(values.begin(), values.end(), isRepetition), values.end());
    return values;
}

Actions Version::actionsOf(const Catalogue& loaded, const Actions* known) const {
    const auto user = loaded.userSubManagerTexts().find(kActions);
    if (actionsText().empty() || user == loaded.userSubManagerTexts().end()) {
        return shippedActions_;
    }
    const bool isKnown = known != nullptr && known->usersList == user->second;
    return isKnown ? *known : loadActions(actionsText(), user->second);
}

Actions Version::loadActions(const std::string& defaults, const std::string& user) const {
    const auto catalogue = std::make_shared<ActionCatalogue>(nobody_);
    std::vector<ActionEntryEffect> entries = loadEntries(*catalogue, defaults, user);
    return {catalogue, user, std::move(entries)};
}

}  // namespace zelutil::command::upgrade
