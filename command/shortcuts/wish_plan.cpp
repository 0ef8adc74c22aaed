#include "command/shortcuts/wish_plan.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "command/shortcuts/break_circles.h"
#include "command/shortcuts/plain_wishes.h"
#include "command/shortcuts/wish_attempt.h"
#include "host/action_families.h"
#include "host/action_restore.h"
#include "host/action_state.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;
using Outcome = WishPlan::Outcome;

/// Returns the user's text that brings about what is in force. That of the last load does, unless something was edited
/// since.
std::string userTextOfNow(const ActionCatalogue& current) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue loaded(nobody);
    loaded.load(current.texts().defaults, current.texts().user);
    const host::ActionState now = host::stateOf(current);
    const host::ActionState then = host::stateOf(loaded);
    const bool isAsLoaded = now.values == then.values && now.holders == then.holders;
    return isAsLoaded ? current.texts().user : host::planActions(current, {}, std::nullopt).text;
}

class WishPlanning {
public:
    WishPlanning(const ActionCatalogue& current, const std::vector<KeyWish>& wishes)
        : shipped_(current.texts().defaults), userText_(userTextOfNow(current)), wishes_(wishes) {
        for (const KeyWish& wish : wishes) {
            wished_[wish.action] = wish.shortcut;
        }
    }

    WishPlan run() {
        const Attempt before(shipped_, userText_, wishes_);
        isPlain_ = arePlain(before.catalogue(), shipped_, tops());
        noteObstacles(before);
        return plan_.inTheWay.empty() ? search(before) : impossible(before);
    }

private:
    std::set<int> tops() const {
        std::set<int> tops;
        for (const auto& [id, shortcut] : wished_) {
            tops.insert(id);
        }
        return tops;
    }

    /// Notes all who are in the way of wishes for good. Plain families can all lose what they have, and then nobody is
    /// in the way but those without a wish and those who are to have the same.
    void noteObstacles(const Attempt& before) {
        if (leaveStrangersAlone(before.catalogue(), shipped_, tops())) {
            noteStrangers(before);
        }
        if (isPlain_ && haveAllFollowed(before.catalogue(), shipped_, tops())) {
            noteClashes(before);
        }
    }

    void noteStrangers(const Attempt& before) {
        forEachObstacle(before, [&](const InTheWay& one, int) {
            if (!isMoved(one.holder)) {
                plan_.inTheWay.push_back(one);
            }
        });
    }

    void noteClashes(const Attempt& before) {
        std::vector<KeyWish> inOrder = wishes_;
        std::stable_partition(inOrder.begin(), inOrder.end(),
                              [&](const KeyWish& wish) { return isGranted(before.catalogue(), wish); });
        // Linked contexts may be shipped with one shortcut, which both have then.
        const std::set<int> open = idsOf(before.open());
        const std::vector<InTheWay> clashes = clashesOf(inOrder, shipped_);
        std::copy_if(clashes.begin(), clashes.end(), std::back_inserter(plan_.inTheWay),
                     [&](const InTheWay& one) { return open.count(one.action) != 0; });
    }

    bool isMoved(int id) const { return wished_.count(shipped_.topAbove(id)) != 0; }

    /// Has more and more actions lose what they have, until all wishes can be granted or nobody is left who could make
    /// way.
    WishPlan search(const Attempt& before) {
        const std::set<int> bound = boundAlready(before);
        std::set<int> lost = bound;
        while (true) {
            Attempt attempt(shipped_, userText_, wishes_);
            attempt.run(lost);
            if (attempt.open().empty()) {
                return found(before, attempt, lost.size());
            }
            const std::set<int> more = whoCouldMakeWay(attempt);
            const std::size_t size = lost.size();
            lost.insert(more.begin(), more.end());
            if (lost.size() == size) {
                return unknown(attempt);
            }
            isFewest_ = isFewest_ && size == 0;
        }
    }

    WishPlan found(const Attempt& before, const Attempt& after, std::size_t lost) {
        const std::size_t open = before.open().size();
        plan_.edits = after.edits();
        plan_.isMinimal = plan_.edits.size() == open || (isPlain_ && isFewest_ && plan_.edits.size() == open + lost);
        tellAfter(before, after);
        return std::move(plan_);
    }

    /// Returns those that are bound to what they wish for and do not have it: giving it to them changes nothing, unless
    /// they lose it first.
    static std::set<int> boundAlready(const Attempt& attempt) {
        std::set<int> ids;
        for (const KeyWish& wish : attempt.open()) {
            const ActionCatalogue::Action* const action = attempt.catalogue().find(wish.action);
            if (action != nullptr && !wish.shortcut.empty() && action->boundTo() == wish.shortcut) {
                ids.insert(wish.action);
            }
        }
        return ids;
    }

    /// Calls `call` with everybody in the way of an open wish, and the topmost action above that one.
    template <typename Call>
    void forEachObstacle(const Attempt& attempt, Call call) const {
        for (const KeyWish& wish : attempt.open()) {
            for (const auto& [asked, holder] : attempt.catalogue().conflicts(wish.action, wish.shortcut)) {
                call(InTheWay{wish.action, wish.shortcut, asked, holder}, shipped_.topAbove(holder));
            }
        }
    }

    /// Returns the fewest that break all circles in which open wishes wait for each other. A family whose wish is
    /// granted may still hold what it has had before, where one of it could not follow: it can lose that.
    std::set<int> whoCouldMakeWay(const Attempt& attempt) {
        const std::set<int> open = idsOf(attempt.open());
        Waiting waiting;
        std::set<int> rest;
        forEachObstacle(attempt, [&](const InTheWay& one, int top) {
            if (open.count(top) != 0) {
                waiting[one.action].insert(top);
            } else if (const auto wish = wished_.find(top); wish != wished_.end() && wish->second != one.shortcut) {
                rest.insert(top);
            }
        });
        const Breaks breaks = breakCircles(waiting, kMostBreaks);
        isFewest_ = isFewest_ && breaks.isFewest;
        rest.insert(breaks.ids.begin(), breaks.ids.end());
        return rest;
    }

    static std::set<int> idsOf(const std::vector<KeyWish>& wishes) {
        std::set<int> ids;
        for (const KeyWish& wish : wishes) {
            ids.insert(wish.action);
        }
        return ids;
    }

    WishPlan impossible(const Attempt& before) {
        plan_.outcome = Outcome::Impossible;
        return withoutThoseInVain(before);
    }

    /// Those who could not make way are in the way, as far as is known.
    WishPlan unknown(const Attempt& attempt) {
        plan_.outcome = Outcome::Unknown;
        const std::set<int> open = idsOf(attempt.open());
        forEachObstacle(attempt, [&](const InTheWay& one, int top) {
            if (open.count(top) == 0) {
                plan_.inTheWay.push_back(one);
            }
        });
        return withoutThoseInVain(attempt);
    }

    WishPlan withoutThoseInVain(const Attempt& attempt) {
        const std::set<int> open = idsOf(attempt.open());
        std::multimap<int, InTheWay> waiting;
        forEachObstacle(attempt, [&](const InTheWay& one, int top) {
            if (open.count(top) != 0) {
                waiting.emplace(top, one);
            }
        });
        leaveOut(waiting);
        if (plan_.refused.empty()) {
            plan_.refused.assign(open.begin(), open.end());
        }
        return std::move(plan_);
    }

    /// Leaves out the wishes with somebody in the way who stays, and those that wait for the families of these. Two
    /// wishes for one shortcut are in each other's way only once no other has to go: that may be one of the two.
    void leaveOut(const std::multimap<int, InTheWay>& waiting) {
        const auto isForGood = [&](const InTheWay& one) { return !isMoved(one.holder); };
        const bool any = std::any_of(plan_.inTheWay.begin(), plan_.inTheWay.end(), isForGood);
        std::set<int> left;
        std::vector<int> pending;
        const auto leave = [&](const InTheWay& one) {
            plan_.becauseOf.push_back(one);
            if (left.insert(one.action).second) {
                pending.push_back(one.action);
            }
        };
        for (const InTheWay& one : plan_.inTheWay) {
            if (!any || isForGood(one)) {
                leave(one);
            }
        }
        while (!pending.empty()) {
            const auto [begin, end] = waiting.equal_range(pending.back());
            pending.pop_back();
            std::for_each(begin, end, [&](const auto& entry) { leave(entry.second); });
        }
        plan_.refused.assign(left.begin(), left.end());
    }

    void tellAfter(const Attempt& before, const Attempt& after) {
        std::map<int, SideEffect> effects;
        const auto note = [&](const Attempt& one, const Attempt& other, std::vector<std::string> SideEffect::*list) {
            one.catalogue().forEachHolder([&](std::string_view context, const std::string& shortcut, int id) {
                if (!isMoved(id) && other.catalogue().idByShortcut(context, shortcut) != id) {
                    effects[id].action = id;
                    (effects[id].*list).push_back(shortcut);
                }
            });
        };
        note(before, after, &SideEffect::lost);
        note(after, before, &SideEffect::gained);
        for (auto& [id, effect] : effects) {
            std::sort(effect.lost.begin(), effect.lost.end());
            std::sort(effect.gained.begin(), effect.gained.end());
            plan_.sideEffects.push_back(std::move(effect));
        }
    }

    host::ShippedActions shipped_;
    std::string userText_;
    const std::vector<KeyWish>& wishes_;
    /// The wishes by action.
    std::map<int, std::string> wished_;
    bool isPlain_ = false;
    bool isFewest_ = true;
    WishPlan plan_;
};

}  // namespace

WishPlan planWishes(const ActionCatalogue& current, const std::vector<KeyWish>& wishes) {
    WishPlan plan = WishPlanning(current, wishes).run();
    if (plan.outcome != Outcome::Unknown) {
        return plan;
    }
    // If members of a family are in each other's way, the order may decide.
    const std::vector<KeyWish> reversed(wishes.rbegin(), wishes.rend());
    WishPlan other = WishPlanning(current, reversed).run();
    return other.outcome == Outcome::Possible ? other : plan;
}

std::vector<host::NotRestored> notRestoredAfter(const ActionCatalogue& current, const std::vector<KeyWish>& edits) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue after(nobody);
    after.load(current.texts().defaults, userTextOfNow(current));
    for (const KeyWish& edit : edits) {
        after.updateShortcut(edit.action, edit.shortcut);
    }
    return host::planActions(after, {}, std::nullopt).notRestored;
}

PartialPlan planWhatCanBe(const ActionCatalogue& current, std::vector<KeyWish> wishes) {
    PartialPlan partial;
    while (true) {
        partial.plan = planWishes(current, wishes);
        const WishPlan& plan = partial.plan;
        if (plan.outcome == Outcome::Possible) {
            return partial;
        }
        partial.inTheWay.insert(partial.inTheWay.end(), plan.becauseOf.begin(), plan.becauseOf.end());
        partial.refused.insert(partial.refused.end(), plan.refused.begin(), plan.refused.end());
        const std::set<int> left(plan.refused.begin(), plan.refused.end());
        wishes.erase(std::remove_if(wishes.begin(), wishes.end(),
                                    [&](const KeyWish& wish) { return left.count(wish.action) != 0; }),
                     wishes.end());
    }
}

}  // namespace zelutil::shortcuts
