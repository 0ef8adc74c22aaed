/* Uses each function of the C interface once, where nothing is installed. */
#include <zelutil/host/c_api.h>

#include <stdio.h>

int useEachCFunction(void);

static int failures = 0;

static void expectStatus(zelutil_status status, zelutil_status expected, const char* what) {
    if (status != expected) {
        printf("%s: %s\n", what, zelutil_status_text((int)status));
        ++failures;
    }
}

static void useStart(void) {
    const zelutil_text* text = NULL;
    const zelutil_warning_list* warnings = NULL;
    bool on = true;
    expectStatus(zelutil_get_option(ZELUTIL_PATHS_WITH_BLANKS, &on), ZELUTIL_OK, "an option");
    expectStatus(zelutil_set_option(ZELUTIL_PATHS_WITH_BLANKS, on), ZELUTIL_OK, "setting an option as it is");
    /* The call after the one that needed the root first gets the last directory tried. */
    expectStatus(zelutil_get_root(&text), ZELUTIL_OK, "a root");
    zelutil_text_free(text);
    expectStatus(zelutil_get_user_file_path(&text), ZELUTIL_OK, "the user's file");
    zelutil_text_free(text);
    expectStatus(zelutil_diagnose(&text), ZELUTIL_OK, "a diagnosis");
    zelutil_text_free(text);
    expectStatus(zelutil_native_path("Z:\\directory\\file", &text), ZELUTIL_OK, "the system's path");
    zelutil_text_free(text);
    expectStatus(zelutil_path_from_native("directory/file", &text), ZELUTIL_OK, "the library's path");
    zelutil_text_free(text);
    expectStatus(zelutil_get_start_warnings(&warnings), ZELUTIL_OK, "warnings");
    zelutil_warning_list_free(warnings);
}

static void useSettings(void) {
    const zelutil_setting_list* settings = NULL;
    const zelutil_names* sections = NULL;
    const zelutil_text* text = NULL;
    bool truth = false;
    int number = 0;
    double amount = 0;
    expectStatus(zelutil_get_settings(&settings), ZELUTIL_OK, "settings");
    zelutil_setting_list_free(settings);
    expectStatus(zelutil_find_setting("grid", &settings), ZELUTIL_UNKNOWN, "a setting");
    expectStatus(zelutil_get_sections(&sections), ZELUTIL_OK, "sections");
    zelutil_names_free(sections);
    expectStatus(zelutil_read_bool("grid", &truth), ZELUTIL_UNKNOWN, "a truth value");
    expectStatus(zelutil_read_int("grid", &number), ZELUTIL_UNKNOWN, "an integer");
    expectStatus(zelutil_read_double("grid", &amount), ZELUTIL_UNKNOWN, "a number");
    expectStatus(zelutil_read_text("grid", &text), ZELUTIL_UNKNOWN, "a text");
    expectStatus(zelutil_text_of_bool(truth, &text), ZELUTIL_OK, "the text of a truth value");
    zelutil_text_free(text);
    expectStatus(zelutil_text_of_int(number, &text), ZELUTIL_OK, "the text of an integer");
    zelutil_text_free(text);
    expectStatus(zelutil_text_of_double(amount, &text), ZELUTIL_OK, "the text of a number");
    zelutil_text_free(text);
}

static void useActions(void) {
    const zelutil_action_list* actions = NULL;
    const zelutil_text* command = NULL;
    int holder = 0;
    expectStatus(zelutil_get_actions(&actions), ZELUTIL_OK, "actions");
    zelutil_action_list_free(actions);
    expectStatus(zelutil_find_action(1, &actions), ZELUTIL_UNKNOWN, "an action");
    expectStatus(zelutil_get_command("ucpedit", "F1", true, &command), ZELUTIL_OK, "a command");
    zelutil_text_free(command);
    expectStatus(zelutil_set_shortcut(1, "F1", &holder), ZELUTIL_UNKNOWN, "a shortcut");
    expectStatus(zelutil_set_in_menu(1, true), ZELUTIL_UNKNOWN, "a menu flag");
}

static void useSaves(void) {
    const zelutil_value value = {"grid", "1"};
    const char* const name = "grid";
    const int id = 1;
    const zelutil_save_result* result = NULL;
    const zelutil_restorable_text* text = NULL;
    expectStatus(zelutil_save(&value, 1, &result), ZELUTIL_NO_DEFAULTS, "a save");
    zelutil_save_result_free(result);
    expectStatus(zelutil_reset(&name, 1, NULL), ZELUTIL_NO_DEFAULTS, "a reset");
    expectStatus(zelutil_reset_shortcuts(&id, 1, NULL), ZELUTIL_NO_DEFAULTS, "a reset of a shortcut");
    expectStatus(zelutil_reset_all_shortcuts(NULL), ZELUTIL_NO_DEFAULTS, "a reset of all shortcuts");
    expectStatus(zelutil_get_restorable_actions_text(&text), ZELUTIL_OK, "a text of the actions");
    zelutil_restorable_text_free(text);
}

static void ignoreNames(const zelutil_names* names, void* userData) { (void)names, (void)userData; }
static void ignoreValue(const char* value, void* userData) { (void)value, (void)userData; }
static void ignoreShortcut(int id, const char* before, const char* now, void* userData) {
    (void)id, (void)before, (void)now, (void)userData;
}
static void ignoreFlag(int id, bool flag, void* userData) { (void)id, (void)flag, (void)userData; }

static void useObservers(void) {
    zelutil_subscription* subscription = NULL;
    expectStatus(zelutil_on_settings_changed(ignoreNames, NULL, &subscription), ZELUTIL_OK, "settings to observe");
    zelutil_cancel(subscription);
    expectStatus(zelutil_on_setting_changed("grid", ignoreValue, NULL, &subscription), ZELUTIL_UNKNOWN, "one setting");
    expectStatus(zelutil_on_section_changed("display", ignoreNames, NULL, &subscription), ZELUTIL_OK, "a section");
    zelutil_cancel(subscription);
    expectStatus(zelutil_on_shortcut_changed(ignoreShortcut, NULL, &subscription), ZELUTIL_OK, "shortcuts");
    zelutil_cancel(subscription);
    expectStatus(zelutil_on_menu_changed(ignoreFlag, NULL, &subscription), ZELUTIL_OK, "menu flags");
    zelutil_cancel(subscription);
    expectStatus(zelutil_on_active_application_changed(ignoreFlag, NULL, &subscription), ZELUTIL_OK, "applications");
    zelutil_cancel(subscription);
}

int useEachCFunction(void) {
    useStart();
    useSettings();
    useActions();
    useSaves();
    useObservers();
    return failures;
}
