#include "host/action_loss.h"

#include "host/action_menu_plan.h"
#include "host/action_obstacles.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace zelutil::host {
namespace {

std::size_t commonCount(const std::set<int>& left, const std::set<int>& right) {
    const std::set<int>& fewer = left.size() < right.size() ? left : right;
    const std::set<int>& more = left.size() < right.size() ? right : left;
    return static_cast<std::size_t>(
        std::count_if(fewer.begin(), fewer.end(), [&](int id) { return more.count(id) != 0; }));
}

}  // namespace

std::size_t Loss::rank(std::size_t most) const {
    return ((settled * (most + 1) + chosenShortcuts) * (most + 1) + chosen) * (most + 1) + all;
}

bool operator<(const Loss& left, const Loss& right) {
    return std::tie(left.settled, left.chosenShortcuts, left.chosen, left.all) <
           std::tie(right.settled, right.chosenShortcuts, right.chosen, right.all);
}

std::set<int> among(const std::set<int>& ids, const ActionGroup& group) {
    std::set<int> found;
    std::copy_if(group.begin(), group.end(), std::inserter(found, found.end()),
                 [&](int id) { return ids.count(id) != 0; });
    return found;
}

LossJudge::LossJudge(const ShippedActions& shipped, const ActionState& aim, const ActionsKnown& known)
    : shipped_(shipped), aim_(aim), known_(known) {
    for (const ShippedAction& action : shipped.inOrder()) {
        const ActionValues& wanted = valuesOf(aim, action.id);
        const ActionValues& loaded = valuesOf(shipped.loaded(), action.id);
        if (action.parent < 1 && wanted != loaded) {
            chosen_.insert(action.id);
        }
        if (action.parent < 1 && wanted.shortcut != loaded.shortcut) {
            chosenShortcuts_.insert(action.id);
        }
    }
}

LostActions LossJudge::lostOf(const ActionGroup& group, const ActionState& reached,
                              const std::set<int>& different) const {
    LostActions lost;
    lost.keys = among(different, group);
    lost.all = lostFlags(shipped_, aim_, group, lost.keys);
    lost.all.insert(lost.keys.begin(), lost.keys.end());
    std::copy_if(lost.keys.begin(), lost.keys.end(), std::inserter(lost.chosenShortcuts, lost.chosenShortcuts.end()),
                 [&](int id) {
                     return chosenShortcuts_.count(id) != 0 &&
                            valuesOf(reached, id).shortcut != valuesOf(aim_, id).shortcut;
                 });
    weigh(group, lost);
    return lost;
}

LostActions LossJudge::joined(const ActionGroup& both, LostActions first, const LostActions& second) const {
    first.keys.insert(second.keys.begin(), second.keys.end());
    first.chosenShortcuts.insert(second.chosenShortcuts.begin(), second.chosenShortcuts.end());
    first.all.insert(second.all.begin(), second.all.end());
    weigh(both, first);
    return first;
}

void LossJudge::weigh(const ActionGroup& group, LostActions& lost) const {
    lost.loss.settled = isSettled(group) ? commonCount(lost.all, known_.settled) : 0;
    lost.loss.chosenShortcuts = lost.chosenShortcuts.size();
    lost.loss.chosen = commonCount(lost.all, chosen_);
    lost.loss.all = lost.all.size();
}

bool LossJudge::isSettled(const ActionGroup& group) const {
    return !known_.settled.empty() &&
           std::none_of(group.begin(), group.end(), [&](int id) { return known_.changedHere.count(id) != 0; });
}

bool LossJudge::isOpen(const LostActions& lost) const {
    return lost.loss.settled != 0 || lost.loss.chosen != 0 ||
           std::any_of(lost.all.begin(), lost.all.end(),
                       [&](int id) { return !followsAnother(shipped_, aim_, lost.all, id); });
}

}  // namespace zelutil::host
