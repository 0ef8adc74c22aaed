#include "actions/shortcut_edits.h"

#include <zelutil/actions/action_manager.h>

#include "actions/reachable_actions.h"
#include "keys/key_holders.h"

namespace viewer {

namespace {

UCPActionManager& manager() { return UCPActionManager::instance(); }

}  // namespace

ShortcutEdits::States ShortcutEdits::current() {
    States states;
    for (const UCPActionItem& item : manager().getAllActions()) {
        if (item.id > 0 && topOf(item.id) == item.id) {
            states[item.id] = {shortcutOf(item).toStdString(), isInMenu(item)};
        }
    }
    return states;
}

/// Takes away first what is otherwise, so that no key that is to move is held.
void ShortcutEdits::restore(const States& states) {
    const States now = current();
    for (const auto& [id, state] : states) {
        if (now.at(id).shortcut != state.shortcut) {
            manager().updateShortcut(id, "");
        }
    }
    for (const auto& [id, state] : states) {
        manager().updateShortcut(id, state.shortcut);
        manager().updateRMBMenu(id, state.inMenu);
    }
}

void ShortcutEdits::remember() { before_ = current(); }

void ShortcutEdits::takeBack() { restore(before_); }

bool ShortcutEdits::areThere() const { return !(current() == before_); }

bool ShortcutEdits::assign(int id, const QString& shortcut) {
    return holdersOf(id, shortcut).empty() && manager().updateShortcut(topOf(id), shortcut.toStdString());
}

bool ShortcutEdits::take(int id, const QString& shortcut) {
    const States before = current();
    for (const KeyHolder& holder : holdersOf(id, shortcut)) {
        manager().updateShortcut(topOf(holder.id), "");
    }
    const bool isGiven = assign(id, shortcut);
    if (!isGiven) {
        restore(before);
    }
    return isGiven;
}

bool ShortcutEdits::resetToShipped(int id) {
    const UCPActionItem item = manager().getAction(topOf(id)).second;
    manager().updateRMBMenu(item.id, item.rmb.defaultValue);
    return assign(id, QString::fromStdString(item.shortcut.defaultValue));
}

void ShortcutEdits::setInMenu(int id, bool inMenu) { manager().updateRMBMenu(topOf(id), inMenu); }

}  // namespace viewer
