#include "host/action_aim_plan.h"

#include "host/action_key_plan.h"
#include "host/action_menu_plan.h"
#include "host/action_obstacles.h"
#include "host/action_search.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <unordered_map>

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
    LostActions lost;
};

/// Plans one aim, group by group.
class AimPlanner {
public:
    AimPlanner(const ShippedActions& shipped, const ActionState& aim, const ActionsKnown& known,
               std::size_t searchLoads)
        : shipped_(shipped), aim_(aim), judge_(shipped, aim, known), loads_(searchLoads) {}

    AimPlan plan(const ActionEntries& inFile) {
        findGroups();
        for (const Effort effort : kEfforts) {
            tryAll([&](ActionCatalogue& catalogue,
                       const ActionGroup& group) { return editTowards(catalogue, shipped_, aim_, group, effort); },
                   effort == Effort::Plain);
        }
        tryFile(inFile);
        searchAll();
        AimPlan plan;
        plan.entries = allEntries();
        plan.notRestored = notRestoredBy(shipped_, aim_, plan.entries);
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
                plan.group = group;
                plan.lost = judge_.lostOf(group, shipped_.loaded(), keys);
                plans_.push_back(std::move(plan));
            }
        }
    }

    /// Returns the edits of one group.
    using EditGroup = std::function<ActionEntries(ActionCatalogue&, const ActionGroup&)>;

    void tryAll(const EditGroup& edit, bool plain) {
        std::vector<GroupPlan*> open;
        for (GroupPlan& plan : plans_) {
            if (judge_.isOpen(plan.lost)) {
                open.push_back(&plan);
            }
        }
        if (open.empty()) {
            return;
        }
        std::vector<ActionEntries> entries;
        catalogue_.loadAndEdit(shipped_.text(), [&](ActionCatalogue& catalogue) {
            for (const GroupPlan* const plan : open) {
                entries.push_back(edit(catalogue, plan->group));
            }
        });
        const ActionState reached = stateOf(catalogue_);
        const std::set<int> different = differentKeys(aim_, reached);
        for (std::size_t place = 0; place < open.size(); ++place) {
            GroupPlan& plan = *open[place];
            LostActions lost = judge_.lostOf(plan.group, reached, different);
            if (lost.loss < plan.lost.loss) {
                plan.lost = std::move(lost);
                plan.keys = std::move(entries[place]);
                plan.plain = plain;
            }
        }
    }

    /// Tries the entries that the file has: what an earlier plan found need not be found again.
    void tryFile(const ActionEntries& inFile) {
        if (inFile.empty()) {
            return;
        }
        std::unordered_map<int, std::size_t> groupOf;
        for (std::size_t place = 0; place < groups_.size(); ++place) {
            for (const int id : groups_[place]) {
                groupOf[id] = place;
            }
        }
        std::map<std::size_t, ActionEntries> byGroup;
        for (const ActionEntry& entry : inFile) {
            const auto found = groupOf.find(entry.id);
            if (found != groupOf.end() && entry.shortcut) {
                byGroup[found->second].push_back({entry.id, entry.shortcut, std::nullopt});
            }
        }
        tryAll(
            [&](ActionCatalogue& catalogue, const ActionGroup& group) {
                ActionEntries entries = byGroup[groupOf[group.front()]];
                applyEntries(catalogue, entries);
                return entries;
            },
            false);
    }

    void searchAll() {
        for (GroupPlan& plan : plans_) {
            searchIfSmall(plan);
            if (judge_.isOpen(plan.lost)) {
                searchWithNeighbours(plan);
            }
        }
    }

    void searchIfSmall(GroupPlan& plan) {
        if (plan.group.size() <= kLargestSearched && judge_.isOpen(plan.lost)) {
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
                joined.lost = judge_.joined(around, std::move(joined.lost), other.lost);
            }
        }
        const Loss loss = joined.lost.loss;
        search(joined);
        if (joined.lost.loss < loss) {
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
        const Score score = [&](const ActionState& loaded) {
            return judge_.lostOf(plan.group, loaded, differentKeys(aim, onlyOf(loaded, plan.group)))
                .loss.rank(kLargestSearched);
        };
        const ActionSearch searched(shipped_, aim_, plan.group);
        std::optional<ActionEntries> found = searched.best(score, plan.lost.loss.rank(kLargestSearched), loads_);
        if (!found) {
            return;
        }
        catalogue_.loadAndEdit(shipped_.text(), [&](ActionCatalogue& catalogue) { applyEntries(catalogue, *found); });
        const ActionState reached = stateOf(catalogue_);
        plan.lost = judge_.lostOf(plan.group, reached, differentKeys(aim_, reached));
        plan.keys = *std::move(found);
        plan.plain = false;
    }

    /// The groups that need no order come first, in that of the ids.
    ActionEntries allEntries() const {
        std::map<std::pair<std::size_t, int>, ActionEntry> plain;
        ActionEntries ordered;
        for (const GroupPlan& plan : plans_) {
            const ActionEntries flags = menuEntries(shipped_, aim_, plan.group, plan.lost.keys);
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

    const ShippedActions& shipped_;
    const ActionState& aim_;
    const LossJudge judge_;
    const actions::ObserverRegistry nobody_;
    ActionCatalogue catalogue_{nobody_};
    std::vector<ActionGroup> groups_;
    std::map<std::string, std::vector<std::size_t>> groupsIn_;
    std::vector<GroupPlan> plans_;
    std::size_t loads_;
};

}  // namespace

AimPlan planAim(const ShippedActions& shipped, const ActionState& aim, const ActionsKnown& known,
                const ActionEntries& inFile, std::size_t searchLoads) {
    return AimPlanner(shipped, aim, known, searchLoads).plan(inFile);
}

}  // namespace zelutil::host
