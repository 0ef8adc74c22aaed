#ifndef ZELUTIL_TESTS_ACTIONS_STEAL_SHORTCUT_H
#define ZELUTIL_TESTS_ACTIONS_STEAL_SHORTCUT_H

#include <zelutil/actions/action_manager.h>

#include <string>

/// Opens the one private operation that has no caller.
struct UCPActionManagerTestPeer {
    static bool steal(int id, const std::string& shortcut) {
        return UCPActionManager::instance().stealShortcut(id, shortcut);
    }
};

#endif
