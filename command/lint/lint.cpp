#include "command/lint/lint.h"

#include <algorithm>

#include "command/lint/checks.h"

namespace zelutil::lint {
namespace {

using json::View;

void check(FileKind kind, View root, View defaults, Report& report) {
    switch (kind) {
        case FileKind::Defaults:
            checkDefaults(root, report);
            return;
        case FileKind::User:
            checkUser(root, defaults, report);
            return;
        case FileKind::Actions:
            checkActions(root, report);
            return;
        case FileKind::UserActions:
            checkUserActions(root, shippedActions(defaults), report);
            return;
        case FileKind::Facets:
            checkFacets(root, report);
            return;
        case FileKind::Unknown:
            break;
    }
    report.add(Rule::UnknownKind, root,
               "The file holds neither preferences nor actions nor facets, so nothing of it is read.");
}

}  // namespace

Source::Source(std::string_view text)
    : document_(text), kind_(document_.valid() ? kindOf(document_.root()) : FileKind::Unknown) {}

std::vector<Finding> lint(const Source& source, const Choices& choices) {
    const json::LocatedDocument& document = source.document();
    Report report(document);
    if (const auto failure = document.failure()) {
        report.addAt(Rule::NotJson, failure->position, failure->position, failure->text);
    } else {
        const View defaults = choices.defaults == nullptr ? View() : choices.defaults->document().root();
        check(source.kind(), document.root(), defaults, report);
    }
    std::vector<Finding> findings = report.take();
    const auto isUnwanted = [&](const Finding& finding) {
        // No other rule can be checked in a file that is no JSON.
        return !choices.rules.empty() && choices.rules.count(finding.rule) == 0 && finding.rule != Rule::NotJson;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isUnwanted), findings.end());
    return findings;
}

bool areDefaults(FileKind kind) { return kind == FileKind::Defaults || kind == FileKind::Actions; }

}  // namespace zelutil::lint
