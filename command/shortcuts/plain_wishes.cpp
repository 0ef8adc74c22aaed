#include "command/shortcuts/plain_wishes.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "actions/overwritable.h"
#include "host/action_obstacles.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;

bool isBoundToWhatItShows(const ActionCatalogue::Action& action) {
    return action.boundTo() == actions::effectiveValue(action.shortcut);
}

class PlainFamilies {
public:
    PlainFamilies(const ActionCatalogue& catalogue, const host::ShippedActions& shipped)
        : catalogue_(catalogue), shipped_(shipped) {}

    /// Takes the action into account and returns whether its family is still plain.
    bool remainsPlain(const ActionCatalogue::Action& action) {
        return catalogue_.idByCommand(action.contextName(), action.command) == action.id && holdsItsOwn(action) &&
               (action.parentId > 0 ? isBoundAsParent(action) : isBoundToWhatItShows(action)) &&
               sharesNoKeyboard(action);
    }

private:
    bool isBoundAsParent(const ActionCatalogue::Action& action) const {
        return action.boundTo().empty() || catalogue_.find(action.parentId)->boundTo() == action.boundTo();
    }

    bool holdsItsOwn(const ActionCatalogue::Action& action) const {
        const std::string& bound = action.boundTo();
        const int holder = bound.empty() ? 0 : catalogue_.idByShortcut(action.contextName(), bound);
        return bound.empty() || (holder != 0 && action.sharesWith(holder, catalogue_.find(holder)->parentId));
    }

    bool sharesNoKeyboard(const ActionCatalogue::Action& action) {
        auto& others = onKeyboard_[{shipped_.topAbove(action.id), host::keyboardOf(action.contextName())}];
        others.push_back(&action);
        // Of three one is a stranger to another.
        return others.size() == 1 ||
               (others.size() == 2 && action.sharesWith(others.front()->id, others.front()->parentId));
    }

    const ActionCatalogue& catalogue_;
    const host::ShippedActions& shipped_;
    /// The actions seen so far, by the topmost action and the keyboard.
    std::map<std::pair<int, std::string_view>, std::vector<const ActionCatalogue::Action*>> onKeyboard_;
};

/// Returns whether the predicate is true of each action of these families.
template <typename Predicate>
bool isTrueOfAll(const ActionCatalogue& catalogue, const host::ShippedActions& shipped, const std::set<int>& tops,
                 Predicate predicate) {
    bool isTrue = true;
    catalogue.forEachAction([&](int id, const ActionCatalogue::Action& action) {
        if (action.id != 0 && tops.count(shipped.topAbove(id)) != 0) {
            isTrue = isTrue && predicate(action);
        }
    });
    return isTrue;
}

/// Returns a text with the families of the wishes alone and without shortcuts.
std::string bareText(const std::vector<KeyWish>& wishes, const host::ShippedActions& shipped) {
    std::set<int> tops;
    for (const KeyWish& wish : wishes) {
        tops.insert(wish.action);
    }
    std::vector<host::ShippedAction> members;
    for (const host::ShippedAction& action : shipped.inOrder()) {
        if (tops.count(shipped.topAbove(action.id)) != 0) {
            members.push_back(action);
            members.back().values.shortcut.clear();
        }
    }
    std::vector<const host::ShippedAction*> all;
    for (const host::ShippedAction& member : members) {
        all.push_back(&member);
    }
    return host::shippedTextOf(all);
}

/// Returns the wishes for a shortcut that another one is for, too.
std::vector<KeyWish> wishesForTheSame(const std::vector<KeyWish>& wishes) {
    std::map<std::string, int> counts;
    for (const KeyWish& wish : wishes) {
        counts[wish.shortcut] += wish.shortcut.empty() ? 0 : 1;
    }
    std::vector<KeyWish> same;
    for (const KeyWish& wish : wishes) {
        if (counts[wish.shortcut] > 1) {
            same.push_back(wish);
        }
    }
    return same;
}

}  // namespace

bool arePlain(const ActionCatalogue& catalogue, const host::ShippedActions& shipped, const std::set<int>& tops) {
    PlainFamilies families(catalogue, shipped);
    return isTrueOfAll(catalogue, shipped, tops,
                       [&](const ActionCatalogue::Action& action) { return families.remainsPlain(action); });
}

bool haveAllFollowed(const ActionCatalogue& catalogue, const host::ShippedActions& shipped, const std::set<int>& tops) {
    return isTrueOfAll(catalogue, shipped, tops, isBoundToWhatItShows);
}

bool leaveStrangersAlone(const ActionCatalogue& catalogue, const host::ShippedActions& shipped,
                         const std::set<int>& tops) {
    return isTrueOfAll(catalogue, shipped, tops, [&](const ActionCatalogue::Action& action) {
        const int holder = catalogue.idByShortcut(action.contextName(), action.boundTo());
        return holder == 0 || shipped.topAbove(holder) == shipped.topAbove(action.id);
    });
}

std::vector<InTheWay> clashesOf(const std::vector<KeyWish>& wishes, const host::ShippedActions& shipped) {
    const std::vector<KeyWish> same = wishesForTheSame(wishes);
    std::vector<InTheWay> clashes;
    if (same.empty()) {
        return clashes;
    }
    const actions::ObserverRegistry nobody;
    ActionCatalogue bare(nobody);
    bare.load(bareText(same, shipped), "");
    for (const KeyWish& wish : same) {
        const auto conflicts = bare.conflicts(wish.action, wish.shortcut);
        for (const auto& [asked, holder] : conflicts) {
            clashes.push_back({wish.action, wish.shortcut, asked, holder});
        }
        if (conflicts.empty()) {
            bare.updateShortcut(wish.action, wish.shortcut);
        }
    }
    return clashes;
}

}  // namespace zelutil::shortcuts
