#ifndef ZELUTIL_COMMAND_SHEET_KEYBOARD_H
#define ZELUTIL_COMMAND_SHEET_KEYBOARD_H

#include <string_view>
#include <vector>

/// A keyboard of a desk with the keys where most are in the United States, without the block of digits.
namespace zelutil::command::sheet {

struct Key {
    /// The key's name as `keyNamed` and `modifierNamed` return it; empty for one that no shortcut names.
    std::string_view name;
    /// Holds the text that stands on the key.
    std::string_view label;
    /// The character that it gives with Shift, where that has a place on it too.
    std::string_view shifted;
    /// The place of its left upper corner and its width, in widths of a letter's key. Rows are 1 apart.
    double x = 0;
    double y = 0;
    double width = 1;
};

/// Returns all keys.
const std::vector<Key>& keyboard();

/// Returns the number of the key that has the name or gives the character with Shift; nothing is -1.
int keyNumber(std::string_view name);

constexpr double kKeyboardWidth = 18.5;
constexpr double kKeyboardHeight = 6.3;

}  // namespace zelutil::command::sheet

#endif
