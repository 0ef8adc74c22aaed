#include "facet/facet_groups.h"

#include <gtest/gtest.h>

#include <string>

namespace zelutil::facet {
namespace {

constexpr int kUnknown = -1;

int typeIn(const FacetGroups& groups, std::string_view header, std::string_view name) {
    const FacetType* const type = groups.find(header, name);
    return type == nullptr ? kUnknown : static_cast<int>(*type);
}

struct Row {
    const char* text;
    const char* header;
    const char* name;
    int type;
};

constexpr char kTwoGroups[] = R"({"meta": [
    {"header": "Net", "facets": [{"name": "Length", "type": "Numerical"}, {"name": "Layer", "type": "Text"}]},
    {"header": "Pin", "facets": [{"name": "Length", "type": "Text"}, {"name": "Delay", "type": "Numerical"}]}]})";

constexpr Row kRows[] = {
    // Groups and facets.
    {kTwoGroups, "Net", "Length", 1},
    {kTwoGroups, "Net", "Layer", 0},
    {kTwoGroups, "Pin", "Length", 0},
    {kTwoGroups, "Pin", "Delay", 1},
    {kTwoGroups, "Net", "Delay", kUnknown},
    {kTwoGroups, "Region", "Length", kUnknown},
    {kTwoGroups, "", "Length", kUnknown},
    {kTwoGroups, "Net", "", kUnknown},
    {R"({"meta":[]})", "Net", "Length", kUnknown},
    // Every byte counts.
    {kTwoGroups, "net", "Length", kUnknown},
    {kTwoGroups, "NET", "Length", kUnknown},
    {kTwoGroups, "Net ", "Length", kUnknown},
    {kTwoGroups, "Ne", "Length", kUnknown},
    {kTwoGroups, "Net", "length", kUnknown},
    {kTwoGroups, "Net", "Length ", kUnknown},
    {kTwoGroups, "Net", "Lengt", kUnknown},
    {R"({"meta":[{"header":" ","facets":[{"name":"\n","type":"Numerical"}]}]})", " ", "\n", 1},
    {R"({"meta":[{"header":"L\u00e4nge","facets":[{"name":"ä","type":"Numerical"}]}]})", "L\xC3\xA4nge", "\xC3\xA4", 1},
    {R"({"meta":[{"header":"Net\u0000","facets":[{"name":"a","type":"Numerical"}]}]})", "Net", "a", kUnknown},
    // Only one text is numerical.
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"numerical"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"NUMERICAL"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Numerical "}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Numerica"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Numerical\u0000"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":""}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"N\u0075merical"}]}]})", "g", "a", 1},
    // No type, or one of another JSON type.
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":1}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":["Numerical"]}]}]})", "g", "a", 0},
    // Groups without facets.
    {R"({"meta":[{"header":"g"}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[]}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":null}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":{"name":"a","type":"Numerical"}}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":"a"}]})", "g", "a", kUnknown},
    // An entry without a header is skipped with all its facets; the next one is read.
    {R"({"meta":[{"header":"","facets":[{"name":"a","type":"Numerical"}]}]})", "", "a", kUnknown},
    {R"({"meta":[{"facets":[{"name":"a","type":"T"}]},{"header":"h","facets":[{"name":"b"}]}]})", "", "a", kUnknown},
    {R"({"meta":[{"facets":[{"name":"a","type":"T"}]},{"header":"h","facets":[{"name":"b"}]}]})", "h", "b", 0},
    {R"({"meta":[{"header":5,"facets":[{"name":"a"}]},{"header":"h","facets":[{"name":"b"}]}]})", "h", "b", 0},
    {R"({"meta":[null,7,"x",[],true,{},{"header":"h","facets":[{"name":"b"}]}]})", "h", "b", 0},
    // A facet without a name is skipped; the next one is read.
    {R"({"meta":[{"header":"g","facets":[{"name":"","type":"Numerical"}]}]})", "g", "", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":""},{"type":"T"},{"name":5},{"name":"b"}]}]})", "g", "b", 0},
    {R"({"meta":[{"header":"g","facets":[null,7,"x",[],true,{},{"name":"b"}]}]})", "g", "b", 0},
    // The first facet of a name counts, within its group.
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Numerical"},{"name":"a","type":"T"}]}]})", "g", "a", 1},
    {R"({"meta":[{"header":"g","facets":[{"name":"a","type":"T"},{"name":"a","type":"Numerical"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]},{"header":"h","facets":[{"name":"a","type":"Numerical"}]}]})",
     "h", "a", 1},
    // The first member of a name counts.
    {R"({"meta":[],"meta":[{"header":"g","facets":[{"name":"a"}]}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","header":"h","facets":[{"name":"a"}]}]})", "g", "a", 0},
    {R"({"meta":[{"header":"g","header":"h","facets":[{"name":"a"}]}]})", "h", "a", kUnknown},
    // Other members are ignored.
    {R"({"version":[1],"meta":[{"x":{},"header":"g","facets":[{"name":"a","y":"Numerical"}]}],"z":null})", "g", "a", 0},
    {R"({"Meta":[{"header":"g","facets":[{"name":"a"}]}]})", "g", "a", kUnknown},
    {R"({"meta":[{"Header":"g","facets":[{"name":"a"}]}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","children":[{"header":"h","facets":[{"name":"a"}]}]}]})", "h", "a", kUnknown},
    // The list is no list, or not in its place.
    {R"({})", "g", "a", kUnknown},
    {R"({"meta":null})", "g", "a", kUnknown},
    {R"({"meta":{"header":"g","facets":[{"name":"a"}]}})", "g", "a", kUnknown},
    {R"({"meta":"[]"})", "g", "a", kUnknown},
    {R"({"meta":1})", "g", "a", kUnknown},
    {R"([{"header":"g","facets":[{"name":"a"}]}])", "g", "a", kUnknown},
    {R"("meta")", "g", "a", kUnknown},
    {R"(null)", "g", "a", kUnknown},
    // Malformed as a whole, however much of it is good.
    {"", "g", "a", kUnknown},
    {" \n", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]}])", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]}]},)", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"},]}]})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]}], "n": 1e309})", "g", "a", kUnknown},
    {R"({"meta":[{"header":"g","facets":[{"name":"a"}]}]} // comment)", "g", "a", kUnknown},
    {"{'meta':[]}", "g", "a", kUnknown},
    // A byte-order mark is no part of the text.
    {"\xEF\xBB\xBF{\"meta\":[{\"header\":\"g\",\"facets\":[{\"name\":\"a\"}]}]}", "g", "a", 0},
};

TEST(FacetGroups, EveryRow) {
    for (const Row& row : kRows) {
        FacetGroups groups;
        groups.add(row.text);
        EXPECT_EQ(typeIn(groups, row.header, row.name), row.type) << row.header << " / " << row.name << " in\n"
                                                                  << row.text;
    }
}

TEST(FacetGroups, FacetsOfALaterEntryWithTheSameHeaderAreDroppedOddity) {
    FacetGroups groups;
    groups.add(R"({"meta":[
        {"header":"g","facets":[{"name":"a","type":"Text"}]},
        {"header":"h","facets":[{"name":"c","type":"Text"}]},
        {"header":"g","facets":[{"name":"a","type":"Numerical"},{"name":"b","type":"Numerical"}]}]})");
    EXPECT_EQ(typeIn(groups, "g", "a"), 0);
    EXPECT_EQ(typeIn(groups, "g", "b"), kUnknown);
    EXPECT_EQ(typeIn(groups, "h", "c"), 0);
}

TEST(FacetGroups, AnEmptyFirstEntryHidesTheFacetsOfTheNextOddity) {
    FacetGroups groups;
    groups.add(R"({"meta":[{"header":"g"},{"header":"g","facets":[{"name":"a"}]}]})");
    EXPECT_EQ(typeIn(groups, "g", "a"), kUnknown);
}

TEST(FacetGroups, LaterTextAddsGroupsAndChangesNone) {
    FacetGroups groups;
    groups.add(R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Numerical"}]}]})");
    groups.add(R"({"meta":[{"header":"g","facets":[{"name":"a"},{"name":"b"}]},
                           {"header":"h","facets":[{"name":"c"}]}]})");
    groups.add("{");
    EXPECT_EQ(typeIn(groups, "g", "a"), 1);
    EXPECT_EQ(typeIn(groups, "g", "b"), kUnknown);
    EXPECT_EQ(typeIn(groups, "h", "c"), 0);
}

TEST(FacetGroups, NestingIsReadToADepthAndMalformedBeyond) {
    const auto nested = [](int levels) {
        const auto depth = static_cast<std::size_t>(levels);
        return R"({"meta":[{"header":"g","facets":[{"name":"a"}]}],"x":)" + std::string(depth, '[') +
               std::string(depth, ']') + "}";
    };
    FacetGroups groups;
    groups.add(nested(100000));
    EXPECT_EQ(typeIn(groups, "g", "a"), kUnknown);
    groups.add(nested(1000));
    EXPECT_EQ(typeIn(groups, "g", "a"), 0);
}

TEST(FacetGroups, NamesMayHoldANul) {
    FacetGroups groups;
    groups.add(R"({"meta":[{"header":"g\u0000h","facets":[{"name":"\u0000","type":"Numerical"}]}]})");
    EXPECT_EQ(typeIn(groups, std::string_view("g\0h", 3), std::string_view("\0", 1)), 1);
    EXPECT_EQ(typeIn(groups, "g", ""), kUnknown);
}

}  // namespace
}  // namespace zelutil::facet
