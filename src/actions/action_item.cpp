#include <zelutil/actions/action_item.h>

UCPActionItem::UCPActionItem(int actionId, int parentId, const std::string& displayName, const std::string& iconName,
                             const std::string& contextName, const std::string& commandText,
                             const std::string& defaultShortcut, bool inMenu)
    : id(actionId), parent_id(parentId), name(displayName), icon(iconName), context(contextName), command(commandText) {
    shortcut.defaultValue = defaultShortcut;
    rmb.defaultValue = inMenu;
}

bool UCPActionItem::hasOverwrite() const { return shortcut.overwritten || rmb.overwritten; }
