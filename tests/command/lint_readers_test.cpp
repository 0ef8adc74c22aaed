// The rules against the library's own readers: on random files with something wrong here and there, whatever a reader
// or the warnings at a start tell of must be told by a rule, too.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "actions/action_catalogue.h"
#include "actions/observer_registry.h"
#include "command/lint_findings.h"
#include "host/action_warnings.h"
#include "json/document.h"
#include "json/writer.h"
#include "prefs/catalogue_reader.h"
#include "prefs/random_preferences.h"

namespace zelutil::lint {
namespace {

using prefs::EntryFinding;

std::size_t countOf(const std::vector<Finding>& findings, Rule rule) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.rule == rule; }));
}

std::size_t countOf(const std::vector<EntryFinding>& findings, EntryFinding::Kind kind) {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(),
                                                  [&](const EntryFinding& finding) { return finding.kind == kind; }));
}

TEST(LintReaders, EveryFindingOfThePreferencesReaderIsToldByItsRule) {
    std::map<EntryFinding::Kind, std::size_t> seen;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        test::RandomPreferences random(seed);
        const std::string defaults = random.defaultsText();
        const std::string user = random.userText();
        if (!json::Document(user).valid() || kindOfText(user) != FileKind::User || !json::Document(defaults).valid()) {
            continue;
        }
        prefs::Catalogue catalogue;
        prefs::readDefaults(defaults, catalogue);
        prefs::readUserSettings(user, catalogue);
        const std::vector<Finding> findings = check(user, defaults);
        const auto& expected = catalogue.findings();
        using EntryKind = EntryFinding::Kind;
        EXPECT_EQ(countOf(findings, Rule::UnknownSection), countOf(expected, EntryKind::UnknownSection)) << user;
        EXPECT_EQ(countOf(findings, Rule::UnknownSetting), countOf(expected, EntryKind::UnknownName)) << user;
        EXPECT_EQ(countOf(findings, Rule::AnotherSection), countOf(expected, EntryKind::AnotherSection)) << user;
        EXPECT_GE(countOf(findings, Rule::WrongType),
                  countOf(expected, EntryKind::NoText) + countOf(expected, EntryKind::NoList))
            << user;
        if (countOf(expected, EntryKind::NotOfTheForm) > 0) {
            EXPECT_FALSE(findings.empty()) << user;
        }
        for (const EntryFinding& finding : expected) {
            ++seen[finding.kind];
        }
        if (testing::Test::HasFailure()) {
            FAIL() << defaults << "\n" << user << "\n" << told(findings);
        }
    }
    EXPECT_EQ(seen.size(), 6U);
    for (const auto& [kind, count] : seen) {
        EXPECT_GT(count, 20U) << static_cast<int>(kind);
    }
}

/// Returns the names of the settings under which a look-up finds no record, or that of another definition.
std::size_t shadowed(const std::string& defaults) {
    prefs::Catalogue catalogue;
    prefs::readDefaults(defaults, catalogue);
    std::size_t full = 0;
    for (std::size_t number = 0; number < catalogue.settings().recordCount(); ++number) {
        const prefs::Setting& record = catalogue.settings().record(number);
        full += catalogue.settings().find(record.key) != &record ? 1U : 0U;
    }
    return full;
}

TEST(LintReaders, EveryDefinitionThatNoFullNameFindsIsToldAsRepeated) {
    std::size_t seen = 0;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        const std::string defaults = test::RandomPreferences(seed).defaultsText();
        if (kindOfText(defaults) != FileKind::Defaults) {
            continue;
        }
        const std::vector<Finding> findings = lint(defaults);
        EXPECT_EQ(countOf(findings, Rule::RepeatedSetting), shadowed(defaults)) << defaults << told(findings);
        seen += shadowed(defaults);
    }
    EXPECT_GT(seen, 100U);
}

/// Small texts of actions, made of few ids, keys and contexts.
class RandomActions {
public:
    explicit RandomActions(unsigned seed) : random_(seed) {}

    std::string shipped() {
        std::string list;
        for (int id = 1; id <= 6; ++id) {
            const std::string parent =
                random_.below(4) == 0 ? ",\"parent_id\":" + std::to_string(1 + random_.below(8)) : "";
            list += (list.empty() ? "" : ",") + std::string("{\"id\":") + std::to_string(id) + parent +
                    ",\"context\":\"" + pick({"ucpedit", "brisk3d", "table"}) + "\",\"command\":\"c" +
                    std::to_string(random_.below(8)) + "\",\"shortcut\":\"" + key() + "\"}";
        }
        return "{\"actions\":[" + list + "]}";
    }

    std::string user() {
        std::string list;
        for (std::size_t left = random_.below(6); left > 0; --left) {
            list += (list.empty() ? "" : ",") + entry();
        }
        const std::string object = "{\"actions\":[" + list + "]}";
        return random_.below(10) == 0 ? object : "[" + object + "]";
    }

private:
    std::string pick(const std::vector<std::string>& texts) { return texts[random_.below(texts.size())]; }
    std::string key() { return pick({"", "A", "B", "C", "D"}); }

    std::string entry() {
        const std::string id =
            random_.below(15) == 0 ? pick({"0", "\"1\"", "-3", "1.0"}) : std::to_string(1 + random_.below(9));
        const std::string shortcut = random_.below(15) == 0 ? pick({"3", "null"}) : "\"" + key() + "\"";
        return "{\"id\":" + id + (random_.below(8) == 0 ? "" : ",\"shortcut\":" + shortcut) +
               (random_.below(3) == 0 ? ",\"rmb\":" + pick({"true", "false", "1"}) : "") + "}";
    }

    test::RandomText random_;
};

constexpr char kShipped[] = R"("tclCommand":"t","defaultsettings":)";
constexpr char kOverridden[] = R"("overriddensettings":)";

/// Returns a preference file with the actions in their section.
std::string fileWith(const std::string& member, const std::string& actions) {
    return R"({"meta":[{"header":"S","attribute":"s","submanagerId":100,)" + member + actions + "}]}";
}

TEST(LintReaders, WhatAChildIsGivenInVainIsTold) {
    const std::string shipped = R"({"actions":[{"id":1,"context":"c","command":"a","shortcut":"A"},)"
                                R"({"id":2,"parent_id":1,"context":"d","command":"a"},)"
                                R"({"id":3,"context":"d","command":"b"}]})";
    const std::vector<Finding> findings = check(R"([{"actions":[{"id":2,"shortcut":"F2"}]}])", shipped);
    ASSERT_EQ(findings.size(), 1U) << told(findings);
    EXPECT_EQ(findings[0].rule, Rule::ChildProperty);
    EXPECT_EQ(findings[0].begin.offset, 19U);
    // To take the key away from a child is what a save does before another action gets it.
    EXPECT_EQ(told(check(R"([{"actions":[{"id":2,"shortcut":""}]}])", shipped)), "");
}

/// Says which of the shipped actions are children.
class Children {
public:
    explicit Children(const std::string& shipped) { catalogue_.load(shipped, ""); }

    bool has(int id) const { return catalogue_.find(id) != nullptr && catalogue_.find(id)->parentId >= 1; }

private:
    const actions::ObserverRegistry nobody_;
    actions::ActionCatalogue catalogue_{nobody_};
};

TEST(LintReaders, EveryWarningOfAStartAboutTheActionsIsToldByARule) {
    using WarningKind = host::StartWarning::Kind;
    std::size_t refused = 0;
    std::size_t withoutEffect = 0;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        RandomActions random(seed);
        const std::string shipped = random.shipped();
        const std::string user = random.user();
        const std::vector<host::StartWarning> warnings = host::actionWarnings(shipped, user);
        const std::vector<Finding> findings = check(fileWith(kOverridden, user), fileWith(kShipped, shipped));
        const auto number = [&](WarningKind kind) {
            return static_cast<std::size_t>(std::count_if(warnings.begin(), warnings.end(),
                                                          [&](const auto& warning) { return warning.kind == kind; }));
        };
        // There is one finding for all that one child is given in vain, or would be if nobody held it.
        const Children children(shipped);
        std::set<int> inVain;
        std::size_t gifts = 0;
        std::size_t refusedToOthers = 0;
        for (const host::StartWarning& warning : warnings) {
            const bool isRefused = warning.kind == WarningKind::ShortcutRefused;
            refusedToOthers += isRefused && !children.has(warning.action) ? 1U : 0U;
            if (warning.text.find("because it follows its parent") != std::string::npos ||
                (isRefused && children.has(warning.action))) {
                inVain.insert(warning.action);
                ++gifts;
            }
        }
        EXPECT_EQ(countOf(findings, Rule::RefusedShortcut), refusedToOthers) << shipped << user << told(findings);
        EXPECT_EQ(countOf(findings, Rule::ChildProperty), inVain.size()) << shipped << user << told(findings);
        EXPECT_GE(findings.size() - inVain.size(), warnings.size() - gifts) << shipped << user << told(findings);
        refused += refusedToOthers;
        withoutEffect += number(WarningKind::EntryWithoutEffect);
    }
    EXPECT_GT(refused, 200U);
    EXPECT_GT(withoutEffect, 200U);
}

/// Goes through the shipped actions as the library's contract has it: the first with a key in a context has it, and two
/// linked contexts ask each other.
TEST(LintReaders, AKeyIsShippedTwiceWhereAnEditWouldRefuseIt) {
    std::size_t seen = 0;
    for (unsigned seed = 0; seed < 2000; ++seed) {
        const std::string shipped = RandomActions(seed).shipped();
        const actions::ObserverRegistry nobody;
        actions::ActionCatalogue catalogue(nobody);
        std::size_t pairs = 0;
        catalogue.loadAndEdit(shipped, [&](actions::ActionCatalogue& loading) {
            for (int id = 1; id <= 6; ++id) {
                const auto* const action = loading.find(id);
                const int holder = action->inTheWay(action->shortcut.defaultValue);
                pairs += !action->shortcut.defaultValue.empty() && holder != 0 && holder < id ? 1U : 0U;
            }
        });
        const std::vector<Finding> findings = lint(shipped);
        EXPECT_EQ(countOf(findings, Rule::KeyShippedTwice), pairs) << shipped << told(findings);
        seen += pairs;
    }
    EXPECT_GT(seen, 200U);
}

}  // namespace
}  // namespace zelutil::lint
