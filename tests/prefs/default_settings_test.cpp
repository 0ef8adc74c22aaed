// A defaults text gives sections, settings and the names that find them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "prefs/catalogue_of.h"

namespace zelutil::test {
namespace {

void expectAnswers(const Row& row) {
    const Catalogue catalogue = catalogueOf(row.sections);
    for (const Answer& answer : row.answers) {
        EXPECT_EQ(valueOf(catalogue, answer.name), answer.value) << row.what << ": " << answer.name;
        EXPECT_EQ(defaultOf(catalogue, answer.name), answer.value) << row.what << ": " << answer.name;
    }
}

void expectAll(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        expectAnswers(row);
    }
}

TEST(DefaultSettings, NamesAreFoundInFullAndWhereTheSectionIsUniqueBare) {
    expectAll({
        {"without \"unique\"",
         R"([{"header":"D","attribute":"display","tclCommand":"t","defaultsettings":[{"name":"grid","value":"1"}]}])",
         {{"display::grid", "1"},
          {"grid", "1"},
          {"DISPLAY::GRID", "1"},
          {"Grid", "1"},
          {"display", kUnknown},
          {"display::", kUnknown},
          {"::grid", kUnknown},
          {"D::grid", kUnknown},
          {"display:grid", kUnknown},
          {"display::grid ", kUnknown},
          {"", kUnknown}}},
        {"\"unique\": true",
         R"([{"header":"D","attribute":"display","unique":true,"tclCommand":"t",
              "defaultsettings":[{"name":"grid","value":"1"}]}])",
         {{"display::grid", "1"}, {"grid", "1"}}},
        {"\"unique\": false",
         R"([{"header":"D","attribute":"display","unique":false,"tclCommand":"t",
              "defaultsettings":[{"name":"grid","value":"1"}]}])",
         {{"display::grid", "1"}, {"Display::Grid", "1"}, {"grid", kUnknown}}},
        {"capitals in the file",
         R"([{"header":"D","attribute":"Display","tclCommand":"t","defaultsettings":[{"name":"GRID","value":"Aa"}]}])",
         {{"display::grid", "Aa"}, {"grid", "Aa"}, {"DISPLAY::grid", "Aa"}}},
        {"bytes beyond ASCII have no case",
         "[{\"header\":\"D\",\"attribute\":\"d\",\"tclCommand\":\"t\","
         "\"defaultsettings\":[{\"name\":\"\xC3\xA4\",\"value\":\"1\"}]}]",
         {{"\xC3\xA4", "1"}, {"\xC3\x84", kUnknown}, {"D::\xC3\xA4", "1"}}},
    });
}

TEST(DefaultSettings, AnythingButTrueMakesASectionNotUnique) {
    for (const char* const unique : {"false", "null", "0", "1", "\"true\"", "[true]", "{}"}) {
        const Catalogue catalogue =
            catalogueOf(R"([{"header":"D","attribute":"d","tclCommand":"t","unique":)" + std::string(unique) +
                        R"(,"defaultsettings":[{"name":"g","value":"1"}]}])");
        EXPECT_EQ(valueOf(catalogue, "d::g"), "1") << unique;
        EXPECT_EQ(valueOf(catalogue, "g"), kUnknown) << unique;
        ASSERT_EQ(catalogue.sections().count("d"), 1U) << unique;
        EXPECT_FALSE(catalogue.sections().at("d")->unique) << unique;
    }
}

TEST(DefaultSettings, TheFirstDefinitionOfANameWins) {
    expectAll({
        {"one section, one name twice",
         R"([{"header":"D","attribute":"d","tclCommand":"t",
              "defaultsettings":[{"name":"g","value":"1"},{"name":"G","value":"2"}]}])",
         {{"d::g", "1"}, {"g", "1"}}},
        {"two unique sections lend one bare name",
         R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"grid","value":"1"}]},
             {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"grid","value":"2"}]}])",
         {{"grid", "1"}, {"a::grid", "1"}, {"b::grid", "2"}}},
        {"only the second lends it",
         R"([{"header":"A","attribute":"a","unique":false,"tclCommand":"t",
              "defaultsettings":[{"name":"grid","value":"1"}]},
             {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"grid","value":"2"}]}])",
         {{"grid", "2"}, {"a::grid", "1"}, {"b::grid", "2"}}},
        {"a section's own settings come before those of its children",
         R"([{"header":"A","attribute":"a","tclCommand":"t",
              "children":[{"header":"B","attribute":"b","tclCommand":"t",
                           "defaultsettings":[{"name":"grid","value":"inner"}]}],
              "defaultsettings":[{"name":"grid","value":"outer"}]}])",
         {{"grid", "outer"}, {"a::grid", "outer"}, {"a::b::grid", "inner"}}},
        {"children come before the next section",
         R"([{"header":"A","attribute":"a","children":[{"header":"B","attribute":"b","tclCommand":"t",
                           "defaultsettings":[{"name":"grid","value":"inner"}]}]},
             {"header":"C","attribute":"c","tclCommand":"t","defaultsettings":[{"name":"grid","value":"next"}]}])",
         {{"grid", "inner"}, {"c::grid", "next"}}},
        {"a bare name that is read after an equal full name",
         R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"b::g","value":"1"}]},
             {"header":"A","attribute":"a::b","tclCommand":"t","defaultsettings":[{"name":"g","value":"2"}]},
             {"header":"C","attribute":"c","tclCommand":"t","defaultsettings":[{"name":"a::b::g","value":"3"}]}])",
         {{"a::b::g", "1"}, {"b::g", "1"}, {"g", "2"}, {"c::a::b::g", "3"}}},
        {"a bare name that is read before an equal full name",
         R"([{"header":"C","attribute":"c","tclCommand":"t","defaultsettings":[{"name":"a::g","value":"3"}]},
             {"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}]}])",
         {{"a::g", "3"}, {"g", "1"}}},
        {"the same path twice adds what is new",
         R"([{"header":"A","attribute":"a","tclCommand":"1","defaultsettings":[{"name":"g","value":"1"}]},
             {"header":"A","attribute":"a","tclCommand":"2",
              "defaultsettings":[{"name":"g","value":"2"},{"name":"h","value":"3"}]}])",
         {{"a::g", "1"}, {"a::h", "3"}, {"h", "3"}}},
    });
}

TEST(DefaultSettings, NestedSectionsExtendThePath) {
    expectAll({
        {"below a section with settings",
         R"([{"header":"D","attribute":"display","tclCommand":"t","defaultsettings":[{"name":"grid","value":"1"}],
              "children":[{"header":"C","attribute":"colors","tclCommand":"t",
                           "defaultsettings":[{"name":"background","value":"black"}]}]}])",
         {{"display::grid", "1"},
          {"display::colors::background", "black"},
          {"background", "black"},
          {"colors::background", kUnknown}}},
        {"below sections that only group",
         R"([{"header":"A","attribute":"a","children":[{"header":"B","attribute":"b","tclCommand":"t",
              "children":[{"header":"C","attribute":"c","tclCommand":"t",
                           "defaultsettings":[{"name":"g","value":"1"}]}]}]}])",
         {{"a::b::c::g", "1"}, {"g", "1"}}},
        {"below an empty attribute the path begins anew",
         R"([{"header":"A","attribute":"","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}],
              "children":[{"header":"B","attribute":"b","tclCommand":"t",
                           "defaultsettings":[{"name":"h","value":"2"}]}]}])",
         {{"::g", "1"}, {"g", "1"}, {"b::h", "2"}, {"::b::h", kUnknown}}},
        {"an empty attribute inside a path",
         R"([{"header":"A","attribute":"a","children":[{"header":"B","attribute":"","tclCommand":"t",
                           "defaultsettings":[{"name":"h","value":"2"}]}]}])",
         {{"a::::h", "2"}, {"a::h", kUnknown}}},
        {"an empty name",
         R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"","value":"1"}]}])",
         {{"a::", "1"}, {"", "1"}}},
    });
}

TEST(DefaultSettings, ASectionWithoutBothCommandAndSettingsOnlyGroups) {
    expectAll({
        {"no command",
         R"([{"header":"A","attribute":"a","defaultsettings":[{"name":"g","value":"1"}]}])",
         {{"a::g", kUnknown}, {"g", kUnknown}}},
        {"a command of another type",
         R"([{"header":"A","attribute":"a","tclCommand":1,"defaultsettings":[{"name":"g","value":"1"}]}])",
         {{"a::g", kUnknown}, {"g", kUnknown}}},
        {"its children count all the same",
         R"([{"header":"A","attribute":"a","tclCommand":null,"defaultsettings":[{"name":"g","value":"1"}],
              "children":[{"header":"B","attribute":"b","tclCommand":"","defaultsettings":[{"name":"g","value":"2"}]}]}])",
         {{"a::g", kUnknown}, {"g", "2"}, {"a::b::g", "2"}}},
    });
    EXPECT_TRUE(catalogueOf(R"([{"header":"A","attribute":"a","tclCommand":"t"}])").sections().empty());
    EXPECT_TRUE(catalogueOf(R"([{"header":"A","attribute":"a","defaultsettings":[]}])").sections().empty());
    for (const char* const settings : {"null", "{}", "\"g\"", "1", "true"}) {
        const Catalogue catalogue = catalogueOf(
            R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":)" + std::string(settings) + "}]");
        EXPECT_TRUE(catalogue.sections().empty()) << settings;
    }
}

TEST(DefaultSettings, WhatLacksSomethingIsPassedOverAndTheRestCounts) {
    expectAll({
        {"no header: its children go with it",
         R"([{"attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}],
              "children":[{"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"h","value":"2"}]}]},
             {"header":"C","attribute":"c","tclCommand":"t","defaultsettings":[{"name":"i","value":"3"}]}])",
         {{"a::g", kUnknown}, {"g", kUnknown}, {"h", kUnknown}, {"a::b::h", kUnknown}, {"i", "3"}}},
        {"no attribute, or of another type",
         R"([{"header":"A","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}]},
             {"header":"A","attribute":7,"tclCommand":"t","defaultsettings":[{"name":"g","value":"2"}]},
             {"header":["A"],"attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"3"}]},
             {"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"4"}]}])",
         {{"g", "4"}, {"a::g", "4"}}},
        {"elements that are no objects",
         R"([null,1,"a",[],true,{},{"header":"A","attribute":"a","tclCommand":"t",
              "defaultsettings":[null,1,"g",[{"name":"g","value":"0"}],{},{"name":"g","value":"1"}]}])",
         {{"g", "1"}}},
        {"a setting without name or value, or of another type",
         R"([{"header":"A","attribute":"a","tclCommand":"t",
              "defaultsettings":[{"name":"g"},{"value":"1"},{"name":"g","value":2},{"name":"g","value":null},
                                 {"name":3,"value":"3"},{"name":"g","value":"4"},{"name":"g","value":"5"}]}])",
         {{"g", "4"}, {"a::g", "4"}}},
        {"children that are no array",
         R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}],
              "children":{"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"h","value":"2"}]}}])",
         {{"g", "1"}, {"h", kUnknown}}},
        {"of members with one name the first counts",
         R"([{"header":"A","attribute":"a","attribute":"b","tclCommand":"t",
              "defaultsettings":[{"name":"g","name":"h","value":"1","value":"2"}]}])",
         {{"a::g", "1"}, {"b::g", kUnknown}, {"h", kUnknown}}},
    });
}

TEST(DefaultSettings, AMetaThatIsNoArrayContributesNothing) {
    for (
        const char* const text :
        {R"({})", R"({"meta":null})", R"({"meta":{}})", R"({"meta":"x"})", R"({"meta":3})", R"([])", R"([{"meta":[]}])",
         "null", "1", R"("meta")",
         // Keys are compared exactly.
         R"({"Meta":[{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"g","value":"1"}]}]})"}) {
        const Catalogue catalogue = catalogueOfTexts(text, text);
        EXPECT_TRUE(catalogue.sections().empty()) << text;
        EXPECT_EQ(valueOf(catalogue, "g"), kUnknown) << text;
    }
}

TEST(DefaultSettings, ASettingIsOneRecordUnderBothItsNames) {
    const Catalogue catalogue = catalogueOf(R"([{"header":"A","attribute":"Dis","children":[{"header":"B",
        "attribute":"Play","tclCommand":"t","defaultsettings":[{"name":"GrId","value":"V"}]}]}])");
    const prefs::Setting* const setting = catalogue.find("grid");
    ASSERT_NE(setting, nullptr);
    EXPECT_EQ(setting, catalogue.find("DIS::PLAY::GRID"));
    EXPECT_EQ(setting->key, prefs::hashOf("dis::play::grid"));
    EXPECT_EQ(setting->defaultValue, "V");
    EXPECT_EQ(setting->userValue, "");
    EXPECT_FALSE(setting->hasUserValue);
}

TEST(DefaultSettings, ZerosInTextsStayInside) {
    const Catalogue catalogue = catalogueOf(R"([{"header":"A","attribute":"a","tclCommand":"t",
        "defaultsettings":[{"name":"g\u0000h","value":"1\u00002"}]}])");
    EXPECT_EQ(valueOf(catalogue, std::string("A::G\0H", 6)), std::string("1\0002", 3));
    EXPECT_EQ(valueOf(catalogue, "a::g"), kUnknown);
}

TEST(Sections, HoldWhatTheFileSaysOfThem) {
    const Catalogue catalogue =
        catalogueOf(R"([{"header":"Display","attribute":"display","tclCommand":"apply","defaultsettings":[],
        "children":[{"header":"Colors","attribute":"colors","unique":false,"tclCommand":"","defaultsettings":[],
                     "children":{}},
                    {"header":"Group","attribute":"group",
                     "children":[{"header":"","attribute":"In","tclCommand":"t","defaultsettings":[],"children":[]}]}]},
       {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"k","defaultsettings":{"actions":[]}}])");
    struct Expected {
        const char* attributePath;
        const char* parentHeader;
        const char* header;
        const char* tclCommand;
        bool unique;
        std::int32_t submanagerId;
        bool hasChildren;
    };
    const Expected rows[] = {
        {"display", "", "Display", "apply", true, 101, true},
        {"display::colors", "Display", "Colors", "", false, 101, false},
        {"display::group::In", "Display::Group", "", "t", true, 101, true},
        {"keys", "", "Keys", "k", true, 100, false},
    };
    EXPECT_EQ(catalogue.sections().size(), std::size(rows));
    for (const Expected& row : rows) {
        const auto found = catalogue.sections().find(row.attributePath);
        ASSERT_NE(found, catalogue.sections().end()) << row.attributePath;
        const auto& section = *found->second;
        EXPECT_EQ(section.attributePath, row.attributePath);
        EXPECT_EQ(section.parentHeader, row.parentHeader) << row.attributePath;
        EXPECT_EQ(section.header, row.header) << row.attributePath;
        EXPECT_EQ(section.tclCommand, row.tclCommand) << row.attributePath;
        EXPECT_EQ(section.unique, row.unique) << row.attributePath;
        EXPECT_EQ(section.submanagerId, row.submanagerId) << row.attributePath;
        EXPECT_EQ(section.hasChildren, row.hasChildren) << row.attributePath;
    }
}

TEST(Sections, TheFirstOfOnePathWinsAndCaseMatters) {
    const Catalogue catalogue = catalogueOf(R"([{"header":"1","attribute":"a","tclCommand":"t","defaultsettings":[]},
        {"header":"2","attribute":"a","tclCommand":"t","defaultsettings":[]},
        {"header":"3","attribute":"A","tclCommand":"t","defaultsettings":[]}])");
    ASSERT_EQ(catalogue.sections().size(), 2U);
    EXPECT_EQ(catalogue.sections().at("a")->header, "1");
    EXPECT_EQ(catalogue.sections().at("A")->header, "3");
}

TEST(Sections, AnIdThatIsNoIntegerOf32BitsMeansNoSubManager) {
    struct IdRow {
        const char* id;
        std::int32_t read;
    };
    constexpr IdRow kRows[] = {
        {"100", 100},
        {"101", 101},
        {"102", 102},
        {"0", 0},
        {"-1", -1},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"2147483648", 101},
        {"4294967396", 101},
        {"1e2", 101},
        {"100.0", 101},
        {"\"100\"", 101},
        {"null", 101},
        {"true", 101},
        {"[100]", 101},
    };
    for (const IdRow& row : kRows) {
        const Catalogue catalogue =
            catalogueOf(R"([{"header":"A","attribute":"a","tclCommand":"t","submanagerId":)" + std::string(row.id) +
                        R"(,"defaultsettings":[{"name":"g","value":"1"}]}])");
        ASSERT_EQ(catalogue.sections().count("a"), 1U) << row.id;
        EXPECT_EQ(catalogue.sections().at("a")->submanagerId, row.read) << row.id;
        // A sub-manager's section has no settings of its own.
        EXPECT_EQ(valueOf(catalogue, "a::g"), row.read == 101 ? "1" : kUnknown) << row.id;
    }
}

TEST(Sections, ASubManagersSectionMayHoldAnySettings) {
    for (const char* const settings : {"null", "{}", "[]", "\"text\"", "1", R"({"actions":[{"id":1}]})"}) {
        const Catalogue catalogue = catalogueOf(R"([{"header":"A","attribute":"a","tclCommand":"t","submanagerId":100,
            "defaultsettings":)" + std::string(settings) +
                                                "}]");
        EXPECT_EQ(catalogue.sections().count("a"), 1U) << settings;
    }
}

}  // namespace
}  // namespace zelutil::test
