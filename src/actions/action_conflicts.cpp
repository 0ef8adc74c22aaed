// The conflict rules: which action refuses a shortcut to which.
//
// A shortcut has one holder per context. Whether an action may have a shortcut is asked of the action and of all below
// it, since children follow their parent. In the examples "1 board" is action 1 in the context "board", and "1 > 2"
// makes 2 a child of 1.
//
//  1. Another context is another keyboard: 1 board F1, 2 panel. F1 is free for 2.
//  2. Linked contexts ask each other: 7 ucpedit, 9 brisk3d F1. F1 is taken for 7, by 9.
//  3. Parent and child share: 1 board > 2 board F1. F1 is free for 1, and when 1 takes it, 2 follows.
//  4. A grandparent is another action: 1 board F1 > 2 panel > 3 board. F1 is taken for 3, by 1; so it is for 2, which
//     could have it alone, because of 3.
//  5. A child refuses for its parent: 1 board > 2 panel, 3 panel F1. F1 is taken for 1, by 3.
//  6. Not the other way round: 1 board > 2 panel, 3 board F1. F1 is free for 2; nobody asks for its parent.
//  7. The first refusal counts, an action before its children and children in the order of the text: 1 board > 2 panel
//     and 3 sheet, 4 sheet F1, 5 panel F1. F1 is taken for 1, by 5.
//  8. The question is asked again at each child on the way down, when those above it have changed: 1 board > 2 panel
//     and 3 panel. F1 is free for 1; 1 takes it, 2 follows, and then 2 is in the way of 3.
//
// tests/actions/action_edit_test.cpp has tests for them.
#include "actions/action_tables.h"

#include <algorithm>
#include <iterator>

namespace zelutil::actions {
namespace {

using Action = ActionCatalogue::Action;

/// Calls `visit` with the action and all below it, in the order in which they are asked, until it returns true.
template <typename Visit>
void visitFamily(const Action& asker, Visit visit) {
    std::vector<const Action*> pending;
    const Action* action = &asker;
    while (!visit(*action)) {
        // An action has one parent, so the only one that a circle of parents can lead back to is the first.
        std::copy_if(action->children.rbegin(), action->children.rend(), std::back_inserter(pending),
                     [&asker](const Action* child) { return child != &asker; });
        if (pending.empty()) {
            return;
        }
        action = pending.back();
        pending.pop_back();
    }
}

}  // namespace

/// Kept deliberately: only parent and child share a shortcut. A grandparent in the same context is another action, and
/// the child between them is refused what its own child may not have. Of two children in one context the first to get
/// the shortcut is in the way of the second.
int ActionCatalogue::Action::inTheWayIn(const Context* names, const std::string& wanted) const {
    const Holder* const holder = names == nullptr ? nullptr : names->holderOf(wanted);
    const bool own = holder == nullptr || sharesWith(holder->id, holder->parentId);
    return own ? 0 : holder->id;
}

int ActionCatalogue::Action::inTheWay(const std::string& wanted) const {
    const int here = inTheWayIn(context, wanted);
    return here != 0 ? here : inTheWayIn(context->linked, wanted);
}

std::vector<int> ActionCatalogue::Action::allInTheWay(const std::string& wanted) const {
    std::vector<int> all{inTheWayIn(context, wanted), inTheWayIn(context->linked, wanted)};
    all.erase(std::remove(all.begin(), all.end(), 0), all.end());
    return all;
}

std::optional<ActionCatalogue::Conflict> ActionCatalogue::firstConflict(int id, const std::string& shortcut,
                                                                        std::uint64_t& looks) const {
    const Action* const asker = find(id);
    if (asker == nullptr || shortcut.empty()) {
        return std::nullopt;
    }
    std::optional<Conflict> first;
    visitFamily(*asker, [&](const Action& action) {
        ++looks;
        if (const int holder = action.inTheWay(shortcut)) {
            first = Conflict{&action == asker ? id : action.id, holder};
        }
        return first.has_value();
    });
    return first;
}

std::vector<ActionCatalogue::Conflict> ActionCatalogue::conflicts(int id, const std::string& shortcut) const {
    const Action* const asker = find(id);
    std::vector<Conflict> all;
    if (asker == nullptr || shortcut.empty()) {
        return all;
    }
    visitFamily(*asker, [&](const Action& action) {
        for (const int holder : action.allInTheWay(shortcut)) {
            all.push_back({&action == asker ? id : action.id, holder});
        }
        return false;
    });
    return all;
}

int ActionCatalogue::shortcutTakenBy(int id, const std::string& shortcut) const {
    std::uint64_t looks = 0;
    const std::optional<Conflict> conflict = firstConflict(id, shortcut, looks);
    return conflict ? conflict->holder : 0;
}

}  // namespace zelutil::actions
