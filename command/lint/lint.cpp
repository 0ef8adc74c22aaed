#include "command/lint/lint.h"

#include <algorithm>

#include "command/json_failure.h"
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
        case FileKind::Profile:
            report.add(Rule::UnknownKind, root, "The file is a profile of shortcuts, of which no start reads anything.",
                       "\"zelutil import\" takes it over into a user's file.");
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

/// Recurses as deep as the document nests.
void checkNullCharacters(View value, Report& report) {
    constexpr char kText[] = "The text has a null character, at which functions of C take it to end.";
    if (value.text().value_or("").find('\0') != std::string_view::npos) {
        report.add(Rule::NullCharacter, value, kText);
    }
    for (const json::Member& member : value.members()) {
        if (member.key.find('\0') != std::string_view::npos) {
            report.addAtKey(Rule::NullCharacter, member.value, member.key, kText);
        }
        checkNullCharacters(member.value, report);
    }
    for (const View element : value.elements()) {
        checkNullCharacters(element, report);
    }
}

/// The text ends there for every reader.
void checkEnd(const json::LocatedDocument& document, Report& report) {
    const std::size_t end = document.text().find('\0');
    if (end != std::string_view::npos) {
        report.addAt(Rule::NullCharacter, document.positionAt(end), document.positionAt(end + 1),
                     "The file has a null character. Nothing behind it is read, and a save leaves that out.",
                     "Take it out, with what stands behind it.");
    }
}

/// In a text that is read it is spelled so; as it is, it ends the file.
bool maySpellNullCharacters(std::string_view text) { return text.find("\\u0000") != std::string_view::npos; }

}  // namespace

Source::Source(std::string_view text)
    : document_(text), kind_(document_.valid() ? kindOf(document_.root()) : FileKind::Unknown) {}

std::vector<Finding> lint(const Source& source, const Choices& choices) {
    const json::LocatedDocument& document = source.document();
    Report report(document);
    if (const auto failure = document.failure()) {
        report.addAt(Rule::NotJson, failure->position, failure->position, command::textOfFailure(document));
    } else {
        const View defaults = choices.defaults == nullptr ? View() : choices.defaults->document().root();
        check(source.kind(), document.root(), defaults, report);
        checkBytes(report);
        checkEnd(document, report);
        if (maySpellNullCharacters(document.text())) {
            checkNullCharacters(document.root(), report);
        }
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
