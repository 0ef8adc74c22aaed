/* A host in C, compiled with nothing but the flags that pkg-config answers. */

#include <stdio.h>
#include <string.h>
#include <zelutil/c_api.h>
#include <zelutil/version.h>

int main(void) {
    if (strcmp(zelutil_version(), ZELUTIL_VERSION) != 0) {
        puts("the library is not of the headers' version");
        return 1;
    }
    char shortcut[4] = "abc";
    const char empty[4] = "";
    ucp_action_manager_get_shortcut(1, shortcut, (int)sizeof shortcut);
    if (memcmp(shortcut, empty, sizeof shortcut) != 0) {
        puts("an unknown action has a shortcut");
        return 1;
    }
    puts("an unknown action has no shortcut");
    return 0;
}
