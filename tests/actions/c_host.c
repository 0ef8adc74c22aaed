/* A host written in C: reads shortcuts and observes an action while the part written in C++ edits. */

#include "c_host_edits.h"

#include <zelutil/c_api.h>

#include <stdio.h>
#include <string.h>

#define CHECK(condition)                                        \
    if (!(condition)) {                                         \
        fprintf(stderr, "line %d: %s\n", __LINE__, #condition); \
        return 1;                                               \
    }

static int calls = 0;
static int last_id = 0;
static char last_old[64];
static char last_new[64];

static void on_shortcut(int action_id, const char* old_shortcut, const char* new_shortcut) {
    ++calls;
    last_id = action_id;
    memcpy(last_old, old_shortcut, sizeof last_old);
    memcpy(last_new, new_shortcut, sizeof last_new);
}

int main(void) {
    char buffer[8];
    void* handle;

    CHECK(ucp_action_manager_observer_attach(1, on_shortcut) == NULL);
    load_actions();
    handle = ucp_action_manager_observer_attach(1, on_shortcut);
    CHECK(handle != NULL);

    ucp_action_manager_get_shortcut(1, buffer, (int)sizeof buffer);
    CHECK(strcmp(buffer, "Ctrl+O") == 0);
    memset(buffer, '#', sizeof buffer);
    ucp_action_manager_get_shortcut(1, buffer, 4);
    CHECK(memcmp(buffer, "Ctrl####", sizeof buffer) == 0);

    CHECK(edit_shortcut(1, "Ctrl+W") == 0);
    CHECK(calls == 0);
    CHECK(edit_shortcut(1, "F3") == 1);
    CHECK(calls == 1);
    CHECK(last_id == 1);
    CHECK(strcmp(last_old, "Ctrl+O") == 0);
    CHECK(strcmp(last_new, "F3") == 0);
    ucp_action_manager_get_shortcut(1, buffer, (int)sizeof buffer);
    CHECK(strcmp(buffer, "F3") == 0);

    ucp_action_manager_observer_detach(handle);
    ucp_action_manager_observer_detach(NULL);
    CHECK(edit_shortcut(1, "F4") == 1);
    CHECK(calls == 1);
    return 0;
}
