// The C interface: actions and their edits.
#include <zelutil/actions/action_manager.h>
#include <zelutil/host/actions.h>
#include <zelutil/host/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/c_api_guard.h"
#include "host/c_api_records.h"
#include "host/current_preferences.h"

namespace c = zelutil::host::c;
namespace host = zelutil::host;

namespace {

using ActionList = c::HandedOut<zelutil_action_list, c::Actions>;

/// The actions, which the first use of the preferences fills.
UCPActionManager& filledManager() {
    if (!host::arePreferencesBeingMade()) {
        UserPreferenceManager::GetInstance();
    }
    return UCPActionManager::instance();
}

/// Null for an action that is not there.
ActionList* listOf(std::optional<host::ActionInfo> action) {
    if (!action) {
        return nullptr;
    }
    std::vector<host::ActionInfo> one;
    one.push_back(std::move(*action));
    return new ActionList(std::move(one));
}

zelutil_status setShortcut(int id, const std::string& shortcut, int& holder) {
    UCPActionManager& actions = filledManager();
    if (!actions.getAction(id).first) {
        return ZELUTIL_UNKNOWN;
    }
    holder = actions.isShortcutTaken(id, shortcut);
    return actions.updateShortcut(id, shortcut) ? ZELUTIL_OK : ZELUTIL_REFUSED;
}

}  // namespace

zelutil_status zelutil_get_actions(const zelutil_action_list** actions) {
    return c::guardedInto(actions, [] {
        filledManager();
        return new ActionList(host::actions());
    });
}

zelutil_status zelutil_find_action(int id, const zelutil_action_list** actions) {
    return c::guardedInto(actions, [&] {
        filledManager();
        return listOf(host::action(id));
    });
}

void zelutil_action_list_free(const zelutil_action_list* actions) { ActionList::free(actions); }

zelutil_status zelutil_get_command(const char* context, const char* shortcut, bool fallback,
                                   const zelutil_text** command) {
    const char* const both = context == nullptr ? nullptr : shortcut;
    return c::guardedInto(command, both, [&](const std::string& text) {
        return new c::TextHandedOut(filledManager().getCommand(context, text, fallback));
    });
}

zelutil_status zelutil_set_shortcut(int id, const char* shortcut, int* holder) {
    int found = 0;
    const zelutil_status status =
        shortcut == nullptr ? ZELUTIL_BAD_ARGUMENT : c::guarded([&] { return setShortcut(id, shortcut, found); });
    if (holder != nullptr) {
        *holder = found;
    }
    return status;
}

zelutil_status zelutil_set_in_menu(int id, bool inMenu) {
    return c::guarded([&] {
        UCPActionManager& actions = filledManager();
        if (!actions.getAction(id).first) {
            return ZELUTIL_UNKNOWN;
        }
        actions.updateRMBMenu(id, inMenu);
        return ZELUTIL_OK;
    });
}
