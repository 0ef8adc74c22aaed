#ifndef ZELUTIL_TESTS_ACTIONS_C_HOST_EDITS_H
#define ZELUTIL_TESTS_ACTIONS_C_HOST_EDITS_H

#ifdef __cplusplus
extern "C" {
#endif

/* Action 1 has the shortcut "Ctrl+O", action 2 of the same context "Ctrl+W". */
void load_actions(void);

/* 1 when the shortcut is in force, 0 when it was refused. */
int edit_shortcut(int id, const char* shortcut);

#ifdef __cplusplus
}
#endif

#endif
