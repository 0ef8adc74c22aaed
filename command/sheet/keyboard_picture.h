#ifndef ZELUTIL_COMMAND_SHEET_KEYBOARD_PICTURE_H
#define ZELUTIL_COMMAND_SHEET_KEYBOARD_PICTURE_H

#include <string>
#include <string_view>
#include <vector>

#include "command/sheet/layers.h"

namespace zelutil::command::sheet {

/// Returns an element `svg` with the keyboard: on each key of the layer stands what it runs. A key that the user
/// changed has a thick border and a corner filled, so that it is told apart without colours too. `id` is the beginning
/// of the ids in it, and `contextName` is told by its title.
std::string pictureOf(const Layer& layer, const std::string& id, std::string_view contextName);

/// Returns the text in lines of so many characters at most, as far as words allow. A longer word has a line of its own;
/// where the lines do not do, the last one ends in "…".
///
///     ("Route differential pair", 11, 3) => "Route", "differential", "pair"
std::vector<std::string> wrapped(std::string_view text, std::size_t width, std::size_t maximumLines);

}  // namespace zelutil::command::sheet

#endif
