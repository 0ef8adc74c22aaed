#include "host/action_warnings.h"

#include "host/action_entries.h"
#include "host/action_key_plan.h"
#include "host/action_state.h"
#include "json/document.h"
#include "json/writer.h"

#include <algorithm>
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

/// A warning and the number of the element that it is about, from 1 on.
using PlacedWarning = std::pair<std::size_t, StartWarning>;

/// An entry for a shipped action, and the number of its element.
struct PlacedEntry {
    std::size_t place = 0;
    ActionEntry entry;
    bool isShortcutRefused = false;
};

/// Applies the user's text once more, to a catalogue of its own, and looks at what each element does.
class Retelling {
public:
    explicit Retelling(ActionCatalogue& catalogue) : catalogue_(catalogue) {}

    void run(std::string_view userText) {
        const json::Document document(userText);
        if (userText.empty() || isEmptyValue(document.root())) {
            return;
        }
        const json::Elements roots = document.root().elements();
        const json::View list = roots.size() == 1 ? (*roots.begin()).member("actions") : json::View();
        if (!list.isArray()) {
            add(withoutEffect(
                0, "The list of the changed actions is not in the form that is read, and nothing of it is."));
            return;
        }
        for (const json::View element : list.elements()) {
            ++place_;
            const int id = element.member("id").integer().value_or(0);
            if (id < 1) {
                add(withoutEffect(
                    0, "Element " + std::to_string(place_) +
                           " of the list of the changed actions has no id; it and all after it are not read."));
                break;
            }
            apply(id, element);
        }
    }

    std::vector<PlacedWarning> takeWarnings() { return std::move(warnings_); }

    /// Returns what the text gives to shipped actions.
    std::vector<PlacedEntry> takeEntries() { return std::move(entries_); }

private:
    void add(StartWarning warning) { warnings_.emplace_back(place_, std::move(warning)); }

    void apply(int id, json::View element) {
        const json::View shortcut = element.member("shortcut");
        const json::View flag = element.member("rmb");
        if (catalogue_.find(id) == nullptr) {
            add(withoutEffect(id, entryFor(id) + " is for none of the shipped actions."));
            return;
        }
        if (!shortcut && !flag) {
            add(withoutEffect(id, entryFor(id) + " has neither a shortcut nor a menu flag."));
        }
        entries_.push_back({place_, {id, std::nullopt, std::nullopt}, false});
        if (shortcut) {
            applyShortcut(id, shortcut);
        }
        if (flag) {
            if (!flag.isTrue() && json::compactText(flag) != "false") {
                add(withoutEffect(
                    id, entryFor(id) + " has a menu flag that is neither true nor false and counts as false."));
            }
            catalogue_.updateMenu(id, flag.isTrue());
            entries_.back().entry.inMenu = flag.isTrue();
        }
    }

    void applyShortcut(int id, json::View value) {
        if (!value.text()) {
            add(withoutEffect(id, entryFor(id) + " has a shortcut that is no text and counts as none."));
        }
        const std::string shortcut(value.text().value_or(std::string_view()));
        entries_.back().entry.shortcut = shortcut;
        if (const int holder = catalogue_.shortcutTakenBy(id, shortcut)) {
            StartWarning refused = warning(StartWarning::Kind::ShortcutRefused, id,
                                           "Action " + std::to_string(id) + " did not get the shortcut \"" + shortcut +
                                               "\": action " + std::to_string(holder) + " has it.");
            refused.holder = holder;
            add(std::move(refused));
            entries_.back().isShortcutRefused = true;
            return;
        }
        catalogue_.updateShortcut(id, shortcut);
    }

    ActionCatalogue& catalogue_;
    /// The number of the element that is being applied.
    std::size_t place_ = 0;
    std::vector<PlacedWarning> warnings_;
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
        : defaultsText_(defaultsText), loaded_(loaded), state_(stateOf(loaded)), entries_(std::move(entries)) {}

    std::vector<PlacedWarning> run() const {
        std::vector<Gift> vain = lostGifts();
        if (!vain.empty() && !comesBackWithout(vain)) {
            vain = oneByOne(vain);
        }
        std::vector<PlacedWarning> warnings;
        for (const Gift& gift : vain) {
            warnings.emplace_back(entries_[gift.number].place, aboutGift(gift));
        }
        return warnings;
    }

private:
    /// The shortcut or the menu flag of an entry.
    struct Gift {
        std::size_t number = 0;
        bool isShortcut = false;
    };

    /// Returns what children do not have after the load. An entry that takes a shortcut away gives nothing.
    std::vector<Gift> lostGifts() const {
        std::vector<Gift> lost;
        for (std::size_t number = 0; number < entries_.size(); ++number) {
            const ActionEntry& entry = entries_[number].entry;
            if (loaded_.find(entry.id)->parentId < 1) {
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
    const ActionState state_;
    const std::vector<PlacedEntry> entries_;
};

}  // namespace

std::vector<StartWarning> actionWarnings(std::string_view defaultsText, std::string_view userText) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue again(nobody);
    Retelling retelling(again);
    again.loadAndEdit(defaultsText, [&](ActionCatalogue&) { retelling.run(userText); });
    std::vector<PlacedWarning> placed = retelling.takeWarnings();
    for (PlacedWarning& vain : VainGifts(defaultsText, again, retelling.takeEntries()).run()) {
        placed.push_back(std::move(vain));
    }
    std::stable_sort(placed.begin(), placed.end(),
                     [](const PlacedWarning& left, const PlacedWarning& right) { return left.first < right.first; });
    std::vector<StartWarning> warnings;
    for (PlacedWarning& one : placed) {
        warnings.push_back(std::move(one.second));
    }
    return warnings;
}

std::vector<StartWarning> actionWarnings(const ActionCatalogue& catalogue) {
    return actionWarnings(catalogue.texts().defaults, catalogue.texts().user);
}

}  // namespace zelutil::host
