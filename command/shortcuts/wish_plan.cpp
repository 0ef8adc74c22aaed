#include "command/shortcuts/wish_plan.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "actions/overwritable.h"
#include "command/shortcuts/break_circles.h"
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

/// Returns whether the action shows the shortcut and has it, alone or together with a child.
bool isGranted(const ActionCatalogue& catalogue, const KeyWish& wish) {
    const ActionCatalogue::Action* const action = catalogue.find(wish.action);
    if (action == nullptr || actions::effectiveValue(action->shortcut) != wish.shortcut) {
        return false;
    }
    if (wish.shortcut.empty()) {
        return true;
    }
    const int holder = catalogue.idByShortcut(action->contextName(), wish.shortcut);
    return holder == wish.action || (holder != 0 && catalogue.find(holder)->parentId == wish.action);
}

/// A copy of what is in force, in which wishes are granted as far as they can be.
class Attempt {
public:
    Attempt(const std::string& defaultsText, const std::string& userText, const std::vector<KeyWish>& wishes)
        : catalogue_(nobody_), wishes_(wishes) {
        catalogue_.load(defaultsText, userText);
    }

    const ActionCatalogue& catalogue() const { return catalogue_; }
    const std::vector<KeyWish>& edits() const { return edits_; }

    /// Returns the wishes that are not granted now.
    std::vector<KeyWish> open() const {
        std::vector<KeyWish> open;
        std::copy_if(wishes_.begin(), wishes_.end(), std::back_inserter(open),
                     [this](const KeyWish& wish) { return !isGranted(catalogue_, wish); });
        return open;
    }

    /// Takes away what these have, and then gives what can be given until nothing more can.
    void run(const std::set<int>& first) {
        std::for_each(first.begin(), first.end(), [this](int id) { edit({id, ""}); });
        // An edit can undo another one where a text ships a shortcut twice, so the rounds are counted.
        for (std::size_t round = 0; round <= wishes_.size(); ++round) {
            bool any = false;
            for (const KeyWish& wish : wishes_) {
                any = (!isGranted(catalogue_, wish) && give(wish)) || any;
            }
            if (!any) {
                return;
            }
        }
    }

private:
    bool give(const KeyWish& wish) { return catalogue_.shortcutTakenBy(wish.action, wish.shortcut) == 0 && edit(wish); }

    /// Returns whether that changed something.
    bool edit(const KeyWish& wish) {
        const std::uint64_t before = catalogue_.work().changes;
        catalogue_.updateShortcut(wish.action, wish.shortcut);
        const bool changed = catalogue_.work().changes != before;
        if (changed) {
            edits_.push_back(wish);
        }
        return changed;
    }

    actions::ObserverRegistry nobody_;
    ActionCatalogue catalogue_;
    const std::vector<KeyWish>& wishes_;
    std::vector<KeyWish> edits_;
};

class WishPlanning {
public:
    WishPlanning(const ActionCatalogue& current, const std::vector<KeyWish>& wishes)
        : shipped_(current.texts().defaults), userText_(userTextOfNow(current)), wishes_(wishes) {
        for (const KeyWish& wish : wishes) {
            tops_.insert(wish.action);
        }
    }

    WishPlan run() {
        const Attempt before(shipped_.text(), userText_, wishes_);
        isPlain_ = isPlain(before.catalogue());
        const std::size_t openBefore = before.open().size();
        const std::set<int> first = boundAlready(before);
        Attempt attempt(shipped_.text(), userText_, wishes_);
        attempt.run(first);
        const Waiting waiting = whoWaits(attempt);
        if (!plan_.inTheWay.empty()) {
            return refuse(attempt);
        }
        const Breaks breaks = breakCircles(waiting, kMostBreaks);
        std::set<int> all = breaks.ids;
        all.insert(first.begin(), first.end());
        Attempt second(shipped_.text(), userText_, wishes_);
        second.run(all);
        if (!second.open().empty()) {
            // Two wishes for one shortcut come to light once its holder has given way.
            whoWaits(second);
            return refuse(second);
        }
        plan_.edits = second.edits();
        plan_.isMinimal = plan_.edits.size() == openBefore ||
                          (isPlain_ && breaks.isFewest && plan_.edits.size() == openBefore + all.size());
        tellAfter(before, second);
        return std::move(plan_);
    }

private:
    /// Returns whether no action of the families with a wish shares its command with one before it, or is bound to a
    /// shortcut that a stranger or nobody holds. Where one is and leaves the shortcut, the holder loses it too.
    bool isPlain(const ActionCatalogue& catalogue) const {
        bool isPlain = true;
        catalogue.forEachAction([&](int id, const ActionCatalogue::Action& action) {
            if (action.id == 0 || tops_.count(shipped_.topAbove(id)) == 0) {
                return;
            }
            const std::string& bound = action.boundTo();
            const int holder = catalogue.idByShortcut(action.contextName(), bound);
            const bool isOwn =
                holder == id || holder == action.parentId || (holder != 0 && catalogue.find(holder)->parentId == id);
            isPlain = isPlain && catalogue.idByCommand(action.contextName(), action.command) == id &&
                      (bound.empty() || (holder != 0 && isOwn));
        });
        return isPlain;
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

    /// Returns which open wishes wait for which, and notes who is in the way without one.
    Waiting whoWaits(const Attempt& attempt) {
        const std::vector<KeyWish> open = attempt.open();
        std::set<int> openIds;
        for (const KeyWish& wish : open) {
            openIds.insert(wish.action);
        }
        Waiting waiting;
        for (const KeyWish& wish : open) {
            for (const auto& [asked, holder] : attempt.catalogue().conflicts(wish.action, wish.shortcut)) {
                const int top = shipped_.topAbove(holder);
                if (openIds.count(top) != 0) {
                    waiting[wish.action].insert(top);
                } else {
                    plan_.inTheWay.push_back({wish.action, wish.shortcut, asked, holder});
                }
            }
        }
        return waiting;
    }

    WishPlan refuse(const Attempt& attempt) {
        for (const KeyWish& wish : attempt.open()) {
            plan_.refused.push_back(wish.action);
        }
        plan_.outcome = isPlain_ && !plan_.inTheWay.empty() ? Outcome::Impossible : Outcome::Unknown;
        return std::move(plan_);
    }

    void tellAfter(const Attempt& before, const Attempt& after) {
        const std::set<int> different =
            host::differentKeys(host::stateOf(before.catalogue()), host::stateOf(after.catalogue()));
        std::copy_if(different.begin(), different.end(), std::back_inserter(plan_.sideEffects),
                     [this](int id) { return tops_.count(shipped_.topAbove(id)) == 0; });
    }

    host::ShippedActions shipped_;
    std::string userText_;
    const std::vector<KeyWish>& wishes_;
    std::set<int> tops_;
    bool isPlain_ = false;
    WishPlan plan_;
};

}  // namespace

WishPlan planWishes(const ActionCatalogue& current, const std::vector<KeyWish>& wishes) {
    return WishPlanning(current, wishes).run();
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
        if (partial.plan.outcome == Outcome::Possible) {
            return partial;
        }
        std::set<int> left;
        for (const InTheWay& one : partial.plan.inTheWay) {
            left.insert(one.action);
            partial.inTheWay.push_back(one);
        }
        if (left.empty()) {
            left.insert(partial.plan.refused.begin(), partial.plan.refused.end());
        }
        partial.refused.insert(partial.refused.end(), left.begin(), left.end());
        wishes.erase(std::remove_if(wishes.begin(), wishes.end(),
                                    [&](const KeyWish& wish) { return left.count(wish.action) != 0; }),
                     wishes.end());
    }
}

}  // namespace zelutil::shortcuts
