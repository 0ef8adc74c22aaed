"""zelutil's C interface for Python: zelutil/host/c_api.h by way of ctypes and the standard library alone.

Texts of the library are UTF-8; bytes that are not come as surrogates and go back as the same bytes. What the library hands
out is turned into objects of Python and freed at once, so nothing here has to be freed by its user. Functions that are
called back hold on to what they need until their Subscription is cancelled.
"""

import ctypes
from collections import namedtuple
from ctypes import POINTER, Structure, c_bool, c_char_p, c_double, c_int, c_void_p

(OK, BAD_ARGUMENT, UNKNOWN, WRONG_TYPE, REFUSED, TOO_LATE, NO_INSTALLATION, NO_MEMORY, FAILED) = range(9)
(NO_DEFAULTS, NO_PATH, NOT_KEPT, NOT_WRITTEN, TORN, TOO_DEEP, STARTING) = range(20, 27)
PATHS_WITH_BLANKS = 1


def _text(data):
    return data.decode("utf-8", "surrogateescape")


def _bytes(text):
    return text.encode("utf-8", "surrogateescape")


class Error(Exception):
    """A call that did not succeed; `status` says why, and `result` holds that of a save."""

    def __init__(self, status, text, result=None):
        super().__init__(text)
        self.status = status
        self.result = result


# --- The structures of the header -------------------------------------------------------------------------------------


class _Text(Structure):
    _fields_ = [("text", c_char_p)]


class _Names(Structure):
    _fields_ = [("count", c_int), ("items", POINTER(c_char_p))]


class _Ids(Structure):
    _fields_ = [("count", c_int), ("items", POINTER(c_int))]


def _list_of(record):
    return type("_ListOf" + record.__name__, (Structure,),
                {"_fields_": [("count", c_int), ("items", POINTER(POINTER(record)))]})


class _Warning(Structure):
    _fields_ = [("kind", c_int), ("name", c_char_p), ("action", c_int), ("holder", c_int), ("text", c_char_p)]


class _Setting(Structure):
    _fields_ = [("fullName", c_char_p), ("bareNames", _Names), ("section", c_char_p), ("defaultValue", c_char_p),
                ("value", c_char_p), ("setByUser", c_bool), ("foundByFullName", c_bool)]


class _Action(Structure):
    _fields_ = [("id", c_int), ("parentId", c_int), ("name", c_char_p), ("icon", c_char_p), ("context", c_char_p),
                ("command", c_char_p), ("shortcut", c_char_p), ("shippedShortcut", c_char_p), ("inMenu", c_bool),
                ("shippedInMenu", c_bool), ("shortcutSource", c_int), ("runs", c_bool), ("heldBy", c_int)]


class _Value(Structure):
    _fields_ = [("name", c_char_p), ("value", c_char_p)]


class _NotRestored(Structure):
    _fields_ = [("setting", c_char_p), ("action", c_int), ("obstacle", c_int), ("otherAction", c_int),
                ("otherSetting", c_char_p), ("text", c_char_p)]


class _Conflict(Structure):
    _fields_ = [("setting", c_char_p), ("action", c_int), ("ours", c_char_p), ("theirs", c_char_p)]


_Warnings = _list_of(_Warning)
_Settings = _list_of(_Setting)
_Actions = _list_of(_Action)
_NotRestoredList = _list_of(_NotRestored)
_Conflicts = _list_of(_Conflict)


class _SaveResult(Structure):
    _fields_ = [("status", c_int), ("written", c_bool), ("text", c_char_p), ("path", c_char_p), ("keptCopy", c_char_p),
                ("changedSettings", _Names), ("unknownSettings", _Names), ("savedActions", _Ids),
                ("notRestored", _NotRestoredList), ("conflicts", _Conflicts), ("settingsOfOthers", _Names),
                ("actionsOfOthers", _Ids)]


class _RestorableText(Structure):
    _fields_ = [("text", c_char_p), ("notRestored", _NotRestoredList)]


_NAMES_CALLBACK = ctypes.CFUNCTYPE(None, POINTER(_Names), c_void_p)
_VALUE_CALLBACK = ctypes.CFUNCTYPE(None, c_char_p, c_void_p)
_SHORTCUT_CALLBACK = ctypes.CFUNCTYPE(None, c_int, c_char_p, c_char_p, c_void_p)
_FLAG_CALLBACK = ctypes.CFUNCTYPE(None, c_int, c_bool, c_void_p)


# --- From structures to objects of Python -----------------------------------------------------------------------------


def _plain(value):
    """The value of a member as an object of Python that owns all it has."""
    if isinstance(value, bytes):
        return _text(value)
    if isinstance(value, (_Names, _Ids)):
        return [_plain(value.items[i]) for i in range(value.count)]
    if isinstance(value, Structure):
        names = [name for name, *_ in value._fields_]
        if names == ["count", "items"]:
            return [_plain(value.items[i].contents) for i in range(value.count)]
        record = namedtuple(type(value).__name__.strip("_"), names)
        return record(*(_plain(getattr(value, name)) for name in names))
    return value


class Subscription:
    """Keeps a function registered until it is cancelled, at the latest when this goes."""

    def __init__(self, library, handle, callback):
        self._library, self._handle, self._callback = library, handle, callback

    def cancel(self):
        handle, self._handle = self._handle, None
        if handle:
            self._library.zelutil_cancel(handle)

    def __del__(self):
        self.cancel()


class Host:
    """Everything of zelutil/host/c_api.h. Raises Error where a function's status is not OK."""

    def __init__(self, path):
        self._library = ctypes.CDLL(path)
        self._library.zelutil_status_text.restype = c_char_p
        self._library.zelutil_cancel.argtypes = [c_void_p]
        self._library.zelutil_cancel.restype = None

    def status_text(self, status):
        return _text(self._library.zelutil_status_text(status))

    def _check(self, status, result=None):
        if status != OK:
            raise Error(status, result.text if result else self.status_text(status), result)

    def _call(self, function, *arguments):
        self._check(getattr(self._library, function)(*arguments))

    def _handed_out(self, function, handle_type, free, *arguments):
        """Returns the status and what a function hands out, as an object of Python; None for none."""
        handle = POINTER(handle_type)()
        status = getattr(self._library, function)(*arguments, ctypes.byref(handle))
        if not handle:
            return status, None
        try:
            return status, _plain(handle.contents)
        finally:
            getattr(self._library, free)(handle)

    def _get(self, function, handle_type, free, *arguments):
        status, value = self._handed_out(function, handle_type, free, *arguments)
        self._check(status)
        return value

    def _get_text(self, function, *arguments):
        return self._get(function, _Text, "zelutil_text_free", *arguments).text

    # The start

    def set_option(self, option, on):
        self._call("zelutil_set_option", option, c_bool(on))

    def option(self, option):
        on = c_bool()
        self._call("zelutil_get_option", option, ctypes.byref(on))
        return on.value

    def root(self):
        return self._get_text("zelutil_get_root")

    def user_file_path(self):
        return self._get_text("zelutil_get_user_file_path")

    def diagnose(self):
        return self._get_text("zelutil_diagnose")

    def native_path(self, path):
        return self._get_text("zelutil_native_path", _bytes(path))

    def path_from_native(self, native):
        return self._get_text("zelutil_path_from_native", _bytes(native))

    def start_warnings(self):
        return self._get("zelutil_get_start_warnings", _Warnings, "zelutil_warning_list_free")

    # Settings

    def settings(self):
        return self._get("zelutil_get_settings", _Settings, "zelutil_setting_list_free")

    def setting(self, name):
        return self._get("zelutil_find_setting", _Settings, "zelutil_setting_list_free", _bytes(name))[0]

    def sections(self):
        return self._get("zelutil_get_sections", _Names, "zelutil_names_free")

    def _read(self, function, value, name):
        self._call(function, _bytes(name), ctypes.byref(value))
        return value.value

    def read_bool(self, name):
        return self._read("zelutil_read_bool", c_bool(), name)

    def read_int(self, name):
        return self._read("zelutil_read_int", c_int(), name)

    def read_float(self, name):
        return self._read("zelutil_read_double", c_double(), name)

    def read_text(self, name):
        return self._get_text("zelutil_read_text", _bytes(name))

    def text_of(self, value):
        """The text of a truth value or number, as the functions above read it back."""
        if isinstance(value, bool):
            return self._get_text("zelutil_text_of_bool", c_bool(value))
        if isinstance(value, int):
            return self._get_text("zelutil_text_of_int", c_int(value))
        return self._get_text("zelutil_text_of_double", c_double(value))

    # Actions

    def actions(self):
        return self._get("zelutil_get_actions", _Actions, "zelutil_action_list_free")

    def action(self, action_id):
        return self._get("zelutil_find_action", _Actions, "zelutil_action_list_free", c_int(action_id))[0]

    def command(self, context, shortcut, fallback=False):
        return self._get_text("zelutil_get_command", _bytes(context), _bytes(shortcut), c_bool(fallback))

    def set_shortcut(self, action_id, shortcut):
        """Returns 0, or the action that holds the shortcut and keeps it."""
        holder = c_int()
        status = self._library.zelutil_set_shortcut(c_int(action_id), _bytes(shortcut), ctypes.byref(holder))
        if status != REFUSED:
            self._check(status)
        return holder.value

    def set_in_menu(self, action_id, in_menu):
        self._call("zelutil_set_in_menu", c_int(action_id), c_bool(in_menu))

    # Saving

    def _save(self, function, *arguments):
        status, result = self._handed_out(function, _SaveResult, "zelutil_save_result_free", *arguments)
        self._check(status, result)
        return result

    def save(self, settings=None):
        """Saves the settings, a dictionary of texts, and all else that is in force. Returns the result; an Error has
        it too."""
        pairs = [_Value(_bytes(name), _bytes(value)) for name, value in (settings or {}).items()]
        return self._save("zelutil_save", (_Value * len(pairs))(*pairs), c_int(len(pairs)))

    def reset(self, names):
        texts = [_bytes(name) for name in names]
        return self._save("zelutil_reset", (c_char_p * len(texts))(*texts), c_int(len(texts)))

    def reset_shortcuts(self, ids=None):
        """Resets the shortcuts of these actions, or all."""
        if ids is None:
            return self._save("zelutil_reset_all_shortcuts")
        return self._save("zelutil_reset_shortcuts", (c_int * len(ids))(*ids), c_int(len(ids)))

    def restorable_actions_text(self):
        return self._get("zelutil_get_restorable_actions_text", _RestorableText, "zelutil_restorable_text_free")

    # Observing

    def _subscribe(self, function, callback, *arguments):
        handle = c_void_p()
        self._call(function, *arguments, callback, None, ctypes.byref(handle))
        return Subscription(self._library, handle, callback)

    def on_settings_changed(self, call):
        return self._subscribe("zelutil_on_settings_changed",
                               _NAMES_CALLBACK(lambda names, _: call(_plain(names.contents))))

    def on_setting_changed(self, name, call):
        return self._subscribe("zelutil_on_setting_changed", _VALUE_CALLBACK(lambda value, _: call(_text(value))),
                               _bytes(name))

    def on_section_changed(self, attribute_path, call):
        return self._subscribe("zelutil_on_section_changed",
                               _NAMES_CALLBACK(lambda names, _: call(_plain(names.contents))), _bytes(attribute_path))

    def on_shortcut_changed(self, call):
        return self._subscribe(
            "zelutil_on_shortcut_changed",
            _SHORTCUT_CALLBACK(lambda action_id, before, now, _: call(action_id, _text(before), _text(now))))

    def on_menu_changed(self, call):
        return self._subscribe("zelutil_on_menu_changed",
                               _FLAG_CALLBACK(lambda action_id, in_menu, _: call(action_id, in_menu)))

    def on_active_application_changed(self, call):
        return self._subscribe("zelutil_on_active_application_changed",
                               _FLAG_CALLBACK(lambda app_id, editor_switch, _: call(app_id, editor_switch)))
