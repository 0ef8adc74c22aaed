#include "host/action_warnings.h"

#include "actions/action_text.h"
#include "host/action_entries.h"
#include "host/action_key_plan.h"
#include "host/action_state.h"
#include "json/document.h"
#include "json/writer.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

StartWarning warning(StartWarning::Kind kind, int action, std::string text) {
    StartWarning result;
    result.kind = kind;
    result.action = action;
    result.text = std::move(text);
    return result;
}

StartWarning withoutEffect(int action, std::string text) {
    return warning(StartWarning::Kind::EntryWithoutEffect, action, std::move(text));
}

std::string entryFor(int id) { return "The entry for action " + std::to_string(id); }

/// The preferences load the actions with such a text where the user's file has nothing for them.
bool isEmptyValue(json::View value) {
    const auto text = json::compactText(value);
    return text == "{}" || text == "[]";
}

using Kind = ActionEntryFinding::Kind;

/// A finding and the number of the element that it is about, from 1 on.
using PlacedFinding = std::pair<std::size_t, ActionEntryFinding>;

/// An entry for a shipped action, with its element and the number of that.
struct PlacedEntry {
    std::size_t place = 0;
    json::View element;
    ActionEntry entry;
    bool isShortcutRefused = false;
};

/// Applies the user's value once more, to a catalogue of its own, and looks at what each element does.
class Retelling {
public:
    explicit Retelling(ActionCatalogue& catalogue) : catalogue_(catalogue) {}

    void run(json::View user) {
        if (isEmptyValue(user)) {
            return;
        }
        const json::View list = actions::userEntriesOf(user);
        if (!list) {
            add(Kind::NotOfTheForm, user,
                withoutEffect(
                    0, "The list of the changed actions is not in the form that is read, and nothing of it is."));
            return;
        }
        for (const json::View element : list.elements()) {
            ++place_;
            const actions::UserEntry entry = actions::userEntryOf(element);
            if (entry.id < 1) {
                add(Kind::WithoutId, element,
                    withoutEffect(
                        0, "Element " + std::to_string(place_) +
                               " of the list of the changed actions has no id; it and all after it are not read."));
                break;
            }
            apply(entry, element);
        }
    }

    std::vector<PlacedFinding> takeFindings() { return std::move(findings_); }

    /// Returns what the text gives to shipped actions.
    std::vector<PlacedEntry> takeEntries() { return std::move(entries_); }

private:
    void add(Kind kind, json::View element, StartWarning warning) {
        findings_.emplace_back(place_, ActionEntryFinding{kind, element, std::move(warning)});
    }

    void apply(const actions::UserEntry& entry, json::View element) {
        const int id = entry.id;
        if (catalogue_.find(id) == nullptr) {
            add(Kind::UnknownAction, element, withoutEffect(id, entryFor(id) + " is for none of the shipped actions."));
            return;
        }
        if (!entry.shortcut && !entry.inMenu) {
            add(Kind::SaysNothing, element,
                withoutEffect(id, entryFor(id) + " has neither a shortcut nor a menu flag."));
        }
        entries_.push_back({place_, element, {id, std::nullopt, std::nullopt}, false});
        if (entry.shortcut) {
            applyShortcut(id, std::string(*entry.shortcut), element);
        }
        if (entry.inMenu) {
            if (!element.member("rmb").isTruth()) {
                add(Kind::NoTruth, element,
                    withoutEffect(
                        id, entryFor(id) + " has a menu flag that is neither true nor false and counts as false."));
            }
            catalogue_.updateMenu(id, *entry.inMenu);
            entries_.back().entry.inMenu = entry.inMenu;
        }
    }

    void applyShortcut(int id, const std::string& shortcut, json::View element) {
        if (!element.member("shortcut").text()) {
            add(Kind::NoText, element,
                withoutEffect(id, entryFor(id) + " has a shortcut that is no text and counts as none."));
        }
        entries_.back().entry.shortcut = shortcut;
        if (const int holder = catalogue_.shortcutTakenBy(id, shortcut)) {
            StartWarning refused = warning(StartWarning::Kind::ShortcutRefused, id,
                                           "Action " + std::to_string(id) + " did not get the shortcut \"" + shortcut +
                                               "\": action " + std::to_string(holder) + " has it.");
            refused.holder = holder;
            add(Kind::ShortcutRefused, element, std::move(refused));
            entries_.back().isShortcutRefused = true;
            return;
        }
        catalogue_.updateShortcut(id, shortcut);
    }

    ActionCatalogue& catalogue_;
    /// The number of the element that is being applied.
    std::size_t place_ = 0;
    std::vector<PlacedFinding> findings_;
    std::vector<PlacedEntry> entries_;
};

/// So many loads may it take to find what is in vain.
constexpr std::size_t kMostLoads = 100;

/// Finds what entries give to children in vain: at the end of a load a child takes over what its parent has. What an
/// entry gives until then may still decide what others get.
class VainGifts {
public:
    /// `loaded` is what a load of the shipped text and the entries has brought about.
    VainGifts(std::string_view defaultsText, const ActionCatalogue& loaded, std::vector<PlacedEntry> entries)
        : defaultsText_(defaultsText), loaded_(loaded), entries_(std::move(entries)) {
        const bool isAnyForAChild = std::any_of(entries_.begin(), entries_.end(),
                                                [&](const PlacedEntry& placed) { return isForAChild(placed); });
        if (isAnyForAChild) {
            state_ = stateOf(loaded);
        }
    }

    std::vector<PlacedFinding> run() const {
        std::vector<Gift> vain = lostGifts();
        if (!vain.empty() && !comesBackWithout(vain)) {
            vain = oneByOne(vain);
        }
        std::vector<PlacedFinding> findings;
        for (const Gift& gift : vain) {
            const PlacedEntry& entry = entries_[gift.number];
            findings.emplace_back(entry.place,
                                  ActionEntryFinding{Kind::InVain, entry.element, aboutGift(gift), gift.isShortcut});
        }
        return findings;
    }

private:
    /// The shortcut or the menu flag of an entry.
    struct Gift {
        std::size_t number = 0;
        bool isShortcut = false;
    };

    bool isForAChild(const PlacedEntry& placed) const { return loaded_.find(placed.entry.id)->parentId >= 1; }

    /// Returns what children do not have after the load. An entry that takes a shortcut away gives nothing.
    std::vector<Gift> lostGifts() const {
        std::vector<Gift> lost;
        for (std::size_t number = 0; number < entries_.size(); ++number) {
            const ActionEntry& entry = entries_[number].entry;
            if (!isForAChild(entries_[number])) {
                continue;
            }
            const ActionValues& has = valuesOf(state_, entry.id);
            if (!entries_[number].isShortcutRefused && !entry.shortcut.value_or("").empty() &&
                entry.shortcut != has.shortcut) {
                lost.push_back({number, true});
            }
            if (entry.inMenu && entry.inMenu != has.inMenu) {
                lost.push_back({number, false});
            }
        }
        return lost;
    }

    bool comesBackWithout(const std::vector<Gift>& gifts) const {
        ActionEntries entries;
        for (const PlacedEntry& placed : entries_) {
            entries.push_back(placed.entry);
        }
        for (const Gift& gift : gifts) {
            gift.isShortcut ? entries[gift.number].shortcut.reset() : entries[gift.number].inMenu.reset();
        }
        const actions::ObserverRegistry nobody;
        ActionCatalogue catalogue(nobody);
        catalogue.loadAndEdit(defaultsText_, [&](ActionCatalogue& loading) { applyEntries(loading, entries); });
        const ActionState without = stateOf(catalogue);
        return without.values == state_.values && without.holders == state_.holders;
    }

    std::vector<Gift> oneByOne(const std::vector<Gift>& gifts) const {
        std::vector<Gift> vain;
        for (std::size_t number = 0; number < std::min(gifts.size(), kMostLoads); ++number) {
            vain.push_back(gifts[number]);
            if (!comesBackWithout(vain)) {
                vain.pop_back();
            }
        }
        return vain;
    }

    StartWarning aboutGift(const Gift& gift) const {
        const ActionEntry& entry = entries_[gift.number].entry;
        const std::string what = gift.isShortcut ? "shortcut \"" + *entry.shortcut + "\"" : "menu flag";
        return withoutEffect(entry.id, "The " + what + " that action " + std::to_string(entry.id) +
                                           " is given has no effect, because it follows its parent, action " +
                                           std::to_string(loaded_.find(entry.id)->parentId) + ".");
    }

    std::string_view defaultsText_;
    const ActionCatalogue& loaded_;
    const std::vector<PlacedEntry> entries_;
    /// Empty where no entry is for a child.
    ActionState state_;
};

}  // namespace

std::vector<ActionEntryFinding> actionEntryFindings(std::string_view defaultsText, json::View user) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue again(nobody);
    return actionEntryFindings(again, defaultsText, user);
}

std::vector<ActionEntryFinding> actionEntryFindings(ActionCatalogue& catalogue, std::string_view defaultsText,
                                                    json::View user) {
    Retelling retelling(catalogue);
    catalogue.loadAndEdit(defaultsText, [&](ActionCatalogue&) { retelling.run(user); });
    // A multimap keeps findings of the same place in the order in which they were made.
    std::multimap<std::size_t, ActionEntryFinding> placed;
    for (PlacedFinding& told : retelling.takeFindings()) {
        placed.insert(std::move(told));
    }
    for (PlacedFinding& vain : VainGifts(defaultsText, catalogue, retelling.takeEntries()).run()) {
        placed.insert(std::move(vain));
    }
    std::vector<ActionEntryFinding> findings;
    for (auto& [place, finding] : placed) {
        findings.push_back(std::move(finding));
    }
    return findings;
}

std::vector<StartWarning> actionWarnings(std::string_view defaultsText, std::string_view userText) {
    std::vector<StartWarning> warnings;
    if (userText.empty()) {
        return warnings;
    }
    const json::Document document(userText);
    for (ActionEntryFinding& finding : actionEntryFindings(defaultsText, document.root())) {
        warnings.push_back(std::move(finding.warning));
    }
    return warnings;
}

std::vector<StartWarning> actionWarnings(const ActionCatalogue& catalogue) {
    return actionWarnings(catalogue.texts().defaults, catalogue.texts().user);
}

}  // namespace zelutil::host
