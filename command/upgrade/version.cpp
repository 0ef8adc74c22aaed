#include "command/upgrade/version.h"

#include <utility>

#include "actions/action_catalogue.h"
#include "actions/action_text.h"
#include "actions/overwritable.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"
#include "prefs/sub_managers.h"

namespace zelutil::command::upgrade {
namespace {

using actions::ActionCatalogue;
using prefs::Catalogue;
using prefs::Setting;

constexpr auto kActions = prefs::SubManagerType::Actions;

Actions actionsIn(const ActionCatalogue& catalogue) {
    Actions actions;
    catalogue.forEachAction([&](int id, const ActionCatalogue::Action& action) {
        ActionRecord record;
        // One that stands in for a missing parent has no context.
        record.context = action.context == nullptr ? "" : std::string(action.contextName());
        record.command = action.command;
        record.shortcut = actions::effectiveValue(action.shortcut);
        record.inMenu = actions::effectiveValue(action.rmb);
        record.hasUsersShortcut = action.parentId < 1 && action.shortcut.overwritten;
        record.hasUsersMenu = action.parentId < 1 && action.rmb.overwritten;
        actions.byId.emplace_hint(actions.byId.end(), id, std::move(record));
    });
    catalogue.forEachHolder([&](std::string_view context, const std::string& shortcut, int id) {
        actions.holders.emplace(host::ActionState::Place(context, shortcut), id);
    });
    return actions;
}

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
        entries.push_back({entry.shortcut.has_value(), entry.inMenu.has_value(), {}});
        for (; next != findings.end() && next->entry.isSame(element); ++next) {
            apply(std::move(*next), entries.back());
        }
    }
    return entries;
}

Actions loadActions(const std::string& defaults, const std::string& user) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    std::vector<ActionEntryEffect> entries = loadEntries(catalogue, defaults, user);
    Actions actions = actionsIn(catalogue);
    actions.usersList = user;
    actions.entries = std::move(entries);
    return actions;
}

}  // namespace

Version::Version(std::string defaults) {
    prefs::readDefaults(std::move(defaults), catalogue_);
    names_.emplace(catalogue_);
    for (const host::SettingNames::Names& named : names_->settings()) {
        numbers_.emplace(catalogue_.settings().record(named.number).key, named.number);
    }
}

const std::string* Version::defaultOf(std::uint64_t key) const {
    const auto number = numbers_.find(key);
    return number == numbers_.end() ? nullptr : &catalogue_.settings().record(number->second).defaultValue;
}

Start Version::startWith(json::View user) {
    // The copy shares the records of the settings, and has findings and texts for the actions of its own.
    Catalogue loaded = catalogue_;
    Start start;
    prefs::readUserSettings(user, loaded,
                            prefs::EntrySinks{[&](const prefs::EntryFinding& finding, json::View place) {
                                                  if (!place.isSame(user)) {
                                                      start.findings.push_back({finding, place});
                                                  }
                                              },
                                              [&](const prefs::AcceptedEntry& accepted) {
                                                  start.accepted.insert(accepted.entry.value.text()->data());
                                                  start.acceptedSections.insert(accepted.attributePath);
                                              }});
    for (const host::SettingNames::Names& named : names_->settings()) {
        const Setting& setting = loaded.settings().record(named.number);
        if (setting.hasUserValue) {
            const std::string name =
                names_->sections()[named.section] + std::string(prefs::kNameSeparator) + named.name;
            start.userValues.emplace(setting.key, UserValue{name, setting.userValue, setting.defaultValue});
        }
    }
    start.actions = actionsOf(loaded);
    takeBackValues();
    return start;
}

void Version::takeBackValues() {
    prefs::SettingIndex& settings = catalogue_.settings();
    for (std::size_t number = 0; number < settings.recordCount(); ++number) {
        if (settings.record(number).hasUserValue) {
            settings.record(number).clearUserValue();
        }
    }
}

Actions Version::actionsOf(const Catalogue& loaded) {
    const auto defaults = loaded.defaultSubManagerTexts().find(kActions);
    if (defaults == loaded.defaultSubManagerTexts().end()) {
        return {};
    }
    const auto user = loaded.userSubManagerTexts().find(kActions);
    if (user != loaded.userSubManagerTexts().end()) {
        return loadActions(defaults->second, user->second);
    }
    if (!shippedActions_) {
        shippedActions_ = loadActions(defaults->second, prefs::kNoUserSettings);
    }
    return *shippedActions_;
}

}  // namespace zelutil::command::upgrade
