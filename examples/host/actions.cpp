#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "chapters.h"

#include <zelutil/actions/action_manager.h>

namespace {

struct ContextCount {
    int actions = 0;
    int withShortcut = 0;
    int inMenu = 0;
    int children = 0;
};

const char* orNone(const std::string& shortcut) { return shortcut.empty() ? "(none)" : shortcut.c_str(); }

void showContexts(UCPActionManager& manager, const std::vector<UCPActionItem>& actions) {
    std::map<std::string, ContextCount> contexts;
    for (const UCPActionItem& action : actions) {
        ContextCount& count = contexts[action.context];
        ++count.actions;
        count.withShortcut += manager.getShortcut(action.id).empty() ? 0 : 1;
        count.children += action.parent_id > 0 ? 1 : 0;
    }
    for (const UCPActionItem& action : manager.getRMBMenuItems()) {
        ++contexts[action.context].inMenu;
    }
    std::printf("  %-12s %8s %14s %12s %9s\n", "context", "actions", "with shortcut", "in RMB menu", "children");
    for (const auto& [context, count] : contexts) {
        std::printf("  %-12s %8d %14d %12d %9d\n", context.c_str(), count.actions, count.withShortcut, count.inMenu,
                    count.children);
    }
}

void showChanges(UCPActionManager& manager, const std::vector<UCPActionItem>& actions) {
    std::puts("  what the user changed (a child follows its parent):");
    for (const UCPActionItem& action : actions) {
        if (!action.hasOverwrite()) {
            continue;
        }
        std::printf("  %5d %-12s %-22s shortcut %s -> %s, menu %s\n", action.id, action.context.c_str(),
                    action.command.c_str(), orNone(action.shortcut.defaultValue),
                    orNone(manager.getShortcut(action.id)),
                    action.rmb.overwritten ? (action.rmb.userValue ? "off -> on" : "on -> off") : "unchanged");
    }
}

void showCommand(UCPActionManager& manager, const char* context, const char* shortcut, bool fallback) {
    const std::string command = manager.getCommand(context, shortcut, fallback);
    std::printf("  %-9s in %-8s%s runs %s\n", shortcut, context, fallback ? " or ucpedit" : "           ",
                command.empty() ? "nothing" : command.c_str());
}

}  // namespace

void showActions() {
    UCPActionManager& manager = UCPActionManager::instance();
    const std::vector<UCPActionItem> actions = manager.getAllActions();
    std::printf("\nActions: %zu\n", actions.size());
    showContexts(manager, actions);
    showChanges(manager, actions);
    showCommand(manager, "ucpedit", "Ctrl+S", false);
    showCommand(manager, "brisk3d", "Ctrl+S", false);
    showCommand(manager, "brisk3d", "Ctrl+S", true);
}
