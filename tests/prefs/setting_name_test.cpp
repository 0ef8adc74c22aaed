// A name becomes a key, and names of nested sections are joined.
#include "prefs/setting_name.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "prefs/joined_names.h"

namespace zelutil::prefs {
namespace {

using namespace std::string_view_literals;

struct HashRow {
    std::string_view name;
    std::uint64_t hash;
};

constexpr HashRow kPublishedVectors[] = {
    {"", 0xcbf29ce484222325},     {"a", 0xaf63dc4c8601ec8c},     {"b", 0xaf63df4c8601f1a5},
    {"c", 0xaf63de4c8601eff2},    {"fo", 0x08985907b541d342},    {"foo", 0xdcb27518fed9d577},
    {"foob", 0xdd120e790c2512af}, {"fooba", 0xcac165afa2fef40a}, {"foobar", 0x85944171f73967e8},
};

TEST(SettingName, HashesAsThePublishedVectorsSay) {
    for (const HashRow& row : kPublishedVectors) {
        EXPECT_EQ(hashOf(row.name), row.hash) << row.name;
    }
}

// One byte b: (0xcbf29ce484222325 ^ b) * 0x100000001b3 modulo 2^64, worked out apart from the code.
TEST(SettingName, HashesEveryByteWithoutSign) {
    constexpr HashRow kRows[] = {
        {"\0"sv, 0xaf63bd4c8601b7df},
        {"A", 0xaf63fc4c860222ec},
        {"\xFF", 0xaf64724c8602eb6e},
    };
    for (const HashRow& row : kRows) {
        EXPECT_EQ(hashOf(row.name), row.hash) << row.name;
    }
}

TEST(SettingName, AKeyIsTheHashOfTheNameInLowerCase) {
    struct Row {
        std::string_view name;
        std::string_view lower;
    };
    constexpr Row kRows[] = {
        {"", ""},
        {"Display::GRID", "display::grid"},
        {"display::grid", "display::grid"},
        {"AZaz09_@[`{", "azaz09_@[`{"},
        // Only ASCII has letters.
        {"\xC4\xD6", "\xC4\xD6"},
        {"A\0B"sv, "a\0b"sv},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(keyOf(row.name), hashOf(row.lower)) << row.name;
    }
    EXPECT_EQ(keyOf("Display::GRID"), keyOf("Display::GRID"sv));
    EXPECT_EQ(keyOf(""), kEmptyNameHash);
}

TEST(SettingName, AHashCanBeContinued) {
    EXPECT_EQ(hashOf("bar", hashOf("foo")), hashOf("foobar"));
    EXPECT_EQ(keyOf("GRID"sv, keyOf("Display::"sv)), hashOf("display::grid"));
}

TEST(JoinedNames, PutsTheSeparatorAfterWhatIsNotEmptyAndShrinksAgain) {
    JoinedNames names;
    {
        const JoinedNames::Level first(names, "");
        EXPECT_EQ(names.text(), "");
        const JoinedNames::Level second(names, "a");
        EXPECT_EQ(names.text(), "a");
        EXPECT_EQ(second.outer(), "");
        {
            const JoinedNames::Level third(names, "b::c");
            EXPECT_EQ(names.text(), "a::b::c");
            EXPECT_EQ(third.outer(), "a");
            const JoinedNames::Level fourth(names, "");
            EXPECT_EQ(names.text(), "a::b::c::");
        }
        EXPECT_EQ(names.text(), "a");
    }
    EXPECT_EQ(names.text(), "");
}

}  // namespace
}  // namespace zelutil::prefs
