// Tests what the reader of the user's file finds odd, and the journal of what was touched.
#include <gtest/gtest.h>

#include "host/settings_process.h"
#include "host/settings_texts.h"

namespace zelutil::test {
namespace {

const std::string kFindingsDefaults =
    fileWith({defined("a", {"x", "grid"}), defined("b", {"grid", "y"}), defined("c", {"z"}, R"(,"unique":false)"),
              defined("k", {}, R"(,"submanagerId":100)")});

/// One line for each finding.
std::string findingsOf(const std::string& file) {
    static const std::map<prefs::EntryFinding::Kind, std::string> kKinds = {
        {prefs::EntryFinding::Kind::UnknownSection, "unknown section"},
        {prefs::EntryFinding::Kind::UnknownName, "unknown name"},
        {prefs::EntryFinding::Kind::NoText, "no text"},
        {prefs::EntryFinding::Kind::NoList, "no list"},
        {prefs::EntryFinding::Kind::AnotherSection, "another section"},
    };
    std::string lines;
    const Catalogue catalogue = catalogueOfTexts(kFindingsDefaults, file);
    for (const prefs::EntryFinding& one : catalogue.findings()) {
        lines += kKinds.at(one.kind) + ": " + one.section + "|" + one.name + "\n";
    }
    return lines;
}

TEST(SettingsFindings, ThereAreNoneInAFileThatDoesWhatItSays) {
    EXPECT_EQ(findingsOf(""), "");
    EXPECT_EQ(findingsOf("{}"), "");
    EXPECT_EQ(
        findingsOf(fileWith({given("a", R"({"x":"2"},{"GRID":"3"},{})"), given("b", R"({"B::grid":"4"})"),
                             given("c", R"({"z":"5","a::x":"6"})"), given("k", R"({"any":1},7)"), given("gone", "")})),
        "");
}

TEST(SettingsFindings, AreMadeInTheOrderOfTheFile) {
    EXPECT_EQ(findingsOf(fileWith(
                  {given("old", R"({"x":"2"},{"y":"3"})"), given("b", R"({"Grid":"2"},{"o":"3"},{"y":4},{"":"5"})"),
                   given("c", R"(6,{"X":"7"})"), R"({"header":"H","attribute":"a","overriddensettings":{"x":"8"}})"})),
              "unknown section: old|\n"
              "another section: b|Grid\n"
              "unknown name: b|o\n"
              "no text: b|y\n"
              "unknown name: b|\n"
              "no text: c|\n"
              "another section: c|X\n"
              "no list: a|\n");
}

TEST(SettingsFindings, AFileOfASaveForHostsGivesNone) {
    FileText file;
    SettingsProcess process(kFindingsDefaults, file);
    process.save(file, {{"x", "2"}, {"grid", "3"}, {"b::grid", "4"}, {"c::z", "5"}});
    EXPECT_EQ(findingsOf(file.value()), "");
}

using Journal = std::map<std::uint32_t, std::pair<UserValue, bool>>;

Journal journalOf(const Catalogue& catalogue) {
    Journal journal;
    for (const auto& [number, entry] : catalogue.journal()) {
        journal[number] = {entry.inFile, entry.touched};
    }
    return journal;
}

TEST(SettingsJournal, HasTheValueBeforeTheFirstChange) {
    Catalogue catalogue = catalogueOfTexts(kFindingsDefaults, fileWith({given("a", R"({"x":"2"})")}));
    EXPECT_EQ(journalOf(catalogue), Journal());
    catalogue.putInForce({{prefs::keyOf("a::x"), "3"}});
    catalogue.putInForce({{prefs::keyOf("x"), "4"}, {prefs::keyOf("nope"), "5"}},
                         {prefs::keyOf("y"), prefs::keyOf("no")});
    EXPECT_EQ(journalOf(catalogue), (Journal{{0, {"2", true}}, {3, {std::nullopt, true}}}));
    EXPECT_EQ(valueOf(catalogue, "x"), "4");
}

TEST(SettingsJournal, ATakenBackValueGivesWayToTheDefaultAndBeginsEmpty) {
    Catalogue catalogue = catalogueOfTexts(kFindingsDefaults, fileWith({given("a", R"({"x":"2"})")}));
    catalogue.putInForce({}, {prefs::keyOf("x")});
    EXPECT_EQ(valueOf(catalogue, "x"), "1");
    EXPECT_FALSE(catalogue.find("x")->hasUserValue);
    EXPECT_EQ(catalogue.find("x")->userValue, "");
}

TEST(SettingsJournal, IsOneForACatalogueAndItsCopies) {
    Catalogue catalogue = catalogueOfTexts(kFindingsDefaults, "");
    Catalogue copy = catalogue;
    catalogue.putInForce({{prefs::keyOf("x"), "3"}});
    EXPECT_EQ(journalOf(copy).size(), 1U);
    copy.restartJournal({});
    EXPECT_EQ(journalOf(catalogue), Journal());
}

TEST(SettingsJournal, HasAfterASaveWhatTheFileHasInsteadOfWhatIsInForce) {
    FileText file = fileWith({given("a", R"({"x":"2"})")});
    SettingsProcess process(kFindingsDefaults, file);
    file = fileWith({given("a", R"({"x":"9"})")});
    process.save(file, {{"y", "5"}});
    EXPECT_EQ(journalOf(process.catalogue()), (Journal{{0, {"9", false}}}));
}

// The old kind of save writes a value into every section with a definition of that full name, also into one that only
// groups others. There nobody reads it, whatever the name means elsewhere.
TEST(SettingsJournal, HasAfterASaveOfTheOldKindNothingOfASectionThatIsNotRead) {
    const std::string group =
        R"({"header":"H","attribute":"h","defaultsettings":[{"name":"x","value":"1"}],"children":[]})";
    const std::string defaults =
        fileWith({defined("g", {"h::x"}, ",\"children\":[" + group + "]"), defined("b", {"x"})});
    FileText file;
    SettingsProcess process(defaults, file);
    ASSERT_TRUE(process.saveThroughOldDoor(file, {{"g::h::x", "5"}}));
    EXPECT_EQ(entriesOf(*file), "g: [{\"h::x\":\"5\"}]\ng::h: [{\"x\":\"5\"}]\nb: []\n");
    EXPECT_EQ(userValuesOf(catalogueOfTexts(defaults, *file)), (std::vector<UserValue>{"5", std::nullopt}));
    EXPECT_EQ(journalOf(process.catalogue()), Journal());
}

// Two settings are misnamed: the one that is lost, and the one that gets its value.
TEST(SettingsJournal, HasAfterASaveOfTheOldKindWhatItsFileSaysInsteadOfWhatIsMeant) {
    FileText file;
    SettingsProcess process(kFindingsDefaults, file);
    ASSERT_TRUE(process.saveThroughOldDoor(file, {{"b::grid", "5"}, {"y", "6"}}));
    EXPECT_EQ(journalOf(process.catalogue()), (Journal{{1, {"5", true}}, {2, {std::nullopt, true}}}));
}

}  // namespace
}  // namespace zelutil::test
