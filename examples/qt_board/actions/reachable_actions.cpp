#include "actions/reachable_actions.h"

#include <zelutil/actions/action_manager.h>

#include <QSet>
#include <QStringList>

#include "keys/key_text.h"

namespace viewer {

namespace {

bool isOffered(const UCPActionItem& item, const std::string& context) {
    if (item.context == context) {
        return true;
    }
    return item.context == kFallbackContext &&
           UCPActionManager::instance().getActionIdByCommand(context, item.command) == 0;
}

/// An action that shares its shortcut with another one of its context does not hold it and has no key.
bool holdsShortcut(const UCPActionItem& item, const QString& shortcut) {
    return UCPActionManager::instance().getActionIdByShortcut(item.context, shortcut.toStdString()) == item.id;
}

ReachableAction reachable(const UCPActionItem& item) {
    ReachableAction action;
    action.item = item;
    action.shortcut = shortcutOf(item);
    action.inMenu = isInMenu(item);
    if (holdsShortcut(item, action.shortcut)) {
        action.key = keyOf(action.shortcut).value_or(QKeySequence());
    }
    return action;
}

/// Leaves each key to one action, as Qt wants it: to the first of the editor's own context, or else to the first.
void makeKeysUnique(std::vector<ReachableAction>& actions, const std::string& context) {
    QSet<QString> taken;
    for (const bool isOwn : {true, false}) {
        for (ReachableAction& action : actions) {
            const QString key = textOf(action.key);
            if ((action.item.context == context) != isOwn || key.isEmpty()) {
                continue;
            }
            if (taken.contains(key)) {
                action.key = {};
            }
            taken.insert(key);
        }
    }
}

}  // namespace

QString shortcutOf(const UCPActionItem& item) {
    return QString::fromStdString(item.shortcut.overwritten ? item.shortcut.userValue : item.shortcut.defaultValue);
}

bool isInMenu(const UCPActionItem& item) { return item.rmb.overwritten ? item.rmb.userValue : item.rmb.defaultValue; }

std::vector<ReachableAction> reachableActions(const QString& context) {
    const std::string name = context.toStdString();
    std::vector<ReachableAction> actions;
    for (const UCPActionItem& item : UCPActionManager::instance().getAllActions()) {
        if (item.id > 0 && isOffered(item, name)) {
            actions.push_back(reachable(item));
        }
    }
    makeKeysUnique(actions, name);
    return actions;
}

QStringList shortcutsWithoutKey() {
    QStringList sentences;
    for (const UCPActionItem& item : UCPActionManager::instance().getAllActions()) {
        const QString shortcut = shortcutOf(item);
        if (!keyOf(shortcut)) {
            sentences << QStringLiteral("The shortcut \"%1\" of \"%2\" makes no key. It is kept, and no key runs it.")
                             .arg(shortcut, QString::fromStdString(item.name));
        }
    }
    return sentences;
}

}  // namespace viewer
