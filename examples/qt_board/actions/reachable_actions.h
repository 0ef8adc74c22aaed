#ifndef QT_BOARD_ACTIONS_REACHABLE_ACTIONS_H
#define QT_BOARD_ACTIONS_REACHABLE_ACTIONS_H

#include <zelutil/actions/action_item.h>

#include <QKeySequence>
#include <QString>
#include <vector>

namespace viewer {

/// The context whose actions are there in every editor that has none of its own for the command.
inline constexpr const char* kFallbackContext = "ucpedit";

/// An action as an editor offers it.
struct ReachableAction {
    UCPActionItem item;
    /// The shortcut as its text; empty for none.
    QString shortcut;
    /// The key that runs the action in the editor; empty where there is none, where the text makes no key, and where
    /// another action of the editor has it.
    QKeySequence key;
    bool inMenu = false;
};

/// Returns what an editor of that context offers, ascending by id: the actions of the context, and those of the
/// fallback context whose command the context does not have.
std::vector<ReachableAction> reachableActions(const QString& context);

/// Returns a sentence for each action whose shortcut makes no key.
QStringList shortcutsWithoutKey();

/// Returns the action's shortcut in force, and whether it is in the right-mouse-button menu.
QString shortcutOf(const UCPActionItem& item);
bool isInMenu(const UCPActionItem& item);

}  // namespace viewer

#endif
