#include "actions/shortcut_edits.h"

#include <zelutil/actions/action_manager.h>

#include "actions/reachable_actions.h"
#include "keys/key_holders.h"

namespace viewer {

ShortcutEdits::States ShortcutEdits::current() {
    States states;
    for (const UCPActionItem& item : UCPActionManager::instance().getAllActions()) {
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
            UCPActionManager::instance().updateShortcut(id, "");
        }
    }
    for (const auto& [id, state] : states) {
        UCPActionManager::instance().updateShortcut(id, state.shortcut);
        UCPActionManager::instance().updateRMBMenu(id, state.inMenu);
    }
}

void ShortcutEdits::remember() { before_ = current(); }

void ShortcutEdits::takeBack() { restore(before_); }

bool ShortcutEdits::areThere() const { return !(current() == before_); }

bool ShortcutEdits::assign(int id, const QString& shortcut) {
    return holdersOf(id, shortcut).empty() &&
           UCPActionManager::instance().updateShortcut(topOf(id), shortcut.toStdString());
}

bool ShortcutEdits::take(int id, const QString& shortcut) {
    const States before = current();
    for (const KeyHolder& holder : holdersOf(id, shortcut)) {
        UCPActionManager::instance().updateShortcut(topOf(holder.id), "");
    }
    const bool isGiven = assign(id, shortcut);
    if (!isGiven) {
        restore(before);
    }
    return isGiven;
}

bool ShortcutEdits::resetToShipped(int id) {
    const UCPActionItem item = UCPActionManager::instance().getAction(topOf(id)).second;
    UCPActionManager::instance().updateRMBMenu(item.id, item.rmb.defaultValue);
    return assign(id, QString::fromStdString(item.shortcut.defaultValue));
}

void ShortcutEdits::setInMenu(int id, bool inMenu) { UCPActionManager::instance().updateRMBMenu(topOf(id), inMenu); }

}  // namespace viewer
