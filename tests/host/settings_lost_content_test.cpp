// Content that a rewritten file cannot hold is told, once, so that a copy of the file is kept; the rest is carried on.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "host/settings_process.h"
#include "host/settings_texts.h"
#include "host/unread_parts.h"

namespace zelutil::test {
namespace {

const std::string kLostContentDefaults = R"({"version":2,"meta":[)" + defined("a", {"x", "y"}) + "," +
                                         defined("b", {"z"}) + "," + defined("l", {}, R"(,"submanagerId":102)") +
                                         R"(,"a comment"]})";

/// Saves a value over the file, and returns whether that lost content. A second save loses nothing any more.
bool losesContent(FileText& file) {
    SettingsProcess process(kLostContentDefaults, file);
    const bool loses = process.save(file, {{"y", "5"}}).losesContent;
    const FileText first = file;
    EXPECT_FALSE(process.save(file, {}).losesContent) << *first;
    EXPECT_EQ(file, first);
    EXPECT_EQ(valueOf(catalogueOfTexts(kLostContentDefaults, *file), "y"), "5");
    return loses;
}

TEST(SettingsLostContent, IsToldOfWhatIsNotInTheFormThatIsRead) {
    const std::string files[] = {
        R"({"meta":[{"attribute":"a","overriddensettings":[{"x":"lost"}]}]})",
        R"({"meta":[{"attribute":"gone","overriddensettings":[{"x":"lost"}]}]})",
        R"({"meta":{"header":"H","attribute":"a","overriddensettings":[{"x":"lost"}]}})",
        R"({"meta":[{"header":"H","attribute":"a","children":{"c":"lost"}}]})",
        R"({"meta":[{"header":"H","attribute":"a","children":["lost"]}]})",
        R"({"meta":[{"header":"H","attribute":"gone","overriddensettings":[{"o":"1"}],"children":["lost"]}]})",
        R"({"meta":[{"header":"H","attribute":"a","overriddensettings":[],"overriddensettings":[{"x":"lost"}]}]})",
        R"(["lost"])",
        R"("lost")",
        R"({"meta":["lost"]})",
        fileWith({given("l", "1"), given("l", "2")}),
    };
    for (const std::string& text : files) {
        FileText file = text;
        EXPECT_EQ(catalogueOfTexts(kLostContentDefaults, text).findings().size(),
                  text.find("\"o\"") == std::string::npos ? 1U : 2U)
            << text;
        EXPECT_TRUE(losesContent(file)) << text;
    }
}

TEST(SettingsLostContent, IsToldOfWhatStandsBehindANullCharacter) {
    using namespace std::string_literals;
    FileText file = fileWith({given("a", R"({"x":"2"})")}) + "\0\n lost"s;
    EXPECT_TRUE(losesContent(file));
    EXPECT_EQ(valueOf(catalogueOfTexts(kLostContentDefaults, *file), "x"), "2");
    FileText filledUp = fileWith({given("a", R"({"x":"2"})")}) + "\n\0\0\0\n"s;
    EXPECT_FALSE(losesContent(filledUp));
}

TEST(SettingsLostContent, IsToldOfNothingElse) {
    const std::string files[] = {
        fileWith({}),
        "{}",
        R"({"version":1,"meta":["a comment"]})",
        fileWith({given("l", "1"), given("l", "1"), given("l", "")}),
        fileWith({given("a", R"({"x":5,"o":"2"},7)"), given("gone", R"({"n":1.5})")}),
    };
    for (const std::string& text : files) {
        FileText file = text;
        EXPECT_FALSE(losesContent(file)) << text;
    }
    EXPECT_TRUE(catalogueOfTexts(kLostContentDefaults, R"({"version":1,"meta":["a comment"]})").findings().empty());
}

TEST(SettingsLostContent, MembersThatTheDefaultsLackStay) {
    FileText file = R"({"note":"kept 1","version":1,"meta":[
        {"header":"H","attribute":"a","note":"kept 2","unique":false,"overriddensettings":[{"x":"2"}]},
        {"header":"H","attribute":"gone","note":"kept 3"},{"header":"H","attribute":"empty","unique":true},
        {"header":"O","attribute":"old","unique":true,"overriddensettings":[{"o":"3"}],"children":[]}],
        "meta":"kept 4"})";
    EXPECT_FALSE(losesContent(file));
    const std::string text = *json::compactText(json::Document(*file).root());
    EXPECT_EQ(text, R"({"version":2,"meta":[{"header":"H","attribute":"a",)"
                    R"("overriddensettings":[{"a::x":"2"},{"a::y":"5"}],"note":"kept 2"},)"
                    R"({"header":"H","attribute":"b","overriddensettings":[]},)"
                    R"({"header":"H","attribute":"l","submanagerId":102,"overriddensettings":[]},"a comment",)"
                    R"({"header":"H","attribute":"gone","note":"kept 3","overriddensettings":[]},)"
                    R"({"header":"O","attribute":"old","unique":true,"overriddensettings":[{"o":"3"}]}],)"
                    R"("note":"kept 1","meta":"kept 4"})");
}

// --- Numbers --------------------------------------------------------------------------------------------------------

/// Returns what the file has for the number "n" of a section that the defaults lack.
std::string numberIn(const std::string& file) {
    const std::string before = "\"n\": ";
    const std::size_t begin = file.find(before) + before.size();
    return file.substr(begin, file.find('\n', begin) - begin);
}

FileText fileWithNumber(const std::string& number) { return fileWith({given("gone", "{\"n\":" + number + "}")}); }

TEST(SettingsLostContent, NumbersKeepTheirValues) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 500; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        char digits[64];
        std::snprintf(digits, sizeof digits, "%.17g", value);
        FileText file = fileWithNumber(digits);
        EXPECT_FALSE(losesContent(file));
        EXPECT_EQ(std::strtod(numberIn(*file).c_str(), nullptr), value) << digits << " " << numberIn(*file);
    }
}

TEST(SettingsLostContent, IsToldOfNumbersWithMoreDigitsThanAreHeld) {
    for (const char* number :
         {"18446744073709551616", "-9223372036854775809", "0.123456789012345678", "1234567890.12345678E5"}) {
        FileText file = fileWithNumber(number);
        EXPECT_TRUE(losesContent(file)) << number;
    }
    for (const char* number : {"18446744073709551615", "-9223372036854775808", "0.12345678901234567000", "000",
                               "1e-300", "\"18446744073709551616\"", "\"\\\"18446744073709551616\""}) {
        FileText file = fileWithNumber(number);
        if (json::Document(*file).valid()) {
            EXPECT_FALSE(losesContent(file)) << number;
        }
    }
}

// --- What would keep the file from being written --------------------------------------------------------------------

TEST(SettingsLostContent, AKeptSectionThatMakesTheFileTooLongIsLeftOut) {
    std::string sections;
    std::string ends;
    for (int i = 0; i < 300; ++i) {
        sections += R"({"header":"H","attribute":")" + std::string(2000, 'n') +
                    R"(","overriddensettings":[{"a":"b"}],"children":[)";
        ends += "]}";
    }
    FileText file = "{\"meta\":[" + sections + ends + "," + given("l", "7") + "]}";
    EXPECT_TRUE(losesContent(file));
    EXPECT_EQ(entriesOf(*file), "a: [{\"a::y\":\"5\"}]\nb: []\nl: [7]\n");
}

TEST(SettingsLostContent, AValueOfASubManagerThatWouldNestTooDeepIsLeftOut) {
    const std::string deep = std::string(1018, '[') + std::string(1018, ']');
    const std::string defaults =
        R"({"meta":[{"header":"G","attribute":"g","children":[{"header":"G","attribute":"h","children":[)" +
        defined("k", {}, R"(,"submanagerId":102)") + "]}]}," + defined("a", {"x"}) + "]}";
    FileText file = R"({"meta":[{"header":"H","attribute":"g::h::k","overriddensettings":)" + deep + "}]}";
    ASSERT_TRUE(json::Document(*file).valid());
    SettingsProcess process(defaults, file);
    EXPECT_TRUE(process.save(file, {{"x", "2"}}).losesContent);
    EXPECT_EQ(entriesOf(*file), "g: []\ng::h: []\ng::h::k: []\na: [{\"a::x\":\"2\"}]\n");
}

// --- Actions --------------------------------------------------------------------------------------------------------

TEST(SettingsLostContent, OfTheActionsIsAllButEntriesThatAreRead) {
    const std::string none = R"([{"actions":[]}])";
    const std::string all = R"([{"actions":[{"id":2,"shortcut":"F6","rmb":false},{"id":77,"note":"n"}]}])";
    for (const char* text : {R"({"actions":[{"id":2,"shortcut":"F6"}]})", R"([{"actions":[]},{}])", R"(["any"])", "7",
                             R"([{"actions":[{"id":1,"shortcut":"F7"},{"note":"n"},{"id":2,"shortcut":"F6"}]}])",
                             R"([{"note":1,"actions":[]}])", R"([{"actions":[{"id":2,"note":1}]}])",
                             R"([{"actions":[{"id":2,"shortcut":5}]}])", R"([{"actions":[{"id":2,"rmb":"yes"}]}])"}) {
        EXPECT_TRUE(host::losesPartsOfActions(text, none)) << text;
        EXPECT_FALSE(host::losesPartsOfActions(text, text)) << text;
    }
    for (const char* text :
         {"", "[]", "{}", R"([{"actions":[]}])", R"([{"actions":[{"id":2,"shortcut":"F6","rmb":true}]}])"}) {
        EXPECT_FALSE(host::losesPartsOfActions(text, none)) << text;
    }
    EXPECT_TRUE(host::losesPartsOfActions(all, none));
    EXPECT_FALSE(host::losesPartsOfActions(all, R"([{"actions":[{"id":77,"note":"n"}]}])"));
}

}  // namespace
}  // namespace zelutil::test
