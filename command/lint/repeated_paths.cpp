// The rule for sections of one attribute path, in both preference files.
#include "command/lint/checks.h"
#include "command/sections.h"

namespace zelutil::lint {

void checkRepeatedPaths(json::View root, const OwnerOfSection& ownerOf, Report& report) {
    command::forEachRepeatedSection(root, ownerOf, [&](const prefs::VisitedSection& visited, json::View first) {
        report.add(Rule::RepeatedPath, visited.element.member(prefs::kAttribute),
                   "The attribute path " + inQuotes(visited.attributePath) + " is that of another section (" +
                       report.lineOf(first.member(prefs::kAttribute)) + ").");
    });
}

}  // namespace zelutil::lint
