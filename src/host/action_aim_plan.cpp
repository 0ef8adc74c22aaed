#include "host/action_aim_plan.h"

#include "host/action_key_plan.h"
#include "host/action_menu_plan.h"
#include "host/action_obstacles.h"
#include "host/action_search.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

/// Larger groups are not searched.
constexpr std::size_t kLargestSearched = 8;

/// The best entries for a group so far.
struct GroupPlan {
    ActionGroup group;
    ActionEntries keys;
    bool plain = true;
    /// The actions whose shortcuts do not come back, and those of which anything does not.
    std::set<int> lostKeys;
    std::set<int> lost;
};

std::set<int> among(const std::set<int>& ids, const ActionGroup& group) {
    std::set<int> found;
    std::copy_if(group.begin(), group.end(), std::inserter(found, found.end()),
                 [&](int id) { return ids.count(id) != 0; });
    return found;
}

/// Plans one aim, group by group.
class AimPlanner {
public:
    AimPlanner(const ShippedActions& shipped, const ActionState& aim, std::size_t searchLoads)
        : shipped_(shipped), aim_(aim), loads_(searchLoads) {}

    AimPlan plan() {
        findGroups();
        for (const Effort effort : kEfforts) {
            tryAll(effort);
        }
        searchAll();
        AimPlan plan;
        plan.entries = allEntries();
        plan.notRestored = missing(plan.entries);
        return plan;
    }

private:
    void findGroups() {
        std::set<int> changed = differentKeys(aim_, shipped_.loaded());
        const std::set<int> flags = differentFlags(aim_, shipped_.loaded());
        const std::set<int> keys = changed;
        changed.insert(flags.begin(), flags.end());
        if (changed.empty()) {
            return;
        }
        groups_ = groupsOf(shipped_, aim_);
        for (const ActionGroup& group : groups_) {
            if (std::any_of(group.begin(), group.end(), [&](int id) { return changed.count(id) != 0; })) {
                GroupPlan plan;
                plan.lostKeys = among(keys, group);
                plan.group = group;
                plan.lost = allLost(plan.group, plan.lostKeys);
                plans_.push_back(std::move(plan));
            }
        }
    }

    std::set<int> allLost(const ActionGroup& group, const std::set<int>& lostKeys) const {
        std::set<int> lost = lostFlags(shipped_, aim_, group, lostKeys);
        lost.insert(lostKeys.begin(), lostKeys.end());
        return lost;
    }

    /// Whether more than what comes back already might.
    bool isOpen(const GroupPlan& plan) const {
        return std::any_of(plan.lost.begin(), plan.lost.end(),
                           [&](int id) { return !followsAnother(shipped_, aim_, plan.lost, id); });
    }

    void tryAll(Effort effort) {
        std::vector<GroupPlan*> open;
        for (GroupPlan& plan : plans_) {
            if (isOpen(plan)) {
                open.push_back(&plan);
            }
        }
        if (open.empty()) {
            return;
        }
        std::vector<ActionEntries> entries;
        catalogue_.loadAndEdit(shipped_.text(), [&](ActionCatalogue& catalogue) {
            for (const GroupPlan* const plan : open) {
                entries.push_back(editTowards(catalogue, shipped_, aim_, plan->group, effort));
            }
        });
        const std::set<int> different = differentKeys(aim_, stateOf(catalogue_));
        for (std::size_t place = 0; place < open.size(); ++place) {
            GroupPlan& plan = *open[place];
            const std::set<int> lostKeys = among(different, plan.group);
            const std::set<int> lost = allLost(plan.group, lostKeys);
            if (lost.size() < plan.lost.size()) {
                plan.lostKeys = lostKeys;
                plan.lost = lost;
                plan.keys = std::move(entries[place]);
                plan.plain = effort == Effort::Plain;
            }
        }
    }

    void searchAll() {
        for (GroupPlan& plan : plans_) {
            searchIfSmall(plan);
            if (isOpen(plan)) {
                searchWithNeighbours(plan);
            }
        }
    }

    void searchIfSmall(GroupPlan& plan) {
        if (plan.group.size() <= kLargestSearched && isOpen(plan)) {
            search(plan);
        }
    }

    /// An action that has a shortcut without holding it may owe that to a family of the same context, one of which came
    /// and went.
    void searchWithNeighbours(GroupPlan& plan) {
        const ActionGroup around = plan.group.size() < kLargestSearched ? neighboursOf(plan.group) : plan.group;
        if (around.size() > kLargestSearched || around.size() == plan.group.size()) {
            return;
        }
        GroupPlan joined;
        joined.group = around;
        joined.plain = false;
        for (const GroupPlan& other : plans_) {
            if (contains(around, other)) {
                joined.keys.insert(joined.keys.end(), other.keys.begin(), other.keys.end());
                joined.lostKeys.insert(other.lostKeys.begin(), other.lostKeys.end());
                joined.lost.insert(other.lost.begin(), other.lost.end());
            }
        }
        const std::size_t lost = joined.lost.size();
        search(joined);
        if (joined.lost.size() < lost) {
            for (GroupPlan& other : plans_) {
                if (contains(around, other)) {
                    other = GroupPlan();
                }
            }
            plan = std::move(joined);
        }
    }

    static bool contains(const ActionGroup& group, const GroupPlan& plan) {
        return !plan.group.empty() && std::binary_search(group.begin(), group.end(), plan.group.front());
    }

    /// Returns all actions of the groups that have an action in a context of this group's, or more than a search can
    /// take.
    ActionGroup neighboursOf(const ActionGroup& group) {
        if (groupsIn_.empty()) {
            findGroupsOfContexts();
        }
        std::set<std::size_t> places;
        ActionGroup around;
        for (const int id : group) {
            const std::string& context = shipped_.find(id)->context;
            for (const std::string& keyboard : {context, linkedContext(context)}) {
                for (const std::size_t place : groupsIn_[keyboard]) {
                    if (around.size() <= kLargestSearched && places.insert(place).second) {
                        around.insert(around.end(), groups_[place].begin(), groups_[place].end());
                    }
                }
            }
        }
        std::sort(around.begin(), around.end());
        return around;
    }

    void findGroupsOfContexts() {
        for (std::size_t place = 0; place < groups_.size(); ++place) {
            for (const int id : groups_[place]) {
                std::vector<std::size_t>& places = groupsIn_[shipped_.find(id)->context];
                // More than a search can take need not be known.
                if (places.size() <= kLargestSearched && (places.empty() || places.back() != place)) {
                    places.push_back(place);
                }
            }
        }
    }

    ActionState onlyOf(const ActionState& state, const ActionGroup& group) const {
        const std::set<int> members(group.begin(), group.end());
        ActionState part;
        for (const auto& [id, values] : state.values) {
            if (members.count(id) != 0) {
                part.values.emplace(id, values);
            }
        }
        for (const auto& [place, id] : state.holders) {
            if (members.count(id) != 0) {
                part.holders.emplace(place, id);
            }
        }
        return part;
    }

    void search(GroupPlan& plan) {
        const ActionState aim = onlyOf(aim_, plan.group);
        const auto lostKeysIn = [&](const ActionState& loaded) {
            return among(differentKeys(aim, onlyOf(loaded, plan.group)), plan.group);
        };
        const Score score = [&](const ActionState& loaded) {
            return plan.group.size() - allLost(plan.group, lostKeysIn(loaded)).size();
        };
        const ActionSearch searched(shipped_, aim_, plan.group);
        std::optional<ActionEntries> found = searched.best(score, plan.group.size() - plan.lost.size(), loads_);
        if (!found) {
            return;
        }
        catalogue_.loadAndEdit(shipped_.text(), [&](ActionCatalogue& catalogue) { applyEntries(catalogue, *found); });
        plan.lostKeys = among(differentKeys(aim_, stateOf(catalogue_)), plan.group);
        plan.lost = allLost(plan.group, plan.lostKeys);
        plan.keys = *std::move(found);
        plan.plain = false;
    }

    /// The groups that need no order come first, in that of the ids.
    ActionEntries allEntries() const {
        std::map<std::pair<std::size_t, int>, ActionEntry> plain;
        ActionEntries ordered;
        for (const GroupPlan& plan : plans_) {
            const ActionEntries flags = menuEntries(shipped_, aim_, plan.group, plan.lostKeys);
            if (!plan.plain) {
                ordered.insert(ordered.end(), plan.keys.begin(), plan.keys.end());
                ordered.insert(ordered.end(), flags.begin(), flags.end());
                continue;
            }
            for (const ActionEntry& entry : plan.keys) {
                plain[{shipped_.find(entry.id)->depth, entry.id}] = entry;
            }
            for (const ActionEntry& entry : flags) {
                ActionEntry& both = plain[{shipped_.find(entry.id)->depth, entry.id}];
                both.id = entry.id;
                both.inMenu = entry.inMenu;
            }
        }
        ActionEntries entries;
        for (auto& [place, entry] : plain) {
            entries.push_back(std::move(entry));
        }
        entries.insert(entries.end(), std::make_move_iterator(ordered.begin()), std::make_move_iterator(ordered.end()));
        return entries;
    }

    std::vector<NotRestored> missing(const ActionEntries& entries) {
        catalogue_.load(shipped_.text(), userTextOf(entries));
        const ActionState reached = stateOf(catalogue_);
        std::set<int> ids = differentKeys(aim_, reached);
        const std::set<int> flags = differentFlags(aim_, reached);
        ids.insert(flags.begin(), flags.end());
        std::vector<NotRestored> named;
        for (const int id : ids) {
            named.push_back(obstacleOf(shipped_, aim_, reached, id));
        }
        return named;
    }

    const ShippedActions& shipped_;
    const ActionState& aim_;
    const actions::ObserverRegistry nobody_;
    ActionCatalogue catalogue_{nobody_};
    std::vector<ActionGroup> groups_;
    std::map<std::string, std::vector<std::size_t>> groupsIn_;
    std::vector<GroupPlan> plans_;
    std::size_t loads_;
};

}  // namespace

AimPlan planAim(const ShippedActions& shipped, const ActionState& aim, std::size_t searchLoads) {
    return AimPlanner(shipped, aim, searchLoads).plan();
}

}  // namespace zelutil::host
