#include "command/lint/lint.h"

#include <algorithm>

#include "command/lint/checks.h"
#include "command/text.h"

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

/// Names the first such byte: a file in another encoding has many.
void checkBytes(Report& report) {
    const json::LocatedDocument& document = report.document();
    const auto bad = command::badBytesOf(document.text());
    if (bad) {
        const std::string others =
            bad->count == 1 ? "" : ", as " + std::to_string(bad->count) + " bytes of the file are none";
        report.addAt(
            Rule::NotUtf8, document.positionAt(bad->first), document.positionAt(bad->first + 1),
            "The byte " + command::nameOfByte(document.text()[bad->first]) + " is no part of UTF-8" + others + '.',
            "Save the file in UTF-8.");
    }
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
        checkBytes(report);
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
