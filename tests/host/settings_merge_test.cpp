// Three states of a setting and what becomes of them: what the file held when the process last shared with it, what it
// holds now, and what is in force here. Every expectation was worked out by hand.
#include <gtest/gtest.h>

#include "host/settings_process.h"
#include "host/settings_texts.h"

namespace zelutil::test {
namespace {

/// The shipped value of "a::x" is "1".
const std::string kMergeDefaults = fileWith({defined("a", {"x", "y"})});

constexpr char kNone[] = "(none)";
constexpr char kReset[] = "(reset)";

/// A file in which the user has this value of "a::x", or none.
FileText fileWithX(const std::string& value) {
    return fileWith({given("a", value == kNone ? "" : R"({"x":")" + value + "\"}")});
}

std::string xIn(const FileText& file) {
    const Catalogue catalogue = catalogueOfTexts(kMergeDefaults, file.value());
    return userValueOf(*catalogue.find("x")).value_or(kNone);
}

struct Row {
    std::string start;   ///< What the file holds when the process starts.
    std::string edit;    ///< What it is asked to save; empty for nothing.
    std::string theirs;  ///< What another process has put into the file meanwhile.

    std::string inFile;  ///< What the file holds after the save.
    std::string inForce;
    std::string conflict;  ///< "ours/theirs"; empty for none.
    bool ofOthers;
    bool changed;
};

const Row kRows[] = {
    // Nobody else writes.
    {kNone, "", kNone, kNone, "1", "", false, false},
    {"2", "", "2", "2", "2", "", false, false},
    {kNone, "3", kNone, "3", "3", "", false, true},
    {"2", "3", "2", "3", "3", "", false, true},
    {"2", "2", "2", "2", "2", "", false, false},
    {"2", kReset, "2", kNone, "1", "", false, true},
    {kNone, kReset, kNone, kNone, "1", "", false, false},
    // The default is no change where it is in force, and a value like any other where it is not.
    {kNone, "1", kNone, kNone, "1", "", false, false},
    {"2", "1", "2", "1", "1", "", false, true},
    {"1", kReset, "1", kNone, "1", "", false, false},
    {"1", "", "1", "1", "1", "", false, false},
    // Another process wrote, and nothing was changed here.
    {kNone, "", "4", "4", "1", "", true, false},
    {"2", "", "4", "4", "2", "", true, false},
    {"2", "", kNone, kNone, "2", "", true, false},
    {"2", "2", "4", "4", "2", "", true, false},
    // The value is the same, but only there it is the user's.
    {kNone, "", "1", "1", "1", "", false, false},
    // Both changed it.
    {kNone, "3", "4", "3", "3", "3/4", false, true},
    {"2", "3", "4", "3", "3", "3/4", false, true},
    {"2", "3", kNone, "3", "3", "3/1", false, true},
    {"2", kReset, "4", kNone, "1", "1/4", false, true},
    {kNone, kReset, "4", kNone, "1", "1/4", false, false},
    // Both changed it to the same.
    {"2", "3", "3", "3", "3", "", false, true},
    {"2", kReset, kNone, kNone, "1", "", false, true},
};

TEST(SettingsMerge, DecidesByThreeStates) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.start + " -> " + row.edit + ", others: " + row.theirs);
        SettingsProcess process(kMergeDefaults, fileWithX(row.start));
        FileText file = fileWithX(row.theirs);
        const Values values = row.edit.empty() || row.edit == kReset ? Values() : Values{{"x", row.edit}};
        const auto plan = process.save(file, values, row.edit == kReset ? Names{"x"} : Names());
        EXPECT_EQ(xIn(file), row.inFile);
        EXPECT_EQ(valueOf(process.catalogue(), "x"), row.inForce);
        ASSERT_EQ(plan.conflicts.size(), row.conflict.empty() ? 0U : 1U);
        if (!row.conflict.empty()) {
            EXPECT_EQ(plan.conflicts[0].setting, "a::x");
            EXPECT_EQ(plan.conflicts[0].ours + "/" + plan.conflicts[0].theirs, row.conflict);
        }
        EXPECT_EQ(plan.settingsOfOthers, row.ofOthers ? Names{"a::x"} : Names());
        EXPECT_EQ(plan.changedSettings, row.changed ? std::set<std::string>{"a::x"} : std::set<std::string>());
        EXPECT_TRUE(plan.fileKnown);
    }
}

TEST(SettingsMerge, WithoutAFileOrWithOneThatIsNoJsonEverythingOfTheUserIsWritten) {
    for (const FileText& unreadable : {FileText(), FileText(""), FileText("{\"meta\":["), FileText("text")}) {
        SettingsProcess process(kMergeDefaults, fileWithX("2"));
        FileText file = unreadable;
        const auto plan = process.save(file, {{"y", "3"}});
        EXPECT_FALSE(plan.fileKnown);
        EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::x\":\"2\"},{\"a::y\":\"3\"}]\n");
        EXPECT_TRUE(plan.conflicts.empty());
        EXPECT_TRUE(plan.settingsOfOthers.empty());
    }
}

TEST(SettingsMerge, AnEmptyListOfSectionsIsAFileFromWhichAllWasTaken) {
    SettingsProcess process(kMergeDefaults, fileWithX("2"));
    FileText file = fileWith({});
    const auto plan = process.save(file, {{"y", "3"}});
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::y\":\"3\"}]\n");
    EXPECT_EQ(plan.settingsOfOthers, Names{"a::x"});
}

TEST(SettingsMerge, OfSeveralEntriesForOneSettingTheLastIsTheirs) {
    SettingsProcess process(kMergeDefaults, fileWithX(kNone));
    FileText file = fileWith({given("a", R"({"x":"4"},{"x":"5","a::x":"6"})"), given("a", R"({"X":"7"})")});
    process.save(file, {{"y", "3"}});
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::x\":\"7\"},{\"a::y\":\"3\"}]\n");
}

// A value that a merged save left to another stays so, whatever is saved besides, until it is changed here.
TEST(SettingsMerge, WhatWasLeftToOthersStaysTheirsUntilItIsChangedHere) {
    SettingsProcess process(kMergeDefaults, fileWithX("2"));
    FileText file = fileWithX("4");
    EXPECT_EQ(process.save(file, {}).settingsOfOthers, Names{"a::x"});
    EXPECT_EQ(process.save(file, {}).settingsOfOthers, Names{"a::x"});
    EXPECT_EQ(xIn(file), "4");
    EXPECT_EQ(valueOf(process.catalogue(), "x"), "2");
    // The other one changes it again, and takes it back.
    file = fileWithX("6");
    EXPECT_EQ(process.save(file, {{"x", "2"}}).settingsOfOthers, Names{"a::x"});
    EXPECT_EQ(xIn(file), "6");
    file = fileWithX(kNone);
    process.save(file, {});
    EXPECT_EQ(xIn(file), kNone);
    // Now it is changed here, and the file is as it was left.
    const auto plan = process.save(file, {{"x", "7"}});
    EXPECT_EQ(xIn(file), "7");
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_TRUE(plan.settingsOfOthers.empty());
}

TEST(SettingsMerge, AConflictIsNamedOnce) {
    SettingsProcess process(kMergeDefaults, fileWithX("2"));
    FileText file = fileWithX("4");
    EXPECT_EQ(process.save(file, {{"x", "3"}}).conflicts.size(), 1U);
    EXPECT_TRUE(process.save(file, {{"x", "5"}}).conflicts.empty());
    EXPECT_EQ(xIn(file), "5");
}

TEST(SettingsMerge, WhatCouldNotBeWrittenIsWrittenByTheNextSave) {
    SettingsProcess process(kMergeDefaults, fileWithX("2"));
    FileText file = fileWithX("2");
    process.save(file, {{"x", "3"}}, {}, false);
    EXPECT_EQ(xIn(file), "2");
    EXPECT_EQ(valueOf(process.catalogue(), "x"), "3");
    EXPECT_TRUE(process.save(file, {}).conflicts.empty());
    EXPECT_EQ(xIn(file), "3");
}

TEST(SettingsMerge, AResetThatCouldNotBeWrittenIsWrittenByTheNextSave) {
    SettingsProcess process(kMergeDefaults, fileWithX(kNone));
    FileText file = fileWithX("4");
    process.save(file, {}, {"x"}, false);
    EXPECT_EQ(xIn(file), "4");
    process.save(file, {});
    EXPECT_EQ(xIn(file), kNone);
}

TEST(SettingsMerge, ASaveOfTheOldKindIsNoOtherProcess) {
    SettingsProcess process(kMergeDefaults, fileWithX(kNone));
    FileText file = fileWithX(kNone);
    process.saveThroughOldDoor(file, {{"x", "2"}});
    EXPECT_EQ(xIn(file), "2");
    const auto plan = process.save(file, {{"x", "3"}, {"y", "5"}});
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_TRUE(plan.settingsOfOthers.empty());
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::x\":\"3\"},{\"a::y\":\"5\"}]\n");
}

// The old door writes "grid" for the second section's, which the reader takes for the first's.
TEST(SettingsMerge, WhatASaveOfTheOldKindMisnamedIsPutRight) {
    const std::string defaults = fileWith({defined("a", {"grid"}), defined("b", {"grid"})});
    FileText file;
    SettingsProcess process(defaults, file);
    process.saveThroughOldDoor(file, {{"b::grid", "5"}});
    ASSERT_EQ(entriesOf(file.value()), "a: []\nb: [{\"grid\":\"5\"}]\n");
    const auto plan = process.save(file, {});
    EXPECT_EQ(entriesOf(file.value()), "a: []\nb: [{\"b::grid\":\"5\"}]\n");
    EXPECT_TRUE(plan.conflicts.empty());
    EXPECT_TRUE(plan.settingsOfOthers.empty());
    EXPECT_TRUE(plan.changedSettings.empty());
}

TEST(SettingsMerge, NamesThatNoSettingHasComeBackAsTheyWereGiven) {
    FileText file;
    SettingsProcess process(kMergeDefaults, file);
    const auto plan = process.save(file, {{"Nope", "2"}, {"x", "3"}, {"", "4"}}, {"a::", "Y", "gone"});
    EXPECT_EQ(plan.unknownSettings, (Names{"", "Nope", "a::", "gone"}));
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::x\":\"3\"}]\n");
}

TEST(SettingsMerge, OfSeveralNamesOfOneSettingTheLastCountsAndAResetComesAfterTheValues) {
    FileText file;
    SettingsProcess process(kMergeDefaults, file);
    process.save(file, {{"A::X", "2"}, {"a::x", "3"}, {"x", "4"}, {"y", "5"}}, {"y"});
    EXPECT_EQ(entriesOf(file.value()), "a: [{\"a::x\":\"4\"}]\n");
}

TEST(SettingsMerge, WithoutSectionsThereIsNothingToWrite) {
    for (const char* const defaults : {"", "{}", "{\"meta\":[]}", "{\"meta\":[7]}", "no JSON"}) {
        SettingsProcess process(defaults, std::nullopt);
        const Values values = {{"x", "2"}};
        auto plan = host::planSettings(process.catalogue(), {&values, nullptr}, "{\"meta\":[]}");
        EXPECT_FALSE(plan.hasSections);
        EXPECT_EQ(host::fileText(plan, "[]"), std::nullopt);
        EXPECT_EQ(plan.unknownSettings, Names{"x"});
    }
}

}  // namespace
}  // namespace zelutil::test
