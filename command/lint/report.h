#ifndef ZELUTIL_COMMAND_LINT_REPORT_H
#define ZELUTIL_COMMAND_LINT_REPORT_H

#include <string>
#include <string_view>
#include <vector>

#include "command/lint/rules.h"
#include "json/located_document.h"

namespace zelutil::lint {

struct Finding {
    Rule rule = Rule::NotJson;
    /// The place in the file: from the first byte of what is meant to behind the last.
    json::Position begin;
    json::Position end;
    std::string message;  ///< Sentences for people.
    std::string hint;     ///< Tells what to do instead; empty where nothing is known.
};

/// Collects the findings of one file.
class Report {
public:
    explicit Report(const json::LocatedDocument& document) : document_(document) {}

    /// Adds a finding about a value.
    void add(Rule rule, json::View value, std::string message, std::string hint = {});

    /// Adds a finding about the key of a member, whose value is given; about the value where it is no member's.
    void addAtKey(Rule rule, json::View value, std::string_view key, std::string message, std::string hint = {});

    void addAt(Rule rule, json::Position begin, json::Position end, std::string message, std::string hint = {});

    /// Returns "line 3", where a value begins; "line 3, column 9" where another one begins in the same line.
    std::string lineOf(json::View value, json::View near = {}) const;

    /// Returns the position of the key whose value is given; that of the value where it is no member's.
    json::Position keyPlaceOf(json::View value) const;

    const json::LocatedDocument& document() const { return document_; }

    /// Returns the findings in the order of the file.
    std::vector<Finding> take();

private:
    const json::LocatedDocument& document_;
    std::vector<Finding> findings_;
};

/// Returns "Did you mean x?" for the known name that is nearest; nothing where none is near.
std::string nearestHint(std::string_view wanted, const std::vector<std::string>& known);

/// Returns the text in quotation marks.
std::string inQuotes(std::string_view text);

}  // namespace zelutil::lint

#endif
