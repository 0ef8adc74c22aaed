#ifndef ZELUTIL_ACTIONS_ACTION_ITEM_H
#define ZELUTIL_ACTIONS_ACTION_ITEM_H

#include <zelutil/export.h>

#include <string>

/// A property with a shipped value that the user may overwrite. In force is `userValue` while `overwritten` is true,
/// else `defaultValue`.
template <typename T>
struct OverwritableValue {
    /// The shipped value, or the one taken over from the parent action.
    T defaultValue{};
    /// The user's value; without meaning while `overwritten` is false.
    T userValue{};
    /// The value to which `userValue` is set when the user goes back to the default. It is not the shipped value but
    /// empty or false in every item that this library makes: the default is `defaultValue`.
    T resetValue{};
    /// Whether the user's value differs from the default.
    bool overwritten = false;
};

/// One command of a host application: a plain record, copied out to whoever asks. Changing a copy changes nothing else.
struct ZELUTIL_API UCPActionItem {
    /// 1 or more for an action of the texts; 0 in an item that stands in for a parent that no text defines.
    int id = 0;
    /// The action whose shortcut and menu flag this one shares; 0 for a top-level action.
    int parent_id = 0;
    /// Display name.
    std::string name;
    /// Icon name, carried only.
    std::string icon;
    /// The editor or view in which the shortcut holds. Shortcuts and commands are unique per context.
    std::string context;
    /// Names what the host runs.
    std::string command;
    /// The key combination exactly as written; empty for none. "Ctrl+S" and "ctrl+s" are two.
    OverwritableValue<std::string> shortcut;
    /// Whether the action is shown in the right-mouse-button menu.
    OverwritableValue<bool> rmb;

    /// Ids 0, texts empty, flags false.
    UCPActionItem() = default;

    /// Nothing is overwritten.
    UCPActionItem(int actionId, int parentId, const std::string& displayName, const std::string& iconName,
                  const std::string& contextName, const std::string& commandText, const std::string& defaultShortcut,
                  bool inMenu);

    /// Whether the user's shortcut or the user's menu flag is in force.
    bool hasOverwrite() const;
};

#endif
