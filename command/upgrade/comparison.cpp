#include "command/upgrade/comparison.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace zelutil::command::upgrade {
namespace {

using host::StartWarning;
using prefs::EntryFinding;

template <typename Map, typename Key>
auto* findIn(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

/// Keys are hashes, so that the order of the maps tells people nothing.
template <typename List>
void sortByName(List& list) {
    std::sort(list.begin(), list.end(), [](const auto& left, const auto& right) { return left.name < right.name; });
}

bool isWithoutEffect(const EntryFinding& finding) { return finding.kind != EntryFinding::Kind::AnotherSection; }

std::pair<std::string, std::string> placeOf(const EntryFinding& finding) { return {finding.section, finding.name}; }

/// Each that the old start said, too, takes one of the new start away.
void compareFindings(const Start& before, const Start& after, Effect& effect) {
    std::multiset<std::pair<std::string, std::string>> known;
    for (const EntryFinding& finding : before.findings) {
        if (isWithoutEffect(finding)) {
            known.insert(placeOf(finding));
        }
    }
    for (const EntryFinding& finding : after.findings) {
        const auto same = known.find(placeOf(finding));
        if (same != known.end()) {
            known.erase(same);
        } else if (isWithoutEffect(finding)) {
            effect.meaningless.push_back({finding.section, finding.name, 0, ""});
        }
    }
}

void compareWarnings(const Actions& before, const Actions& after, Effect& effect) {
    using Key = std::pair<StartWarning::Kind, int>;
    std::multiset<Key> known;
    for (const StartWarning& warning : before.warnings) {
        known.emplace(warning.kind, warning.action);
    }
    for (const StartWarning& warning : after.warnings) {
        const auto same = known.find(Key(warning.kind, warning.action));
        if (same != known.end()) {
            known.erase(same);
        } else if (warning.kind == StartWarning::Kind::ShortcutRefused) {
            effect.refused.push_back({warning.action, warning.holder, warning.text});
        } else {
            effect.meaningless.push_back({"", "", warning.action, warning.text});
        }
    }
}

void compareActions(const Actions& before, const Actions& after, Effect& effect) {
    for (const auto& [id, old] : before.byId) {
        const ActionRecord* const now = findIn(after.byId, id);
        if (old.hasUsersShortcut && (now == nullptr || now->shortcut != old.shortcut)) {
            effect.shortcuts.push_back(
                {id, old.shortcut, now == nullptr ? std::nullopt : std::optional<std::string>(now->shortcut)});
        }
        if (old.hasUsersMenu && (now == nullptr || now->inMenu != old.inMenu)) {
            effect.menuFlags.push_back(
                {id, old.inMenu, now == nullptr ? std::nullopt : std::optional<bool>(now->inMenu)});
        }
    }
}

ChangedKey::Owner ownerOf(const Actions& actions, int id) {
    const ActionRecord* const action = findIn(actions.byId, id);
    return {id, action == nullptr ? "" : action->command};
}

void compareKeys(const Actions& before, const Actions& after, Effect& effect) {
    for (const auto& [place, oldId] : before.holders) {
        const int* const newId = findIn(after.holders, place);
        if (newId == nullptr) {
            continue;
        }
        ChangedKey key{place.first, place.second, ownerOf(before, oldId), ownerOf(after, *newId)};
        if (std::tie(key.before.action, key.before.command) != std::tie(key.now.action, key.now.command)) {
            effect.keys.push_back(std::move(key));
        }
    }
}

}  // namespace

Comparison::Comparison(std::string oldDefaults, std::string newDefaults)
    : old_(std::move(oldDefaults)), new_(std::move(newDefaults)) {}

Effect Comparison::effectOn(json::View user) {
    const Start before = old_.startWith(user);
    const Start after = new_.startWith(user);
    Effect effect;
    compareValues(before, after, effect);
    compareFindings(before, after, effect);
    compareWarnings(before.actions, after.actions, effect);
    compareActions(before.actions, after.actions, effect);
    compareKeys(before.actions, after.actions, effect);
    return effect;
}

void Comparison::compareValues(const Start& before, const Start& after, Effect& effect) const {
    for (const auto& [key, old] : before.userValues) {
        const UserValue* const set = findIn(after.userValues, key);
        const std::string* const now = set == nullptr ? new_.defaultOf(key) : &set->value;
        if (now == nullptr || *now != old.value) {
            effect.dropped.push_back(
                {old.name, old.value, now == nullptr ? std::nullopt : std::optional<std::string>(*now)});
        }
    }
    for (const auto& [key, now] : after.userValues) {
        const UserValue* const old = findIn(before.userValues, key);
        const std::string* const oldDefault = old_.defaultOf(key);
        if (old == nullptr || old->value != now.value) {
            effect.gained.push_back({now.name, now.value});
        }
        if (oldDefault != nullptr && *oldDefault != now.defaultValue && now.value != now.defaultValue) {
            effect.masked.push_back({now.name, now.value, *oldDefault, now.defaultValue});
        }
    }
    sortByName(effect.dropped);
    sortByName(effect.gained);
    sortByName(effect.masked);
}

}  // namespace zelutil::command::upgrade
