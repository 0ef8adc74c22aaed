#include "actions/action_followers.h"
#include "actions/action_tables.h"
#include "actions/overwritable.h"

#include <optional>
#include <utility>

namespace zelutil::actions {
namespace {

/// Carries the change of action `id` down to its children, theirs and so on, in order, and calls `finish` for each
/// changed action after its children. `change` answers what `finish` needs of the state before, or nothing where the
/// action keeps what it has; the walk does not go on below it.
///
/// A circle of parents leads back to `id`, which has its change already and is not asked again: where an observer has
/// taken the change back meanwhile, the walk would never end.
template <typename Before, typename Change, typename Finish>
void cascade(const ActionCatalogue& catalogue, int id, Before before, Change change, Finish finish) {
    struct Level {
        int id;
        Before before;
        std::size_t nextChild;
    };
    std::vector<Level> open;
    open.push_back({id, std::move(before), 0});
    while (!open.empty()) {
        const std::vector<int>& children = catalogue.childIds(open.back().id);
        if (open.back().nextChild < children.size()) {
            const int child = children[open.back().nextChild++];
            std::optional<Before> childBefore = child == id ? std::nullopt : change(child);
            if (childBefore) {
                open.push_back({child, *std::move(childBefore), 0});
            }
            continue;
        }
        const Level done = std::move(open.back());
        open.pop_back();
        finish(done.id, done.before);
    }
}

}  // namespace

bool ActionCatalogue::updateShortcut(int id, const std::string& shortcut) {
    if (firstConflict(id, shortcut, work_.looks)) {
        return false;
    }
    Action* const action = findForEdit(id);
    if (action == nullptr) {
        return false;
    }
    if (action->binding->bound != shortcut) {
        changeShortcut(id, *action, shortcut);
    }
    return true;
}

/// Gives the action a shortcut that differs from what it is bound to and that nobody is in the way of.
void ActionCatalogue::changeShortcut(int id, Action& action, const std::string& shortcut) {
    Followers followers(*this, action, shortcut);
    spreadShortcut(id, rebind(id, action, shortcut, followers), shortcut, followers);
}

/// Takes from the action what it is bound to and gives it the shortcut. Returns what it was bound to.
std::string ActionCatalogue::rebind(int id, Action& action, const std::string& shortcut, Followers& followers) {
    std::string before = action.binding->bound;
    bind(id, action, shortcut, followers);
    // Kept deliberately: the entry goes even when another action holds it, as where a text ships a shortcut twice.
    action.context->holders.erase(before);
    return before;
}

/// Gives the action itself the shortcut. Where there is no memory for that, nothing has changed.
void ActionCatalogue::bind(int id, Action& action, const std::string& shortcut, Followers& followers) {
    std::string bound = shortcut;
    std::string value = shortcut;
    // Kept deliberately: an entry that is there stays with its holder, who is of the family or, at a theft, has a
    // parent that had no shortcut to lose.
    const bool holds =
        !shortcut.empty() &&
        action.context->holders.try_emplace(shortcut, Holder{action.command, id, action.parentId}).second;
    action.binding->bound = std::move(bound);
    setValue(action.shortcut, std::move(value));
    modified_ = true;
    ++work_.changes;
    if (holds) {
        followers.noteHolder(action);
    }
}

/// Has the actions below follow, and tells of every change after those below it.
void ActionCatalogue::spreadShortcut(int id, std::string before, const std::string& shortcut, Followers& followers) {
    const auto change = [&](int child) -> std::optional<std::string> {
        Action* const action = findForEdit(child);
        if (action == nullptr || action->binding->bound == shortcut || !followers.mayFollow(*action)) {
            return std::nullopt;
        }
        return rebind(child, *action, shortcut, followers);
    };
    const auto finish = [&](int changed, const std::string& oldShortcut) {
        modified_ = true;  // again: an observer may have loaded anew
        observers_.notifyShortcut(changed, oldShortcut, shortcut);
    };
    cascade(*this, id, std::move(before), change, finish);
}

int ActionCatalogue::topLevelAbove(int id) const {
    // A way up that is longer than there are actions goes round in a circle.
    for (std::size_t steps = 0; steps < tables_->actions.size() + 1; ++steps) {
        const Action* const action = find(id);
        if (action == nullptr) {
            return 0;
        }
        if (action->parentId < 1) {
            return id;
        }
        id = action->parentId;
    }
    return 0;
}

bool ActionCatalogue::stealShortcut(int id, const std::string& shortcut) {
    const int top = topLevelAbove(id);
    Action* action = findForEdit(top);
    if (action == nullptr) {
        return false;
    }
    std::string before = action->binding->bound;
    if (before == shortcut) {
        return true;
    }
    // Here and not again at the end: until then an observer may have given the entry to another action.
    action->context->holders.erase(before);
    const int holder = idByShortcut(action->context->name, shortcut);
    if (holder != 0 && holder != top) {
        // Goes no deeper: nobody holds the empty shortcut.
        stealShortcut(holder, std::string());
        action = findForEdit(top);
        if (action == nullptr) {
            return false;
        }
    }
    Followers followers(*this, *action, shortcut);
    bind(top, *action, shortcut, followers);
    spreadShortcut(top, std::move(before), shortcut, followers);
    return true;
}

/// Kept deliberately: a menu flag alone does not count as a modification.
void ActionCatalogue::updateMenu(int id, bool inMenu) {
    const auto change = [&](int changed) -> std::optional<bool> {
        Action* const action = findForEdit(changed);
        if (action == nullptr || effectiveValue(action->rmb) == inMenu) {
            return std::nullopt;
        }
        setValue(action->rmb, inMenu);
        return !inMenu;
    };
    const auto finish = [&](int changed, bool) { observers_.notifyMenu(changed, inMenu); };
    if (const std::optional<bool> before = change(id)) {
        cascade(*this, id, *before, change, finish);
    }
}

}  // namespace zelutil::actions
