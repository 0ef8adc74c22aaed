#ifndef ZELUTIL_COMMAND_COLORS_H
#define ZELUTIL_COMMAND_COLORS_H

#include <string>
#include <string_view>

#include "command/finding.h"
#include "command/system/console.h"

namespace zelutil::command {

enum class ColorChoice { Auto, Always, Never };

/// The part that a text plays, from which its look on a terminal follows.
enum class Role { Name, Value, Old, Faint, Note, Warning, Error };

/// Colours texts for one stream, or leaves them as they are.
class Colors {
public:
    /// If the choice is `Auto`, there are colours on a terminal that shows them, unless the variable "NO_COLOR" is set
    /// and not empty.
    Colors(ColorChoice choice, Stream stream);

    std::string operator()(Role role, std::string_view text) const;

private:
    bool shown_;
};

Role roleOf(Severity severity);

}  // namespace zelutil::command

#endif
