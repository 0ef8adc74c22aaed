// Menu flags are taken over from parents at the end of a load, in one pass over the children in ascending id. So a
// child ends with the flag that its parent has at that time: the final one where the parent is at the top or has a
// lower id, and else the one that the entries gave the parent. Going up from each action, one comes to the action whose
// flag before the pass counts, its source; or to a missing parent, which is never in the menu.
#include "host/action_menu_plan.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace zelutil::host {
namespace {

/// Returns the id of the action's source, 0 for a missing one.
int sourceOf(const ShippedActions& shipped, const ShippedAction& action) {
    const ShippedAction* below = &action;
    while (below->parent > 0) {
        const ShippedAction* const above = shipped.find(below->parent);
        if (above == nullptr) {
            return 0;
        }
        if (above->parent < 1 || above->id >= below->id) {
            return above->id;
        }
        below = above;
    }
    return below->id;
}

/// The actions that one flag decides about, and how many would have theirs back with either.
struct Vote {
    std::size_t in = 0;
    std::size_t out = 0;
    /// True where the source is a top-level action that the user changed.
    std::optional<bool> chosen;

    bool inMenu() const { return chosen.value_or(in > out); }
    bool counts() const { return chosen || in + out > 0; }
};

bool flagOf(const ActionState& state, int id) { return valuesOf(state, id).inMenu; }

std::map<int, Vote> votesOf(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group,
                            const std::set<int>& lost) {
    std::map<int, Vote> votes;
    for (const int id : group) {
        const ShippedAction& action = *shipped.find(id);
        Vote& vote = votes[sourceOf(shipped, action)];
        if (action.parent < 1 && valuesOf(aim, id) != valuesOf(shipped.loaded(), id)) {
            vote.chosen = flagOf(aim, id);
        }
        if (lost.count(id) == 0) {
            ++(flagOf(aim, id) ? vote.in : vote.out);
        }
    }
    return votes;
}

/// The flags that the entries so far have given: an action's flag comes to all below it that have another.
class Flags {
public:
    explicit Flags(const ShippedActions& shipped) : shipped_(shipped) {}

    bool of(const ShippedAction& action) const {
        const auto found = changed_.find(action.id);
        return found == changed_.end() ? action.values.inMenu : found->second;
    }

    void set(const ShippedAction& first, bool inMenu) {
        std::vector<const ShippedAction*> pending{&first};
        while (!pending.empty()) {
            const ShippedAction& action = *pending.back();
            pending.pop_back();
            if (of(action) == inMenu) {
                continue;
            }
            changed_[action.id] = inMenu;
            for (const int child : action.children) {
                pending.push_back(shipped_.find(child));
            }
        }
    }

private:
    const ShippedActions& shipped_;
    std::map<int, bool> changed_;
};

}  // namespace

ActionEntries menuEntries(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group,
                          const std::set<int>& lost) {
    // An action comes after all above it, whose entries change its flag.
    std::vector<std::pair<std::size_t, int>> sources;
    const std::map<int, Vote> votes = votesOf(shipped, aim, group, lost);
    for (const auto& [id, vote] : votes) {
        if (id != 0 && vote.counts()) {
            sources.emplace_back(shipped.find(id)->depth, id);
        }
    }
    std::sort(sources.begin(), sources.end());
    ActionEntries entries;
    Flags flags(shipped);
    for (const auto& [depth, id] : sources) {
        const ShippedAction& source = *shipped.find(id);
        const bool inMenu = votes.at(id).inMenu();
        if (flags.of(source) != inMenu) {
            flags.set(source, inMenu);
            entries.push_back({id, std::nullopt, inMenu});
        }
    }
    return entries;
}

std::set<int> lostFlags(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group,
                        const std::set<int>& lost) {
    std::set<int> without;
    const std::map<int, Vote> votes = votesOf(shipped, aim, group, lost);
    for (const int id : group) {
        const int source = sourceOf(shipped, *shipped.find(id));
        const bool inMenu = source != 0 && votes.at(source).inMenu();
        if (flagOf(aim, id) != inMenu) {
            without.insert(id);
        }
    }
    return without;
}

}  // namespace zelutil::host
