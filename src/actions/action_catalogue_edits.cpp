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
    if (shortcutTakenBy(id, shortcut) != 0) {
        return false;
    }
    Action* const action = findForEdit(id);
    if (action == nullptr) {
        return false;
    }
    if (action->first->bound != shortcut) {
        spreadShortcut(id, rebind(*action, id, shortcut), shortcut);
    }
    return true;
}

/// Gives the action itself the shortcut and answers the one before.
std::string ActionCatalogue::rebind(Action& action, int id, const std::string& shortcut) {
    auto& holders = action.context->holders;
    std::string before = std::exchange(action.first->bound, shortcut);
    // Kept deliberately: the entry goes even when another action holds it, as where a text ships a shortcut twice.
    holders.erase(before);
    if (!shortcut.empty()) {
        // Kept deliberately: an entry that is there stays with its holder, who is of the family or, at a theft, has a
        // parent that had no shortcut to lose.
        holders.try_emplace(shortcut, Holder{action.command, id, action.parentId});
    }
    setValue(action.shortcut, shortcut);
    return before;
}

void ActionCatalogue::spreadShortcut(int id, std::string before, const std::string& shortcut) {
    const auto change = [&](int child) -> std::optional<std::string> {
        Action* const action = findForEdit(child);
        if (action == nullptr || action->first->bound == shortcut || shortcutTakenBy(child, shortcut) != 0) {
            return std::nullopt;
        }
        return rebind(*action, child, shortcut);
    };
    const auto finish = [&](int changed, const std::string& oldShortcut) {
        modified_ = true;
        observers_.notifyShortcut(changed, oldShortcut, shortcut);
    };
    cascade(*this, id, std::move(before), change, finish);
}

int ActionCatalogue::topLevelAbove(int id) const {
    // A way up that is longer than there are actions goes round in a circle.
    for (std::size_t steps = 0; steps < tables_->actions.size(); ++steps) {
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
    const std::string before = action->first->bound;
    if (before == shortcut) {
        return true;
    }
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
    rebind(*action, top, shortcut);
    spreadShortcut(top, before, shortcut);
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
