#include "command/lint/rules.h"

#include <zelutil/util/ascii.h>

#include <algorithm>

namespace zelutil::lint {

using command::Severity;

const std::array<RuleInfo, kRuleCount>& rules() {
    static constexpr std::array<RuleInfo, kRuleCount> kRules = {{
        // The text and its form.
        {Rule::NotJson, "ZU001", Severity::Error, "The file is no JSON"},
        {Rule::UnknownKind, "ZU002", Severity::Warning, "The file is none of those that the library reads"},
        {Rule::UnknownMember, "ZU003", Severity::Warning, "No reader knows the member"},
        {Rule::WrongType, "ZU004", Severity::Error, "A value has the wrong type"},
        {Rule::MissingMember, "ZU005", Severity::Error, "A member is missing"},
        {Rule::RepeatedMember, "ZU006", Severity::Warning, "An object has two members of one name"},
        // Defaults.
        {Rule::RepeatedPath, "ZU007", Severity::Warning, "Two sections have one attribute path"},
        {Rule::RepeatedSetting, "ZU008", Severity::Error, "A setting is defined twice"},
        {Rule::BareNameTwice, "ZU009", Severity::Warning, "Two sections lend one bare name"},
        // Shipped actions.
        {Rule::RepeatedId, "ZU010", Severity::Error, "Two actions have one id"},
        {Rule::RepeatedCommand, "ZU011", Severity::Warning, "A command stands twice in one context"},
        {Rule::KeyShippedTwice, "ZU012", Severity::Error, "A shortcut is shipped twice where only one action gets it"},
        {Rule::MissingParent, "ZU013", Severity::Error, "The parent of an action is missing"},
        {Rule::CircleOfParents, "ZU014", Severity::Error, "Actions are each other's parents"},
        {Rule::ChildProperty, "ZU015", Severity::Warning,
         "A child has its parent's shortcut and menu flag, not its own"},
        {Rule::SpellingOfShortcut, "ZU016", Severity::Warning, "A shortcut is spelled unlike the others"},
        // The user's file.
        {Rule::UnknownSection, "ZU017", Severity::Warning, "The defaults have no such section"},
        {Rule::UnknownSetting, "ZU018", Severity::Warning, "The defaults have no such setting"},
        {Rule::AnotherSection, "ZU019", Severity::Warning, "An entry sets another section's setting"},
        {Rule::RepeatedEntry, "ZU020", Severity::Warning, "A later entry sets the same"},
        // The user's actions.
        {Rule::NotWrapped, "ZU021", Severity::Error, "The user's actions are not in an array of one"},
        {Rule::EntriesWithoutId, "ZU022", Severity::Error, "An entry without an id ends the list"},
        {Rule::UnknownAction, "ZU023", Severity::Warning, "No shipped action has the id"},
        {Rule::RefusedShortcut, "ZU024", Severity::Warning, "Another action has the shortcut"},
        {Rule::EmptyEntry, "ZU025", Severity::Warning, "An entry says nothing"},
        // Facets.
        {Rule::RepeatedGroup, "ZU026", Severity::Error, "Two groups have one header"},
        {Rule::RepeatedFacet, "ZU027", Severity::Warning, "A facet stands twice in its group"},
        {Rule::FacetType, "ZU028", Severity::Warning, "A facet's type is nearly \"Numerical\""},
        // Defaults again.
        {Rule::SubManager, "ZU029", Severity::Warning, "The library does not read this sub-manager's section"},
        // Shipped actions again.
        {Rule::RefusedToChild, "ZU030", Severity::Error, "A child does not get its parent's shortcut"},
        // The text and its form again.
        {Rule::NotUtf8, "ZU031", Severity::Warning, "A byte is no part of UTF-8"},
        {Rule::NullCharacter, "ZU032", Severity::Warning, "A text has a null character in it"},
    }};
    return kRules;
}

const RuleInfo& infoOf(Rule rule) { return rules()[static_cast<std::size_t>(rule)]; }

std::optional<Rule> ruleOf(std::string_view number) {
    const auto isSame = [](char a, char b) { return ascii::lowerCase(a) == ascii::lowerCase(b); };
    for (const RuleInfo& info : rules()) {
        const std::string_view known = info.number;
        if (std::equal(known.begin(), known.end(), number.begin(), number.end(), isSame)) {
            return info.rule;
        }
    }
    return std::nullopt;
}

}  // namespace zelutil::lint
