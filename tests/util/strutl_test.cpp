#include <zelutil/util/strutl.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/random_text.h"

namespace ZelU::STRUTL {
namespace {

// --- Trailing zeros -------------------------------------------------------------------------------------------------

std::string inPlace(const std::string& text) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    removeTrailingZeros(buffer.data());
    return buffer.data();
}

struct ZerosRow {
    const char* in;
    const char* out;
    const char* outInPlace;
};

constexpr ZerosRow kZeros[] = {
    // Fractions.
    {"1.500", "1.5", "1.5"},
    {"1.5", "1.5", "1.5"},
    {"2.000", "2", "2"},
    {"3.0", "3", "3"},
    {"10.0", "10", "10"},
    {"10.01", "10.01", "10.01"},
    {"10.010", "10.01", "10.01"},
    {"100.00100", "100.001", "100.001"},
    {"0.0", "0", "0"},
    {"0.10", "0.1", "0.1"},
    {"-0.0", "-0", "-0"},
    {"-1.50", "-1.5", "-1.5"},
    {"+1.10", "+1.1", "+1.1"},
    {"1.0000000000000000000000000000000000000000", "1", "1"},
    {"1.0000000000000000000000000000000000000001", "1.0000000000000000000000000000000000000001",
     "1.0000000000000000000000000000000000000001"},
    // No fraction.
    {"", "", ""},
    {"0", "0", "0"},
    {"000", "000", "000"},
    {"100", "100", "100"},
    {"-100", "-100", "-100"},
    {"abc", "abc", "abc"},
    {"abc0", "abc0", "abc0"},
    // Nothing, or nothing but zeros, on one side of the point.
    {"5.", "5", "5"},
    {"50.", "50", "50"},
    {"0.", "0", "0"},
    {".", "", ""},
    {".0", "", ""},
    {".000", "", ""},
    {".5", ".5", ".5"},
    {".50", ".5", ".5"},
    {"-.0", "-", "-"},
    // More than one point: only one goes.
    {"1.2.", "1.2", "1.2"},
    {"1.2.00", "1.2", "1.2"},
    {"1.0.0", "1.0", "1.0"},
    {"1.0.", "1.0", "1.0"},
    {"1..", "1.", "1."},
    {"..", ".", "."},
    {"...0", "..", ".."},
    {"0.0.0", "0.0", "0.0"},
    // A lower-case "e" anywhere protects the digits.
    {"1.0e10", "1.0e10", "1.0e10"},
    {"1.0e0", "1.0e0", "1.0e0"},
    {"1.0e", "1.0e", "1.0e"},
    {"1.e0", "1.e0", "1.e0"},
    {"e", "e", "e"},
    {"e1.00", "e1.00", "e1.00"},
    {"1e5.", "1e5.", "1e5."},
    {"0x1e.0", "0x1e.0", "0x1e.0"},
    {"one 1.0", "one 1.0", "one 1.0"},
    // White space in front.
    {" 1.50", "1.5", " 1.5"},
    {"\t2.0", "2", "\t2"},
    {"\n\v\f\r 3.10", "3.1", "\n\v\f\r 3.1"},
    {"  100", "100", "  100"},
    {" 1.0e5", "1.0e5", " 1.0e5"},
    {" e", "e", " e"},
    {"   ", "", "   "},
    {" .", "", " "},
    {" .00", "", " "},
    {"- 1.0", "- 1", "- 1"},
    {"\xA0"
     "1.0",
     "\xA0"
     "1",
     "\xA0"
     "1"},
    {"\x85"
     "1.0",
     "\x85"
     "1",
     "\x85"
     "1"},
    {"\x1F"
     "1.0",
     "\x1F"
     "1",
     "\x1F"
     "1"},
    // White space behind is a character like any other.
    {"1.50 ", "1.50 ", "1.50 "},
    {"1.0\n", "1.0\n", "1.0\n"},
    {"1. ", "1. ", "1. "},
    {" 1.0 ", "1.0 ", " 1.0 "},
    // Other characters.
    {"1,50", "1,50", "1,50"},
    {"1,500.00", "1,500", "1,500"},
    {"1.0mm", "1.0mm", "1.0mm"},
    {"x.y0", "x.y", "x.y"},
    {"abc.0", "abc", "abc"},
    {"1.0\xFF", "1.0\xFF", "1.0\xFF"},
    {"\xC3\xA9.0", "\xC3\xA9", "\xC3\xA9"},
    {"1.O0", "1.O", "1.O"},
};

TEST(RemoveTrailingZeros, EveryRow) {
    for (const ZerosRow& row : kZeros) {
        EXPECT_EQ(RemoveTrailingZeros(row.in), row.out) << "'" << row.in << "'";
    }
}

TEST(RemoveTrailingZerosInPlace, EveryRow) {
    for (const ZerosRow& row : kZeros) {
        EXPECT_EQ(inPlace(row.in), row.outInPlace) << "'" << row.in << "'";
    }
}

TEST(RemoveTrailingZeros, UpperCaseExponentLosesItsZerosOddity) {
    constexpr ZerosRow kRows[] = {
        {"1.0E10", "1.0E1", "1.0E1"}, {"1.0E100", "1.0E1", "1.0E1"}, {"1.E0", "1.E", "1.E"},
        {"1E10", "1E10", "1E10"},     {"1E.0", "1E", "1E"},          {"1.0E+20", "1.0E+2", "1.0E+2"},
    };
    for (const ZerosRow& row : kRows) {
        EXPECT_EQ(RemoveTrailingZeros(row.in), row.out) << row.in;
        EXPECT_EQ(inPlace(row.in), row.outInPlace) << row.in;
    }
}

TEST(RemoveTrailingZeros, NulIsACharacterLikeAnyOther) {
    EXPECT_EQ(RemoveTrailingZeros(std::string("1.0\0", 4)), std::string("1.0\0", 4));
    EXPECT_EQ(RemoveTrailingZeros(std::string("\0.00", 4)), std::string("\0", 1));
    EXPECT_EQ(RemoveTrailingZeros(std::string("\0e.0", 4)), std::string("\0e.0", 4));
}

TEST(RemoveTrailingZeros, ArgumentStaysAsItIs) {
    const std::string text = " 1.50";
    EXPECT_EQ(RemoveTrailingZeros(text), "1.5");
    EXPECT_EQ(text, " 1.50");
}

TEST(RemoveTrailingZerosInPlace, EveryRemovedCharacterBecomesNul) {
    char text[] = "2.000";
    removeTrailingZeros(text);
    EXPECT_EQ(std::string(text, sizeof(text)), std::string("2\0\0\0\0\0", 6));
}

TEST(RemoveTrailingZerosInPlace, NothingBehindTheTextIsTouched) {
    char buffer[] = "1.50\0.00";
    removeTrailingZeros(buffer);
    EXPECT_EQ(std::string(buffer, sizeof(buffer)), std::string("1.5\0\0.00\0", 9));
}

TEST(RemoveTrailingZerosInPlace, NullDoesNothing) { EXPECT_NO_THROW(removeTrailingZeros(nullptr)); }

/// Step by step, as a person would do it.
std::string zerosTwin(std::string s) {
    while (!s.empty() && std::strchr(" \t\n\v\f\r", s.front()) != nullptr) {
        s.erase(s.begin());
    }
    if (s.find('e') != std::string::npos) {
        return s;
    }
    const std::size_t point = s.find('.');
    if (point != std::string::npos && point != s.size() - 1) {
        while (!s.empty() && s.back() == '0') {
            s.pop_back();
        }
    }
    if (!s.empty() && s.back() == '.') {
        s.pop_back();
    }
    return s;
}

std::string zerosInPlaceTwin(std::string s) {
    if (s.find('.') == std::string::npos || s.find('e') != std::string::npos) {
        return s;
    }
    for (std::size_t i = s.size(); i-- > 0;) {
        if (s[i] != '0' && s[i] != '.') {
            break;
        }
        const bool point = s[i] == '.';
        s.resize(i);
        if (point) {
            break;
        }
    }
    return s;
}

TEST(RemoveTrailingZeros, AgreesWithItsTwinOnRandomTexts) {
    zelutil::test::RandomText random(1);
    for (int i = 0; i < 200000; ++i) {
        const std::string text = random.text("0000..15eE -", 9);
        ASSERT_EQ(RemoveTrailingZeros(text), zerosTwin(text)) << "'" << text << "'";
        ASSERT_EQ(inPlace(text), zerosInPlaceTwin(text)) << "'" << text << "'";
    }
}

// --- Comparison -----------------------------------------------------------------------------------------------------

struct CompareRow {
    const char* a;
    const char* b;
    int result;
};

constexpr CompareRow kCompare[] = {
    // Equal.
    {"", "", 0},
    {"ABC", "abc", 0},
    {"abc", "ABC", 0},
    {"aB1_", "Ab1_", 0},
    {"I", "i", 0},
    {"az", "AZ", 0},
    {"abcdefghijklmnopqrstuvwxyz", "ABCDEFGHIJKLMNOPQRSTUVWXYZ", 0},
    // One begins the other.
    {"ab", "abc", -1},
    {"abc", "ab", 1},
    {"AB", "abc", -1},
    {"", "a", -1},
    {"a", "", 1},
    {"Via", "Via ", -1},
    {"", "\xFF", -1},
    {"\xFF", "", 1},
    {"abcdefghijklmnop", "ABCDEFGHIJKLMNOPQ", -1},
    {"abcdefghijklmnopq", "ABCDEFGHIJKLMNOP", 1},
    {"abcdefghijklmnopqrstuvwx", "ABC", 1},
    {"ABC", "abcdefghijklmnopqrstuvwx", -1},
    // The difference of the first differing characters, letters in lower case.
    {"a", "C", -2},
    {"C", "a", 2},
    {"abx", "ABCD", 21},
    {"abcX", "ABCY", -1},
    {"abcd", "abCx", -20},
    {"1", "2", -1},
    {"10", "9", -8},
    {"a", " ", 65},
    {"\x01", "\x02", -1},
    // Neighbours of the letters stand for themselves.
    {"_", "A", -2},
    {"_", "a", -2},
    {"A", "_", 2},
    {"[", "A", -6},
    {"@", "`", -32},
    {"[", "{", -32},
    {"Z", "[", 31},
    {"z", "{", -1},
    {"Z", "{", -1},
    {"@@@@@@@@@@@@@@@@", "````````````````", -32},
    {"[[[[[[[[[[[[[[[[", "{{{{{{{{{{{{{{{{", -32},
    // Bytes without sign; letters outside ASCII keep their case.
    {"\xC4", "\xE4", -32},
    {"\x80", "a", 31},
    {"\x7F", "\x80", -1},
    {"\xFF", "A", 158},
    {"a", "\xFF", -158},
    {"\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1\xC1",
     "\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1\xE1", -32},
    {"\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA\xDA",
     "\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA\xFA", -32},
};

TEST(StrNoCaseCompare, EveryRow) {
    for (const CompareRow& row : kCompare) {
        EXPECT_EQ(StrNoCaseCompare(row.a, row.b), row.result) << "'" << row.a << "' '" << row.b << "'";
        EXPECT_EQ(StrNoCaseCompare(row.a, std::string(row.b)), row.result) << "'" << row.a << "' '" << row.b << "'";
    }
}

TEST(StrNoCaseCompare, EveryPairOfBytes) {
    for (int a = 1; a < 256; ++a) {
        for (int b = 1; b < 256; ++b) {
            const int left = a >= 'A' && a <= 'Z' ? a + 32 : a;
            const int right = b >= 'A' && b <= 'Z' ? b + 32 : b;
            // Long enough to be compared in blocks.
            const std::string first(17, static_cast<char>(a));
            const std::string second(17, static_cast<char>(b));
            ASSERT_EQ(StrNoCaseCompare(first, second), left - right) << a << ' ' << b;
        }
    }
}

TEST(StrNoCaseCompare, DifferenceIsFoundAtEveryPosition) {
    for (std::size_t position = 0; position < 40; ++position) {
        const std::string a(40, 'm');
        std::string b(40, 'M');
        b[position] = 'N';
        EXPECT_EQ(StrNoCaseCompare(a, b), -1) << position;
        EXPECT_EQ(StrNoCaseCompare(b, a), 1) << position;
        EXPECT_EQ(StrNoCaseCompare(a, b.substr(0, position)), 1) << position;
        EXPECT_EQ(StrNoCaseCompare(a.substr(0, position), b), -1) << position;
    }
}

TEST(StrNoCaseCompare, SecondTextEndsAtItsNul) {
    EXPECT_EQ(StrNoCaseCompare("ab", std::string("AB\0zz", 5)), 0);
    EXPECT_EQ(StrNoCaseCompare(std::string("ab\0cd", 5), "AB"), 1);
    EXPECT_EQ(StrNoCaseCompare(std::string("ab\0", 3), "abc"), -'c');
    EXPECT_EQ(StrNoCaseCompare(std::string(20, '\0'), ""), 1);
}

TEST(StrNoCaseCompare, NullIsTheEmptyText) {
    const char* const none = nullptr;
    EXPECT_EQ(StrNoCaseCompare("", none), 0);
    EXPECT_EQ(StrNoCaseCompare("a", none), 1);
    EXPECT_EQ(StrNoCaseCompare("longer than two blocks", none), 1);
}

// --- Substrings -----------------------------------------------------------------------------------------------------

struct EndRow {
    const char* text;
    int count;
    const char* left;
    const char* right;
};

constexpr EndRow kEnds[] = {
    // Within the text.
    {"abc", 1, "a", "c"},
    {"abc", 2, "ab", "bc"},
    {"a\xE4"
     "c",
     2, "a\xE4",
     "\xE4"
     "c"},
    // All of it, and more than there is.
    {"abc", 3, "abc", "abc"},
    {"abc", 4, "abc", "abc"},
    {"abc", INT_MAX, "abc", "abc"},
    // Nothing.
    {"abc", 0, "", ""},
    {"abc", -1, "", ""},
    {"abc", -3, "", ""},
    {"abc", INT_MIN, "", ""},
    {"", 0, "", ""},
    {"", 5, "", ""},
    {"", -1, "", ""},
};

TEST(SubstrFromLeftAndRight, EveryRow) {
    for (const EndRow& row : kEnds) {
        EXPECT_EQ(SubstrFromLeft(row.text, row.count), row.left) << row.text << ' ' << row.count;
        EXPECT_EQ(SubstrFromRight(row.text, row.count), row.right) << row.text << ' ' << row.count;
    }
}

struct MidRow {
    const char* text;
    int start;
    int count;
    const char* out;
};

constexpr MidRow kMid[] = {
    // Within the text.
    {"abcd", 0, 1, "a"},
    {"abcd", 1, 2, "bc"},
    {"abcd", 3, 1, "d"},
    {"abcd", 2, 2, "cd"},
    // Up to the end.
    {"abcd", 0, 4, "abcd"},
    {"abcd", 0, 5, "abcd"},
    {"abcd", 2, 9, "cd"},
    {"abcd", 1, INT_MAX, "bcd"},
    {"abcd", 4, 1, ""},
    {"", 0, 3, ""},
    // Negative numbers are 0.
    {"abcd", -1, 2, "ab"},
    {"abcd", -9, 9, "abcd"},
    {"abcd", INT_MIN, INT_MAX, "abcd"},
    {"abcd", 1, -1, ""},
    {"abcd", 1, INT_MIN, ""},
    {"abcd", INT_MIN, INT_MIN, ""},
    {"abcd", 4, 0, ""},
    {"abcd", 4, -1, ""},
};

TEST(SubstrFromMid, EveryRowWithACount) {
    for (const MidRow& row : kMid) {
        EXPECT_EQ(SubstrFromMid(row.text, row.start, row.count), row.out)
            << row.text << ' ' << row.start << ' ' << row.count;
    }
}

struct TailRow {
    const char* text;
    int start;
    const char* out;
};

constexpr TailRow kTails[] = {
    {"abcd", 0, "abcd"}, {"abcd", 1, "bcd"}, {"abcd", 3, "d"},     {"abcd", 4, ""},
    {"", 0, ""},         {"", -1, ""},       {"abcd", -1, "abcd"}, {"abcd", INT_MIN, "abcd"},
};

TEST(SubstrFromMid, EveryRowWithoutACount) {
    for (const TailRow& row : kTails) {
        EXPECT_EQ(SubstrFromMid(row.text, row.start), row.out) << row.text << ' ' << row.start;
    }
}

template <typename Call>
void expectInvalidPosition(Call call) {
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid string position");
    }
}

TEST(SubstrFromMid, StartBeyondTheLengthThrows) {
    expectInvalidPosition([] { SubstrFromMid("abc", 4); });
    expectInvalidPosition([] { SubstrFromMid("abc", INT_MAX); });
    expectInvalidPosition([] { SubstrFromMid("", 1); });
    expectInvalidPosition([] { SubstrFromMid("abc", 4, 1); });
    expectInvalidPosition([] { SubstrFromMid("abc", 4, 0); });
    expectInvalidPosition([] { SubstrFromMid("abc", 4, -1); });
    expectInvalidPosition([] { SubstrFromMid("abc", INT_MAX, INT_MAX); });
}

TEST(Substrings, NulIsACharacterLikeAnyOther) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(SubstrFromLeft(text, 2), std::string("a\0", 2));
    EXPECT_EQ(SubstrFromRight(text, 2), std::string("\0b", 2));
    EXPECT_EQ(SubstrFromMid(text, 1, 1), std::string("\0", 1));
}

}  // namespace
}  // namespace ZelU::STRUTL
