#include "host/settings_merge.h"

#include <algorithm>
#include <string>

namespace zelutil::host {
namespace {

using prefs::Catalogue;
using prefs::Setting;

bool hasPlainSection(const Catalogue& catalogue) {
    const prefs::Sections& sections = catalogue.sections();
    return std::any_of(sections.begin(), sections.end(),
                       [](const auto& entry) { return entry.second->submanagerId == prefs::kNoSubManager; });
}

std::optional<std::string_view> viewOf(const std::optional<std::string>& text) {
    return text ? std::optional<std::string_view>(*text) : std::nullopt;
}

std::optional<std::string> copyOf(std::optional<std::string_view> text) {
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

/// Walks over all definitions. At most one setting of a plan needs it.
std::string fullNameOf(std::uint32_t wanted, json::View defaults) {
    std::string fullName;
    prefs::DefinitionCount count;
    prefs::forEachSection(defaults, [&](const prefs::VisitedSection& visited) {
        count.inSection(visited, [&](std::uint32_t number, const prefs::DefaultSetting& definition) {
            if (number == wanted) {
                fullName = visited.attributePath + std::string(prefs::kNameSeparator) + std::string(definition.name);
            }
        });
    });
    return fullName;
}

}  // namespace

SettingsMerge::SettingsMerge(const Catalogue& catalogue, const SettingsWishes& wishes, const UserFileReading& now,
                             SettingsPlan& plan)
    : catalogue_(catalogue), wishes_(wishes), now_(now), plan_(plan), hasPlainSection_(hasPlainSection(catalogue)) {}

std::optional<std::string_view> SettingsMerge::fileValueOf(const SettingDefinition& definition) {
    State state = stateOf(definition.setting);
    if (const SettingsWishes::Wish* const wish = wishes_.find(definition.setting)) {
        fulfil(*wish, definition, state);
    }
    const Value inFile = merged(definition, state);
    if (inFile != state.ours) {
        plan_.journal[definition.setting.number] = {copyOf(inFile), false};
    }
    plan_.changesValues = plan_.changesValues || inFile != state.theirs;
    if (!inFile || inFile == state.theirs) {
        // The file's own text is in the plan already.
        return inFile ? state.theirs : std::nullopt;
    }
    return plan_.content.strings.emplace_back(*inFile);
}

SettingsMerge::State SettingsMerge::stateOf(const Setting& setting) const {
    State state{{}, now_.valueOf(setting), {}, false};
    if (setting.hasUserValue) {
        state.ours = setting.userValue;
    }
    const auto entry = catalogue_.journal().find(setting.number);
    const bool isKnown = entry != catalogue_.journal().end();
    state.base = isKnown ? viewOf(entry->second.inFile) : state.ours;
    state.touched = isKnown && entry->second.touched;
    return state;
}

// A value that is in force already is no change, also when the host hands it over: a dialog hands over all it shows.
void SettingsMerge::fulfil(const SettingsWishes::Wish& wish, const SettingDefinition& definition, State& state) {
    const Setting& setting = definition.setting;
    if (wish ? *wish == setting.valueInForce() : !state.base && !state.theirs && !state.ours) {
        return;
    }
    if (wish) {
        plan_.newValues.push_back({definition.key(), std::string(*wish)});
    } else {
        plan_.takenBack.push_back(definition.key());
    }
    if (wish.value_or(setting.defaultValue) != setting.valueInForce()) {
        plan_.changedSettings.insert(definition.fullName());
    }
    state.ours = wish;
    state.touched = true;
}

/// An entry can name every setting that is found, except under the empty name, and in every section with settings; but
/// it is not read in one whose path belongs to a sub-manager.
bool SettingsMerge::isWritable(const SettingDefinition& definition) const {
    return hasPlainSection_ && (definition.foundInFull || !definition.name.empty());
}

SettingsMerge::Value SettingsMerge::merged(const SettingDefinition& definition, const State& state) {
    if (!isWritable(definition)) {
        if (state.ours) {
            reportNotRestored(definition);
        }
        return std::nullopt;
    }
    if (!plan_.fileKnown || state.theirs == state.ours) {
        return state.ours;
    }
    // An entry with the shipped value and no entry bring about the same.
    const std::string_view shipped = definition.setting.defaultValue;
    const std::string_view ours = state.ours.value_or(shipped);
    const std::string_view theirs = state.theirs.value_or(shipped);
    if (!state.touched) {
        if (theirs != ours) {
            plan_.settingsOfOthers.push_back(definition.fullName());
        }
        return state.theirs;
    }
    if (theirs != ours && state.theirs != state.base) {
        plan_.conflicts.push_back({definition.fullName(), 0, std::string(ours), std::string(theirs)});
    }
    return state.ours;
}

void SettingsMerge::reportNotRestored(const SettingDefinition& definition) {
    NotRestored named;
    named.setting = definition.fullName();
    if (!hasPlainSection_) {
        named.obstacle = Obstacle::NoPlaceInFile;
        named.text = named.setting +
                     " cannot be saved: every section that has settings belongs to a sub-manager, and the file has no "
                     "other place for it.";
    } else {
        const Setting* const other = catalogue_.settings().find(definition.setting.key);
        named.obstacle = Obstacle::NameBelongsToAnother;
        named.otherSetting = other == nullptr ? "" : fullNameOf(other->number, plan_.content.defaults);
        named.text = named.setting + " cannot be saved: its full name means " + named.otherSetting +
                     ", and otherwise it is found under the empty name only, which the file cannot hold.";
    }
    plan_.notRestored.push_back(std::move(named));
}

}  // namespace zelutil::host
