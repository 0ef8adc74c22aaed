#ifndef ZELUTIL_COMMAND_PATTERN_H
#define ZELUTIL_COMMAND_PATTERN_H

#include <string>
#include <string_view>

namespace zelutil::command {

/// Returns whether the text is one of those that the pattern describes, in any ASCII case. In the pattern `*` stands
/// for any characters, none too, and `?` for one byte; a pattern with neither describes the texts that contain it.
///
///     "grid" matches "display::grids::grid"    "*::grid" matches it    "gr?d" does not
bool matches(std::string_view pattern, std::string_view text);

/// Returns whether the text begins with this, in any ASCII case.
bool beginsWith(std::string_view text, std::string_view beginning);

}  // namespace zelutil::command

#endif
