// Documents against RapidJSON as it builds them: what is accepted, and every value, written again.
#include "json/document.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include "json/rapid_text.h"

#include <optional>
#include <string>
#include <string_view>

#include "json/parse_failure.h"
#include "json/random_json.h"
#include "json/writer.h"
#include "support/random_text.h"

namespace zelutil::json {
namespace {

using namespace std::string_literals;

/// The value of a text as RapidJSON writes it; nothing for a text that it refuses.
std::optional<std::string> writtenByRapidJson(std::string_view text) {
    const std::unique_ptr<char[]> copy = readyForRapidJson(text);
    rapidjson::Document document;
    if (document.ParseInsitu<rapidjson::kParseIterativeFlag>(copy.get()).HasParseError()) {
        return std::nullopt;
    }
    struct Allocator : rapidjson::CrtAllocator {};
    rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Allocator> buffer;
    rapidjson::Writer<rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Allocator>> writer(buffer);
    return document.Accept(writer) ? std::optional<std::string>({buffer.GetString(), buffer.GetSize()}) : std::nullopt;
}

std::string_view withoutMark(std::string_view text) {
    return text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? text.substr(kByteOrderMark.size()) : text;
}

/// The vectorised parser takes these inside a string.
bool holdsLateControlCharacter(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    return text.find_first_of("\x1A\x1B\x1C\x1D\x1E\x1F") != std::string_view::npos;
}

/// Compares and returns whether the text is accepted.
bool compareWithTwin(std::string_view text) {
    const Document document(text);
    const Document inPlace(TextStays(), text);
    const auto expected =
        holdsLateControlCharacter(withoutMark(text)) ? std::nullopt : writtenByRapidJson(withoutMark(text));
    EXPECT_EQ(document.valid(), expected.has_value()) << text;
    EXPECT_EQ(inPlace.valid(), document.valid()) << text;
    EXPECT_EQ(parseFailureOf(text).has_value(), !document.valid()) << text;
    EXPECT_EQ(Document(text, Numbers::Exact).valid(), document.valid()) << text;
    if (document.valid()) {
        EXPECT_EQ(compactText(document.root()), expected) << text;
        EXPECT_EQ(compactText(inPlace.root()), expected) << text;
    }
    return document.valid();
}

TEST(JsonDocumentTwin, RandomTextsWholeAndDamaged) {
    test::RandomText random(11);
    std::size_t accepted = 0;
    for (unsigned seed = 0; seed < 2000 && !testing::Test::HasFailure(); ++seed) {
        test::RandomJson json(seed);
        json.document();
        EXPECT_TRUE(compareWithTwin(json.text));
        std::string text = json.text.substr(0, json.text.size() - random.below(2));
        for (std::size_t left = 1 + random.below(2); left > 0 && !text.empty(); --left) {
            text[random.below(text.size())] = "{}[],:\"\\0e.-u \n\x1B\0x"s[random.below(18)];
        }
        accepted += compareWithTwin(text) ? 1 : 0;
    }
    EXPECT_GT(accepted, 100U);
}

TEST(JsonDocumentTwin, RandomNumbers) {
    test::RandomText random(12);
    std::size_t accepted = 0;
    for (unsigned i = 0; i < 20'000 && !testing::Test::HasFailure(); ++i) {
        const std::string number = random.text("0123456789", 22) + random.text("0123456789", 3) + random.text(".-", 1) +
                                   random.text("0123456789", 20) + random.text("eE", 1) + random.text("-+", 1) +
                                   random.text("0123456789", 3);
        accepted += compareWithTwin((i % 3 == 0 ? "-" : "") + number) ? 1 : 0;
    }
    EXPECT_GT(accepted, 3000U);
    // Digits alone can be too large, too.
    for (const std::size_t digits : {299U, 300U, 301U, 308U, 309U, 310U, 400U}) {
        compareWithTwin(std::string(digits, '9'));
        compareWithTwin("1" + std::string(digits, '0') + ".5");
        compareWithTwin("0." + std::string(digits, '3'));
    }
}

TEST(JsonDocumentTwin, RandomStrings) {
    test::RandomText random(13);
    std::size_t accepted = 0;
    for (unsigned i = 0; i < 20'000 && !testing::Test::HasFailure(); ++i) {
        std::string text = "[\"" + std::string(random.below(20), 'x');
        for (std::size_t left = random.below(5); left > 0; --left) {
            constexpr std::string_view kParts[] = {"\\u00e4", "\\uD83D",   "\\uDE00", "\\udBfF", "\\uDC00",
                                                   "\\u20AC", "\\u000",    "\\u0000", "\\U0041", "\\n",
                                                   "\\b",     "\\f\\r\\t", "\\/",     "\\\\",    "\\\"",
                                                   "\\'",     "\\",        "\x7F",    "\xFF",    "\x19"};
            text += kParts[random.below(std::size(kParts))];
            text += random.text("ab0F", 3);
        }
        accepted += compareWithTwin(text + "\"]") ? 1 : 0;
    }
    EXPECT_GT(accepted, 1000U);
}

}  // namespace
}  // namespace zelutil::json
