#ifndef ZELUTIL_COMMAND_SHORTCUT_KEYS_H
#define ZELUTIL_COMMAND_SHORTCUT_KEYS_H

#include <string>
#include <string_view>
#include <vector>

/// The keys that the text of a shortcut spells. The library itself compares such texts byte by byte, so two texts that
/// spell the same keys are two shortcuts.
namespace zelutil::command {

/// Returns what stands between the plus signs, without blanks at its ends: the modifiers, and the key last. A plus sign
/// at the end is a key.
///
///     "Ctrl + S" => "Ctrl", "S"    "Ctrl++" => "Ctrl", "+"    "+" => "+"    "" => ""
std::vector<std::string_view> tokensOf(std::string_view shortcut);

/// Returns the one name in lower case of a modifier that has several, in any case: "control" => "ctrl", "Win" =>
/// "meta". Returns the empty text for what is none.
std::string_view modifierNamed(std::string_view token);

/// Does the same for a name that is nearly a modifier's, which is a misspelt one: "Crtl" => "ctrl". Returns another
/// text in lower case.
std::string modifierMeant(std::string_view token);

/// Returns the one name in lower case of a key that has several: "Del" => "delete", "S" => "s".
std::string keyNamed(std::string_view token);

}  // namespace zelutil::command

#endif
