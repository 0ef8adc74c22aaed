#ifndef ZELUTIL_COMMAND_LINT_LINT_H
#define ZELUTIL_COMMAND_LINT_LINT_H

#include <set>
#include <string_view>
#include <vector>

#include "command/lint/file_kind.h"
#include "command/lint/report.h"

/// Checks the files of the library. What a file means is computed by the library's own readers, and where something
/// stands by its own parser.
namespace zelutil::lint {

struct Choices {
    /// Holds the text of the defaults against which a user's file is checked; nothing of them is reported. Without it
    /// only the form of such a file is checked.
    std::string_view defaults;
    /// Holds the rules that are wanted; all where it is empty.
    std::set<Rule> rules;
};

/// Returns what is wrong with a text, in its order.
std::vector<Finding> lint(std::string_view text, const Choices& choices = {});

/// Returns the kind of a text; `Unknown` also for one that is no JSON.
FileKind kindOfText(std::string_view text);

}  // namespace zelutil::lint

#endif
