#include "command/upgrade/comparison.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "actions/action_catalogue.h"
#include "actions/overwritable.h"

namespace zelutil::command::upgrade {
namespace {

using actions::ActionCatalogue;
using Action = ActionCatalogue::Action;
using host::StartWarning;
using prefs::EntryFinding;

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

/// Returns the action of that id; null for none, which one is that stands in for a missing parent.
const Action* findShipped(const ActionCatalogue& catalogue, int id) {
    const Action* const action = catalogue.find(id);
    return action == nullptr || action->id == 0 ? nullptr : action;
}

std::string textOfFollower(const ActionEntryEffect& entry, bool isOfShortcut, int parent) {
    const std::string action = "action " + std::to_string(entry.action);
    const std::string why = ", because it follows its parent now, action " + std::to_string(parent) + '.';
    if (isOfShortcut && entry.shortcut->empty()) {
        return "The entry that takes the shortcut of " + action + " away does not do so" + why;
    }
    const std::string what = isOfShortcut ? "shortcut \"" + *entry.shortcut + '"' : "menu flag";
    return "The " + what + " that " + action + " is given does not stay" + why;
}

/// Lists what an element gives to an action that the new version has made a child. A start says nothing of an element
/// that takes a shortcut away, or that decides what other actions get before the child follows its parent.
void compareFollower(const ActionEntryEffect& before, const ActionEntryEffect& after, const Actions& old,
                     const Actions& now, Effect& effect) {
    const Action* const was = findShipped(*old.catalogue, before.action);
    const Action* const is = findShipped(*now.catalogue, before.action);
    if (was == nullptr || is == nullptr || was->parentId >= 1 || is->parentId < 1) {
        return;
    }
    const auto tell = [&](bool isOfShortcut) {
        effect.meaningless.push_back({"", "", before.action, textOfFollower(before, isOfShortcut, is->parentId)});
    };
    if (before.givesShortcut && after.givesShortcut && actions::effectiveValue(is->shortcut) != *before.shortcut) {
        tell(true);
    }
    if (before.givesMenuFlag && after.givesMenuFlag && actions::effectiveValue(is->rmb) != *before.inMenu) {
        tell(false);
    }
}

/// If one start has read no list, or another one, its elements have nothing in common with the other's.
void compareEntries(const Actions& before, const Actions& after, Effect& effect) {
    if (before.usersList != after.usersList) {
        return;
    }
    for (std::size_t place = 0; place < after.entries.size(); ++place) {
        compareEntry(before.entries[place], after.entries[place], effect);
        compareFollower(before.entries[place], after.entries[place], before, after, effect);
    }
}

/// Returns the action that has another one's command in its context; 0 for none, and where the other one is still
/// there.
int successorOf(const Action& gone, int id, const ActionCatalogue& after) {
    // One that stood in for a missing parent has no context.
    return findShipped(after, id) != nullptr || gone.context == nullptr
               ? 0
               : after.idByCommand(gone.contextName(), gone.command);
}

void compareShortcut(int id, const Action& old, const ActionCatalogue& after, Effect& effect) {
    const Action* const now = findShipped(after, id);
    const std::string& had = actions::effectiveValue(old.shortcut);
    if (now == nullptr) {
        effect.shortcuts.push_back({id, had, std::nullopt, successorOf(old, id, after)});
    } else if (actions::effectiveValue(now->shortcut) != had) {
        effect.shortcuts.push_back({id, had, actions::effectiveValue(now->shortcut), 0});
    }
}

void compareMenuFlag(int id, const Action& old, const ActionCatalogue& after, Effect& effect) {
    const Action* const now = findShipped(after, id);
    const bool was = actions::effectiveValue(old.rmb);
    if (now == nullptr) {
        effect.menuFlags.push_back({id, was, std::nullopt, successorOf(old, id, after)});
    } else if (actions::effectiveValue(now->rmb) != was) {
        effect.menuFlags.push_back({id, was, !was, 0});
    }
}

/// Compares what the user's file gave an action itself, and no parent.
void compareActions(const ActionCatalogue& before, const ActionCatalogue& after, Effect& effect) {
    before.forEachAction([&](int id, const Action& old) {
        if (old.parentId < 1 && old.shortcut.overwritten) {
            compareShortcut(id, old, after, effect);
        }
        if (old.parentId < 1 && old.rmb.overwritten) {
            compareMenuFlag(id, old, after, effect);
        }
    });
}

/// Returns what a key runs where the host asks for the fallback; nothing where it runs nothing. `own` is the holder of
/// the context itself, 0 for none.
std::optional<ChangedKey::Owner> ownerOf(const ActionCatalogue& catalogue, std::string_view context,
                                         const std::string& shortcut, int own) {
    const int holder = own != 0 ? own : catalogue.idByShortcut(context, shortcut, true);
    if (holder == 0) {
        return std::nullopt;
    }
    const Action* const action = catalogue.find(holder);
    return ChangedKey::Owner{holder, action == nullptr ? "" : std::string(action->command), own == 0};
}

bool isSameAction(const ChangedKey::Owner& one, const ChangedKey::Owner& other) {
    return std::tie(one.action, one.command) == std::tie(other.action, other.command);
}

/// Adds the key if it runs another action. `old` and `now` are its holders in the context itself, 0 for none.
void compareKey(const ActionCatalogue& before, const ActionCatalogue& after, std::string_view context,
                const std::string& shortcut, int old, int now, std::vector<ChangedKey>& changed) {
    auto oldOwner = ownerOf(before, context, shortcut, old);
    auto newOwner = ownerOf(after, context, shortcut, now);
    if (!oldOwner || (newOwner && isSameAction(*oldOwner, *newOwner))) {
        return;
    }
    const Action* const action = before.find(oldOwner->action);
    const int successor = action == nullptr ? 0 : successorOf(*action, oldOwner->action, after);
    changed.push_back({std::string(context), shortcut, *std::move(oldOwner), std::move(newOwner), successor});
}

/// Returns whether both have one action with one command under the id.
bool isSameAction(const ActionCatalogue& before, const ActionCatalogue& after, int id) {
    const Action* const old = before.find(id);
    const Action* const now = after.find(id);
    return old != nullptr && now != nullptr && old->command == now->command;
}

auto placeOf(const ChangedKey& key) { return std::tie(key.context, key.shortcut); }

bool isBefore(const ChangedKey& left, const ChangedKey& right) { return placeOf(left) < placeOf(right); }

bool isSameChange(const ChangedKey& one, const ChangedKey& other) {
    const bool isSameNow = one.now && other.now
                               ? isSameAction(*one.now, *other.now) && one.now->byFallback == other.now->byFallback
                               : !one.now && !other.now;
    return isSameNow && isSameAction(one.before, other.before) && one.before.byFallback == other.before.byFallback;
}

/// Returns each key that a context has of its own in one version at least and that runs another action or none.
std::vector<ChangedKey> changedKeys(const ActionCatalogue& before, const ActionCatalogue& after) {
    std::vector<ChangedKey> changed;
    before.forEachHolder([&](std::string_view context, const std::string& shortcut, int old) {
        const int now = after.idByShortcut(context, shortcut);
        if (old != now || !isSameAction(before, after, old)) {
            compareKey(before, after, context, shortcut, old, now, changed);
        }
    });
    after.forEachHolder([&](std::string_view context, const std::string& shortcut, int now) {
        if (before.idByShortcut(context, shortcut) == 0) {
            compareKey(before, after, context, shortcut, 0, now, changed);
        }
    });
    std::sort(changed.begin(), changed.end(), isBefore);
    return changed;
}

}  // namespace

Comparison::Comparison(std::string oldDefaults, std::string newDefaults)
    : old_(std::move(oldDefaults)),
      new_(std::move(newDefaults)),
      hasSameActions_(old_.actionsText() == new_.actionsText()),
      shippedKeys_(changedKeys(*old_.shippedActions().catalogue, *new_.shippedActions().catalogue)) {}

Effect Comparison::effectOn(json::View user) {
    const Start before = old_.startWith(user);
    const Start after = new_.startWith(user, hasSameActions_ ? &before.actions : nullptr);
    Effect effect;
    compareValues(before, after, effect);
    compareFindings(before, after, effect);
    compareEntries(before.actions, after.actions, effect);
    compareActions(*before.actions.catalogue, *after.actions.catalogue, effect);
    compareKeys(before.actions, after.actions, effect);
    return effect;
}

/// Lists the keys that change in another way than they do for a user who has set none, and those that change for such a
/// user only.
void Comparison::compareKeys(const Actions& before, const Actions& after, Effect& effect) const {
    const bool isShipped =
        before.catalogue == old_.shippedActions().catalogue && after.catalogue == new_.shippedActions().catalogue;
    if (isShipped || (hasSameActions_ && before.catalogue == after.catalogue)) {
        return;
    }
    auto shipped = shippedKeys_.begin();
    const auto spareUntil = [&](auto isPast) {
        for (; shipped != shippedKeys_.end() && !isPast(*shipped); ++shipped) {
            effect.sparedKeys.push_back({shipped->context, shipped->shortcut});
        }
    };
    for (ChangedKey& key : changedKeys(*before.catalogue, *after.catalogue)) {
        spareUntil([&](const ChangedKey& one) { return !isBefore(one, key); });
        const bool isThere = shipped != shippedKeys_.end() && !isBefore(key, *shipped);
        if (!isThere || !isSameChange(key, *shipped)) {
            effect.keys.push_back(std::move(key));
        }
        shipped += isThere ? 1 : 0;
    }
    spareUntil([](const ChangedKey&) { return false; });
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
    if (text && before.hasAccepted(text->data())) {
        return true;
    }
    const bool isAll =
        now.finding.kind == EntryFinding::Kind::UnknownSection || now.finding.kind == EntryFinding::Kind::NotOfTheForm;
    if (isAll && before.hasAcceptedIn(now.finding.section)) {
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
    for (const UserValue& old : before.userValues) {
        const std::string* const set = after.userValueOf(old.key);
        const std::string* const now = set == nullptr ? new_.defaultOf(old.key) : set;
        if (now == nullptr || *now != old.value) {
            effect.dropped.push_back(
                {old_.nameOf(old), old.value, now == nullptr ? std::nullopt : std::optional<std::string>(*now)});
        }
    }
    for (const UserValue& now : after.userValues) {
        const std::string* const old = before.userValueOf(now.key);
        const std::string* const oldDefault = old_.defaultOf(now.key);
        const std::string& newDefault = *new_.defaultOf(now.key);
        if (old == nullptr || *old != now.value) {
            effect.gained.push_back({new_.nameOf(now), now.value});
        }
        if (oldDefault != nullptr && *oldDefault != newDefault && now.value != newDefault) {
            effect.masked.push_back({new_.nameOf(now), now.value, *oldDefault, newDefault});
        }
    }
    sortByName(effect.dropped);
    sortByName(effect.gained);
    sortByName(effect.masked);
}

}  // namespace zelutil::command::upgrade
