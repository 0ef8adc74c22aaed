// A view answers "absent" for whatever is not as asked; a writer gives the whole text or nothing.
#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>
#include <vector>

#include "json/document.h"
#include "json/writer.h"

namespace zelutil::json {
namespace {

using namespace std::string_literals;

constexpr char kEveryType[] =
    R"({"null":null,"true":true,"false":false,"int":7,"negative":-8,"double":3.0,"text":"t","array":[1],"object":{"a":1}})";
constexpr const char* kNames[] = {"null", "true",  "false",  "int",     "negative", "double",
                                  "text", "array", "object", "missing", "",         "tex"};

std::optional<std::string> prettyText(View value) {
    PrettyWriter writer;
    writer.copy(value);
    return writer.take();
}

std::string nestedArrays(unsigned depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonView, GivesOnlyMembersOfTheirType) {
    const Document document(kEveryType);
    ASSERT_TRUE(document.valid());
    for (const char* const name : kNames) {
        const View member = document.root().member(name);
        EXPECT_EQ(static_cast<bool>(member), name != "missing"s && name != ""s && name != "tex"s) << name;
        EXPECT_EQ(member.isArray(), name == "array"s) << name;
        EXPECT_EQ(member.isTrue(), name == "true"s) << name;
        EXPECT_EQ(member.text().has_value(), name == "text"s) << name;
        EXPECT_EQ(member.integer().has_value(), name == "int"s || name == "negative"s) << name;
        EXPECT_EQ(member.elements().empty(), name != "array"s) << name;
        EXPECT_EQ(member.members().begin() != member.members().end(), name == "object"s) << name;
        EXPECT_EQ(static_cast<bool>(member.member("a")), name == "object"s) << name;
    }
    EXPECT_EQ(document.root().member("text").text(), "t");
    EXPECT_EQ(document.root().member("int").integer(), 7);
    EXPECT_EQ(document.root().member("negative").integer(), -8);
    EXPECT_EQ(document.root().member("object").member("a").integer(), 1);
}

TEST(JsonView, EverythingAskedOfAnAbsentValueIsAbsent) {
    const View absent;
    EXPECT_FALSE(absent);
    EXPECT_FALSE(absent.isArray());
    EXPECT_FALSE(absent.isTrue());
    EXPECT_FALSE(absent.text());
    EXPECT_FALSE(absent.integer());
    EXPECT_FALSE(absent.member("a"));
    EXPECT_FALSE(absent.member(std::string_view()));
    EXPECT_TRUE(absent.elements().empty());
    EXPECT_EQ(absent.elements().size(), 0U);
    EXPECT_FALSE(absent.members().begin() != absent.members().end());
}

TEST(JsonView, WhatIsNoObjectHasNoMembers) {
    for (const char* const root : {"null", "true", "7", "1.5", "\"text\"", "[{\"a\":1}]"}) {
        const Document document(root);
        ASSERT_TRUE(document.valid());
        EXPECT_FALSE(document.root().member("a")) << root;
        EXPECT_FALSE(document.root().members().begin() != document.root().members().end()) << root;
    }
}

TEST(JsonView, ElementsComeInOrder) {
    const Document document(R"([1,"x",[],3])");
    std::vector<std::string> texts;
    for (const View element : document.root().elements()) {
        texts.push_back(compactText(element).value());
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"1", "\"x\"", "[]", "3"}));
    EXPECT_EQ(document.root().elements().size(), 4U);
    EXPECT_TRUE(Document("[]").root().isArray());
    EXPECT_TRUE(Document("[]").root().elements().empty());
}

TEST(JsonView, MembersComeInOrderWithTheirKeysAlsoTheSameTwice) {
    const Document document(R"({"b":1,"":2,"a\u0000":3,"b":4})");
    std::vector<std::pair<std::string, int>> members;
    for (const auto& [key, value] : document.root().members()) {
        members.emplace_back(key, value.integer().value());
    }
    EXPECT_EQ(members, (std::vector<std::pair<std::string, int>>{{"b", 1}, {"", 2}, {"a\0"s, 3}, {"b", 4}}));
    EXPECT_EQ(document.root().member("").integer(), 2);
    EXPECT_EQ(document.root().member(std::string_view()).integer(), 2);
}

struct Integer {
    const char* number;
    std::optional<std::int32_t> value;
};

TEST(JsonView, AnIntegerFits32BitsWithASign) {
    const Integer rows[] = {
        {"0", 0},
        {"-0", 0},
        {"2147483647", std::numeric_limits<std::int32_t>::max()},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"4294967296", std::nullopt},
        {"18446744073709551616", std::nullopt},
        {"3.0", std::nullopt},
        {"1e2", std::nullopt},
        {"\"3\"", std::nullopt},
        {"true", std::nullopt},
    };
    for (const Integer& row : rows) {
        const Document document(row.number);
        ASSERT_TRUE(document.valid()) << row.number;
        EXPECT_EQ(document.root().integer(), row.value) << row.number;
    }
}

TEST(JsonView, OfMembersWithOneNameTheFirstCountsAlsoWhenItsTypeIsWrong) {
    const Document document(R"({"a":"first","a":"second","b":1,"b":"text"})");
    EXPECT_EQ(document.root().member("a").text(), "first");
    EXPECT_FALSE(document.root().member("b").text());
}

TEST(JsonView, ZeroBytesInsideAStringBelongToIt) {
    const Document document(R"({"a\u0000b":"x\u0000y"})");
    ASSERT_TRUE(document.valid());
    EXPECT_FALSE(document.root().member("a"));
    EXPECT_EQ(document.root().member("a\0b"s).text(), "x\0y"s);
}

TEST(JsonWriter, CompactHasNoWhiteSpaceAndPrettyHasFourBlanksALevel) {
    const Document document(R"( { "a" : [ 1 , { "b" : "c" } ] , "d" : { } , "e" : [ ] } )");
    EXPECT_EQ(compactText(document.root()), R"({"a":[1,{"b":"c"}],"d":{},"e":[]})");
    EXPECT_EQ(prettyText(document.root()),
              "{\n"
              "    \"a\": [\n"
              "        1,\n"
              "        {\n"
              "            \"b\": \"c\"\n"
              "        }\n"
              "    ],\n"
              "    \"d\": {},\n"
              "    \"e\": []\n"
              "}");
}

/// The same value by events as in the test above, with a part of it copied.
template <typename SomeWriter>
std::optional<std::string> byEvents() {
    const Document part(R"({"d":{},"n":[-1,18446744073709551615,0.1,1e300,5e-324,100.0,null]})");
    SomeWriter writer;
    writer.beginObject();
    writer.key("a");
    writer.beginArray();
    writer.integer(std::numeric_limits<std::int32_t>::min());
    writer.truth(true);
    writer.truth(false);
    writer.text("x\0\"\x1F"s);
    writer.text({});
    writer.copy(part.root());
    writer.endArray();
    writer.key({});
    writer.beginObject();
    writer.endObject();
    writer.key("e");
    writer.beginArray();
    writer.endArray();
    writer.endObject();
    return writer.take();
}

TEST(JsonWriter, ACopiedPartIsLaidOutAsIfItWereWrittenByEvents) {
    EXPECT_EQ(byEvents<CompactWriter>(),
              R"({"a":[-2147483648,true,false,"x\u0000\"\u001F","",)"
              R"({"d":{},"n":[-1,18446744073709551615,0.1,1e300,5e-324,100.0,null]}],"":{},"e":[]})");
    EXPECT_EQ(byEvents<PrettyWriter>(),
              "{\n"
              "    \"a\": [\n"
              "        -2147483648,\n"
              "        true,\n"
              "        false,\n"
              "        \"x\\u0000\\\"\\u001F\",\n"
              "        \"\",\n"
              "        {\n"
              "            \"d\": {},\n"
              "            \"n\": [\n"
              "                -1,\n"
              "                18446744073709551615,\n"
              "                0.1,\n"
              "                1e300,\n"
              "                5e-324,\n"
              "                100.0,\n"
              "                null\n"
              "            ]\n"
              "        }\n"
              "    ],\n"
              "    \"\": {},\n"
              "    \"e\": []\n"
              "}");
}

TEST(JsonWriter, EscapesEveryControlCharacterWhereverItStands) {
    for (int control = 1; control < 0x20; ++control) {
        for (std::size_t offset = 0; offset < 34; ++offset) {
            const std::string content = std::string(offset, 'x') + static_cast<char>(control) + std::string(20, 'y');
            CompactWriter writer;
            writer.beginObject();
            writer.key(content);
            writer.text(content);
            writer.endObject();
            const auto compact = writer.take();
            ASSERT_TRUE(compact);
            EXPECT_EQ(compact->find(static_cast<char>(control)), std::string::npos) << control << " at " << offset;
            EXPECT_EQ(Document(*compact).root().member(content).text(), content) << control << " at " << offset;
        }
    }
    CompactWriter writer;
    writer.text("\x1A\x1F\b\f\n\r\t\"\\/\x7F");
    EXPECT_EQ(writer.take(), "\"\\u001A\\u001F\\b\\f\\n\\r\\t\\\"\\\\/\x7F\"");
}

TEST(JsonWriter, AStringIsAppendedAsItIsWritten) {
    std::string text = "before";
    appendString(text, "a\"b\\c/\b\f\n\r\t\x1F\x7F\xC3\xA4\xFF");
    EXPECT_EQ(text, "before\"a\\\"b\\\\c/\\b\\f\\n\\r\\t\\u001F\x7F\xC3\xA4\xFF\"");
    for (int c = 0; c <= UCHAR_MAX; ++c) {
        for (const std::string& content :
             {std::string(1, static_cast<char>(c)), "xy" + std::string(2, static_cast<char>(c)) + "z"}) {
            CompactWriter writer;
            writer.text(content);
            std::string appended;
            appendString(appended, content);
            EXPECT_EQ(writer.take(), appended) << c;
        }
    }
}

TEST(JsonWriter, ATextInsideOthersIsIndentedAndNestsTheLess) {
    const Document document(R"({"a":[1,{"b":"c\nd"}],"e":[]})");
    EXPECT_EQ(prettyText(document.root(), 0), prettyText(document.root()));
    EXPECT_EQ(prettyText(document.root(), 2),
              "{\n"
              "            \"a\": [\n"
              "                1,\n"
              "                {\n"
              "                    \"b\": \"c\\nd\"\n"
              "                }\n"
              "            ],\n"
              "            \"e\": []\n"
              "        }");
    EXPECT_EQ(prettyText(Document("7").root(), 3), "7");
    EXPECT_EQ(prettyText(View(), 3), std::nullopt);
    const Document deep(nestedArrays(kMaximumDepth - 3));
    EXPECT_TRUE(prettyText(deep.root(), 3));
    EXPECT_FALSE(prettyText(deep.root(), 4));
}

TEST(JsonWriter, AGapHoldsNothingAndIsWhereItsValueWouldBegin) {
    PrettyWriter writer;
    writer.beginObject();
    writer.key("a");
    EXPECT_EQ(writer.depth(), 1U);
    const std::size_t member = writer.gap();
    writer.key("b");
    writer.beginArray();
    EXPECT_EQ(writer.depth(), 2U);
    const std::size_t element = writer.gap();
    writer.endArray();
    writer.endObject();
    EXPECT_EQ(writer.depth(), 0U);
    const std::string text = writer.take().value();
    EXPECT_EQ(text, "{\n    \"a\": ,\n    \"b\": [\n        \n    ]\n}");
    EXPECT_EQ(text.substr(0, member), "{\n    \"a\": ");
    EXPECT_EQ(text.substr(element), "\n    ]\n}");
}

TEST(JsonWriter, WritesNothingThatNestsTooDeepToBeReadBack) {
    const Document deepest(nestedArrays(kMaximumDepth));
    ASSERT_TRUE(deepest.valid());
    EXPECT_EQ(compactText(deepest.root()), nestedArrays(kMaximumDepth));

    const Document inner(nestedArrays(kMaximumDepth - 1));
    for (const auto* const copied : {&inner, &deepest}) {
        CompactWriter writer;
        writer.beginArray();
        writer.copy(copied->root());
        writer.endArray();
        EXPECT_EQ(writer.take().has_value(), copied == &inner);
    }
    for (const unsigned depth : {kMaximumDepth, kMaximumDepth + 1}) {
        CompactWriter objects;
        for (unsigned i = 1; i < depth; ++i) {
            objects.beginObject();
            objects.key("a");
        }
        objects.beginObject();
        for (unsigned i = 0; i < depth; ++i) {
            objects.endObject();
        }
        EXPECT_EQ(objects.take().has_value(), depth == kMaximumDepth);
    }
}

TEST(JsonWriter, SiblingsDoNotNest) {
    CompactWriter writer;
    writer.beginArray();
    for (unsigned i = 0; i < 2 * kMaximumDepth; ++i) {
        writer.beginArray();
        writer.endArray();
        writer.beginObject();
        writer.endObject();
    }
    writer.endArray();
    EXPECT_TRUE(writer.take().has_value());
}

TEST(JsonWriter, WritesNothingThatIsTooLongToBeReadBack) {
    const std::string most(kMaximumTextSize - 2, 'x');
    CompactWriter longest;
    longest.text(most);
    EXPECT_EQ(longest.take(), "\"" + most + "\"");
    CompactWriter longer;
    longer.text(most + "x");
    EXPECT_EQ(longer.take(), std::nullopt);
}

TEST(JsonWriter, WritesNothingRatherThanHalfAText) {
    // A value that is too deep by one level is refused in the middle of the text.
    const Document deepest("[1," + nestedArrays(kMaximumDepth - 1) + ",2]");
    ASSERT_TRUE(deepest.valid());
    CompactWriter compact;
    compact.beginArray();
    compact.copy(deepest.root());
    compact.endArray();
    EXPECT_EQ(compact.take(), std::nullopt);

    // Nothing that comes after the missing value changes the result.
    PrettyWriter writer;
    writer.beginObject();
    writer.key("a");
    writer.copy(deepest.root());
    writer.endObject();
    EXPECT_EQ(writer.take(), std::nullopt);
}

TEST(JsonWriter, WritesNoAbsentValueAndNoTextWithoutItsEnd) {
    EXPECT_EQ(compactText(View()), std::nullopt);
    EXPECT_EQ(CompactWriter().take(), std::nullopt);
    PrettyWriter open;
    open.beginArray();
    open.integer(1);
    EXPECT_EQ(open.take(), std::nullopt);
}

}  // namespace
}  // namespace zelutil::json
