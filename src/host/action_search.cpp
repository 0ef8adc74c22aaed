#include "host/action_search.h"

#include "actions/overwritable.h"
#include "host/action_key_plan.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
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

/// Returns the shortcuts that the action, and those above it, are shipped with or have in the aim.
std::set<std::string> shortcutsOf(const ShippedActions& shipped, const ActionState& aim, int id) {
    std::set<std::string> shortcuts{std::string()};
    std::set<int> seen;
    for (const ShippedAction* action = shipped.find(id); action != nullptr && seen.insert(action->id).second;
         action = shipped.find(action->parent)) {
        shortcuts.insert(action->values.shortcut);
        const auto found = aim.values.find(action->id);
        if (found != aim.values.end()) {
            shortcuts.insert(found->second.shortcut);
        }
    }
    return shortcuts;
}

bool changes(const ActionCatalogue& catalogue, int id, const std::string& shortcut) {
    return catalogue.find(id)->boundTo() != shortcut && catalogue.shortcutTakenBy(id, shortcut) == 0;
}

}  // namespace

ActionSearch::ActionSearch(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group)
    : group_(group) {
    const std::set<int> members(group.begin(), group.end());
    std::vector<const ShippedAction*> actions;
    std::map<std::pair<std::string, std::string>, int> commands;
    for (const ShippedAction& action : shipped.inOrder()) {
        if (members.count(action.id) != 0) {
            actions.push_back(&action);
            ++commands[{action.context, action.command}];
        }
    }
    text_ = shippedTextOf(actions);
    for (const ShippedAction* const action : actions) {
        std::set<std::string> shortcuts = shortcutsOf(shipped, aim, action->id);
        if (commands[{action->context, action->command}] > 1) {
            shortcuts.insert(kUnused);
        }
        for (const std::string& shortcut : shortcuts) {
            steps_.push_back({action->id, shortcut, std::nullopt});
        }
    }
}

std::optional<ActionEntries> ActionSearch::best(const Score& score, std::size_t atLeast, std::size_t& loads) const {
    std::optional<ActionEntries> best;
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    std::unordered_set<std::string> seen;
    std::deque<ActionEntries> open;
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
        const std::size_t restored = score(stateOf(catalogue));
        if (restored > atLeast) {
            atLeast = restored;
            best = entries;
        }
        open.push_back(std::move(entries));
    };
    if (loads > 0) {
        visit({});
    }
    while (!open.empty() && loads > steps_.size() && atLeast < group_.size()) {
        const ActionEntries entries = std::move(open.front());
        open.pop_front();
        ActionEntries next;
        --loads;
        catalogue.loadAndEdit(text_, [&](ActionCatalogue& loading) {
            applyEntries(loading, entries);
            std::copy_if(steps_.begin(), steps_.end(), std::back_inserter(next),
                         [&](const ActionEntry& step) { return changes(loading, step.id, *step.shortcut); });
        });
        for (ActionEntry& step : next) {
            if (atLeast < group_.size()) {
                ActionEntries longer = entries;
                longer.push_back(std::move(step));
                visit(std::move(longer));
            }
        }
    }
    return best;
}

}  // namespace zelutil::host
