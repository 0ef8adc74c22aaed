#include "host/action_search.h"

#include "actions/overwritable.h"
#include "host/action_key_plan.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

/// A shortcut that nobody has, for a command that is to be bound to something else for a moment.
const std::string kUnused = "\x01";

void append(std::string& key, std::string_view text) {
    key.append(std::to_string(text.size())).append(":").append(text);
}

/// Returns all that decides about what later entries do.
std::string keyOf(const ActionCatalogue& catalogue, const ActionGroup& group) {
    std::string key;
    for (const int id : group) {
        const ActionCatalogue::Action* const action = catalogue.find(id);
        append(key, actions::effectiveValue(action->shortcut));
        append(key, action->boundTo());
    }
    std::set<std::pair<std::string, int>> holders;
    catalogue.forEachHolder([&](std::string_view context, const std::string& shortcut, int id) {
        std::string place;
        append(place, context);
        append(place, shortcut);
        holders.emplace(std::move(place), id);
    });
    for (const auto& [place, id] : holders) {
        key.append(place).append(std::to_string(id)).append(";");
    }
    return key;
}

/// Adds the shortcuts that the action is shipped with or has in the aim.
void addShortcuts(const ShippedActions& shipped, const ActionState& aim, int id, std::set<std::string>& shortcuts) {
    shortcuts.insert(shipped.find(id)->values.shortcut);
    shortcuts.insert(aim.values.at(id).shortcut);
}

/// Returns all that actions of the group are shipped with, have or hold, and one that none has.
std::set<std::string> allShortcuts(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group) {
    std::set<std::string> all{std::string(), kUnused};
    for (const int id : group) {
        addShortcuts(shipped, aim, id, all);
    }
    for (const auto& [place, id] : aim.holders) {
        all.insert(place.second);
    }
    return all;
}

bool isAlone(const ShippedAction* action) { return action->parent == 0 && action->children.empty(); }

bool changes(const ActionCatalogue& catalogue, int id, const std::string& shortcut) {
    return catalogue.find(id)->boundTo() != shortcut && catalogue.shortcutTakenBy(id, shortcut) == 0;
}

/// Holds the entries whose states are still to be left, in the order in which that is done.
class OpenStates {
public:
    bool empty() const { return byLoss_.empty(); }

    void add(ActionEntries entries, std::size_t lost) {
        const std::size_t place = entries_.size();
        byLoss_.emplace(lost, entries.size(), place);
        byLength_.emplace(entries.size(), lost, place);
        entries_.push_back(std::move(entries));
    }

    /// Takes the entries out that lose least, and each fourth time the fewest: where many states lose little, a way of
    /// two entries past a state that loses much would never have its turn.
    ActionEntries take() {
        const bool byLength = ++taken_ % 4 == 0;
        const auto [first, second, place] = byLength ? *byLength_.begin() : *byLoss_.begin();
        byLength_.erase(byLength ? Place(first, second, place) : Place(second, first, place));
        byLoss_.erase(byLength ? Place(second, first, place) : Place(first, second, place));
        return std::move(entries_[place]);
    }

private:
    using Place = std::tuple<std::size_t, std::size_t, std::size_t>;

    std::vector<ActionEntries> entries_;
    std::set<Place> byLoss_;
    std::set<Place> byLength_;
    std::size_t taken_ = 0;
};

}  // namespace

ActionSearch::ActionSearch(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group)
    : group_(group) {
    const std::set<int> members(group.begin(), group.end());
    std::vector<const ShippedAction*> actions;
    std::set<std::pair<std::string, std::string>> commands;
    for (const ShippedAction& action : shipped.inOrder()) {
        if (members.count(action.id) != 0) {
            actions.push_back(&action);
            commands.emplace(action.context, action.command);
        }
    }
    text_ = shippedTextOf(actions);
    // Actions of one family, and those with one command, get and lose shortcuts without having been given them.
    const bool flat = commands.size() == actions.size() && std::all_of(actions.begin(), actions.end(), isAlone);
    const std::set<std::string> all = allShortcuts(shipped, aim, group);
    for (const int id : group) {
        std::set<std::string> own{std::string()};
        addShortcuts(shipped, aim, id, own);
        for (const std::string& shortcut : flat ? own : all) {
            steps_.push_back({id, shortcut, std::nullopt});
        }
    }
}

std::optional<ActionEntries> ActionSearch::best(const Score& score, std::size_t atMost, std::size_t& loads) const {
    std::optional<ActionEntries> best;
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    std::unordered_set<std::string> seen;
    OpenStates open;
    const auto visit = [&](ActionEntries entries) {
        std::string key;
        --loads;
        catalogue.loadAndEdit(text_, [&](ActionCatalogue& loading) {
            applyEntries(loading, entries);
            key = keyOf(loading, group_);
        });
        if (!seen.insert(std::move(key)).second) {
            return;
        }
        const std::size_t lost = score(stateOf(catalogue));
        if (lost < atMost) {
            atMost = lost;
            best = entries;
        }
        open.add(std::move(entries), lost);
    };
    if (loads > 0) {
        visit({});
    }
    while (!open.empty() && loads > steps_.size() && atMost > 0) {
        const ActionEntries entries = open.take();
        ActionEntries next;
        --loads;
        catalogue.loadAndEdit(text_, [&](ActionCatalogue& loading) {
            applyEntries(loading, entries);
            std::copy_if(steps_.begin(), steps_.end(), std::back_inserter(next),
                         [&](const ActionEntry& step) { return changes(loading, step.id, *step.shortcut); });
        });
        for (ActionEntry& step : next) {
            if (atMost > 0) {
                ActionEntries longer = entries;
                longer.push_back(std::move(step));
                visit(std::move(longer));
            }
        }
    }
    return best;
}

}  // namespace zelutil::host
