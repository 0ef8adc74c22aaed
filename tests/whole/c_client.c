/* A host in C99 that calls every function of the C interface and prints what it gets. */
#include <zelutil/c_api.h>
#include <zelutil/version.h>

#include <stdio.h>
#include <string.h>

#if ZELUTIL_VERSION_MAJOR < 1
#error "The preprocessor does not know the version."
#endif

enum { kSave = 1, kOpen = 2, kUnknownAction = 99 };

static void showText(const char* what, const char* text) {
    if (text == NULL) {
        printf("%s: null\n", what);
    } else {
        printf("%s: \"%s\"\n", what, text);
    }
}

static void showShortcut(int id) {
    char buffer[16];
    ucp_action_manager_get_shortcut(id, buffer, (int)sizeof buffer);
    printf("shortcut of %d: \"%s\"\n", id, buffer);
}

static void showShortcutInFourBytes(int id) {
    char buffer[6] = "******";
    ucp_action_manager_get_shortcut(id, buffer, 4);
    printf("shortcut of %d in 4 bytes: \"%.*s\"\n", id, (int)sizeof buffer, buffer);
}

static void shortcutChanged(int actionId, const char* oldShortcut, const char* newShortcut) {
    printf("unexpected: %d %s %s\n", actionId, oldShortcut, newShortcut);
}

static void showAttach(int id, ucp_action_shortcut_callback callback) {
    void* const handle = ucp_action_manager_observer_attach(id, callback);
    printf("observer of %d: %s\n", id, handle == NULL ? "null" : "a handle");
    ucp_action_manager_observer_detach(handle);
}

int main(void) {
    bool defined;

    printf("the library is of the headers' version: %d\n", strcmp(zelutil_version(), ZELUTIL_VERSION) == 0);

    showText("display::grid", get_user_setting("display::grid"));
    showText("DISPLAY::GRID", get_user_setting("DISPLAY::GRID"));
    showText("grid", get_user_setting("grid"));
    showText("units", get_user_setting("units"));
    showText("emptied", get_user_setting("emptied"));
    showText("unknown", get_user_setting("unknown"));
    showText("default of grid", get_default_user_setting("grid"));
    showText("default of emptied", get_default_user_setting("emptied"));
    showText("default of unknown", get_default_user_setting("unknown"));
    printf("same text: %d\n", get_user_setting("grid") == get_user_setting("Display::Grid"));

    showShortcut(kSave);
    showShortcut(kOpen);
    showShortcut(kUnknownAction);
    showShortcutInFourBytes(kSave);
    showAttach(kSave, shortcutChanged);
    showAttach(kUnknownAction, shortcutChanged);

    printf("active %d, default %d\n", MarlActiveAppId(), MarlDefaultAppId());
    printf("before 7: %d\n", SetActiveAppId(7, 0));
    printf("before 8: %d\n", SetActiveAppId(8, 1));
    printf("before 8 again: %d\n", SetActiveAppId(8, 1));
    printf("active %d, default %d\n", MarlActiveAppId(), MarlDefaultAppId());

    printf("Net Length: %d\n", ZelUGetFacetType("Net", "Length"));
    printf("Net Layer: %d\n", ZelUGetFacetType("Net", "Layer"));
    printf("Net Width: %d\n", ZelUGetFacetType("Net", "Width"));
    printf("net Length: %d\n", ZelUGetFacetType("net", "Length"));
    defined = ZelUIsFacetDefined("Net", "Layer");
    printf("Net Layer defined: %d\n", (int)defined);
    defined = ZelUIsFacetDefined("Net", "layer");
    printf("Net layer defined: %d\n", (int)defined);
    return 0;
}
