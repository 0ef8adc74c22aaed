#ifndef ZELUTIL_HOST_C_API_H
#define ZELUTIL_HOST_C_API_H

/// Everything of `zelutil::host` with C linkage: saves that a new process reads back exactly, resets, enumerating,
/// typed reads and observers, for hosts in C and in languages that call C. Compiles as C99 and as C++. Facets and
/// applications are in <zelutil/c_api.h>, which comes along.
///
/// Every function returns a `zelutil_status` but those that free, which cannot fail, and `zelutil_status_text`. No
/// exception leaves them, and no argument makes them crash that is null or a valid pointer: where null is not allowed,
/// they return `ZELUTIL_BAD_ARGUMENT` and do nothing.
///
/// Texts are NUL-terminated byte strings; those of the preference files are UTF-8. A value that has a NUL inside is
/// seen up to there. Texts that a function is given are copied.
///
/// An object that a function hands out by a pointer to a pointer belongs to the caller, who frees it with the function
/// of its type; all texts and lists in it live as long. On failure the pointer is null, unless the function says
/// otherwise. Records are reached by pointers only and grow at their end, so that a host's program works with a later
/// library.
///
/// As the C++ functions, these are for one thread at a time, and a function that is told of a change may call all of
/// them. What `zelutil::host` says of each in C++ holds here: see the header that is named.

#include <zelutil/c_api.h>
#include <zelutil/export.h>

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

// --- Status ---------------------------------------------------------------------------------------------------------

/// The outcome of a call.
typedef enum zelutil_status {
    ZELUTIL_OK = 0,
    /// A pointer is null that must not be, a count is negative, or an option is none.
    ZELUTIL_BAD_ARGUMENT = 1,
    /// There is no setting of that name, or no action of that id.
    ZELUTIL_UNKNOWN = 2,
    /// The setting's value is no value of that type.
    ZELUTIL_WRONG_TYPE = 3,
    /// Another action is in the way of that shortcut.
    ZELUTIL_REFUSED = 4,
    /// An option is set after the first use of what it is about, or the actions are asked for after the preferences
    /// have been destroyed. (Settings are unknown by then, and a save has no shipped defaults.)
    ZELUTIL_TOO_LATE = 5,
    /// No installation was found.
    ZELUTIL_NO_INSTALLATION = 6,
    /// There is not enough memory.
    ZELUTIL_NO_MEMORY = 7,
    /// A C++ function of the host's, which was called back, has thrown, or the system failed unexpectedly.
    ZELUTIL_FAILED = 8,

    // Saves only: see `zelutil::host::SaveResult::Status`.

    ZELUTIL_NO_DEFAULTS = 20,
    ZELUTIL_NO_PATH = 21,
    ZELUTIL_NOT_KEPT = 22,
    ZELUTIL_NOT_WRITTEN = 23,
    ZELUTIL_TORN = 24,
    ZELUTIL_TOO_DEEP = 25,
    ZELUTIL_STARTING = 26
} zelutil_status;

/// Returns one sentence in English that says what the `zelutil_status` means, also for a number that is none. The text
/// is never freed.
ZELUTIL_API const char* zelutil_status_text(int status);

// --- Texts and lists ------------------------------------------------------------------------------------------------

/// A text that its receiver frees.
typedef struct zelutil_text {
    const char* text;  ///< Ends with a NUL; never null.
} zelutil_text;

/// Texts; `items` may be null when there are none.
typedef struct zelutil_names {
    int count;                 ///< So many are there.
    const char* const* items;  ///< The texts.
} zelutil_names;

/// Ids of actions; `items` may be null when there are none.
typedef struct zelutil_ids {
    int count;         ///< So many are there.
    const int* items;  ///< The ids.
} zelutil_ids;

/// Frees a text. Null does nothing.
ZELUTIL_API void zelutil_text_free(const zelutil_text* text);

/// Frees texts that a function has handed out by themselves. Null does nothing.
ZELUTIL_API void zelutil_names_free(const zelutil_names* names);

// --- Before the first use, and what it found: <zelutil/host/start.h>, native_path.h ---------------------------------

/// Departures from what the library does by itself, all off unless a host asks for them.
typedef enum zelutil_option {
    /// Opens the preference and facet files of an installation or a home whose path has a blank in it.
    ZELUTIL_PATHS_WITH_BLANKS = 1
} zelutil_option;

/// Sets a `zelutil_option` of this process, before the first use of preferences or facets; afterwards
/// `ZELUTIL_TOO_LATE`, unless it is so already. `ZELUTIL_BAD_ARGUMENT` for a number that is no option.
ZELUTIL_API zelutil_status zelutil_set_option(int option, bool on);

/// Tells whether a `zelutil_option` is on. `ZELUTIL_BAD_ARGUMENT` for a number that is none.
ZELUTIL_API zelutil_status zelutil_get_option(int option, bool* on);

/// Hands out the root of the installation, as `ZelU::File::Hierarchy::GetRoot` finds it. A host calls this before
/// anything else: `ZELUTIL_NO_INSTALLATION` comes at the first call that needs the root and then no more, as
/// <zelutil/file/hierarchy.h> says.
ZELUTIL_API zelutil_status zelutil_get_root(const zelutil_text** root);

/// Hands out the path of the file that a save writes; the empty text for none.
ZELUTIL_API zelutil_status zelutil_get_user_file_path(const zelutil_text** path);

/// Hands out several lines for people that say what was looked for where.
ZELUTIL_API zelutil_status zelutil_diagnose(const zelutil_text** lines);

/// Hands out the path as the system names it (on Windows in UTF-8); the empty text for one that names no file there.
ZELUTIL_API zelutil_status zelutil_native_path(const char* path, const zelutil_text** native);

/// Hands out the library's path of a file that the system names so (on Windows in UTF-8), made absolute; the empty text
/// where its rules or the narrow encoding have none.
ZELUTIL_API zelutil_status zelutil_path_from_native(const char* native, const zelutil_text** path);

/// The kinds of `zelutil::host::StartWarning`.
typedef enum zelutil_warning_kind {
    ZELUTIL_FILE_NOT_READ = 0,
    ZELUTIL_ENTRY_WITHOUT_EFFECT = 1,
    ZELUTIL_ENTRY_FOR_ANOTHER_SECTION = 2,
    ZELUTIL_SHORTCUT_REFUSED = 3
} zelutil_warning_kind;

/// Something that the start found in the user's file.
typedef struct zelutil_warning {
    zelutil_warning_kind kind;  ///< Tells what is wrong.
    const char* name;           ///< The setting or section as the file names it; empty for an action and for the file.
    int action;                 ///< 0 for none.
    int holder;                 ///< The action that holds the shortcut; 0 for none.
    const char* text;           ///< One sentence in English, for people.
} zelutil_warning;

/// A list of warnings, in the order of the file; `items` may be null when there are none.
typedef struct zelutil_warning_list {
    int count;                            ///< So many are there.
    const zelutil_warning* const* items;  ///< Pointers to them.
} zelutil_warning_list;

/// Hands out what the start found, in the order of the file.
ZELUTIL_API zelutil_status zelutil_get_start_warnings(const zelutil_warning_list** warnings);

/// Frees the list. Null does nothing.
ZELUTIL_API void zelutil_warning_list_free(const zelutil_warning_list* warnings);

// --- Settings: <zelutil/host/settings.h> ----------------------------------------------------------------------------

/// One setting, as it was when it was asked for.
typedef struct zelutil_setting {
    const char* fullName;      ///< With the names of its sections, joined by "::".
    zelutil_names bareNames;   ///< Those by which it is found.
    const char* section;       ///< Attribute path.
    const char* defaultValue;  ///< As shipped.
    const char* value;         ///< In force.
    bool setByUser;            ///< Whether the user set it, perhaps to the default.
    bool foundByFullName;      ///< False where `fullName` means another setting.
} zelutil_setting;

/// A list of settings; `items` may be null when there are none.
typedef struct zelutil_setting_list {
    int count;                            ///< So many are there.
    const zelutil_setting* const* items;  ///< Pointers to them.
} zelutil_setting_list;

/// Hands out every setting in the order of the defaults file.
ZELUTIL_API zelutil_status zelutil_get_settings(const zelutil_setting_list** settings);

/// Hands out a list of one: the setting of that name, bare or in full, in any case. `ZELUTIL_UNKNOWN` for none.
ZELUTIL_API zelutil_status zelutil_find_setting(const char* name, const zelutil_setting_list** settings);

/// Frees the list. Null does nothing.
ZELUTIL_API void zelutil_setting_list_free(const zelutil_setting_list* settings);

/// Hands out the attribute paths of all sections, in the order of the defaults file.
ZELUTIL_API zelutil_status zelutil_get_sections(const zelutil_names** sections);

/// Reads the value in force into `value`, by the grammar of `zelutil::host::read` and whatever the locale is. With
/// `ZELUTIL_UNKNOWN` and `ZELUTIL_WRONG_TYPE` it leaves `value` as it is: a host that puts its fallback there first
/// need not look at the status.
ZELUTIL_API zelutil_status zelutil_read_bool(const char* name, bool* value);
/// The same for a whole number.
ZELUTIL_API zelutil_status zelutil_read_int(const char* name, int* value);
/// The same for a number with or without a fraction.
ZELUTIL_API zelutil_status zelutil_read_double(const char* name, double* value);

/// Hands out the value in force as it stands. `ZELUTIL_UNKNOWN` for an unknown name.
ZELUTIL_API zelutil_status zelutil_read_text(const char* name, const zelutil_text** value);

/// Hands out the text of a value, from which `zelutil_read_bool` reads the same value again.
ZELUTIL_API zelutil_status zelutil_text_of_bool(bool value, const zelutil_text** text);
/// The same for `zelutil_read_int`.
ZELUTIL_API zelutil_status zelutil_text_of_int(int value, const zelutil_text** text);
/// The same for `zelutil_read_double`, with as many digits as that takes; the empty text for an infinite number and for
/// none.
ZELUTIL_API zelutil_status zelutil_text_of_double(double value, const zelutil_text** text);

// --- Actions: <zelutil/host/actions.h>, <zelutil/actions/action_manager.h> ------------------------------------------
// They are there once the preferences have been used, which every function of this section sees to.

/// The sources of `zelutil::host::ShortcutSource`.
typedef enum zelutil_shortcut_source {
    ZELUTIL_SHORTCUT_SHIPPED = 0,
    ZELUTIL_SHORTCUT_OF_USER = 1,
    ZELUTIL_SHORTCUT_OF_PARENT = 2,
    ZELUTIL_SHORTCUT_OF_STAND_IN = 3
} zelutil_shortcut_source;

/// One action, as it was when it was asked for.
typedef struct zelutil_action {
    int id;                                  ///< The id under which it is found.
    int parentId;                            ///< 0 for a top-level action.
    const char* name;                        ///< Its display name.
    const char* icon;                        ///< The name of its icon.
    const char* context;                     ///< The editor or view in which its shortcut counts.
    const char* command;                     ///< Names what the host runs.
    const char* shortcut;                    ///< In force; empty for none.
    const char* shippedShortcut;             ///< Before it took over its parent's; empty for none.
    bool inMenu;                             ///< Whether the right-mouse-button menu shows it.
    bool shippedInMenu;                      ///< Whether the menu shows it as shipped.
    zelutil_shortcut_source shortcutSource;  ///< Tells where the shortcut comes from.
    bool runs;                               ///< Whether the shortcut runs this action in its context.
    int heldBy;                              ///< The action that holds the shortcut instead; 0 for none.
} zelutil_action;

/// A list of actions; `items` may be null when there are none.
typedef struct zelutil_action_list {
    int count;                           ///< So many are there.
    const zelutil_action* const* items;  ///< Pointers to them.
} zelutil_action_list;

/// Hands out every action, ascending by id.
ZELUTIL_API zelutil_status zelutil_get_actions(const zelutil_action_list** actions);

/// Hands out a list of one: the action of that id. `ZELUTIL_UNKNOWN` for none.
ZELUTIL_API zelutil_status zelutil_find_action(int id, const zelutil_action_list** actions);

/// Frees the list. Null does nothing.
ZELUTIL_API void zelutil_action_list_free(const zelutil_action_list* actions);

/// Hands out the command that the shortcut runs in that context or, with `fallback`, else in "ucpedit"; the empty text
/// for none.
ZELUTIL_API zelutil_status zelutil_get_command(const char* context, const char* shortcut, bool fallback,
                                               const zelutil_text** command);

/// Gives the action another shortcut, the empty text for none; children follow. It is in force at once and in the file
/// after the next save. `ZELUTIL_REFUSED` when another action is in the way, which is then in `holder`; else 0 is.
/// `holder` may be null. See `UCPActionManager::updateShortcut` for what it does not promise.
ZELUTIL_API zelutil_status zelutil_set_shortcut(int id, const char* shortcut, int* holder);

/// Shows the action in the right-mouse-button menu or hides it; children follow.
ZELUTIL_API zelutil_status zelutil_set_in_menu(int id, bool inMenu);

// --- Saving: <zelutil/host/save.h>, result.h ------------------------------------------------------------------------

/// A value for the setting of that name, bare or in full, in any case.
typedef struct zelutil_value {
    const char* name;   ///< Bare or in full, in any case; not null.
    const char* value;  ///< Not null.
} zelutil_value;

/// The obstacles of `zelutil::host::Obstacle`.
typedef enum zelutil_obstacle {
    ZELUTIL_NAME_BELONGS_TO_ANOTHER = 0,
    ZELUTIL_SHIPPED_TWICE = 1,
    ZELUTIL_TAKEN_BY_ANOTHER = 2,
    ZELUTIL_CHILD_REFUSES = 3,
    ZELUTIL_FOLLOWS_PARENT = 4,
    ZELUTIL_NO_PLACE_IN_FILE = 5
} zelutil_obstacle;

/// A setting or an action that a new process will not have as it is now.
typedef struct zelutil_not_restored {
    const char* setting;        ///< Full name; empty for an action.
    int action;                 ///< 0 for a setting.
    zelutil_obstacle obstacle;  ///< The reason.
    int otherAction;            ///< The one in the way; 0 where none is.
    const char* otherSetting;   ///< The one in the way; empty where none is.
    const char* text;           ///< One sentence in English, for people.
} zelutil_not_restored;

/// A list of settings and actions that do not come back; `items` may be null when there are none.
typedef struct zelutil_not_restored_list {
    int count;                                 ///< So many are there.
    const zelutil_not_restored* const* items;  ///< Pointers to them.
} zelutil_not_restored_list;

/// Something that two processes of the user changed in different ways.
typedef struct zelutil_conflict {
    const char* setting;  ///< Full name; empty for an action.
    int action;           ///< 0 for a setting.
    const char* ours;     ///< The value that is in the file now.
    const char* theirs;   ///< The value that the other process had put there.
} zelutil_conflict;

/// A list of settings and actions that another process changed, too; `items` may be null when there are none.
typedef struct zelutil_conflict_list {
    int count;                             ///< So many are there.
    const zelutil_conflict* const* items;  ///< Pointers to them.
} zelutil_conflict_list;

/// The outcome of a save or a reset. Its members are those of `zelutil::host::SaveResult`.
typedef struct zelutil_save_result {
    zelutil_status status;          ///< The one that the function returned.
    bool written;                   ///< False where the file held everything already, and where nothing was written.
    const char* text;               ///< One sentence in English, for people.
    const char* path;               ///< The file that was written, or would have been.
    const char* keptCopy;           ///< The copy that was kept of the file before; empty for none.
    zelutil_names changedSettings;  ///< Full names of those whose value in force has changed.
    zelutil_names unknownSettings;  ///< Names that no setting has, as they were given.
    zelutil_ids savedActions;       ///< Those that the file has an entry for, ascending.
    zelutil_not_restored_list notRestored;  ///< Settings and actions that do not come back as they are now.
    zelutil_conflict_list conflicts;        ///< Settings and actions that another process has changed, too.
    zelutil_names settingsOfOthers;         ///< Full names of those for which the file has what another process saved.
    zelutil_ids actionsOfOthers;            ///< Actions for which the file has what another process saved.
} zelutil_save_result;

/// Puts `count` values in force and saves them with all that is in force and not yet saved, other settings and the
/// actions. Of two values for one name the last counts. `values` may be null for no values, and then its count is 0.
///
/// `result` may be null, for hosts that look at the status only. It is handed out with every status from
/// `ZELUTIL_NO_DEFAULTS` on too; where there is no memory for it, the save has been done and the status is
/// `ZELUTIL_NO_MEMORY`. A host saves before its main function returns: the values of a later save may be lost.
ZELUTIL_API zelutil_status zelutil_save(const zelutil_value* values, int count, const zelutil_save_result** result);

/// Gives the settings of these names their shipped defaults again and takes their entries out of the file. Otherwise as
/// `zelutil_save`.
ZELUTIL_API zelutil_status zelutil_reset(const char* const* names, int count, const zelutil_save_result** result);

/// Gives the actions of these ids their shipped shortcuts and menu flags again and takes their entries out of the file.
/// Otherwise as `zelutil_save`.
ZELUTIL_API zelutil_status zelutil_reset_shortcuts(const int* ids, int count, const zelutil_save_result** result);

/// The same for all actions.
ZELUTIL_API zelutil_status zelutil_reset_all_shortcuts(const zelutil_save_result** result);

/// Frees the result. Null does nothing.
ZELUTIL_API void zelutil_save_result_free(const zelutil_save_result* result);

/// A text of the user's changes to the actions, for hosts that save themselves: `zelutil::host::RestorableText`.
typedef struct zelutil_restorable_text {
    const char* text;                       ///< In the form that the manager reads; never empty.
    zelutil_not_restored_list notRestored;  ///< The actions that it cannot bring back as they are now.
} zelutil_restorable_text;

/// Hands out the text that brings back what is in force in the actions.
ZELUTIL_API zelutil_status zelutil_get_restorable_actions_text(const zelutil_restorable_text** text);

/// Frees the text. Null does nothing.
ZELUTIL_API void zelutil_restorable_text_free(const zelutil_restorable_text* text);

// --- Observing: <zelutil/host/observers.h> --------------------------------------------------------------------------
// A function of the host's is called with the pointer that it was registered with, on the thread and inside the call
// that made the change. What else it is given is valid during the call only. It must not throw; where one in C++ does,
// the others are not told and the call that made the change returns `ZELUTIL_FAILED`.

/// Keeps a function registered until it is cancelled.
typedef struct zelutil_subscription zelutil_subscription;

/// Is told the full names of settings.
typedef void (*zelutil_names_callback)(const zelutil_names* fullNames, void* userData);
/// Is told the new value of a setting.
typedef void (*zelutil_value_callback)(const char* value, void* userData);
/// Is told the shortcut of an action before and now; empty for none.
typedef void (*zelutil_shortcut_callback)(int actionId, const char* before, const char* now, void* userData);
/// Is told whether the menu shows an action now.
typedef void (*zelutil_menu_callback)(int actionId, bool inMenu, void* userData);
/// Is told the id of the application that is active now, or whose editor is switched.
typedef void (*zelutil_application_callback)(int appId, bool editorSwitch, void* userData);

/// Has `call` called with the full names of the settings that a save or a reset changed.
ZELUTIL_API zelutil_status zelutil_on_settings_changed(zelutil_names_callback call, void* userData,
                                                       zelutil_subscription** subscription);

/// Has `call` called with the new value of one setting. `ZELUTIL_UNKNOWN` for an unknown name.
ZELUTIL_API zelutil_status zelutil_on_setting_changed(const char* name, zelutil_value_callback call, void* userData,
                                                      zelutil_subscription** subscription);

/// Has `call` called with the full names of changed settings of the section with that attribute path and of those
/// inside it. The path need not be known.
ZELUTIL_API zelutil_status zelutil_on_section_changed(const char* attributePath, zelutil_names_callback call,
                                                      void* userData, zelutil_subscription** subscription);

/// Has `call` called when the shortcut of an action changes.
ZELUTIL_API zelutil_status zelutil_on_shortcut_changed(zelutil_shortcut_callback call, void* userData,
                                                       zelutil_subscription** subscription);

/// Has `call` called when an action enters or leaves the right-mouse-button menu.
ZELUTIL_API zelutil_status zelutil_on_menu_changed(zelutil_menu_callback call, void* userData,
                                                   zelutil_subscription** subscription);

/// Has `call` called when an application becomes active or an editor switch is announced.
ZELUTIL_API zelutil_status zelutil_on_active_application_changed(zelutil_application_callback call, void* userData,
                                                                 zelutil_subscription** subscription);

/// Ends the registration and frees it, also from inside a call of its own function. Null does nothing.
ZELUTIL_API void zelutil_cancel(zelutil_subscription* subscription);

#ifdef __cplusplus
}
#endif

#endif
