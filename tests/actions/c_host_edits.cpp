#include "c_host_edits.h"

#include <zelutil/actions/action_manager.h>

void load_actions(void) {
    UCPActionManager::instance().load(R"({"actions":[{"id":1,"context":"board","command":"open","shortcut":"Ctrl+O"},)"
                                      R"({"id":2,"context":"board","command":"close","shortcut":"Ctrl+W"}]})",
                                      "");
}

int edit_shortcut(int id, const char* shortcut) {
    return UCPActionManager::instance().updateShortcut(id, shortcut) ? 1 : 0;
}
