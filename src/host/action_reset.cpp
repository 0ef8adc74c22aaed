#include "host/action_reset.h"

#include "actions/overwritable.h"
#include "host/action_families.h"
#include "host/action_key_plan.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

ActionValues valuesOf(const ActionCatalogue::Action& action) {
    return {actions::effectiveValue(action.shortcut), actions::effectiveValue(action.rmb)};
}

int holderOf(const ActionState& state, const ActionState::Place& place) {
    const auto found = state.holders.find(place);
    return found == state.holders.end() ? 0 : found->second;
}

/// One reset, of some actions and all below them.
///
/// The edits are tried on a copy first. An action that does not come back by them is left out with all below it, and so
/// is one that would take something from an action that is not to be reset, until the rest comes back as a whole.
class Reset {
public:
    explicit Reset(ActionCatalogue& catalogue)
        : catalogue_(catalogue), shipped_(catalogue.texts().defaults), before_(stateOf(catalogue)) {}

    ActionsReset run(const std::vector<int>& ids) {
        collect(ids);
        setAims();
        setHolders();
        leaveOutWhatFails();
        edit(catalogue_);
        nameRefused(std::set<int>(ids.begin(), ids.end()));
        result_.touched.insert(standIns_.begin(), standIns_.end());
        result_.touched.insert(group_.begin(), group_.end());
        return std::move(result_);
    }

private:
    void collect(const std::vector<int>& ids) {
        wanted_ = withAllBelow(ids);
        for (const int id : wanted_) {
            (shipped_.find(id) == nullptr ? standIns_ : group_).push_back(id);
        }
        std::multimap<std::size_t, int> byDepth;
        for (const int id : group_) {
            byDepth.emplace(shipped_.find(id)->depth, id);
        }
        for (const auto& [depth, id] : byDepth) {
            byDepth_.push_back(id);
        }
    }

    /// Unknown ids are passed over.
    std::set<int> withAllBelow(std::vector<int> pending) const {
        std::set<int> all;
        while (!pending.empty()) {
            const int id = pending.back();
            pending.pop_back();
            if (catalogue_.find(id) != nullptr && all.insert(id).second) {
                const std::vector<int>& children = catalogue_.childIds(id);
                pending.insert(pending.end(), children.begin(), children.end());
            }
        }
        return all;
    }

    /// Parents come before their children, which may follow one that is not among them.
    void setAims() {
        aim_ = shipped_.loaded();
        for (const int id : byDepth_) {
            const int parent = shipped_.find(id)->parent;
            if (shipped_.find(parent) != nullptr && wanted_.count(parent) == 0) {
                const ActionValues values = valuesOf(*catalogue_.find(parent));
                for (const int follower : withAllBelow({id})) {
                    aim_.values[follower] = values;
                }
            }
        }
    }

    /// Has another action hold a shortcut that the text ships twice, where the one that gets it by a load does not hold
    /// it any more and is not to be reset.
    void setHolders() {
        std::set<ActionState::Place> given;
        for (const int id : group_) {
            const ActionState::Place place = placeOf(id);
            const int first = holderOf(shipped_.loaded(), place);
            const int now = holderOf(before_, place);
            const bool isLeft = first != id && wanted_.count(first) == 0 && now != first;
            if (isLeft && isKeyOfItsOwn(id) && (given.insert(place).second || now == id)) {
                aim_.holders[place] = id;
            }
        }
    }

    ActionState::Place placeOf(int id) const { return {shipped_.find(id)->context, valuesOf(aim_, id).shortcut}; }

    bool isInGroup(int id) const { return std::binary_search(group_.begin(), group_.end(), id); }

    /// Whether the action is to show a shortcut that it does not take over from a parent.
    bool isKeyOfItsOwn(int id) const { return shipped_.find(id)->parent == 0 && !placeOf(id).second.empty(); }

    /// Whether the action shows what it is to show, and holds that, if the one does not that holds it after a load.
    bool isBack(const ActionState& state, int id) const {
        const ActionState::Place place = placeOf(id);
        const int holder = holderOf(state, place);
        const bool holds = holder == id || (holderOf(aim_, place) != id && !isKeyOfItsOwn(id)) ||
                           (holderOf(shipped_.loaded(), place) != id && holderOf(shipped_.loaded(), place) == holder);
        return valuesOf(state, id).shortcut == place.second && holds;
    }

    void leaveOutWhatFails() {
        std::vector<int> failing;
        while (!group_.empty() && !(failing = failingIn(tried())).empty()) {
            const std::set<int> all = withAllBelow(std::move(failing));
            group_.erase(std::remove_if(group_.begin(), group_.end(), [&](int id) { return all.count(id) != 0; }),
                         group_.end());
        }
    }

    /// Returns the state after the edits, which the catalogue is spared.
    ActionState tried() const {
        const actions::ObserverRegistry nobody;
        ActionCatalogue copy(nobody);
        copy.becomeCopyOf(catalogue_);
        edit(copy);
        return stateOf(copy);
    }

    void edit(ActionCatalogue& catalogue) const {
        for (const int id : standIns_) {
            catalogue.updateShortcut(id, std::string());
        }
        editBack(catalogue, shipped_, aim_, group_);
        for (const int id : standIns_) {
            catalogue.updateMenu(id, false);
        }
        for (const int id : byDepth_) {
            if (isInGroup(id)) {
                catalogue.updateMenu(id, valuesOf(aim_, id).inMenu);
            }
        }
    }

    /// Returns the actions that do not come back or, where all do, those that harm others.
    std::vector<int> failingIn(const ActionState& after) const {
        std::vector<int> failing;
        std::copy_if(group_.begin(), group_.end(), std::back_inserter(failing),
                     [&](int id) { return !isBack(after, id); });
        if (failing.empty()) {
            for (const int id : differentKeys(before_, after)) {
                if (!mayChange(id, after)) {
                    addThoseThatMeet(id, after, failing);
                }
            }
        }
        return failing;
    }

    /// Whether the reset may leave the action as in this state, which is not the one that it was in.
    bool mayChange(int id, const ActionState& after) const {
        const bool isStandIn = shipped_.find(id) == nullptr;
        return wanted_.count(id) != 0 && (isStandIn || isInGroup(id) || isBack(after, id));
    }

    /// Adds those of the group that have to do with what another action loses or gets: all, where that is none.
    void addThoseThatMeet(int other, const ActionState& after, std::vector<int>& found) const {
        std::set<std::string> shortcuts{valuesOf(before_, other).shortcut, valuesOf(after, other).shortcut};
        for (const ActionState* const state : {&before_, &after}) {
            for (const auto& [place, id] : state->holders) {
                if (id == other) {
                    shortcuts.insert(place.second);
                }
            }
        }
        shortcuts.erase(std::string());
        const auto meets = [&](int id) {
            return shortcuts.count(catalogue_.find(id)->boundTo()) != 0 ||
                   shortcuts.count(valuesOf(aim_, id).shortcut) != 0 ||
                   shipped_.topAbove(id) == shipped_.topAbove(other);
        };
        const std::size_t before = found.size();
        std::copy_if(group_.begin(), group_.end(), std::back_inserter(found), meets);
        if (found.size() == before) {
            found.insert(found.end(), group_.begin(), group_.end());
        }
    }

    /// Names no child that was not asked for and whose parent is named.
    void nameRefused(const std::set<int>& asked) {
        const ActionState now = stateOf(catalogue_);
        std::set<int> refused;
        std::copy_if(byDepth_.begin(), byDepth_.end(), std::inserter(refused, refused.end()),
                     [&](int id) { return !isBack(now, id); });
        for (const int id : refused) {
            if (asked.count(id) != 0 || refused.count(shipped_.find(id)->parent) == 0) {
                const std::string& shortcut = valuesOf(aim_, id).shortcut;
                result_.refused.push_back(refusal(id, shortcut, catalogue_.shortcutTakenBy(id, shortcut)));
            }
        }
    }

    /// Two actions of one context that are shipped with one shortcut cannot both be given it.
    NotRestored refusal(int id, const std::string& shortcut, int holder) const {
        NotRestored refused;
        refused.action = id;
        refused.obstacle = areShippedAlike(id, holder) ? Obstacle::ShippedTwice : Obstacle::TakenByAnother;
        refused.otherAction = holder;
        refused.text = "Action " + labelOf(id) +
                       (shortcut.empty() ? " does not lose its shortcut again"
                                         : " does not get back the shortcut \"" + shortcut + '"') +
                       ": ";
        refused.text += holder == 0 ? std::string("an action below it cannot follow, or another action would lose one.")
                                    : "action " + labelOf(holder) + " has it.";
        return refused;
    }

    /// Returns the id with the context and the command, by which people know an action.
    std::string labelOf(int id) const {
        const ShippedAction* const action = shipped_.find(id);
        return action == nullptr ? std::to_string(id)
                                 : std::to_string(id) + " (" + action->context + ", " + action->command + ')';
    }

    bool areShippedAlike(int id, int other) const {
        const ShippedAction* const left = shipped_.find(id);
        const ShippedAction* const right = shipped_.find(other);
        return left != nullptr && right != nullptr && left->context == right->context &&
               left->values.shortcut == right->values.shortcut;
    }

    ActionCatalogue& catalogue_;
    ShippedActions shipped_;
    ActionState before_;
    ActionState aim_;
    /// All that are to be reset.
    std::set<int> wanted_;
    /// Holds those of them that the text ships, parents first.
    std::vector<int> byDepth_;
    /// Holds those of these that come back, ascending.
    ActionGroup group_;
    std::vector<int> standIns_;
    ActionsReset result_;
};

}  // namespace

ActionsReset resetActions(ActionCatalogue& catalogue, const std::vector<int>& ids) { return Reset(catalogue).run(ids); }

ActionsReset resetAllActions(ActionCatalogue& catalogue) {
    std::vector<int> ids;
    catalogue.forEachAction([&](int id, const ActionCatalogue::Action&) { ids.push_back(id); });
    return resetActions(catalogue, ids);
}

}  // namespace zelutil::host
