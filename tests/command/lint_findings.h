#ifndef ZELUTIL_TESTS_COMMAND_LINT_FINDINGS_H
#define ZELUTIL_TESTS_COMMAND_LINT_FINDINGS_H

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "command/lint/lint.h"
#include "support/text_file.h"

namespace zelutil::lint {

/// Returns a line for each finding: its rule, where it stands, and what it says.
inline std::string told(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += std::string(infoOf(finding.rule).number) + " at " + std::to_string(finding.begin.line) + ':' +
                std::to_string(finding.begin.column) + ": " + finding.message + ' ' + finding.hint + '\n';
    }
    return text;
}

/// Returns the findings of a text by itself.
inline std::vector<Finding> lint(const std::string& text) { return lint(Source(text)); }

inline FileKind kindOfText(const std::string& text) { return Source(text).kind(); }

/// Returns the findings of a text that is checked against these defaults; empty ones are none.
inline std::vector<Finding> check(const std::string& text, const std::string& defaults, std::set<Rule> rules = {}) {
    const Source source(defaults);
    return lint(Source(text), {defaults.empty() ? nullptr : &source, std::move(rules)});
}

/// Returns a shipped file of an example, such as "product".
inline std::string shippedFile(const std::string& product, const std::string& name) {
    return test::readTextFile(ZELUTIL_TEST_PROJECT "/examples/" + product + "/share/qtxsetup/canvas/resources/tessel/" +
                              name);
}

}  // namespace zelutil::lint

#endif
