// A plan says what a save is going to do, worked out without files: it changes nothing, and whatever it says is there
// to be looked at.
#include "prefs/save_plan.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/catalogue_of.h"

namespace zelutil::test {
namespace {

using prefs::Catalogue;
using prefs::SavePlan;
using prefs::Setting;
using prefs::SubManagerTexts;
using Names = std::set<std::string>;
using Type = prefs::SubManagerType;
using Values = std::map<std::string, std::string>;

std::optional<SavePlan> planned(const Catalogue& catalogue, const Values& settings, const SubManagerTexts& texts = {}) {
    return prefs::planSave(catalogue, prefs::SaveValues(catalogue, {settings, texts}));
}

/// The new values in the plan's order.
std::vector<std::pair<std::uint64_t, std::string>> newValues(const SavePlan& plan) {
    std::vector<std::pair<std::uint64_t, std::string>> values;
    for (const auto& [key, value] : plan.newValues) {
        values.emplace_back(key, value);
    }
    return values;
}

/// A section with one setting.
std::string section(const std::string& attribute, const std::string& name, const std::string& value,
                    const std::string& more = "") {
    return R"({"header":"H","attribute":")" + attribute + R"(","tclCommand":"t","defaultsettings":[{"name":")" + name +
           R"(","value":")" + value + R"("}])" + more + "}";
}

/// The same section as a save without white space would have it.
std::string saved(const std::string& attribute, const std::string& overridden, const std::string& more = "") {
    return R"({"header":"H","attribute":")" + attribute + "\"" + more + R"(,"overriddensettings":)" + overridden + "}";
}

/// The planned text without its white space.
std::string compactText(const SavePlan& plan) {
    const json::Document document(plan.fileText.value());
    return json::compactText(document.root()).value();
}

struct State {
    std::vector<std::pair<const Setting*, std::string>> values;
    Values sections;
    std::string defaultsText;
    SubManagerTexts defaultTexts;
    SubManagerTexts userTexts;

    bool operator==(const State& other) const {
        return values == other.values && sections == other.sections && defaultsText == other.defaultsText &&
               defaultTexts == other.defaultTexts && userTexts == other.userTexts;
    }
};

State stateOf(const Catalogue& catalogue) {
    State state;
    for (std::size_t place = 0; place < catalogue.settings().size(); ++place) {
        const Setting& setting = catalogue.settings().at(place);
        state.values.emplace_back(
            &setting, setting.defaultValue + "|" + setting.userValue + (setting.hasUserValue ? "|user" : ""));
    }
    for (const auto& [path, section] : catalogue.sections()) {
        state.sections[path] = section->header + section->tclCommand;
    }
    state.defaultsText = catalogue.defaultsText();
    state.defaultTexts = catalogue.defaultSubManagerTexts();
    state.userTexts = catalogue.userSubManagerTexts();
    return state;
}

constexpr char kWithActions[] =
    R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x","value":"1"},{"name":"y","value":"2"}]},
        {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}}])";

TEST(SavePlan, PlanningChangesNothing) {
    const Catalogue catalogue =
        catalogueOf(kWithActions, R"([{"header":"A","attribute":"a","overriddensettings":[{"y":"5"}]},
                                      {"header":"K","attribute":"k","overriddensettings":[1]}])");
    const State before = stateOf(catalogue);
    const auto plan = planned(catalogue, {{"x", "3"}, {"a::y", "6"}, {"nope", "7"}}, {{Type::Actions, "[2]"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->changedNames, (Names{"a::x", "a::y"}));
    EXPECT_EQ(stateOf(catalogue), before);
    const auto again = planned(catalogue, {{"x", "3"}, {"a::y", "6"}, {"nope", "7"}}, {{Type::Actions, "[2]"}});
    ASSERT_TRUE(again);
    EXPECT_EQ(again->fileText, plan->fileText);
    EXPECT_EQ(newValues(*again), newValues(*plan));
}

TEST(SavePlan, IsItsOwnAndOutlivesWhatItWasMadeOf) {
    std::optional<SavePlan> plan;
    {
        const Catalogue catalogue = catalogueOf(kWithActions);
        const Values settings = {{"x", "a value longer than any small buffer"}};
        const SubManagerTexts texts = {{Type::Actions, R"(["a text longer than any small buffer"])"}};
        plan = planned(catalogue, settings, texts);
    }
    ASSERT_TRUE(plan);
    EXPECT_EQ(newValues(*plan),
              (decltype(newValues(*plan)){{prefs::hashOf("a::x"), "a value longer than any small buffer"}}));
    EXPECT_EQ(plan->changedTexts, (SubManagerTexts{{Type::Actions, R"(["a text longer than any small buffer"])"}}));
}

TEST(SavePlan, ACopyThatReadsOtherDefaultsIsPlannedByThem) {
    const Catalogue catalogue = catalogueOf("[" + section("a", "x", "1") + "]");
    Catalogue copy = catalogue;
    prefs::readDefaults(withMeta("[" + section("b", "y", "2") + "," + section("c", "z", "3") + "]"), copy);
    ASSERT_TRUE(planned(catalogue, {{"x", "5"}}));
    const auto plan = planned(copy, {{"c::z", "6"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(compactText(*plan), withMeta("[" + saved("b", "[]") + "," + saved("c", R"([{"z":"6"}])") + "]"));
}

TEST(SavePlan, ThereIsNoneWhenNothingChanges) {
    const Catalogue catalogue =
        catalogueOf(kWithActions, R"([{"header":"A","attribute":"a","overriddensettings":[{"y":"5"}]}])");
    EXPECT_FALSE(planned(catalogue, {}));
    EXPECT_FALSE(planned(catalogue, {{"x", "1"}}));
    EXPECT_FALSE(planned(catalogue, {{"y", "5"}}));
    EXPECT_FALSE(planned(catalogue, {{"nope", "5"}}));
    EXPECT_FALSE(planned(catalogue, {}, {{Type{102}, "[1]"}}));
    EXPECT_FALSE(planned(catalogue, {}, {{Type::Actions, "no JSON"}}));
    EXPECT_TRUE(planned(catalogue, {{"y", "2"}}));
    EXPECT_TRUE(planned(catalogue, {}, {{Type::Actions, "[]"}}));
    EXPECT_FALSE(planned(catalogueOfTexts("", ""), {{"x", "3"}}, {{Type::Actions, "[1]"}}));
}

TEST(SavePlan, TakesTheUsersValuesAlongAndDefaultsThatWereAskedForOnlyWhenTheyAreTheUsers) {
    const Catalogue catalogue =
        catalogueOf("[" + section("a", "x", "1") + "," + section("b", "y", "2") + "," + section("c", "z", "3") + "]",
                    R"([{"header":"H","attribute":"b","overriddensettings":[{"y":"2"}]}])");
    const auto plan = planned(catalogue, {{"a::x", "9"}, {"c::z", "3"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(compactText(*plan), withMeta("[" + saved("a", R"([{"x":"9"}])") + "," + saved("b", R"([{"y":"2"}])") +
                                           "," + saved("c", "[]") + "]"));
    EXPECT_EQ(plan->changedNames, Names{"a::x"});
}

// The first definition of the name changes the setting; to the second, the new value is the current one already.
TEST(SavePlan, ALaterDefinitionOfTheSameNameFindsTheNewValueInForce) {
    const Catalogue catalogue = catalogueOf("[" + section("a", "x", "1") + "," + section("a", "X", "7") + "]");
    const auto plan = planned(catalogue, {{"x", "2"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(newValues(*plan), (decltype(newValues(*plan)){{prefs::hashOf("a::x"), "2"}}));
    EXPECT_EQ(plan->changedNames, Names{"a::x"});
    EXPECT_EQ(compactText(*plan),
              withMeta("[" + saved("a", R"([{"x":"2"}])") + "," + saved("a", R"([{"X":"2"}])") + "]"));
}

// "a::x" is the bare name of the first setting and the full name of the second, and leads to the first. What is to be
// saved under each name was settled when the planning began.
TEST(SavePlan, ASettingChangedUnderTwoNamesGetsTheValuesInTheOrderOfTheDefaults) {
    const std::string defaults = "[" + section("b", "a::x", "1") + "," + section("a", "x", "2") + "]";
    Catalogue catalogue =
        catalogueOf(defaults, R"([{"header":"H","attribute":"b","overriddensettings":[{"b::a::x":"5"}]}])");
    ASSERT_EQ(catalogue.find("a::x"), catalogue.find("b::a::x"));
    ASSERT_NE(catalogue.find("x"), catalogue.find("a::x"));
    const auto plan = planned(catalogue, {{"x", "6"}});
    ASSERT_TRUE(plan);
    // For "b::a::x": wanted 5, current 5, the user's. For "a::x": wanted 6, current 5, of the same setting.
    EXPECT_EQ(newValues(*plan), (decltype(newValues(*plan)){{prefs::hashOf("a::x"), "6"}}));
    EXPECT_EQ(plan->changedNames, Names{"a::x"});
    EXPECT_EQ(compactText(*plan),
              withMeta("[" + saved("b", R"([{"a::x":"5"}])") + "," + saved("a", R"([{"x":"6"}])") + "]"));
    catalogue.putInForce(plan->newValues);
    EXPECT_EQ(valueOf(catalogue, "b::a::x"), "6");
    EXPECT_EQ(valueOf(catalogue, "x"), "2");
}

/// Two settings with the full name "view::grid::<name>", of which the user set the first to 5 and the second, that only
/// its bare name leads to, to 6.
Catalogue withSharedFullName(const std::string& name) {
    return catalogueOf("[" + section("view", "grid::" + name, "1") + "," + section("view::grid", name, "2") + "," +
                           section("other", "o", "1") + "]",
                       "[" + saved("view", R"([{"grid::)" + name + R"(":"5"}])") + "," +
                           saved("view::grid", R"([{")" + name + R"(":"6"}])") + "]");
}

std::string savedWithSharedFullName(const std::string& name, const std::string& value) {
    return withMeta("[" + saved("view", R"([{"grid::)" + name + R"(":")" + value + R"("}])") + "," +
                    saved("view::grid", R"([{")" + name + R"(":")" + value + R"("}])") + "," +
                    saved("other", R"([{"o":"2"}])") + "]");
}

// The full name leads to the first setting, and its key is the greatest.
TEST(SavePlan, OfTwoValuesUnderOneFullNameThatOfTheFirstSettingIsSavedWhenItHasTheGreatestKey) {
    ASSERT_LT(prefs::hashOf("grid::size"), prefs::hashOf("size"));
    ASSERT_LT(prefs::hashOf("size"), prefs::hashOf("view::grid::size"));
    const Catalogue catalogue = withSharedFullName("size");
    ASSERT_EQ(valueOf(catalogue, "view::grid::size"), "5");
    ASSERT_EQ(valueOf(catalogue, "size"), "6");
    const auto plan = planned(catalogue, {{"o", "2"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(newValues(*plan), (decltype(newValues(*plan)){{prefs::hashOf("other::o"), "2"}}));
    EXPECT_EQ(plan->changedNames, Names{"other::o"});
    EXPECT_EQ(compactText(*plan), savedWithSharedFullName("size", "5"));
}

// The second setting's bare name has the greatest key.
TEST(SavePlan, OfTwoValuesUnderOneFullNameThatOfTheSecondSettingIsSavedWhenItHasTheGreatestKey) {
    ASSERT_LT(prefs::hashOf("view::grid::color"), prefs::hashOf("grid::color"));
    ASSERT_LT(prefs::hashOf("grid::color"), prefs::hashOf("color"));
    const Catalogue catalogue = withSharedFullName("color");
    ASSERT_EQ(valueOf(catalogue, "view::grid::color"), "5");
    ASSERT_EQ(valueOf(catalogue, "color"), "6");
    const auto plan = planned(catalogue, {{"o", "2"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(newValues(*plan), (decltype(newValues(*plan)){{prefs::hashOf("view::grid::color"), "6"},
                                                            {prefs::hashOf("other::o"), "2"}}));
    EXPECT_EQ(plan->changedNames, (Names{"other::o", "view::grid::color"}));
    EXPECT_EQ(compactText(*plan), savedWithSharedFullName("color", "6"));
}

TEST(SavePlan, SettingsOfASectionComeBeforeThoseOfItsChildrenWhereverTheTextHasThem) {
    const std::string children = R"("children":[)" + section("", "y", "1") + "]";
    const std::string defaults =
        R"([{)" + children +
        R"(,"header":"H","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"y","value":"1"}]}])";
    const Catalogue catalogue = catalogueOf(defaults);
    // "a::" + "::y" of the child is a name of its own; the parent's "a::y" is met first.
    const auto plan = planned(catalogue, {{"a::y", "2"}, {"a::::y", "3"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(newValues(*plan),
              (decltype(newValues(*plan)){{prefs::hashOf("a::y"), "2"}, {prefs::hashOf("a::::y"), "3"}}));
    EXPECT_EQ(compactText(*plan), withMeta(R"([{"children":[)" + saved("", R"([{"y":"3"}])") +
                                           R"(],"header":"H","attribute":"a","overriddensettings":[{"y":"2"}]}])"));
}

TEST(SavePlan, OfMembersWithOneNameTheFirstIsMeantAndTheOthersStay) {
    const std::string defaults =
        R"({"meta":[{"header":"H","tclCommand":"1","attribute":"a","overriddensettings":"old","tclCommand":"2",)"
        R"("defaultsettings":[{"name":"x","value":"1"}],"defaultsettings":[{"name":"y","value":"1"}],)"
        R"("overriddensettings":"second","children":[],"children":[)" +
        section("c", "z", "1") + R"(],"header":"I"}],"meta":[)" + section("m", "x", "1") + "]}";
    const auto plan = planned(catalogueOfTexts(defaults, ""), {{"a::x", "2"}, {"y", "2"}, {"z", "2"}, {"m::x", "2"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->changedNames, Names{"a::x"});
    EXPECT_EQ(
        compactText(*plan),
        R"({"meta":[{"header":"H","attribute":"a","overriddensettings":[{"x":"2"}],"tclCommand":"2",)"
        R"("defaultsettings":[{"name":"y","value":"1"}],"overriddensettings":"second","children":[],"children":[)" +
            section("c", "z", "1") + R"(],"header":"I"}],"meta":[)" + section("m", "x", "1") + "]}");
}

TEST(SavePlan, ChildrenThatAreNoArrayAndElementsThatAreNoSectionsStay) {
    const std::string odd = R"(1,null,{"header":1,"attribute":"a","tclCommand":"t"},{"header":"H","tclCommand":"t"})";
    const auto plan =
        planned(catalogueOf("[" + odd + "," + section("a", "x", "1", R"(,"children":{"a":1})") + "]"), {{"x", "2"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(compactText(*plan),
              withMeta("[" + odd + "," + saved("a", R"([{"x":"2"}])", R"(,"children":{"a":1})") + "]"));
}

TEST(SavePlan, EverySectionOfASubManagerGetsItsText) {
    const std::string owned = R"(,"submanagerId":100)";
    const std::string other = R"(,"submanagerId":102)";
    const Catalogue catalogue =
        catalogueOf("[" + section("k", "x", "1", owned + R"(,"children":[)" + section("k", "x", "1", other) + "]") +
                        "," + section("l", "x", "1", owned) + "]",
                    R"([{"header":"H","attribute":"k","overriddensettings":["held"],"children":[)"
                    R"({"header":"H","attribute":"k","overriddensettings":[1.50,{}]}]}])");
    const auto plan = planned(catalogue, {}, {{Type::Actions, R"( {"new" : [] } )"}});
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->changedTexts, (SubManagerTexts{{Type::Actions, R"( {"new" : [] } )"}, {Type{102}, "[1.5,{}]"}}));
    EXPECT_TRUE(plan->newValues.empty());
    EXPECT_TRUE(plan->changedNames.empty());
    EXPECT_EQ(
        compactText(*plan),
        withMeta("[" + saved("k", R"({"new":[]})", owned + R"(,"children":[)" + saved("k", "[1.5,{}]", other) + "]") +
                 "," + saved("l", R"({"new":[]})", owned) + "]"));
}

TEST(SavePlan, ATextThatCouldNotBeReadBackIsLeftOutButTheValuesArePlanned) {
    const Catalogue catalogue = catalogueOf(kWithActions);
    const std::string deepest = std::string(json::kMaximumDepth, '[') + std::string(json::kMaximumDepth, ']');
    const auto plan = planned(catalogue, {{"x", "3"}}, {{Type::Actions, deepest}});
    ASSERT_TRUE(plan);
    EXPECT_FALSE(plan->fileText);
    EXPECT_EQ(plan->changedNames, Names{"a::x"});
    EXPECT_EQ(plan->changedTexts, (SubManagerTexts{{Type::Actions, deepest}}));
}

TEST(SavePlan, PuttingValuesInForceIgnoresUnknownKeysAndKeepsTheOrder) {
    Catalogue catalogue = catalogueOf(kWithActions);
    const State before = stateOf(catalogue);
    catalogue.putInForce({{prefs::hashOf("a::nope"), "5"}});
    EXPECT_EQ(stateOf(catalogue), before);
    catalogue.putInForce({{prefs::hashOf("a::x"), "5"}, {prefs::hashOf("a::x"), ""}});
    EXPECT_EQ(valueOf(catalogue, "x"), "");
    EXPECT_EQ(defaultOf(catalogue, "x"), "1");
    EXPECT_EQ(valueOf(catalogue, "y"), "2");
}

}  // namespace
}  // namespace zelutil::test
