#include "host/typed_values.h"

#include <gtest/gtest.h>
#include <zelutil/host/settings.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace zelutil::host {
namespace {

template <typename T>
struct Row {
    std::string_view text;
    std::optional<T> value;
};

template <typename T, std::size_t count>
void expectAll(const Row<T> (&rows)[count], std::optional<T> (*parse)(std::string_view)) {
    for (const Row<T>& row : rows) {
        EXPECT_EQ(parse(row.text), row.value) << '"' << row.text << '"';
    }
}

constexpr auto kNothing = std::nullopt;

constexpr Row<bool> kBools[] = {
    {"true", true},
    {"yes", true},
    {"on", true},
    {"1", true},
    {"false", false},
    {"no", false},
    {"off", false},
    {"0", false},
    {"TRUE", true},
    {"Yes", true},
    {"oN", true},
    {"False", false},
    {"NO", false},
    {"Off", false},
    {" \ttrue\t ", true},
    {"\t0", false},
    // Near misses.
    {"", kNothing},
    {"  ", kNothing},
    {"t", kNothing},
    {"y", kNothing},
    {"tru", kNothing},
    {"truee", kNothing},
    {"true false", kNothing},
    {"t rue", kNothing},
    {"01", kNothing},
    {"00", kNothing},
    {"2", kNothing},
    {"-1", kNothing},
    {"+1", kNothing},
    {"1.0", kNothing},
    {"true\n", kNothing},
    {"\vtrue", kNothing},
    {std::string_view("true\0", 5), kNothing},
    {"\"true\"", kNothing},
};

TEST(TypedValue, TruthValues) { expectAll(kBools, boolOf); }

constexpr Row<int> kInts[] = {
    {"0", 0},
    {"42", 42},
    {"+42", 42},
    {"-7", -7},
    {"-0", 0},
    {"+0", 0},
    {"007", 7},
    {"  12", 12},
    {"12\t", 12},
    {" \t -12 \t", -12},
    // The ends of the range.
    {"2147483647", 2147483647},
    {"+2147483647", 2147483647},
    {"-2147483648", std::numeric_limits<int>::min()},
    {"0000000000000000000005", 5},
    {"2147483648", kNothing},
    {"-2147483649", kNothing},
    {"99999999999999999999999999", kNothing},
    {"-99999999999999999999999999", kNothing},
    // Near misses.
    {"", kNothing},
    {" ", kNothing},
    {"+", kNothing},
    {"-", kNothing},
    {"+-1", kNothing},
    {"-+1", kNothing},
    {"++1", kNothing},
    {"--1", kNothing},
    {"+ 1", kNothing},
    {"- 1", kNothing},
    {"1 2", kNothing},
    {"1.", kNothing},
    {"1.0", kNothing},
    {"1e3", kNothing},
    {"1,000", kNothing},
    {"1'000", kNothing},
    {"0x10", kNothing},
    {"10h", kNothing},
    {"a", kNothing},
    {"1a", kNothing},
    {"1\n", kNothing},
    {"\r1", kNothing},
    {std::string_view("1\0", 2), kNothing},
    {std::string_view("1\0002", 3), kNothing},
    {"\xC2\xA0"
     "1",
     kNothing},
};

TEST(TypedValue, WholeNumbers) { expectAll(kInts, intOf); }

constexpr Row<double> kDoubles[] = {
    {"0", 0.0},
    {"0.5", 0.5},
    {".5", 0.5},
    {"5.", 5.0},
    {"+0.5", 0.5},
    {"+.5", 0.5},
    {"-0.5", -0.5},
    {"-.5", -0.5},
    {"12", 12.0},
    {"1e3", 1000.0},
    {"1E3", 1000.0},
    {"1e+3", 1000.0},
    {"1e-3", 0.001},
    {"1.e3", 1000.0},
    {".5e1", 5.0},
    {"1e0003", 1000.0},
    {"  0.25\t", 0.25},
    {"00.25", 0.25},
    // The ends of the range.
    {"1.7976931348623157e308", std::numeric_limits<double>::max()},
    {"-1.7976931348623157e308", std::numeric_limits<double>::lowest()},
    {"2.2250738585072014e-308", std::numeric_limits<double>::min()},
    {"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
    {"0e-400", 0.0},
    {"0.0e400", 0.0},
    {"1e400", kNothing},
    {"-1e400", kNothing},
    {"1.8e308", kNothing},
    {"1e99999999999999999999", kNothing},
    {"1e-400", kNothing},
    {"-1e-400", kNothing},
    {"1e-99999999999999999999", kNothing},
    // These are not finite.
    {"inf", kNothing},
    {"-inf", kNothing},
    {"+inf", kNothing},
    {"INF", kNothing},
    {"infinity", kNothing},
    {"nan", kNothing},
    {"-nan", kNothing},
    {"NaN", kNothing},
    {"nan(1)", kNothing},
    // Near misses.
    {"", kNothing},
    {"\t", kNothing},
    {".", kNothing},
    {"+", kNothing},
    {"-", kNothing},
    {"-.", kNothing},
    {"+-1", kNothing},
    {"-+1", kNothing},
    {"++1", kNothing},
    {"e3", kNothing},
    {".e3", kNothing},
    {"1e", kNothing},
    {"1e+", kNothing},
    {"1e3.5", kNothing},
    {"1 e3", kNothing},
    {"1e 3", kNothing},
    {"0,5", kNothing},
    {"1,000.5", kNothing},
    {"1.2.3", kNothing},
    {"0x1p3", kNothing},
    {"0x10", kNothing},
    {"1f", kNothing},
    {"1.5mm", kNothing},
    {"0.5\n", kNothing},
    {std::string_view("0.5\0", 4), kNothing},
};

TEST(TypedValue, Numbers) { expectAll(kDoubles, doubleOf); }

TEST(TypedValue, ANegativeZeroStaysNegative) {
    ASSERT_EQ(doubleOf("-0"), 0.0);
    EXPECT_TRUE(std::signbit(*doubleOf("-0")));
    EXPECT_TRUE(std::signbit(*doubleOf(textOf(-0.0))));
}

TEST(TypedValue, ALongTextOfDigitsIsRead) {
    EXPECT_EQ(doubleOf("0." + std::string(100000, '0') + "1"), std::nullopt);
    EXPECT_EQ(doubleOf("0." + std::string(100000, '3')), 1.0 / 3);
    EXPECT_EQ(doubleOf(std::string(100000, '0') + "7"), 7.0);
    EXPECT_EQ(intOf(std::string(100000, '0') + "7"), 7);
    EXPECT_EQ(intOf(std::string(100000, '7')), std::nullopt);
}

// --- Texts of values ------------------------------------------------------------------------------------------------

TEST(TypedValue, TextsOfTruthValues) {
    EXPECT_EQ(textOf(true), "true");
    EXPECT_EQ(textOf(false), "false");
}

TEST(TypedValue, TextsOfWholeNumbers) {
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(-7), "-7");
    EXPECT_EQ(textOf(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(textOf(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(TypedValue, TextsOfNumbersHaveTheDigitsThatReadingTakes) {
    EXPECT_EQ(textOf(0.0), "0");
    EXPECT_EQ(textOf(0.1), "0.1");
    EXPECT_EQ(textOf(-2.5), "-2.5");
    EXPECT_EQ(textOf(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(textOf(std::numeric_limits<double>::max()), "1.7976931348623157e+308");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::min()), "-2.2250738585072014e-308");
}

TEST(TypedValue, WhatIsNotFiniteHasNoText) {
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "");
}

TEST(TypedValue, EveryFiniteNumberComesBackFromItsText) {
    std::mt19937_64 random(1);
    int finite = 0;
    for (int count = 0; count < 100000; ++count) {
        const std::uint64_t bits = random();
        double value = 0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        ++finite;
        ASSERT_EQ(doubleOf(textOf(value)), value) << textOf(value);
        const int number = static_cast<int>(static_cast<std::uint32_t>(bits));
        ASSERT_EQ(intOf(textOf(number)), number);
    }
    EXPECT_GT(finite, 90000);
}

// --- Locales --------------------------------------------------------------------------------------------------------

/// Writes 1000.5 as 1.000,5, and calls the truth values by other names.
class Continental : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "wahr"; }
};

void expectTheGrammar() {
    expectAll(kBools, boolOf);
    expectAll(kInts, intOf);
    expectAll(kDoubles, doubleOf);
    EXPECT_EQ(textOf(1000.5), "1000.5");
    EXPECT_EQ(textOf(1000000), "1000000");
    EXPECT_EQ(textOf(true), "true");
}

TEST(TypedValue, TheLocaleOfTheStreamsDoesNotMatter) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Continental));
    expectTheGrammar();
    std::locale::global(before);
}

TEST(TypedValue, TheLocaleOfTheCLibraryDoesNotMatter) {
    // Those with a comma need not be on this system; the first one is.
    for (const char* const name : {"C", "", "de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252", "tr_TR.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        expectTheGrammar();
    }
    std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace zelutil::host
