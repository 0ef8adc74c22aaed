#include "command/upgrade/comparison.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "actions/action_catalogue.h"

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

/// Returns whether a part of the library did not get what a section has for it, because it had got that of an earlier
/// one.
bool wasPassedOver(const std::vector<PlacedFinding>& findings, const std::string& section) {
    return std::any_of(findings.begin(), findings.end(), [&](const PlacedFinding& one) {
        return one.finding.kind == EntryFinding::Kind::NotOfTheForm && one.finding.section == section;
    });
}

/// Lists what the new start says of an element, where the old one had it give that very thing.
void compareEntry(const ActionEntryEffect& before, const ActionEntryEffect& after, Effect& effect) {
    using Kind = host::ActionEntryFinding::Kind;
    for (const host::ActionEntryFinding& finding : after.findings) {
        const StartWarning& warning = finding.warning;
        if (finding.kind == Kind::ShortcutRefused && before.givesShortcut) {
            effect.refused.push_back({warning.action, warning.holder, warning.text});
        } else if ((finding.kind == Kind::UnknownAction && before.isAny()) ||
                   (finding.kind == Kind::InVain &&
                    (finding.isOfShortcut ? before.givesShortcut : before.givesMenuFlag))) {
            effect.meaningless.push_back({"", "", warning.action, warning.text});
        }
    }
}

/// If one start has read no list, or another one, its elements have nothing in common with the other's.
void compareEntries(const Actions& before, const Actions& after, Effect& effect) {
    if (before.usersList != after.usersList) {
        return;
    }
    for (std::size_t place = 0; place < after.entries.size(); ++place) {
        compareEntry(before.entries[place], after.entries[place], effect);
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

/// Returns what a key runs where the host asks for the fallback; nothing where it runs nothing. `holder` is that of the
/// context itself, null for none.
std::optional<ChangedKey::Owner> ownerOf(const Actions& actions, const std::string& shortcut, const int* holder) {
    const bool isDirect = holder != nullptr;
    if (!isDirect) {
        holder =
            findIn(actions.holders, host::ActionState::Place(actions::ActionCatalogue::kFallbackContext, shortcut));
    }
    if (holder == nullptr) {
        return std::nullopt;
    }
    const ActionRecord* const action = findIn(actions.byId, *holder);
    return ChangedKey::Owner{*holder, action == nullptr ? "" : action->command, !isDirect};
}

bool isSameAction(const ChangedKey::Owner& one, const ChangedKey::Owner& other) {
    return std::tie(one.action, one.command) == std::tie(other.action, other.command);
}

/// Calls `call` with each key that a context has of its own in one version at least, and with both holders, null for
/// none.
template <typename Call>
void forEachKey(const Actions& before, const Actions& after, Call call) {
    auto old = before.holders.begin();
    auto now = after.holders.begin();
    while (old != before.holders.end() || now != after.holders.end()) {
        const bool isOld = now == after.holders.end() || (old != before.holders.end() && !(now->first < old->first));
        const bool isNew = !isOld || (now != after.holders.end() && !(old->first < now->first));
        call(isOld ? old->first : now->first, isOld ? &old->second : nullptr, isNew ? &now->second : nullptr);
        old = isOld ? std::next(old) : old;
        now = isNew ? std::next(now) : now;
    }
}

void compareKeys(const Actions& before, const Actions& after, Effect& effect) {
    forEachKey(before, after, [&](const host::ActionState::Place& key, const int* oldHolder, const int* newHolder) {
        auto oldOwner = ownerOf(before, key.second, oldHolder);
        auto newOwner = ownerOf(after, key.second, newHolder);
        if (oldOwner && (!newOwner || !isSameAction(*oldOwner, *newOwner))) {
            effect.keys.push_back({key.first, key.second, *std::move(oldOwner), std::move(newOwner)});
        }
    });
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
    compareEntries(before.actions, after.actions, effect);
    compareActions(before.actions, after.actions, effect);
    compareKeys(before.actions, after.actions, effect);
    return effect;
}

/// Lists the entries that do nothing any more.
void Comparison::compareFindings(const Start& before, const Start& after, Effect& effect) const {
    for (const PlacedFinding& now : after.findings) {
        if (hadEffect(before, now)) {
            effect.meaningless.push_back({now.finding.section, now.finding.name, 0, ""});
        }
    }
}

/// Returns whether the old start took something from what the new one takes nothing from.
bool Comparison::hadEffect(const Start& before, const PlacedFinding& now) const {
    if (now.finding.kind == EntryFinding::Kind::AnotherSection) {
        return false;
    }
    const auto text = now.finding.kind == EntryFinding::Kind::UnknownName ? now.place.text() : std::nullopt;
    if (text && before.accepted.count(text->data()) != 0) {
        return true;
    }
    const bool isAll =
        now.finding.kind == EntryFinding::Kind::UnknownSection || now.finding.kind == EntryFinding::Kind::NotOfTheForm;
    if (isAll && before.acceptedSections.count(now.finding.section) != 0) {
        return true;
    }
    const prefs::SubManagerType reader = old_.subManagerOf(now.finding.section);
    if (reader == prefs::SubManagerType::None || wasPassedOver(before.findings, now.finding.section)) {
        return false;
    }
    if (reader != prefs::SubManagerType::Actions) {
        return true;
    }
    const auto& entries = before.actions.entries;
    return std::any_of(entries.begin(), entries.end(), [](const ActionEntryEffect& entry) { return entry.isAny(); });
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
