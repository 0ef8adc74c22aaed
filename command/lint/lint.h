#ifndef ZELUTIL_COMMAND_LINT_LINT_H
#define ZELUTIL_COMMAND_LINT_LINT_H

#include <set>
#include <string_view>
#include <vector>

#include "command/lint/file_kind.h"
#include "command/lint/report.h"
#include "json/located_document.h"

/// Checks the files of the library. What a file means is computed by the library's own readers, and where something
/// stands by its own parser.
namespace zelutil::lint {

/// A text of a file, parsed once for all questions about it. The text itself must stay.
class Source {
public:
    explicit Source(std::string_view text);

    const json::LocatedDocument& document() const { return document_; }

    /// `Unknown` also for a text that is no JSON.
    FileKind kind() const { return kind_; }

private:
    json::LocatedDocument document_;
    FileKind kind_;
};

struct Choices {
    /// The defaults against which a user's file is checked; nothing of them is reported. Without them only the form of
    /// such a file is checked.
    const Source* defaults = nullptr;
    /// Holds the rules that are wanted; all where it is empty.
    std::set<Rule> rules;
};

/// Returns what is wrong with a text, in its order.
std::vector<Finding> lint(const Source& source, const Choices& choices = {});

/// Returns whether a user's file can be checked against these defaults: actions have theirs in a file of their own,
/// too.
bool areDefaults(FileKind kind);

}  // namespace zelutil::lint

#endif
