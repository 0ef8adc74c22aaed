// Entries that mean nothing to the defaults of this process stay in the file, for the process to which they mean
// something.
#include <gtest/gtest.h>

#include "host/settings_process.h"
#include "host/settings_texts.h"

namespace zelutil::test {
namespace {

const std::string kKeptDefaults = R"({"meta":[)" + defined("a", {"x", "y"}) + "," +
                                  R"({"header":"G","attribute":"g","children":[)" + defined("b", {"z"}) + "]}," +
                                  defined("k", {}, R"(,"submanagerId":100)") + "," +
                                  defined("l", {}, R"(,"submanagerId":102)") + "]}";

constexpr char kNothing[] = "a: []\ng: []\ng::b: []\nk: []\nl: []\n";

/// Saves over the file, and returns what it holds then. A second save changes nothing any more.
std::string entriesAfterSave(const std::string& file, const Values& values = {}) {
    FileText now = file;
    SettingsProcess process(kKeptDefaults, now);
    process.save(now, values);
    const FileText first = now;
    process.save(now, {});
    EXPECT_EQ(now, first);
    return entriesOf(now.value());
}

TEST(SettingsKept, NothingIsKeptOfAFileThatHasNothing) {
    EXPECT_EQ(entriesAfterSave(fileWith({})), kNothing);
    EXPECT_EQ(entriesAfterSave(fileWith({given("a", ""), given("g", ""), given("gone", "")})), kNothing);
}

TEST(SettingsKept, EntriesWithUnknownNamesStayInTheirSection) {
    EXPECT_EQ(entriesAfterSave(fileWith({given("a", R"({"old":"1","x":"2"},{"":"3"})"), given("g::b", R"({"o":"4"})")}),
                               {{"y", "5"}}),
              "a: [{\"a::x\":\"2\"},{\"a::y\":\"5\"},{\"old\":\"1\"},{\"\":\"3\"}]\ng: []\ng::b: [{\"o\":\"4\"}]\nk: "
              "[]\nl: []\n");
}

TEST(SettingsKept, UnknownSectionsStayAtTheEndWithTheirWholePaths) {
    const std::string nested =
        R"({"meta":[{"header":"O","attribute":"old","overriddensettings":[{"x":"2"}],"children":[)" +
        given("in", R"({"x":"3"})") + "]},{\"header\":\"G\",\"attribute\":\"g\",\"children\":[" +
        given("new", R"({"z":"4"})") + "]}]}";
    EXPECT_EQ(entriesAfterSave(nested),
              std::string(kNothing) + "old: [{\"x\":\"2\"}]\nold::in: [{\"x\":\"3\"}]\n" + "g::new: [{\"z\":\"4\"}]\n");
}

TEST(SettingsKept, WhatIsNoTextStaysBehindTheValuesAndSetsNothing) {
    const std::string file = fileWith({given("a", R"({"x":5,"y":"2","o":null},7,["x"],{})"),
                                       R"({"header":"H","attribute":"g::b","overriddensettings":{"z":"3"}})"});
    EXPECT_EQ(entriesAfterSave(file),
              "a: [{\"a::y\":\"2\"},{\"x\":5},{\"o\":null},7,[\"x\"]]\ng: []\ng::b: []\nk: []\nl: []\n"
              "g::b: {\"z\":\"3\"}\n");
}

TEST(SettingsKept, WhatSetsNothingStaysInTheOrderOfTheFile) {
    const std::string entries = R"(5,{"old":"1"},{"x":false},{"":"e"},"x",{"older":"2"})";
    EXPECT_EQ(entriesAfterSave(fileWith({given("g::b", entries)}), {{"z", "3"}}),
              "a: []\ng: []\ng::b: [{\"g::b::z\":\"3\"}," + entries + "]\nk: []\nl: []\n");
}

TEST(SettingsKept, TwoSectionsOfOnePathBecomeOne) {
    EXPECT_EQ(
        entriesAfterSave(fileWith({given("a", R"({"x":"2"},5)"), given("g::b", ""), given("a", R"({"y":7},"x")")}),
                         {{"y", "3"}}),
        "a: [{\"a::x\":\"2\"},{\"a::y\":\"3\"},5,{\"y\":7},\"x\"]\ng: []\ng::b: []\nk: []\nl: []\n");
}

TEST(SettingsKept, EntriesOfASectionThatOnlyGroupsOthersStay) {
    EXPECT_EQ(entriesAfterSave(fileWith({given("g", R"({"z":"3"})")})), std::string(kNothing) + "g: [{\"z\":\"3\"}]\n");
}

TEST(SettingsKept, EntriesOfASectionThatIsDefinedTwiceStayOnce) {
    FileText file = fileWith({given("a", R"({"old":"1"})"), given("a", R"({"older":"2"})")});
    SettingsProcess process(fileWith({defined("a", {"x"}), defined("a", {"y"})}), file);
    process.save(file, {{"y", "3"}});
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"old\":\"1\"},{\"older\":\"2\"}]\na: [{\"a::y\":\"3\"}]\n");
}

TEST(SettingsKept, TheHeadingOfAKeptSectionStays) {
    FileText file = R"({"meta":[{"attribute":"old","header":"An old one","overriddensettings":[1.50]}]})";
    SettingsProcess process(kKeptDefaults, file);
    process.save(file, {});
    const json::Document written(*file);
    std::string last;
    for (const json::View section : written.root().member("meta").elements()) {
        last = json::compactText(section).value();
    }
    EXPECT_EQ(last, R"({"header":"An old one","attribute":"old","overriddensettings":[1.5]})");
}

// A newer program knows more settings. What it saved is there again after the older one has saved.
TEST(SettingsKept, AProgramWithOtherDefaultsFindsItsValuesAgain) {
    const std::string newer =
        fileWith({defined("a", {"x", "y", "fresh"}), defined("n", {"p"}), defined("m", {}, R"(,"submanagerId":103)")});
    FileText file = fileWith({given("a", R"({"fresh":"2"},{"x":"3"})"), given("n", R"({"p":"4"})"), given("m", "[5]")});
    const auto before = userValuesOf(catalogueOfTexts(newer, *file));
    SettingsProcess older(kKeptDefaults, file);
    older.save(file, {{"y", "6"}});
    const Catalogue after = catalogueOfTexts(newer, *file);
    EXPECT_EQ(valueOf(after, "fresh"), "2");
    EXPECT_EQ(valueOf(after, "x"), "3");
    EXPECT_EQ(valueOf(after, "p"), "4");
    EXPECT_EQ(valueOf(after, "y"), "6");
    EXPECT_EQ(after.userSubManagerTexts().at(prefs::SubManagerType{103}), "[[5]]");
}

/// The text that a save writes over `fileNow`, when the process started with `fileAtStart`.
std::string entriesWith(const FileText& fileAtStart, const FileText& fileNow, std::optional<std::string_view> actions) {
    const SettingsProcess process(kKeptDefaults, fileAtStart);
    auto plan = host::planSettings(process.catalogue(), {}, fileNow);
    return entriesOf(host::fileText(plan, actions).value());
}

std::string withTexts(const std::string& actions, const std::string& others) {
    return "a: []\ng: []\ng::b: []\nk: " + actions + "\nl: " + others + "\n";
}

TEST(SettingsKept, SectionsOfSubManagersHoldWhatTheFileHasAndTheActionsWhatIsHandedOver) {
    const std::string start = fileWith({given("k", "1"), given("l", "2")});
    const std::string now = fileWith({given("k", "3"), given("l", "4")});
    EXPECT_EQ(entriesWith(start, now, "[5]"), withTexts("[5]", "[4]"));
    EXPECT_EQ(entriesWith(start, now, R"({"any":1})"), withTexts(R"({"any":1})", "[4]"));
    EXPECT_EQ(entriesWith(start, now, std::nullopt), withTexts("[3]", "[4]"));
    EXPECT_EQ(entriesWith(start, now, "no JSON"), withTexts("[3]", "[4]"));
    EXPECT_EQ(entriesWith(start, std::nullopt, "[5]"), withTexts("[5]", "[2]"));
    EXPECT_EQ(entriesWith(start, std::nullopt, std::nullopt), withTexts("[1]", "[2]"));
    EXPECT_EQ(entriesWith(start, fileWith({given("k", "")}), std::nullopt), withTexts("[]", "[2]"));
    EXPECT_EQ(entriesWith(std::nullopt, std::nullopt, std::nullopt), withTexts("[]", "[]"));
}

TEST(SettingsKept, ThePlanTellsWhatTheFileHasForTheActions) {
    const SettingsProcess process(kKeptDefaults, fileWith({given("k", "1")}));
    const auto actionsIn = [&process](const FileText& now) {
        return host::planSettings(process.catalogue(), {}, now).actionsInFile;
    };
    EXPECT_EQ(actionsIn(fileWith({given("k", R"( {"actions": [ ] } )"), given("k", "2")})), R"([{"actions":[]}])");
    EXPECT_EQ(actionsIn(fileWith({given("k", "")})), "[]");
    EXPECT_EQ(actionsIn(fileWith({given("a", "")})), std::nullopt);
    EXPECT_EQ(actionsIn(std::nullopt), std::nullopt);
    EXPECT_EQ(actionsIn("no JSON"), std::nullopt);
}

TEST(SettingsKept, ATextOfTheActionsThatNestsTooDeepMakesNoFile) {
    const SettingsProcess process(kKeptDefaults, std::nullopt);
    auto plan = host::planSettings(process.catalogue(), {}, std::nullopt);
    const std::string deepest = std::string(json::kMaximumDepth, '[') + std::string(json::kMaximumDepth, ']');
    EXPECT_EQ(host::fileText(plan, deepest), std::nullopt);
}

// Kept values lie no deeper than they did, so that a file that could be read can be written.
TEST(SettingsKept, TheDeepestValuesStayReadable) {
    const std::size_t around = 5;  // The file, its array, the section, its array, the entry.
    const std::string deep =
        std::string(json::kMaximumDepth - around, '[') + std::string(json::kMaximumDepth - around, ']');
    FileText file = fileWith({given("g::b", R"({"o":)" + deep + "}"), given("old", R"({"o":)" + deep + "}")});
    ASSERT_TRUE(json::Document(*file).valid());
    SettingsProcess process(kKeptDefaults, file);
    process.save(file, {{"x", "2"}});
    EXPECT_EQ(entriesOf(file.value()),
              "a: [{\"a::x\":\"2\"}]\ng: []\ng::b: []\nk: []\nl: []\n"
              "g::b: [{\"o\":" +
                  deep + "}]\nold: [{\"o\":" + deep + "}]\n");
}

// A section inside another one has 2 arrays and objects more around it than one at the top.
TEST(SettingsKept, OnlyWhatNestsTooDeepForItsSectionStandsAtTheEnd) {
    const auto nested = [](std::size_t levels) { return std::string(levels, '[') + std::string(levels, ']'); };
    const std::string fits = R"({"o":)" + nested(json::kMaximumDepth - 7) + "}";
    const std::string tooDeep = R"({"o":)" + nested(json::kMaximumDepth - 6) + "}";
    EXPECT_EQ(entriesAfterSave(fileWith({given("g::b", fits + R"(,{"z":"2"},)" + tooDeep + ",5")})),
              "a: []\ng: []\ng::b: [{\"g::b::z\":\"2\"}," + fits + ",5]\nk: []\nl: []\ng::b: [" + tooDeep + "]\n");
}

}  // namespace
}  // namespace zelutil::test
