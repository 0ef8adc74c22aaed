/* Uses the C interface where nothing is installed. Inside the library that is an exception, which must not get here:
   this source is also compiled as C++ without exceptions, and as C, which has none. */
#include <zelutil/c_api.h>
#include <zelutil/host/c_api.h>
#include <zelutil/version.h>

#include <stdbool.h>
#include <stdio.h>
#include <string.h>

static int failures = 0;

static void expect(bool is_so, const char* what) {
    if (!is_so) {
        printf("not so: %s\n", what);
        ++failures;
    }
}

static void ask_for_the_installation(void) {
    const zelutil_text* root = NULL;
    expect(zelutil_get_root(&root) == ZELUTIL_NO_INSTALLATION, "nothing is installed");
    expect(root == NULL, "there is no root");
}

static void ask_in_passing(void) {
    char shortcut[4] = "abc";
    expect(strcmp(zelutil_version(), ZELUTIL_VERSION) == 0, "the library is of the headers' version");
    expect(get_user_setting("grid") == NULL, "an unknown setting has no value");
    ucp_action_manager_get_shortcut(1, shortcut, (int)sizeof shortcut);
    expect(shortcut[0] == '\0', "an unknown action has no shortcut");
}

static void ask_for_values(void) {
    double grid = 0.5;
    const zelutil_text* text = NULL;
    expect(zelutil_read_double("grid", &grid) == ZELUTIL_UNKNOWN, "an unknown setting is told");
    expect(grid == 0.5, "what was not read stays");
    expect(zelutil_read_double(NULL, &grid) == ZELUTIL_BAD_ARGUMENT, "null is no name");
    expect(zelutil_get_command("ucpedit", "Ctrl+S", false, &text) == ZELUTIL_OK, "a command can be asked for");
    zelutil_text_free(text);
}

int main(void) {
    ask_for_the_installation();
    ask_in_passing();
    ask_for_values();
    return failures == 0 ? 0 : 1;
}
