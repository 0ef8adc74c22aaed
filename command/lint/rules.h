#ifndef ZELUTIL_COMMAND_LINT_RULES_H
#define ZELUTIL_COMMAND_LINT_RULES_H

#include <array>
#include <optional>
#include <string_view>

#include "command/finding.h"

namespace zelutil::lint {

/// The rules in the order of their numbers. A rule keeps its number for good; new ones go to the end.
enum class Rule {
    NotJson,
    UnknownKind,
    UnknownMember,
    WrongType,
    MissingMember,
    RepeatedMember,
    RepeatedPath,
    RepeatedSetting,
    BareNameTwice,
    RepeatedId,
    RepeatedCommand,
    KeyShippedTwice,
    MissingParent,
    CircleOfParents,
    ChildProperty,
    SpellingOfShortcut,
    UnknownSection,
    UnknownSetting,
    AnotherSection,
    RepeatedEntry,
    NotWrapped,
    EntriesWithoutId,
    UnknownAction,
    RefusedShortcut,
    EmptyEntry,
    RepeatedGroup,
    RepeatedFacet,
    FacetType,
    SubManager,
    RefusedToChild,
    NotUtf8,
    NullCharacter,
};

inline constexpr std::size_t kRuleCount = static_cast<std::size_t>(Rule::NullCharacter) + 1;

struct RuleInfo {
    Rule rule;
    const char* number;
    command::Severity severity;
    const char* title;  ///< As docs/lint.md has it: a sentence without its full stop.
};

const std::array<RuleInfo, kRuleCount>& rules();

const RuleInfo& infoOf(Rule rule);

/// Returns the rule of a number such as "ZU001", in any case.
std::optional<Rule> ruleOf(std::string_view number);

}  // namespace zelutil::lint

#endif
