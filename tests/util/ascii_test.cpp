#include <zelutil/util/ascii.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace zelutil::ascii {
namespace {

TEST(AsciiLowerCase, FoldsTheTwentySixLettersAndNothingElse) {
    const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string smalls = "abcdefghijklmnopqrstuvwxyz";
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const std::size_t letter = capitals.find(c);
        const char expected = letter == std::string::npos ? c : smalls[letter];
        EXPECT_EQ(lowerCase(c), expected) << "byte " << byte;
    }
}

struct Row {
    const char* a;
    const char* b;
    int sign;
};

constexpr Row kCompared[] = {
    // Equal but for the case of letters.
    {"", "", 0},
    {"net", "net", 0},
    {"NeT", "nEt", 0},
    {"Min/Max_9", "mIN/mAX_9", 0},
    // A text comes after its own beginning.
    {"", "a", -1},
    {"Net", "Net ", -1},
    {"nets", "NET", 1},
    // The first difference decides, in lower case: the characters between 'Z' and 'a' come before the letters.
    {"a", "B", -1},
    {"B", "a", 1},
    {"a_b", "aAb", -1},
    {"a^b", "aZb", -1},
    {"a{b", "aZb", 1},
    // 32 apart, yet no letters: different.
    {"@", "`", -1},
    {"[", "{", -1},
    // Bytes have no sign, and beyond ASCII there are no letters.
    {"\x80", "z", 1},
    {"\xC4", "\xE4", -1},
};

int signOf(int value) { return (value > 0) - (value < 0); }

TEST(AsciiCompareIgnoringCase, OrdersByTheBytesInLowerCase) {
    for (const Row& row : kCompared) {
        EXPECT_EQ(signOf(compareIgnoringCase(row.a, row.b)), row.sign) << '"' << row.a << "\", \"" << row.b << '"';
        EXPECT_EQ(signOf(compareIgnoringCase(row.b, row.a)), -row.sign) << '"' << row.b << "\", \"" << row.a << '"';
    }
}

TEST(AsciiCompareIgnoringCase, WorksWhileCompiling) {
    constexpr bool equal = compareIgnoringCase("Basic", "BASIC") == 0;
    constexpr bool after = compareIgnoringCase("Basic", "Advanced") > 0;
    EXPECT_TRUE(equal);
    EXPECT_TRUE(after);
}

}  // namespace
}  // namespace zelutil::ascii
