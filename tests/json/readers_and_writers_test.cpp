// Typed readers answer "absent" for whatever is not as asked; writers give the whole text or nothing.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "json/json.h"

namespace zelutil::json {
namespace {

using namespace std::string_literals;

constexpr char kEveryType[] =
    R"({"null":null,"true":true,"int":7,"negative":-8,"double":3.0,"text":"t","array":[1],"object":{"a":1}})";
constexpr const char* kNames[] = {"null", "true",  "int",    "negative", "double",
                                  "text", "array", "object", "missing",  ""};

TEST(JsonReaders, AnswerOnlyMembersOfTheirType) {
    const Text text(kEveryType);
    ASSERT_TRUE(text.valid());
    for (const char* const name : kNames) {
        EXPECT_EQ(stringMember(text.root(), name).has_value(), name == "text"s) << name;
        EXPECT_EQ(arrayMember(text.root(), name) != nullptr, name == "array"s) << name;
        EXPECT_EQ(integerMember(text.root(), name).has_value(), name == "int"s || name == "negative"s) << name;
        EXPECT_EQ(member(text.root(), name) != nullptr, name != "missing"s && name != ""s) << name;
    }
    EXPECT_EQ(stringMember(text.root(), "text"), "t");
    EXPECT_EQ(integerMember(text.root(), "int"), 7);
    EXPECT_EQ(integerMember(text.root(), "negative"), -8);
}

TEST(JsonReaders, AnswerAbsentForEveryMemberOfWhatIsNoObject) {
    for (const char* const root : {"null", "true", "7", "1.5", "\"text\"", "[{\"a\":1}]"}) {
        const Text text(root);
        ASSERT_TRUE(text.valid());
        EXPECT_EQ(member(text.root(), "a"), nullptr) << root;
        EXPECT_EQ(arrayMember(text.root(), "a"), nullptr) << root;
        EXPECT_FALSE(stringMember(text.root(), "a")) << root;
        EXPECT_FALSE(integerMember(text.root(), "a")) << root;
    }
}

struct Integer {
    const char* number;
    std::optional<std::int32_t> value;
};

TEST(JsonReaders, AnIntegerFits32BitsWithASign) {
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
        const Text text(R"({"n":)"s + row.number + "}");
        ASSERT_TRUE(text.valid()) << row.number;
        EXPECT_EQ(integerMember(text.root(), "n"), row.value) << row.number;
    }
}

TEST(JsonReaders, OfMembersWithOneNameTheFirstCountsAlsoWhenItsTypeIsWrong) {
    const Text text(R"({"a":"first","a":"second","b":1,"b":"text"})");
    EXPECT_EQ(stringMember(text.root(), "a"), "first");
    EXPECT_FALSE(stringMember(text.root(), "b"));
}

TEST(JsonReaders, ZeroBytesInsideAStringBelongToIt) {
    const Text text(R"({"a\u0000b":"x\u0000y"})");
    ASSERT_TRUE(text.valid());
    EXPECT_EQ(member(text.root(), "a"), nullptr);
    EXPECT_EQ(string(text.root().MemberBegin()->value), "x\0y"s);
}

TEST(JsonReaders, MembersFoundInAnObjectThatMayChangeCanBeChanged) {
    Text text(R"({"a":[1],"b":2})");
    Value* const array = arrayMember(text.root(), "a");
    ASSERT_NE(array, nullptr);
    array->PushBack(9, text.allocator());
    EXPECT_EQ(arrayMember(text.root(), "b"), nullptr);
    member(text.root(), "b")->SetInt(3);
    EXPECT_EQ(compactText(text.root()), R"({"a":[1,9],"b":3})");
}

TEST(JsonWriters, CompactHasNoWhiteSpaceAndPrettyHasFourBlanksALevel) {
    const Text text(R"( { "a" : [ 1 , { "b" : "c" } ] , "d" : { } , "e" : [ ] } )");
    EXPECT_EQ(compactText(text.root()), R"({"a":[1,{"b":"c"}],"d":{},"e":[]})");
    EXPECT_EQ(prettyText(text.root()),
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

TEST(JsonWriters, EscapeEveryControlCharacterWhereverItStands) {
    for (int control = 1; control < 0x20; ++control) {
        for (std::size_t offset = 0; offset < 34; ++offset) {
            const std::string content = std::string(offset, 'x') + static_cast<char>(control) + std::string(20, 'y');
            const Value value(content.data(), static_cast<rapidjson::SizeType>(content.size()));
            const auto compact = compactText(value);
            ASSERT_TRUE(compact);
            EXPECT_EQ(compact->find(static_cast<char>(control)), std::string::npos) << control << " at " << offset;
            EXPECT_EQ(string(Text(*compact).root()), content) << control << " at " << offset;
        }
    }
    const Value value("\x1A\x1F\b\f\n\r\t\"\\/\x7F");
    EXPECT_EQ(compactText(value), "\"\\u001A\\u001F\\b\\f\\n\\r\\t\\\"\\\\/\x7F\"");
}

TEST(JsonWriters, WriteNothingThatCouldNotBeReadBack) {
    std::string deepest;
    for (unsigned i = 0; i < kMaximumDepth; ++i) {
        deepest = "[" + deepest + "]";
    }
    const Text text(deepest);
    ASSERT_TRUE(text.valid());
    Document document;
    document.CopyFrom(text.root(), document.GetAllocator());
    EXPECT_TRUE(compactText(document).has_value());
    Document deeper(rapidjson::kArrayType);
    deeper.PushBack(Value(document, deeper.GetAllocator()), deeper.GetAllocator());
    EXPECT_EQ(compactText(deeper), std::nullopt);
    EXPECT_EQ(prettyText(deeper), std::nullopt);
    // Siblings do not nest.
    Document wide(rapidjson::kArrayType);
    for (unsigned i = 0; i < 2 * kMaximumDepth; ++i) {
        wide.PushBack(Value(i % 2 == 0 ? rapidjson::kArrayType : rapidjson::kObjectType), wide.GetAllocator());
    }
    EXPECT_TRUE(compactText(wide).has_value());

    const std::string most(kMaximumTextSize - 2, 'x');
    const Value longest(most.data(), static_cast<rapidjson::SizeType>(most.size()));
    EXPECT_TRUE(compactText(longest).has_value());
    const std::string more = most + "x";
    EXPECT_EQ(compactText(Value(more.data(), static_cast<rapidjson::SizeType>(more.size()))), std::nullopt);
}

TEST(JsonWriters, WriteNothingRatherThanHalfAText) {
    const Value infinite(std::numeric_limits<double>::infinity());
    EXPECT_EQ(compactText(infinite), std::nullopt);
    EXPECT_EQ(prettyText(infinite), std::nullopt);

    Document document(rapidjson::kArrayType);
    document.PushBack(1, document.GetAllocator());
    document.PushBack(std::numeric_limits<double>::quiet_NaN(), document.GetAllocator());
    EXPECT_EQ(compactText(document), std::nullopt);
    EXPECT_EQ(prettyText(document), std::nullopt);
}

}  // namespace
}  // namespace zelutil::json
