// The list of rules in docs/lint.md, whose examples run here.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>
#include <vector>

#include "command/lint_findings.h"

namespace zelutil::lint {
namespace {

struct Described {
    std::string number;
    std::string title;
    std::string severity;
    std::string bad;
    std::string good;
};

struct Document {
    std::string defaults;
    std::vector<Described> rules;
};

/// Puts the byte in the place of its spelling "\\xF6", which no JSON has.
std::string withBytes(std::string line) {
    for (std::size_t at = line.find("\\x"); at != std::string::npos; at = line.find("\\x", at)) {
        line.replace(at, 4, 1, static_cast<char>(std::stoi(line.substr(at + 2, 2), nullptr, 16)));
    }
    return line;
}

/// Takes the document apart: headings with numbers, and the blocks of code under "Bad:" and "Good:".
Document readDocument() {
    std::istringstream lines(test::readTextFile(ZELUTIL_TEST_PROJECT "/docs/lint.md"));
    Document document;
    std::string* block = nullptr;
    std::string* next = &document.defaults;
    bool expectsSeverity = false;
    for (std::string line; std::getline(lines, line);) {
        if (block != nullptr) {
            if (line == "```") {
                block = nullptr;
            } else {
                *block += (block->empty() ? "" : "\n") + withBytes(line);
            }
        } else if (line.rfind("## ZU", 0) == 0) {
            document.rules.push_back({line.substr(3, 5), line.substr(10), "", "", ""});
            expectsSeverity = true;
        } else if (line == "Bad:") {
            next = &document.rules.back().bad;
        } else if (line == "Good:") {
            next = &document.rules.back().good;
        } else if (line.rfind("```json", 0) == 0) {
            block = next;
        } else if (expectsSeverity && !line.empty()) {
            document.rules.back().severity = line.substr(0, line.find('.'));
            expectsSeverity = false;
        }
    }
    return document;
}

TEST(LintExamples, EveryRuleIsInTheListWithItsTitleAndSeverity) {
    const Document document = readDocument();
    ASSERT_EQ(document.rules.size(), kRuleCount);
    for (std::size_t i = 0; i < kRuleCount; ++i) {
        const RuleInfo& info = rules()[i];
        EXPECT_EQ(info.rule, static_cast<Rule>(i)) << info.number;
        EXPECT_EQ(document.rules[i].number, info.number);
        EXPECT_EQ(document.rules[i].title, info.title);
        std::string severity = command::nameOf(info.severity);
        severity[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(severity[0])));
        EXPECT_EQ(document.rules[i].severity, severity) << info.number;
        EXPECT_EQ(ruleOf(info.number), info.rule);
    }
}

TEST(LintExamples, TheBadOneGivesItsRuleAloneAndTheGoodOneNothing) {
    const Document document = readDocument();
    EXPECT_EQ(told(check(document.defaults, "")), "");
    for (const Described& rule : document.rules) {
        const std::vector<Finding> findings = check(rule.bad, document.defaults);
        EXPECT_FALSE(findings.empty()) << rule.number;
        for (const Finding& finding : findings) {
            EXPECT_EQ(infoOf(finding.rule).number, rule.number) << told(findings);
        }
        EXPECT_EQ(told(check(rule.good, document.defaults)), "") << rule.number;
    }
}

TEST(LintExamples, RulesCanBeChosen) {
    const Document document = readDocument();
    for (const Described& rule : document.rules) {
        const Rule other = *ruleOf(rule.number == "ZU001" ? "zu002" : "zu001");
        EXPECT_FALSE(check(rule.bad, document.defaults, {*ruleOf(rule.number)}).empty()) << rule.number;
        // That a file cannot be read is told whatever rules are chosen.
        EXPECT_EQ(check(rule.bad, document.defaults, {other}).empty(), rule.number != "ZU001") << rule.number;
    }
    EXPECT_FALSE(ruleOf("ZU000").has_value());
    EXPECT_FALSE(ruleOf("ZU1").has_value());
    EXPECT_FALSE(ruleOf("").has_value());
}

struct Placed {
    const char* number;
    const char* text;  ///< The text that the finding is about, as it stands in the bad example.
};

/// The places were read off the examples.
TEST(LintExamples, AFindingStandsAtTheVeryTextThatItIsAbout) {
    const Placed rows[] = {
        {"ZU003", "\"facet\""},     {"ZU004", "0.5"},         {"ZU007", "\"display\""},
        {"ZU008", "\"Grid\""},      {"ZU009", "\"grid\""},    {"ZU011", "\"design save\""},
        {"ZU012", "\"Ctrl+S\""},    {"ZU013", "9"},           {"ZU015", "\"shortcut\""},
        {"ZU016", "\"ctrl+P\""},    {"ZU017", "\"dispaly\""}, {"ZU018", "\"gird\""},
        {"ZU019", "\"grid\""},      {"ZU020", "\"grid\""},    {"ZU023", "77"},
        {"ZU024", "\"Ctrl+O\""},    {"ZU026", "\"Net\""},     {"ZU027", "\"Length\""},
        {"ZU028", "\"numerical\""}, {"ZU029", "10"},          {"ZU030", "1"},
    };
    const Document document = readDocument();
    for (const Placed& row : rows) {
        const auto rule = std::find_if(document.rules.begin(), document.rules.end(),
                                       [&](const Described& candidate) { return candidate.number == row.number; });
        const std::vector<Finding> findings = check(rule->bad, document.defaults);
        ASSERT_EQ(findings.size(), 1U) << told(findings);
        const Finding& finding = findings.front();
        EXPECT_EQ(rule->bad.substr(finding.begin.offset, finding.end.offset - finding.begin.offset), row.text)
            << row.number;
    }
}

TEST(LintExamples, AMisspeltNameComesWithTheNearestKnownOne) {
    const Document document = readDocument();
    const auto hintOf = [&](std::size_t number) {
        return check(document.rules[number - 1].bad, document.defaults).at(0).hint;
    };
    EXPECT_EQ(hintOf(3), "Did you mean facets?");
    EXPECT_EQ(hintOf(17), "Did you mean display?");
    EXPECT_EQ(hintOf(18), "Did you mean grid?");
    EXPECT_EQ(hintOf(28), "Did you mean Numerical?");
}

}  // namespace
}  // namespace zelutil::lint
