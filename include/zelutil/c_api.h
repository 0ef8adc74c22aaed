#ifndef ZELUTIL_C_API_H
#define ZELUTIL_C_API_H

/// The lean C interface: single look-ups that need no handle and no memory of the host's, for code that asks in
/// passing, such as plug-ins and scripts. It edits nothing but the active application and saves nothing. Hosts that
/// cannot use the classes and want to save, enumerate, reset or observe use `zelutil/host/c_api.h`. Compiles as C99 and
/// as C++.
///
/// Texts are NUL-terminated byte strings. Unless a function says otherwise its arguments must not be null, it keeps no
/// pointer that it was given, and it must not run at the same time as a save, an edit or a registration.
///
/// All of them may still be called from exit functions and from destructors of static objects of a program that is
/// linked with this library; what the preference functions then return, they say themselves. A program that loads the
/// library itself may have objects that go after the library's: what they ask for is made anew, as at a first use.

#include <zelutil/export.h>

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

// --- The library ----------------------------------------------------------------------------------------------------

/// Returns the version of the library that is in the process, such as "1.0.0": `ZELUTIL_VERSION` of the headers that it
/// was compiled with. The text lives as long as the library is loaded. Reads no file, and may be called at any time on
/// any thread.
ZELUTIL_API const char* zelutil_version(void);

// --- Preferences ----------------------------------------------------------------------------------------------------

/// The value in force for the setting `name`: the user's, or else the shipped default. `name` is looked up without
/// regard to ASCII case, in full ("display::grid") or, where its section allows it, bare ("grid").
///
/// Null for an unknown name, for an empty value, while the user's file is being searched for, and after the library's
/// teardown. The text belongs to the library and stays valid until a save changes this setting, or until teardown; a
/// host that keeps it copies it. The first call of the process reads the preference files.
ZELUTIL_API const char* get_user_setting(const char* name);

/// The shipped default of the setting `name`, under the same rules as `get_user_setting`, with two exceptions: after
/// the library's teardown it lets a C++ exception (a `bool`, true) escape, and while the first call of the process
/// searches for the user's file it must not be called by whom that search calls (it would wait for ever).
ZELUTIL_API const char* get_default_user_setting(const char* name);

// --- Actions and shortcuts ------------------------------------------------------------------------------------------
// The first use of the preferences fills the actions: before a first `get_user_setting`, say, no id is known here.

/// Called after the effective shortcut of the action `actionId` has changed. Both texts live in the observer's own
/// buffers of 64 bytes until its next call: a longer shortcut is cut there, and one of 64 or more bytes has no NUL.
/// What the function returns is ignored.
typedef void (*ucp_action_shortcut_callback)(int actionId, const char* oldShortcut, const char* newShortcut);

/// Copies the effective shortcut of the action `id` (empty for an unknown one) into `buffer` as strncpy does for
/// `length` bytes: the rest is filled with NULs, and a shortcut of `length` or more bytes is cut and has no NUL.
ZELUTIL_API void ucp_action_manager_get_shortcut(int id, char* buffer, int length);

/// Has `callback` called for every change of the shortcut of action `id`. Answers a handle to detach with, or null when
/// no action has that id now. The host detaches before the callback's code goes away.
ZELUTIL_API void* ucp_action_manager_observer_attach(int id, ucp_action_shortcut_callback callback);

/// Ends an observation and frees its handle. Null does nothing; a handle that attach did not answer, or that was
/// detached before, is undefined behaviour.
ZELUTIL_API void ucp_action_manager_observer_detach(void* handle);

// --- Facets ---------------------------------------------------------------------------------------------------------

/// 1 when the facet `name` of the group `header` is numerical, 0 when it is not, -1 when there is no such group or
/// facet. Both texts are compared byte by byte. The first call of the process reads the facet file.
ZELUTIL_API int ZelUGetFacetType(const char* header, const char* name);

/// Whether the group `header` has a facet `name`.
ZELUTIL_API bool ZelUIsFacetDefined(const char* header, const char* name);

// --- Applications ---------------------------------------------------------------------------------------------------

/// Returns the id of the active application: the result of the host's editor finder where one is set, else the id set
/// last, which is also returned when the finder throws.
ZELUTIL_API int MarlActiveAppId(void);

/// The id answered for editors that are not registered.
ZELUTIL_API int MarlDefaultAppId(void);

/// Makes `appId` active and, when that is a change, tells the observers; `editorSwitch` is passed on as true when it is
/// not 0. Answers the id that was active before. An exception of an observer does not leave this function.
ZELUTIL_API int SetActiveAppId(int appId, int editorSwitch);

#ifdef __cplusplus
}
#endif

#endif
