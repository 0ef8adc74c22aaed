#ifndef ZELUTIL_COMMAND_FINDING_H
#define ZELUTIL_COMMAND_FINDING_H

#include <optional>
#include <string>
#include <vector>

namespace zelutil::command {

/// Says how much a finding matters. A note alone leaves the exit code 0.
enum class Severity { Note, Warning, Error };

/// A place in a file. Lines and columns count from 1; a column counts code points, as `json::Position` does.
struct Place {
    /// The system's own path, in UTF-8.
    std::string file;
    std::optional<int> line;
    std::optional<int> column;
};

/// Something that a person may want to know of or do something about.
struct Finding {
    Severity severity = Severity::Warning;
    /// One sentence in English.
    std::string text;
    /// One sentence that says what to do next; empty where there is nothing to do.
    std::string advice;
    std::optional<Place> place;
};

using Findings = std::vector<Finding>;

/// Returns "note", "warning" or "error".
constexpr const char* nameOf(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            break;
    }
    return "error";
}

}  // namespace zelutil::command

#endif
