#ifndef ZELUTIL_COMMAND_SHEET_LAYERS_H
#define ZELUTIL_COMMAND_SHEET_LAYERS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "command/sheet/sheet.h"

namespace zelutil::command::sheet {

/// Lists the actions of the keys that are pressed while the same modifiers are held down.
struct Layer {
    /// Names of the modifiers as `modifierNamed` returns them, in the order in which a title has them.
    std::vector<std::string_view> modifiers;
    /// The entries of each key, by its number on the keyboard.
    std::map<int, std::vector<const Entry*>> keys;
};

struct Layers {
    /// Those with fewer modifiers come first.
    std::vector<Layer> layers;
    /// Entries with a shortcut that is on no picture: a key or a modifier in it is not on the keyboard.
    std::vector<const Entry*> elsewhere;
};

/// Returns the layers of a context that have entries. An entry without a shortcut, and one whose shortcut
/// does not run it, is in none. The entries stay those of the context.
Layers layersOf(const Context& context);

/// Returns "Ctrl+Shift"; "No modifier" for none.
std::string titleOf(const Layer& layer);

}  // namespace zelutil::command::sheet

#endif
