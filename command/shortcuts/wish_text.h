#ifndef ZELUTIL_COMMAND_SHORTCUTS_WISH_TEXT_H
#define ZELUTIL_COMMAND_SHORTCUTS_WISH_TEXT_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads what people write: wish lists and profiles. Whatever the text, reading ends quietly.
namespace zelutil::shortcuts {

/// The number of the form of profiles.
inline constexpr int kProfileForm = 1;

/// Says what one action is to have.
struct Wish {
    /// The line of a list, and the element of a JSON text, from 1 on.
    int place = 0;
    /// 0 where the action is named by its context and command alone.
    int id = 0;
    std::string context;
    std::string command;
    /// Empty for no shortcut; nothing where it is not to change.
    std::optional<std::string> shortcut;
    std::optional<bool> inMenu;
};

/// A line or an element that says nothing, and why.
struct WishFault {
    int place = 0;
    std::string text;
};

struct WishText {
    std::vector<Wish> wishes;
    std::vector<WishFault> faults;
    /// Says why nothing can be read; empty where it can.
    std::string unreadable;
    /// Whether the places are lines.
    bool isLines = false;
};

/// Reads a wish list. A text that begins with a brace is JSON, {"actions": [...]}, and may be a profile. Any other one
/// has a wish a line, ID = KEY or CONTEXT COMMAND = KEY, where KEY may be empty; blank lines and those that begin with
/// # say nothing, and neither does what stands behind KEY, a blank and #. Lines end with LF, CR or both.
///
///     "33 = Ctrl+Home" => {33, "Ctrl+Home"}    "ucpedit view zoom_fit =" => {"ucpedit", "view zoom_fit", ""}
WishText readWishes(std::string_view text);

/// Reads a profile: {"zelutilProfile": 1, "actions": [...]}, where each action has "id", "context", "command" and
/// "shortcut", "inMenu" or both. Members of other names are ignored. In either form, a wish with a control character or
/// a byte that is no UTF-8 is a fault.
WishText readProfile(std::string_view text);

}  // namespace zelutil::shortcuts

#endif
