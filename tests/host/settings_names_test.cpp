// Tests where a save writes a setting, and under which name, so that it is read as that setting. Each case was worked
// out by hand from the rule: a name is tried as it stands, bare or in full, and then within its section.
#include <gtest/gtest.h>

#include "host/settings_process.h"
#include "host/settings_texts.h"

namespace zelutil::test {
namespace {

using host::Obstacle;

struct Case {
    const char* what;
    std::string defaults;
    Values values;
    /// The values that the sections of the file hold then.
    std::string expected;
};

const std::string kNotUnique = R"(,"unique":false)";
const std::string kOfActions = R"(,"submanagerId":100)";

std::vector<Case> cases() {
    return {
        {"in full also where the local name means the setting",
         fileWith({defined("a", {"x", "y"})}),
         {{"x", "5"}},
         "a: [{\"a::x\":\"5\"}]\n"},
        {"in full where an earlier section has the bare name",
         fileWith({defined("a", {"grid"}), defined("b", {"grid"})}),
         {{"b::grid", "5"}},
         "a: []\nb: [{\"b::grid\":\"5\"}]\n"},
        {"in full where a later section has it, since the own one lends none",
         fileWith({defined("a", {"grid"}, kNotUnique), defined("b", {"grid"})}),
         {{"a::grid", "5"}, {"b::grid", "6"}},
         "a: [{\"a::grid\":\"5\"}]\nb: [{\"b::grid\":\"6\"}]\n"},
        {"in full where nobody has the bare name",
         fileWith({defined("a", {"grid"}, kNotUnique), defined("b", {"grid"}, kNotUnique)}),
         {{"a::grid", "5"}, {"b::grid", "6"}},
         "a: [{\"a::grid\":\"5\"}]\nb: [{\"b::grid\":\"6\"}]\n"},
        {"in any case of letters",
         fileWith({defined("a", {"Grid"}), defined("b", {"gRID"})}),
         {{"A::GRID", "5"}, {"B::grid", "6"}},
         "a: [{\"a::Grid\":\"5\"}]\nb: [{\"b::gRID\":\"6\"}]\n"},
        {"by the bare name where the full one means another",
         fileWith({defined("a", {"b::x"}), defined("b", {"x"})}),
         {{"x", "5"}, {"b::x", "6"}},
         "a: [{\"a::b::x\":\"6\"}]\nb: [{\"x\":\"5\"}]\n"},
        {"in full where the local name is another's full one",
         fileWith({defined("b", {"x"}), defined("a", {"b::x"})}),
         {{"a::b::x", "5"}},
         "b: []\na: [{\"a::b::x\":\"5\"}]\n"},
        {"in full where the name is empty", fileWith({defined("a", {""})}), {{"a::", "5"}}, "a: [{\"a::\":\"5\"}]\n"},
        {"in full under an empty path",
         fileWith({defined("", {"x"}), defined("b", {"x"})}),
         {{"b::x", "5"}, {"::x", "6"}},
         ": [{\"::x\":\"6\"}]\nb: [{\"b::x\":\"5\"}]\n"},
        {"once where it is defined twice",
         fileWith({defined("a", {"x"}), defined("a", {"X"})}),
         {{"x", "5"}},
         "a: [{\"a::x\":\"5\"}]\na: []\n"},
        {"once where the second definition is taken for another",
         fileWith({defined("a", {"y"}, kNotUnique), defined("a", {"y"})}),
         {{"a::y", "5"}},
         "a: [{\"a::y\":\"5\"}]\na: []\n"},
        {"each for itself where the second definition has the bare name",
         fileWith({defined("a", {"y"}, kNotUnique), defined("a", {"y"})}),
         {{"a::y", "5"}, {"y", "6"}},
         "a: [{\"a::y\":\"5\"}]\na: [{\"y\":\"6\"}]\n"},
        {"in the first section with settings, where the own path belongs to a sub-manager",
         fileWith({defined("k", {}, kOfActions), defined("k", {"x"}), defined("z", {"x"}), defined("y", {})}),
         {{"k::x", "5"}, {"z::x", "6"}},
         "k: []\nk: []\nz: [{\"z::x\":\"6\"},{\"k::x\":\"5\"}]\ny: []\n"},
        {"there too when only the bare name finds it",
         fileWith({defined("a", {"k::x"}), defined("k", {}, kOfActions), defined("k", {"x"})}),
         {{"x", "5"}},
         "a: [{\"x\":\"5\"}]\nk: []\nk: []\n"},
        {"in the section of its own inside one that only groups",
         R"({"meta":[{"header":"H","attribute":"g","children":[)" + defined("a", {"x"}) + "," + defined("b", {"x"}) +
             "]}]}",
         {{"g::a::x", "5"}, {"g::b::x", "6"}},
         "g: []\ng::a: [{\"g::a::x\":\"5\"}]\ng::b: [{\"g::b::x\":\"6\"}]\n"},
    };
}

TEST(SettingsNames, AreThoseThatTheReaderTakesForTheSetting) {
    for (const Case& one : cases()) {
        FileText file;
        SettingsProcess process(one.defaults, file);
        const auto plan = process.save(file, one.values);
        EXPECT_EQ(entriesOf(file.value()), one.expected) << one.what;
        EXPECT_TRUE(plan.notRestored.empty()) << one.what;
        EXPECT_EQ(plan.newValues.size(), one.values.size()) << one.what;
        EXPECT_EQ(userValuesOf(catalogueOfTexts(one.defaults, *file)), process.userValues()) << one.what;
    }
}

// Both definitions have the full name "a::"; the first has it, and only the second lends its bare name.
TEST(SettingsNames, ASettingUnderTheEmptyNameOnlyIsNamed) {
    const std::string defaults = fileWith({defined("a", {""}, kNotUnique), defined("a", {""})});
    FileText file;
    SettingsProcess process(defaults, file);
    const auto plan = process.save(file, {{"", "5"}});
    EXPECT_EQ(valueOf(process.catalogue(), ""), "5");
    EXPECT_EQ(entriesOf(file.value()), "a: []\na: []\n");
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].setting, "a::");
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::NameBelongsToAnother);
    EXPECT_EQ(plan.notRestored[0].otherSetting, "a::");
    EXPECT_FALSE(plan.notRestored[0].text.empty());
    // It is named as long as it is so, and never taken for another process's.
    const auto again = process.save(file, {});
    EXPECT_EQ(again.notRestored.size(), 1U);
    EXPECT_TRUE(again.settingsOfOthers.empty());
    // Without the user's value there is nothing to bring back.
    EXPECT_TRUE(process.save(file, {}, {""}).notRestored.empty());
}

TEST(SettingsNames, ASettingWithoutAnySectionThatIsReadIsNamed) {
    const std::string defaults = fileWith({defined("k", {}, kOfActions), defined("k", {"x"})});
    FileText file;
    SettingsProcess process(defaults, file);
    const auto plan = process.save(file, {{"x", "5"}});
    EXPECT_EQ(entriesOf(file.value()), "k: []\nk: []\n");
    ASSERT_EQ(plan.notRestored.size(), 1U);
    EXPECT_EQ(plan.notRestored[0].setting, "k::x");
    EXPECT_EQ(plan.notRestored[0].obstacle, Obstacle::NoPlaceInFile);
    EXPECT_EQ(plan.notRestored[0].otherSetting, "");
}

}  // namespace
}  // namespace zelutil::test
