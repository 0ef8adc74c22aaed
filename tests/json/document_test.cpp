// These tests tell what the parser accepts and refuses, on the small stack that a Windows thread has.
#include "json/document.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "json/writer.h"
#include "support/small_stack.h"

namespace zelutil::json {
namespace {

using namespace std::string_literals;

std::string repeated(std::size_t count, std::string_view part) {
    std::string text;
    text.reserve(count * part.size());
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

std::string nestedArrays(std::size_t depth) { return repeated(depth, "[") + repeated(depth, "]"); }

std::string nestedObjects(std::size_t depth) {
    return repeated(depth - 1, R"({"a":)") + "{}" + repeated(depth - 1, "}");
}

struct Accepted {
    std::string text;
    const char* compact;
};

TEST(JsonDocument, AcceptsWhatJsonAllowsAndPassesOddBytesThrough) {
    const Accepted rows[] = {
        // Any value may be the root.
        {"null", "null"},
        {"true", "true"},
        {"-12", "-12"},
        {"\"a\"", "\"a\""},
        {"[]", "[]"},
        {" \t\r\n{ \"a\" : [ 1 , 2.5 ] } \n", R"({"a":[1,2.5]})"},
        // The byte-order mark of UTF-8 is skipped, once.
        {"\xEF\xBB\xBF{}", "{}"},
        // Characters behind a zero byte are not looked at.
        {"[1]\0garbage"s, "[1]"},
        // Escapes.
        {R"("\u0041\n\/")", R"("A\n/")"},
        {R"("\ud83d\ude00")", "\"\xF0\x9F\x98\x80\""},
        // Bytes that are no UTF-8 and a lone low surrogate stand as they are.
        {"\"\xFF\xC3\"", "\"\xFF\xC3\""},
        {R"("\uDC00")", "\"\xED\xB0\x80\""},
        // Duplicate members stay.
        {R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
        {"1.7e308", "1.7e308"},
    };
    for (const Accepted& row : rows) {
        const Document text(row.text);
        EXPECT_TRUE(text.valid()) << row.text;
        EXPECT_EQ(compactText(text.root()), row.compact) << row.text;
    }
}

TEST(JsonDocument, RefusesMalformedTextsAndLeavesTheRootNull) {
    const std::string rows[] = {
        "",
        " ",
        "\xEF\xBB\xBF",
        "\xEF\xBB\xBF\xEF\xBB\xBF{}",
        "{",
        "[1,",
        R"({"meta")",
        R"({"meta":)",
        R"({"meta":[{"header":"Gene)",
        "[1,]",
        "{,}",
        "[1] [2]",
        "// note\n[]",
        "{'a':1}",
        "{a:1}",
        "nul",
        "NaN",
        "Infinity",
        "[01]",
        "[1.]",
        "[.5]",
        "[+1]",
        R"("\x41")",
        R"("\ud800")",
        "\"tab\tinside\"",
        "\"open",
        "\xFF\xFE{\0}\0"s,
        "\x7F"
        "ELF\x02\x01\x01"s,
        "\0{}"s,
    };
    for (const std::string& row : rows) {
        const Document text(row);
        EXPECT_FALSE(text.valid()) << row;
        EXPECT_FALSE(text.root()) << row;
    }
}

TEST(JsonDocument, ATextOfNoBytesAtAllIsMalformed) { EXPECT_FALSE(Document(std::string_view()).valid()); }

TEST(JsonDocument, RefusesNumbersThatAreNotFinite) {
    for (const char* const number : {"1.8e308", "-1.8e308", "1e309", "17976931348623159e292", "[1,2e308]"}) {
        EXPECT_FALSE(Document(number).valid()) << number;
    }
    EXPECT_TRUE(Document("1.7976931348623157e308").valid());
}

TEST(JsonDocument, NestingIsBoundedWhateverTheStack) {
    test::runOnSmallStack([] {
        for (const auto& nested : {nestedArrays, nestedObjects}) {
            EXPECT_TRUE(Document(nested(kMaximumDepth)).valid());
            EXPECT_FALSE(Document(nested(kMaximumDepth + 1)).valid());
            EXPECT_FALSE(Document(nested(1'000'000)).valid());
        }
        EXPECT_FALSE(Document(repeated(5'000'000, "[")).valid());
        // Siblings do not nest.
        EXPECT_TRUE(Document("[" + repeated(5'000, "[],{},") + "0]").valid());
    });
}

TEST(JsonDocument, TheDeepestTextCanBeWrittenOnASmallStack) {
    test::runOnSmallStack([] {
        const std::string nested = nestedArrays(kMaximumDepth);
        const Document text(nested);
        EXPECT_EQ(compactText(text.root()), nested);
        PrettyWriter writer;
        writer.copy(text.root());
        EXPECT_TRUE(writer.take().has_value());
    });
}

TEST(JsonDocument, ControlCharactersInAStringAreRefusedWhereverTheyStand) {
    // Blocks of 16 bytes are looked at in one go; the offset moves the character through two of them.
    for (char control = '\x01'; control < '\x20'; ++control) {
        for (std::size_t offset = 0; offset < 34; ++offset) {
            const std::string written = "[\"" + std::string(offset, 'x') + control + std::string(20, 'y') + "\"]";
            EXPECT_FALSE(Document(written).valid()) << int{control} << " at " << offset;
        }
    }
    EXPECT_TRUE(Document("[\"\x7F\"]").valid());
    EXPECT_TRUE(Document("[1]\0\x1A"s).valid());
}

struct Exponent {
    const char* number;
    const char* written;
};

TEST(JsonDocument, VanishingExponentsNeitherOverflowNorChangeTheValue) {
    const Exponent rows[] = {
        {"0.0000000001e-2147483639", "0.0"},
        {"0.0000000001E-2147483648", "0.0"},
        {"1e-99999999", "0.0"},
        {"1e-12345678901234567890", "0.0"},
        {"1e-9999999", "0.0"},
        {"-1e-2147483639", "-0.0"},
        // Leading zeros make an exponent long, not small.
        {"1e-00000001", "0.1"},
        {"25e-0000000002", "0.25"},
        {"1e-0000000000000000000000000000000000000", "1.0"},
        {"1e-000123456789", "0.0"},
        // Short ones are left alone.
        {"5e-1", "0.5"},
        {"1e-1000000", "0.0"},
    };
    for (const Exponent& row : rows) {
        const Document text(row.number);
        ASSERT_TRUE(text.valid()) << row.number;
        EXPECT_EQ(compactText(text.root()), row.written) << row.number;
    }
}

TEST(JsonDocument, ExponentsInsideStringsAreTextAndStay) {
    const std::string written = R"({"1e-2147483639":"x\"e-99999999","b\\":"e-123456789012","n":[1,"\\\"e-99999999"]})";
    const Document text(written);
    ASSERT_TRUE(text.valid());
    EXPECT_EQ(compactText(text.root()), written);
    // The same beside a number that is shortened.
    const Document mixed(R"(["1e-2147483639",1e-2147483639,"\\"])");
    ASSERT_TRUE(mixed.valid());
    EXPECT_EQ(compactText(mixed.root()), R"(["1e-2147483639",0.0,"\\"])");
}

TEST(JsonDocument, AnExponentCutOffAtTheEndIsMalformedOnly) {
    EXPECT_FALSE(Document("[1e-999999999").valid());
    EXPECT_FALSE(Document("[1e-").valid());
    EXPECT_FALSE(Document("-").valid());
    EXPECT_FALSE(Document("\"e-999999999").valid());
    EXPECT_FALSE(Document("\"e-999999999\\").valid());
}

TEST(JsonDocument, LengthIsBounded) {
    std::string text(kMaximumTextSize, ' ');
    text.back() = '7';
    EXPECT_TRUE(Document(text).valid());
    text.insert(text.begin(), ' ');
    EXPECT_FALSE(Document(text).valid());
}

TEST(JsonDocument, EveryLengthIsReadToItsLastByte) {
    // The parser reads blocks of 16 bytes: a string may end anywhere in one.
    for (std::size_t length = 0; length < 70; ++length) {
        const std::string content(length, 'x');
        const Document text("\"" + content + "\"");
        ASSERT_TRUE(text.valid()) << length;
        EXPECT_EQ(text.root().text(), content);
        EXPECT_TRUE(Document(std::string(length, ' ') + "1" + std::string(length, '\n')).valid()) << length;
    }
}

TEST(JsonDocument, TheTextMayGoAwayAfterParsing) {
    auto source = std::make_unique<std::string>(R"({"name":"a text longer than any small buffer"})");
    const Document text(*source);
    source.reset();
    EXPECT_EQ(text.root().member("name").text(), "a text longer than any small buffer");
}

}  // namespace
}  // namespace zelutil::json
