#ifndef ZELUTIL_COMMAND_SHORTCUTS_KEY_ANSWER_H
#define ZELUTIL_COMMAND_SHORTCUTS_KEY_ANSWER_H

#include <string>
#include <vector>

#include "command/shortcuts/shortcut_table.h"

namespace zelutil::shortcuts {

/// Says what one shortcut does in one context.
struct KeyAnswer {
    std::string shortcut;
    std::string context;
    /// Hold what the library's `getCommand` returns, and the action that runs; empty and 0 for nothing.
    std::string command;
    int action = 0;
    /// The same where the host asks for the fallback.
    std::string commandWithFallback;
    int actionWithFallback = 0;
    /// The action that holds the shortcut in the linked context, where it counts as taken; 0 for none.
    int linkedHolder = 0;
    /// Other actions of the context that show the shortcut and do not run.
    std::vector<int> shownBy;
    /// Shortcuts of the context, and then of the fallback, that spell the same key otherwise.
    std::vector<std::string> otherSpellings;
};

/// Returns what the manager of the actions runs for the shortcut; `rows` are all of `shortcutTable`.
KeyAnswer answerOf(const std::string& shortcut, const std::string& context, const std::vector<ShortcutRow>& rows);

/// Says in English why that runs, or why nothing does.
std::string whyOf(const KeyAnswer& answer, const std::vector<ShortcutRow>& rows);

/// Writes the members of the JSON form.
void writeAnswer(command::JsonWriter& json, const KeyAnswer& answer);

/// Says that a shortcut is not the one that spells the same key, and why.
std::string differenceOf(const std::string& shortcut, const std::string& other);
inline constexpr char kHowCompared[] = "Shortcuts are compared byte by byte.";

/// Returns the key in one spelling: its one name in small letters behind those of the modifiers, which stand in the
/// order of the alphabet, wherever the text has them. Two shortcuts of one spelling are one key to people, and may be
/// two to the library.
///
///     "Ctrl+Shift+S" => "ctrl+shift+s"    "shift + CTRL + s" => "ctrl+shift+s"    "Ctrl++" => "ctrl++"    "S+Ctrl" =>
///     "ctrl+s"
std::string oneSpelling(const std::string& shortcut);

}  // namespace zelutil::shortcuts

#endif
