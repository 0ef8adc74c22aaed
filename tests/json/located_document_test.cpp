// Tests where the values of a text stand, and where a text that is no JSON goes wrong.
#include "json/located_document.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "json/random_json.h"
#include "support/random_text.h"
#include "support/small_stack.h"

namespace zelutil::json {
namespace {

using namespace std::string_literals;

/// Goes through the text as somebody who counts lines and columns by hand.
Position counted(std::string_view text, std::size_t offset) {
    Position position{offset, 1, 1};
    for (std::size_t i = text.substr(0, 3) == kByteOrderMark ? 3 : 0; i < offset; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '\n') {
            ++position.line;
            position.column = 1;
        } else if (byte < 0x80 || byte >= 0xC0) {
            ++position.column;
        }
    }
    return position;
}

void expectAt(std::string_view text, std::size_t offset, const std::optional<Position>& position) {
    ASSERT_TRUE(position.has_value()) << text;
    const Position expected = counted(text, offset);
    EXPECT_EQ(position->offset, offset) << text;
    EXPECT_EQ(position->line, expected.line) << text << " at " << offset;
    EXPECT_EQ(position->column, expected.column) << text << " at " << offset;
}

std::vector<View> insideOf(View value) {
    std::vector<View> inside;
    for (const View element : value.elements()) {
        inside.push_back(element);
    }
    for (const Member& member : value.members()) {
        inside.push_back(member.value);
    }
    return inside;
}

void compare(const LocatedDocument& document, View value, const test::Written& written, std::size_t& compared) {
    ++compared;
    expectAt(document.text(), written.begin, document.positionOf(value));
    expectAt(document.text(), written.end, document.endOf(value));
    EXPECT_EQ(document.keyPositionOf(value).has_value(), written.isMember);
    if (written.isMember) {
        expectAt(document.text(), written.key, document.keyPositionOf(value));
    }
    const std::vector<View> inside = insideOf(value);
    ASSERT_EQ(inside.size(), written.inside.size()) << document.text();
    for (std::size_t i = 0; i < inside.size(); ++i) {
        compare(document, inside[i], written.inside[i], compared);
    }
}

TEST(LocatedDocument, LineAndColumnOfRandomDocumentsLeadToTheVeryText) {
    std::size_t compared = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        test::RandomJson json(seed);
        const test::Written root = json.document();
        const LocatedDocument document(json.text);
        ASSERT_TRUE(document.valid()) << json.text;
        compare(document, document.root(), root, compared);
        if (testing::Test::HasFailure()) {
            return;
        }
    }
    EXPECT_GT(compared, 10'000U);
}

TEST(LocatedDocument, CutAndDamagedTextsAreAcceptedAsADocumentAcceptsThem) {
    test::RandomText random(7);
    std::size_t malformed = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        test::RandomJson json(seed);
        json.document();
        std::string text = json.text.substr(0, json.text.size() - random.below(3));
        if (!text.empty() && random.below(2) == 0) {
            text[random.below(text.size())] = "{}[],:\"\\0e.\x1B\0x"s[random.below(13)];
        }
        const LocatedDocument located(text);
        EXPECT_EQ(located.valid(), Document(text).valid()) << text;
        EXPECT_EQ(located.failure().has_value(), !located.valid()) << text;
        if (const auto failure = located.failure()) {
            ++malformed;
            EXPECT_LE(failure->position.offset, text.size()) << text;
            expectAt(text, failure->position.offset, failure->position);
        }
    }
    EXPECT_GT(malformed, 500U);
}

struct Malformed {
    std::string text;
    std::size_t offset;
    std::size_t line;
    std::size_t column;
    const char* why;  ///< A part of the sentence.
};

TEST(LocatedDocument, AnErrorStandsWhereAReaderOfTheTextWouldPutIt) {
    const Malformed rows[] = {
        // Nothing there.
        {"", 0, 1, 1, "holds no value"},
        {" \n ", 3, 2, 2, "holds no value"},
        {"\xEF\xBB\xBF", 3, 1, 1, "holds no value"},
        // A comma too many, or too few.
        {"{\"a\":1,}", 7, 1, 8, "comma stands before the closing brace"},
        {"[1,]", 3, 1, 4, "value is missing"},
        {"{\"a\":1\n \"b\":2}", 8, 2, 2, "comma or a closing brace"},
        {"[1\r\n2]", 4, 2, 1, "comma or a closing bracket"},
        {"{\"a\" 1}", 5, 1, 6, "colon is missing"},
        {"{a:1}", 1, 1, 2, "name of a member"},
        // The ends of the text.
        {"[1] [2]", 4, 1, 5, "behind the end"},
        {"{\"a\":[1", 7, 1, 8, "closing bracket"},
        {"\n\n{\"a\":", 7, 3, 6, "value is missing"},
        {"[\"abc", 5, 1, 6, "closing quotation mark"},
        // In strings; the column counts the umlaut once.
        {"[\"\xC3\xA4\",\n\"\xC3\xA4\\x\"]", 10, 2, 3, "no such escape"},
        {"{\"a\":\"open\n}", 10, 1, 11, "closed on its line"},
        {"[\"\\u00g0\"]", 2, 1, 3, "hexadecimal"},
        {"[\"\\ud83d!\"]", 2, 1, 3, "surrogate"},
        {"[\"a\x1B\"]", 3, 1, 4, "control character"},
        // The fault before such a character counts.
        {"[1 2, \"\x1B\"]", 3, 1, 4, "comma or a closing bracket"},
        // Numbers.
        {"[1,\n 1.]", 7, 2, 4, "decimal point"},
        {"[1e]", 3, 1, 4, "exponent"},
        {"[1e309]", 1, 1, 2, "too large"},
        {"[0, 1.8e308]", 4, 1, 5, "too large"},
        {"[nul]", 4, 1, 5, "value is missing or is none"},
    };
    for (const Malformed& row : rows) {
        const LocatedDocument document(row.text);
        const auto failure = document.failure();
        ASSERT_TRUE(failure.has_value()) << row.text;
        EXPECT_EQ(failure->position.offset, row.offset) << row.text;
        EXPECT_EQ(failure->position.line, row.line) << row.text;
        EXPECT_EQ(failure->position.column, row.column) << row.text;
        EXPECT_NE(std::string_view(failure->text).find(row.why), std::string_view::npos)
            << row.text << ": " << failure->text;
    }
}

TEST(LocatedDocument, TheDeepestTextHasPositionsOnASmallStackAndADeeperOneAnErrorAtItsFirstBracketTooMany) {
    test::runOnSmallStack([] {
        const std::string deepest = std::string(kMaximumDepth, '[') + std::string(kMaximumDepth, ']');
        const LocatedDocument document(deepest);
        ASSERT_TRUE(document.valid());
        View innermost = document.root();
        while (!innermost.elements().empty()) {
            innermost = *innermost.elements().begin();
        }
        EXPECT_EQ(document.positionOf(innermost)->offset, kMaximumDepth - 1);
        EXPECT_EQ(document.endOf(document.root())->offset, 2 * kMaximumDepth);

        const std::string deeper = std::string(2 * kMaximumDepth, '[');
        const auto failure = LocatedDocument(deeper).failure();
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->position.offset, kMaximumDepth);
        EXPECT_STREQ(failure->text, "Arrays and objects stand inside each other more than 1024 levels deep.");
    });
}

TEST(LocatedDocument, ATextInUtf16SaysSo) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {"\xFF\xFE{\0}\0"sv, "\xFE\xFF\0{\0}"sv, "{\0}\0"sv, "\0{\0}"sv}) {
        const auto failure = LocatedDocument(text).failure();
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->position.line, 1U);
        EXPECT_EQ(failure->position.column, 1U);
        EXPECT_STREQ(failure->text, "The text is in UTF-16, and only UTF-8 is read: save it as that.");
    }
    for (const std::string_view text : {"\0\0"sv, "\0"sv, "\xFF{"sv, "{,\0"sv}) {
        const auto failure = LocatedDocument(text).failure();
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(std::string_view(failure->text).find("UTF-16"), std::string_view::npos);
    }
}

TEST(LocatedDocument, ATextThatIsTooLargeSaysSo) {
    const std::string text(kMaximumTextSize + 1, ' ');
    const auto failure = LocatedDocument(text).failure();
    ASSERT_TRUE(failure.has_value());
    EXPECT_STREQ(failure->text, "The text is larger than 64 MiB.");
}

TEST(LocatedDocument, WhatIsNotInTheDocumentHasNoPosition) {
    const LocatedDocument document(R"({"a":[]})");
    const LocatedDocument other(R"({"a":[]})");
    EXPECT_FALSE(document.positionOf(View()).has_value());
    EXPECT_FALSE(document.positionOf(other.root()).has_value());
    EXPECT_FALSE(document.positionOf(other.root().member("a")).has_value());
    EXPECT_FALSE(document.endOf(View()).has_value());
    EXPECT_FALSE(document.keyPositionOf(document.root()).has_value());
    EXPECT_FALSE(LocatedDocument("[").positionOf(document.root()).has_value());
}

TEST(LocatedDocument, APlaceBehindTheTextIsItsEnd) {
    const LocatedDocument document("[1]\n");
    EXPECT_EQ(document.positionAt(100).offset, 4U);
    EXPECT_EQ(document.positionAt(100).line, 2U);
    EXPECT_EQ(document.positionAt(100).column, 1U);
}

}  // namespace
}  // namespace zelutil::json
