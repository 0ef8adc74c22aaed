/* A host in plain C: settings by name, a shortcut, and word of its changes. */
#include <stdio.h>

#include <zelutil/c_api.h>

enum { kSaveDesign = 3 };

static void shortcutChanged(int actionId, const char* oldShortcut, const char* newShortcut) {
    printf("action %d: %.64s -> %.64s\n", actionId, oldShortcut, newShortcut);
}

static void showSetting(const char* name) {
    const char* const value = get_user_setting(name);
    const char* const shipped = get_default_user_setting(name);
    printf("%-28s %-10s (default %s)\n", name, value == NULL ? "-" : value, shipped == NULL ? "-" : shipped);
}

int main(int argc, char** argv) {
    char shortcut[64];
    void* handle;
    int i;

    if (argc < 2) {
        showSetting("units");
        showSetting("GRID");
        showSetting("general::saving::autosave");
    }
    for (i = 1; i < argc; ++i) {
        showSetting(argv[i]);
    }

    ucp_action_manager_get_shortcut(kSaveDesign, shortcut, (int)sizeof shortcut);
    printf("action %d has the shortcut %.64s\n", kSaveDesign, shortcut);

    handle = ucp_action_manager_observer_attach(kSaveDesign, shortcutChanged);
    if (handle == NULL) {
        puts("no such action");
        return 1;
    }
    ucp_action_manager_observer_detach(handle);
    return 0;
}
