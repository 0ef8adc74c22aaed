#include "host/action_key_plan.h"

#include "actions/overwritable.h"

#include <algorithm>
#include <list>
#include <set>
#include <unordered_set>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

const std::string& shortcutOf(const ActionState& state, int id) { return valuesOf(state, id).shortcut; }

/// The edits of one group, from what is shipped to the aim.
class KeyEdits {
public:
    /// Whether children come to what their parent has without an edit of their own, as at the end of a load.
    enum class Children { Follow, AreEdited };

    KeyEdits(ActionCatalogue& catalogue, const ShippedActions& shipped, const ActionState& aim,
             const ActionGroup& group, Children children)
        : catalogue_(catalogue),
          shipped_(shipped),
          aim_(aim),
          group_(group),
          members_(group.begin(), group.end()),
          children_(children) {}

    ActionEntries run(Effort effort) {
        if (effort == Effort::ThoroughBackwards || effort == Effort::UnheldBackwards) {
            std::reverse(group_.begin(), group_.end());
        }
        if (effort == Effort::Thorough || effort == Effort::ThoroughBackwards) {
            std::for_each(group_.begin(), group_.end(), [this](int id) { takeAway(id); });
        }
        if (effort == Effort::Unheld || effort == Effort::UnheldBackwards) {
            std::for_each(group_.begin(), group_.end(), [this](int id) { giveUnheld(id); });
        }
        queue_.assign(group_.begin(), group_.end());
        giveAll();
        if (effort != Effort::Ordered) {
            giveBackHolders();
        }
        return std::move(entries_);
    }

private:
    /// So often can one action lose its shortcut to make room.
    static constexpr int kMostTurns = 3;
    /// So many entries can one action come to on average.
    static constexpr std::size_t kMostEntries = 12;

    const std::string& goal(int id) const { return shortcutOf(aim_, id); }
    std::string shown(int id) const { return actions::effectiveValue(catalogue_.find(id)->shortcut); }

    /// Whether the action needs an edit of its own.
    bool waits(int id) const {
        const int parent = shipped_.find(id)->parent;
        const bool hasParent = shipped_.find(parent) != nullptr;
        const bool follows = parent > 0 && (!hasParent || goal(id) == goal(parent));
        if (follows && children_ == Children::Follow) {
            return false;
        }
        // Before its parent has its own, an edit would be for nothing.
        if (hasParent && members_.count(parent) != 0 && shown(parent) != goal(parent)) {
            return false;
        }
        return shown(id) != goal(id);
    }

    void giveAll() {
        while (true) {
            while (!queue_.empty()) {
                if (entries_.size() > kMostEntries * group_.size()) {
                    return;  // where parents go round in a circle, each edit can undo the last
                }
                const int id = queue_.front();
                queue_.pop_front();
                tryToGive(id);
            }
            if (!makeRoom()) {
                return;
            }
        }
    }

    void tryToGive(int id) {
        stuck_.erase(id);
        if (!waits(id)) {
            return;
        }
        const int holder = catalogue_.shortcutTakenBy(id, goal(id));
        if (holder == 0) {
            give(id, goal(id));
            return;
        }
        stuck_.insert(id);
        waiting_[shipped_.topAbove(holder)].push_back(id);
    }

    /// Takes away what the first of the waiting actions waits for. Returns whether there was something.
    bool makeRoom() {
        while (!stuck_.empty()) {
            const int id = *stuck_.begin();
            const int holder = catalogue_.shortcutTakenBy(id, goal(id));
            if (members_.count(holder) != 0 && !mayKeep(holder, id) && turns_[holder]++ < kMostTurns) {
                takeAway(holder);
                queue_.push_front(id);
                queue_.push_back(holder);
                return true;
            }
            stuck_.erase(stuck_.begin());
        }
        return false;
    }

    /// Whether the shortcut that the action waits for stays with its holder, and the action has had it without holding
    /// it.
    bool mayKeep(int holder, int id) const {
        return goal(holder) == goal(id) && isHolder(holder) &&
               shipped_.find(holder)->context == shipped_.find(id)->context;
    }

    void takeAway(int id) {
        if (!shown(id).empty()) {
            give(id, std::string());
        }
    }

    void edit(int id, const std::string& shortcut) {
        if (catalogue_.updateShortcut(id, shortcut)) {
            entries_.push_back({id, shortcut, std::nullopt});
        }
    }

    void give(int id, const std::string& shortcut) {
        edit(id, shortcut);
        if (shown(id) != shortcut && !shortcut.empty()) {
            // The command is bound to it already, by another action with that command.
            edit(id, std::string());
            edit(id, shortcut);
        }
        const auto waiting = waiting_.find(shipped_.topAbove(id));
        if (waiting != waiting_.end()) {
            queue_.insert(queue_.end(), waiting->second.begin(), waiting->second.end());
            waiting_.erase(waiting);
        }
        const std::vector<int>& children = shipped_.find(id)->children;
        queue_.insert(queue_.end(), children.begin(), children.end());
    }

    bool isHolder(int id) const {
        const auto holder = aim_.holders.find(ActionState::Place(shipped_.find(id)->context, goal(id)));
        return holder != aim_.holders.end() && holder->second == id;
    }

    /// Gives the action a shortcut and has another one that shows it leave, with which the entry goes.
    void giveUnheld(int id) {
        const int leaving = goal(id).empty() || isHolder(id) ? 0 : leavingFor(id);
        if (leaving == 0) {
            return;
        }
        for (int turn = 0; turn < kMostTurns; ++turn) {
            const int holder = catalogue_.shortcutTakenBy(id, goal(id));
            if (members_.count(holder) != 0) {
                takeAway(holder);
            }
        }
        if (shown(id) != goal(id)) {
            give(id, goal(id));
        }
        if (catalogue_.idByShortcut(shipped_.find(id)->context, goal(id)) == id) {
            takeAway(leaving);
        }
    }

    /// Returns the action that shows what this one is to show, holds it no more than this one is to, and may leave; 0
    /// for none. The best is one that does not come back.
    int leavingFor(int id) const {
        const std::string& context = shipped_.find(id)->context;
        const int holder = catalogue_.idByShortcut(context, goal(id));
        int found = 0;
        for (const int other : group_) {
            const bool shows =
                other != id && other != holder && shipped_.find(other)->context == context && shown(other) == goal(id);
            if (shows && (goal(other) != goal(id) || (found == 0 && isHolder(other)))) {
                found = other;
            }
        }
        return found;
    }

    /// Gives shortcuts back that the load leaves with another holder than the aim has, or with none: a shortcut that is
    /// shipped twice goes away with either of its actions, and the first of two children to follow gets it.
    void giveBackHolders() {
        for (const int id : group_) {
            const ShippedAction& action = *shipped_.find(id);
            const std::string& shortcut = goal(id);
            if (shortcut.empty() || !isHolder(id)) {
                continue;
            }
            const int other = catalogue_.idByShortcut(action.context, shortcut);
            if (other == id || (other != 0 && members_.count(other) == 0)) {
                continue;
            }
            if (other != 0) {
                takeAway(other);
            }
            takeAway(id);
            give(id, shortcut);
        }
    }

    ActionCatalogue& catalogue_;
    const ShippedActions& shipped_;
    const ActionState& aim_;
    ActionGroup group_;
    std::unordered_set<int> members_;
    Children children_;
    ActionEntries entries_;
    std::list<int> queue_;
    /// The actions that wait for somebody, and by the topmost action above that one.
    std::set<int> stuck_;
    std::map<int, std::vector<int>> waiting_;
    std::map<int, int> turns_;
};

}  // namespace

ActionEntries plainEntries(const ShippedActions& shipped, const ActionState& aim, const ActionGroup& group) {
    ActionEntries entries;
    for (const int id : group) {
        const ShippedAction& action = *shipped.find(id);
        if (action.parent == 0 && shortcutOf(aim, id) != action.values.shortcut) {
            entries.push_back({id, shortcutOf(aim, id), std::nullopt});
        }
    }
    return entries;
}

ActionEntries editTowards(ActionCatalogue& catalogue, const ShippedActions& shipped, const ActionState& aim,
                          const ActionGroup& group, Effort effort) {
    if (effort == Effort::Plain) {
        ActionEntries entries = plainEntries(shipped, aim, group);
        applyEntries(catalogue, entries);
        return entries;
    }
    return KeyEdits(catalogue, shipped, aim, group, KeyEdits::Children::Follow).run(effort);
}

void editBack(ActionCatalogue& catalogue, const ShippedActions& shipped, const ActionState& aim,
              const ActionGroup& group) {
    KeyEdits(catalogue, shipped, aim, group, KeyEdits::Children::AreEdited).run(Effort::Repaired);
}

void applyEntries(ActionCatalogue& catalogue, const ActionEntries& entries) {
    for (const ActionEntry& entry : entries) {
        if (entry.shortcut) {
            catalogue.updateShortcut(entry.id, *entry.shortcut);
        }
        if (entry.inMenu) {
            catalogue.updateMenu(entry.id, *entry.inMenu);
        }
    }
}

}  // namespace zelutil::host
