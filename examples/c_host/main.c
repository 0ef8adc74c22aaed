/* A host in plain C, which includes nothing else of the library. It shows what it finds, swaps two shortcuts, saves and
   is told of the changes; with --read-back it shows what an earlier run saved. With names of settings it shows these.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zelutil/host/c_api.h>

enum { kRouteTrack = 43, kUnroute = 49, kFanOut = 51 };

/* Says what went wrong, and ends where going on makes no sense. */
static void expectOk(zelutil_status status, const char* what) {
    if (status != ZELUTIL_OK) {
        printf("  %s: %s\n", what, zelutil_status_text((int)status));
        exit(1);
    }
}

/* --- What is there ------------------------------------------------------------------------------------------------ */

static void showPlaces(void) {
    const zelutil_text* root = NULL;
    const zelutil_text* file = NULL;
    const zelutil_text* native = NULL;
    /* Before anything else: what first needs the installation is told that there is none. */
    expectOk(zelutil_get_root(&root), "the installation");
    expectOk(zelutil_get_user_file_path(&file), "the user's file");
    expectOk(zelutil_native_path(file->text, &native), "the user's file");
    printf("  installed in %s\n  saves to %s\n", root->text, native->text);
    zelutil_text_free(root);
    zelutil_text_free(file);
    zelutil_text_free(native);
}

static void showWarnings(void) {
    const zelutil_warning_list* warnings = NULL;
    int i;
    expectOk(zelutil_get_start_warnings(&warnings), "the warnings");
    printf("  the start has %d warnings\n", warnings->count);
    for (i = 0; i < warnings->count; ++i) {
        printf("    %s\n", warnings->items[i]->text);
    }
    zelutil_warning_list_free(warnings);
}

static void showSetting(const char* name) {
    const zelutil_setting_list* found = NULL;
    if (zelutil_find_setting(name, &found) != ZELUTIL_OK) {
        printf("  %-28s is unknown\n", name);
        return;
    }
    printf("  %-28s %-12s (default %s%s)\n", found->items[0]->fullName, found->items[0]->value,
           found->items[0]->defaultValue, found->items[0]->setByUser ? ", set by the user" : "");
    zelutil_setting_list_free(found);
}

static void showSettings(void) {
    const zelutil_setting_list* all = NULL;
    const zelutil_names* sections = NULL;
    double grid = 0.635; /* stays where the setting is none or no number */
    int interval = 600;
    bool autosave = false;
    expectOk(zelutil_get_settings(&all), "the settings");
    expectOk(zelutil_get_sections(&sections), "the sections");
    printf("  %d settings in %d sections\n", all->count, sections->count);
    zelutil_setting_list_free(all);
    zelutil_names_free(sections);
    showSetting("units");
    showSetting("GRID");
    showSetting("general::saving::autosave");
    zelutil_read_double("grid", &grid);
    zelutil_read_int("autosave_interval", &interval);
    zelutil_read_bool("autosave", &autosave);
    printf("  as values: grid %g, autosave %s, every %d seconds\n", grid, autosave ? "on" : "off", interval);
}

static void showAction(int id) {
    const zelutil_action_list* found = NULL;
    const zelutil_action* action;
    expectOk(zelutil_find_action(id, &found), "an action");
    action = found->items[0];
    printf("  %-28s %-12s (shipped %s)%s\n", action->name, action->shortcut, action->shippedShortcut,
           action->inMenu ? ", in the menu" : "");
    zelutil_action_list_free(found);
}

static void showActions(void) {
    const zelutil_action_list* all = NULL;
    const zelutil_text* command = NULL;
    int i;
    int users = 0;
    expectOk(zelutil_get_actions(&all), "the actions");
    for (i = 0; i < all->count; ++i) {
        users += all->items[i]->shortcutSource == ZELUTIL_SHORTCUT_OF_USER ? 1 : 0;
    }
    printf("  %d actions, %d of which have a shortcut of the user's\n", all->count, users);
    zelutil_action_list_free(all);
    expectOk(zelutil_get_command("brisk3d", "Ctrl+S", true, &command), "a command");
    printf("  Ctrl+S in brisk3d or ucpedit runs %s\n", command->text);
    zelutil_text_free(command);
    printf("  facet Net, Length: %s\n", ZelUGetFacetType("Net", "Length") == 1 ? "numerical" : "not numerical");
}

/* --- Editing and saving ------------------------------------------------------------------------------------------- */

static void settingsChanged(const zelutil_names* fullNames, void* userData) {
    int i;
    (void)userData;
    for (i = 0; i < fullNames->count; ++i) {
        printf("    heard: setting %s\n", fullNames->items[i]);
    }
}

static void shortcutChanged(int actionId, const char* before, const char* now, void* userData) {
    (void)userData;
    printf("    heard: action %d, shortcut \"%s\" -> \"%s\"\n", actionId, before, now);
}

static void menuChanged(int actionId, bool inMenu, void* userData) {
    (void)userData;
    printf("    heard: action %d is %s the menu\n", actionId, inMenu ? "in" : "out of");
}

/* Returns a copy of the action's shortcut, which the caller frees. */
static char* shortcutOf(int id) {
    const zelutil_action_list* found = NULL;
    char* copy;
    expectOk(zelutil_find_action(id, &found), "an action");
    copy = malloc(strlen(found->items[0]->shortcut) + 1);
    if (copy == NULL) {
        exit(1);
    }
    strcpy(copy, found->items[0]->shortcut);
    zelutil_action_list_free(found);
    return copy;
}

/* Each of the two gets the other's key, which takes an action without a key in between. */
static void swapShortcuts(int one, int other) {
    char* const keyOfOne = shortcutOf(one);
    char* const keyOfOther = shortcutOf(other);
    int holder = 0;
    if (zelutil_set_shortcut(one, keyOfOther, &holder) == ZELUTIL_REFUSED) {
        printf("  %s is refused to %d: %d has it; so that one gives it up first\n", keyOfOther, one, holder);
    }
    expectOk(zelutil_set_shortcut(other, "", NULL), "taking the key away");
    expectOk(zelutil_set_shortcut(one, keyOfOther, NULL), "giving it to the one");
    expectOk(zelutil_set_shortcut(other, keyOfOne, NULL), "giving the other key to the other");
    free(keyOfOne);
    free(keyOfOther);
}

static void showResult(const zelutil_save_result* result) {
    int i;
    printf("  %s\n  %d settings changed, %d actions are in the file\n", result->text, result->changedSettings.count,
           result->savedActions.count);
    for (i = 0; i < result->notRestored.count; ++i) {
        printf("    will not come back: %s\n", result->notRestored.items[i]->text);
    }
}

static void editAndSave(void) {
    const zelutil_value values[] = {{"grid", "0.1"}, {"display::colors::background", "#303030"}};
    zelutil_subscription* subscriptions[3] = {NULL, NULL, NULL};
    const zelutil_save_result* result = NULL;
    int i;
    expectOk(zelutil_on_settings_changed(settingsChanged, NULL, &subscriptions[0]), "observing settings");
    expectOk(zelutil_on_shortcut_changed(shortcutChanged, NULL, &subscriptions[1]), "observing shortcuts");
    expectOk(zelutil_on_menu_changed(menuChanged, NULL, &subscriptions[2]), "observing the menu");
    swapShortcuts(kRouteTrack, kUnroute);
    expectOk(zelutil_set_in_menu(kFanOut, true), "the menu");
    expectOk(zelutil_save(values, 2, &result), "saving");
    showResult(result);
    zelutil_save_result_free(result);
    for (i = 0; i < 3; ++i) {
        zelutil_cancel(subscriptions[i]);
    }
}

static void readBack(void) {
    puts("A process started after the save reads");
    showSetting("grid");
    showSetting("display::colors::background");
    showAction(kRouteTrack);
    showAction(kUnroute);
    showAction(kFanOut);
}

int main(int argc, char** argv) {
    int i;
    if (argc == 2 && strcmp(argv[1], "--read-back") == 0) {
        readBack();
        return 0;
    }
    if (argc > 1) {
        for (i = 1; i < argc; ++i) {
            showSetting(argv[i]);
        }
        return 0;
    }
    puts("Places");
    showPlaces();
    showWarnings();
    puts("\nSettings");
    showSettings();
    puts("\nActions and facets");
    showActions();
    puts("\nEditing and saving");
    editAndSave();
    return 0;
}
