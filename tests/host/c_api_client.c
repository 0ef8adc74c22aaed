/* A host in C99 that swaps two shortcuts and saves ("save"), asks in an exit function that was registered before the
   first use ("late"), or prints what is in force ("read"). */
#include <zelutil/host/c_api.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kSave = 1, kOpen = 2 };

static int failures = 0;

static void check(zelutil_status status, const char* what) {
    if (status != ZELUTIL_OK) {
        printf("%s: %s\n", what, zelutil_status_text((int)status));
        ++failures;
    }
}

static void settingsChanged(const zelutil_names* fullNames, void* userData) {
    int i;
    for (i = 0; i < fullNames->count; ++i) {
        printf("%s %s\n", (const char*)userData, fullNames->items[i]);
    }
}

static void swapShortcuts(void) {
    int holder = 0;
    if (zelutil_set_shortcut(kSave, "Ctrl+O", &holder) == ZELUTIL_REFUSED) {
        printf("refused because of %d\n", holder);
    }
    check(zelutil_set_shortcut(kOpen, "", NULL), "taking the shortcut away");
    check(zelutil_set_shortcut(kSave, "Ctrl+O", NULL), "giving the first");
    check(zelutil_set_shortcut(kOpen, "Ctrl+S", NULL), "giving the second");
    check(zelutil_set_in_menu(kOpen, false), "taking out of the menu");
}

static void save(void) {
    static char heard[] = "heard of";
    const zelutil_value values[] = {{"grid", "0.25"}, {"display::colors::grid", "blue"}};
    const zelutil_save_result* result = NULL;
    zelutil_subscription* subscription = NULL;
    check(zelutil_on_settings_changed(settingsChanged, heard, &subscription), "subscribing");
    swapShortcuts();
    check(zelutil_save(values, 2, &result), "saving");
    if (result != NULL) {
        printf("written %d, actions %d, not restored %d\n", (int)result->written, result->savedActions.count,
               result->notRestored.count);
    }
    zelutil_save_result_free(result);
    zelutil_cancel(subscription);
}

static void readBack(void) {
    const zelutil_setting_list* settings = NULL;
    const zelutil_action_list* actions = NULL;
    double grid = 0;
    int i;
    check(zelutil_read_double("grid", &grid), "reading the grid");
    printf("grid %g\n", grid);
    check(zelutil_get_settings(&settings), "the settings");
    for (i = 0; settings != NULL && i < settings->count; ++i) {
        const zelutil_setting* const setting = settings->items[i];
        printf("%s %s%s\n", setting->fullName, setting->value, setting->setByUser ? " (user)" : "");
    }
    zelutil_setting_list_free(settings);
    check(zelutil_get_actions(&actions), "the actions");
    for (i = 0; actions != NULL && i < actions->count; ++i) {
        const zelutil_action* const action = actions->items[i];
        printf("%d %s %s\n", action->id, action->shortcut, action->inMenu ? "in menu" : "-");
    }
    zelutil_action_list_free(actions);
}

/* By now the preferences may be gone, or not yet: on Windows a library goes after its program's exit functions. */
static void expectLate(zelutil_status status, zelutil_status ifGone, const char* what) {
    if (status != ZELUTIL_OK && status != ifGone) {
        printf("%s: %s\n", what, zelutil_status_text((int)status));
    }
}

static void askLate(void) {
    const zelutil_value value = {"grid", "0.25"};
    const zelutil_setting_list* settings = NULL;
    const zelutil_action_list* actions = NULL;
    const zelutil_warning_list* warnings = NULL;
    const zelutil_text* text = NULL;
    zelutil_subscription* subscription = NULL;
    expectLate(zelutil_get_settings(&settings), ZELUTIL_OK, "settings");
    expectLate(zelutil_get_actions(&actions), ZELUTIL_TOO_LATE, "actions");
    expectLate(zelutil_get_start_warnings(&warnings), ZELUTIL_OK, "warnings");
    expectLate(zelutil_read_text("grid", &text), ZELUTIL_UNKNOWN, "a setting");
    expectLate(zelutil_set_shortcut(kSave, "F1", NULL), ZELUTIL_TOO_LATE, "an edit");
    expectLate(zelutil_save(&value, 1, NULL), ZELUTIL_NO_DEFAULTS, "a save");
    expectLate(zelutil_on_settings_changed(settingsChanged, NULL, &subscription), ZELUTIL_OK, "subscribing");
    zelutil_cancel(subscription);
    zelutil_text_free(text);
    zelutil_warning_list_free(warnings);
    zelutil_action_list_free(actions);
    zelutil_setting_list_free(settings);
    puts("asked late");
}

int main(int argc, char** argv) {
    if (argc == 2 && strcmp(argv[1], "late") == 0) {
        const zelutil_text* grid = NULL;
        atexit(askLate);
        check(zelutil_read_text("grid", &grid), "the first use");
        zelutil_text_free(grid);
    } else if (argc == 2 && strcmp(argv[1], "save") == 0) {
        save();
    } else {
        readBack();
    }
    return failures;
}
