// A user's text changes the defaults.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "prefs/catalogue_of.h"

namespace zelutil::test {
namespace {

// a::g and b::g lend the bare name g (a's wins); c::g does not; a::sub::s lies below a; "group" only groups.
constexpr char kDefaultSections[] = R"([
    {"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"ag"},{"name":"x","value":"ax"}],
     "children":[{"header":"S","attribute":"sub","tclCommand":"t","defaultsettings":[{"name":"s","value":"s"}]}]},
    {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"g","value":"bg"},{"name":"y","value":"by"}]},
    {"header":"C","attribute":"c","unique":false,"tclCommand":"t",
     "defaultsettings":[{"name":"g","value":"cg"},{"name":"z","value":"cz"}]},
    {"header":"G","attribute":"group","children":[{"header":"I","attribute":"in","tclCommand":"t",
     "defaultsettings":[{"name":"i","value":"i"}]}]}])";

constexpr Answer kUntouched[] = {{"a::g", "ag"}, {"a::x", "ax"}, {"a::sub::s", "s"}, {"b::g", "bg"},
                                 {"b::y", "by"}, {"c::g", "cg"}, {"c::z", "cz"},     {"group::in::i", "i"}};

/// The answers of a row are what differs from the defaults.
void expectLoaded(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        const Catalogue catalogue = catalogueOf(kDefaultSections, row.sections);
        for (const Answer& untouched : kUntouched) {
            std::string expected = untouched.value;
            for (const Answer& answer : row.answers) {
                expected = std::string(answer.name) == untouched.name ? answer.value : expected;
            }
            EXPECT_EQ(valueOf(catalogue, untouched.name), expected) << row.what << ": " << untouched.name;
            EXPECT_EQ(defaultOf(catalogue, untouched.name), untouched.value) << row.what << ": " << untouched.name;
        }
    }
}

TEST(UserSettings, AreNamedBareInFullOrWithinTheirSection) {
    expectLoaded({
        {"bare, in its own section",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1"}]}])",
         {{"a::x", "1"}}},
        {"bare, in any case", R"([{"header":"A","attribute":"a","overriddensettings":[{"X":"1"}]}])", {{"a::x", "1"}}},
        {"in full, in its own section",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"a::x":"1"}]}])",
         {{"a::x", "1"}}},
        {"in full, in another section",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"C::Z":"1","group::in::i":"2"}]}])",
         {{"c::z", "1"}, {"group::in::i", "2"}}},
        {"within its section, which does not lend bare names",
         R"([{"header":"C","attribute":"c","overriddensettings":[{"z":"1"}]}])",
         {{"c::z", "1"}}},
        {"within a section, below it",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"sub::s":"1"}]}])",
         {{"a::sub::s", "1"}}},
        {"a bare name that another section registered sets that section's",
         R"([{"header":"B","attribute":"b","overriddensettings":[{"g":"1"}]}])",
         {{"a::g", "1"}}},
        {"also from a section that lends none",
         R"([{"header":"C","attribute":"c","overriddensettings":[{"g":"1"}]}])",
         {{"a::g", "1"}}},
        {"the full name reaches the second",
         R"([{"header":"B","attribute":"b","overriddensettings":[{"b::g":"1"}]}])",
         {{"b::g", "1"}}},
        {"a name of another section that does not lend it",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"z":"1"}]}])",
         {}},
        {"unknown names", R"([{"header":"A","attribute":"a","overriddensettings":[{"nope":"1","a::nope":"2"}]}])", {}},
        {"the empty name",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"":"1","x":"2"}]}])",
         {{"a::x", "2"}}},
    });
}

TEST(UserSettings, TheEmptyNameIsPassedOverThoughASettingHasIt) {
    const Catalogue catalogue =
        catalogueOf(R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"","value":"1"}]}])",
                    R"([{"header":"A","attribute":"a","overriddensettings":[{"":"2"}]}])");
    EXPECT_EQ(valueOf(catalogue, ""), "1");
}

TEST(UserSettings, OfASectionWithoutAnAttributeAreNamedBelowTheEmptyPath) {
    const Catalogue catalogue = catalogueOf(R"([{"header":"A","attribute":"","unique":false,"tclCommand":"t",
                                     "defaultsettings":[{"name":"g","value":"1"},{"name":"h","value":"2"}]}])",
                                            R"([{"header":"A","attribute":"","overriddensettings":[{"g":"3"}]}])");
    EXPECT_EQ(valueOf(catalogue, "::g"), "3");
    EXPECT_EQ(valueOf(catalogue, "::h"), "2");
    EXPECT_EQ(valueOf(catalogue, "g"), kUnknown);
}

TEST(UserSettings, CountOnlyInASectionOfTheDefaults) {
    expectLoaded({
        {"a path that the defaults do not have",
         R"([{"header":"A","attribute":"other","overriddensettings":[{"a::x":"1","x":"2"}]}])",
         {}},
        {"a path in another case", R"([{"header":"A","attribute":"A","overriddensettings":[{"x":"1"}]}])", {}},
        {"a section that only groups",
         R"([{"header":"G","attribute":"group","overriddensettings":[{"x":"1","in::i":"2"}]}])",
         {}},
        {"children of a section without settings",
         R"([{"header":"G","attribute":"group","children":[{"header":"I","attribute":"in",
              "overriddensettings":[{"i":"1"}]}]}])",
         {{"group::in::i", "1"}}},
        {"children of a section that the defaults do not have",
         R"([{"header":"G","attribute":"other","children":[{"header":"A","attribute":"a",
              "overriddensettings":[{"x":"1"}]}]}])",
         {}},
        {"children beside values",
         R"([{"header":"A","attribute":"a","children":[{"header":"S","attribute":"sub",
              "overriddensettings":[{"s":"1"}]}],"overriddensettings":[{"x":"2"}]}])",
         {{"a::sub::s", "1"}, {"a::x", "2"}}},
        {"the header matters only by being there",
         R"([{"header":"","attribute":"a","overriddensettings":[{"x":"1"}]}])",
         {{"a::x", "1"}}},
        {"\"unique\" and \"submanagerId\" of the user's file are not read",
         R"([{"header":"C","attribute":"c","unique":true,"submanagerId":100,"overriddensettings":[{"z":"1"}]}])",
         {{"c::z", "1"}}},
    });
}

TEST(UserSettings, TheLastEntryForASettingWins) {
    expectLoaded({
        {"in one object",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1","a::x":"2"}]}])",
         {{"a::x", "2"}}},
        {"one member twice",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1","x":"2"}]}])",
         {{"a::x", "2"}}},
        {"in two objects",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1"},{"X":"2"}]}])",
         {{"a::x", "2"}}},
        {"in two sections",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1"}]},
             {"header":"B","attribute":"b","overriddensettings":[{"a::x":"2"}]}])",
         {{"a::x", "2"}}},
        {"a section's own before its children's",
         R"([{"header":"A","attribute":"a","children":[{"header":"S","attribute":"sub",
              "overriddensettings":[{"x":"child"}]}],"overriddensettings":[{"x":"own"}]}])",
         {{"a::x", "child"}}},
    });
}

TEST(UserSettings, OneObjectMayHoldSeveral) {
    expectLoaded({{"several",
                   R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"1","g":"2"},{},{"y":"3"}]}])",
                   {{"a::x", "1"}, {"a::g", "2"}, {"b::y", "3"}}}});
}

TEST(UserSettings, WhatIsOfAnotherTypeIsPassedOverAndTheRestCounts) {
    expectLoaded({
        {"values that are no strings",
         R"([{"header":"A","attribute":"a","overriddensettings":[{"x":1,"g":null},{"x":["1"]},{"s":true,"y":"2"}]}])",
         {{"b::y", "2"}}},
        {"elements that are no objects",
         R"([{"header":"A","attribute":"a","overriddensettings":[null,"x",["x","1"],3,{"x":"1"}]}])",
         {{"a::x", "1"}}},
        {"settings that are no array", R"([{"header":"A","attribute":"a","overriddensettings":{"x":"1"}}])", {}},
        {"no header: children go with it",
         R"([{"attribute":"a","overriddensettings":[{"x":"1"}],
              "children":[{"header":"S","attribute":"sub","overriddensettings":[{"s":"1"}]}]}])",
         {}},
        {"no attribute", R"([{"header":"A","overriddensettings":[{"x":"1"}]}])", {}},
        {"sections that are no objects",
         R"([null,[],"a",{"header":"A","attribute":"a","overriddensettings":[{"x":"1"}]}])",
         {{"a::x", "1"}}},
        {"children that are no array",
         R"([{"header":"A","attribute":"a","children":{"header":"S","attribute":"sub",
              "overriddensettings":[{"s":"1"}]}}])",
         {}},
    });
}

TEST(UserSettings, AnEmptyValueIsAValue) {
    const Catalogue catalogue =
        catalogueOf(kDefaultSections, R"([{"header":"A","attribute":"a","overriddensettings":[{"x":""}]}])");
    EXPECT_EQ(valueOf(catalogue, "a::x"), "");
    EXPECT_EQ(defaultOf(catalogue, "a::x"), "ax");
    EXPECT_TRUE(catalogue.find("x")->hasUserValue);
    EXPECT_FALSE(catalogue.find("a::g")->hasUserValue);
}

TEST(UserSettings, AValueEqualToTheDefaultIsTheUsersAllTheSame) {
    const Catalogue catalogue =
        catalogueOf(kDefaultSections, R"([{"header":"A","attribute":"a","overriddensettings":[{"x":"ax"}]}])");
    EXPECT_TRUE(catalogue.find("x")->hasUserValue);
    EXPECT_EQ(valueOf(catalogue, "x"), "ax");
}

TEST(UserSettings, OfASubManagersSectionSetNothing) {
    const Catalogue catalogue =
        catalogueOf(R"([{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":[]},
                    {"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x","value":"1"}]}])",
                    R"([{"header":"K","attribute":"k","overriddensettings":[{"a::x":"2"}]}])");
    EXPECT_EQ(valueOf(catalogue, "a::x"), "1");
}

TEST(UserSettings, CataloguesCopiedByMapsShareTheirRecords) {
    const Catalogue catalogue = catalogueOf(kDefaultSections);
    const Catalogue copy = catalogue;
    EXPECT_EQ(copy.find("a::x"), catalogue.find("a::x"));
    EXPECT_EQ(copy.sections(), catalogue.sections());
    EXPECT_EQ(valueOf(copy, "nope"), kUnknown);
}

}  // namespace
}  // namespace zelutil::test
