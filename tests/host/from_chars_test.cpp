#include "text/from_chars.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace zelutil::text {
namespace {

struct LengthRow {
    const char* text;
    std::size_t length;
};

constexpr LengthRow kLengths[] = {
    // Whole numbers and fractions.
    {"0", 1},
    {"12", 2},
    {"-12", 3},
    {"1.5", 3},
    {"5.", 2},
    {".5", 2},
    {"-.5", 3},
    // Exponents; one without digits does not belong to the number.
    {"1e5", 3},
    {"1.5E-10", 7},
    {"1e+5", 4},
    {".5e1", 4},
    {"1e", 1},
    {"1e+", 1},
    {"1ex", 1},
    {"5.e", 2},
    // Something stands behind a number.
    {"-1.5e3 mm", 6},
    {"1.2.3", 3},
    {"0x10", 1},
    {"1,5", 1},
    {"1e5e5", 3},
    // No number.
    {"", 0},
    {"-", 0},
    {".", 0},
    {"-.", 0},
    {".e5", 0},
    {"e5", 0},
    {"+5", 0},
    {" 5", 0},
    {"--5", 0},
    {"inf", 0},
    {"nan", 0},
};

TEST(FromChars, TheLengthOfADecimalEndsBeforeWhatIsNoneOfIt) {
    for (const LengthRow& row : kLengths) {
        EXPECT_EQ(lengthOfDecimal(row.text), row.length) << row.text;
    }
}

struct DecimalRow {
    const char* text;
    std::errc error;
    double number;
};

constexpr double kBefore = 7;

constexpr DecimalRow kDecimals[] = {
    {"0", std::errc(), 0.0},
    {"-1.25", std::errc(), -1.25},
    {"1e3", std::errc(), 1000.0},
    {"0e-999", std::errc(), 0.0},
    {"0.000", std::errc(), 0.0},
    // The largest, the least normal and the least of all, as the header <limits> has them.
    {"1.7976931348623157e308", std::errc(), std::numeric_limits<double>::max()},
    {"2.2250738585072014e-308", std::errc(), std::numeric_limits<double>::min()},
    {"5e-324", std::errc(), std::numeric_limits<double>::denorm_min()},
    {"-5e-324", std::errc(), -std::numeric_limits<double>::denorm_min()},
    // Beyond them; the number stays as it was.
    {"1e309", std::errc::result_out_of_range, kBefore},
    {"-1e309", std::errc::result_out_of_range, kBefore},
    {"1e-400", std::errc::result_out_of_range, kBefore},
    {"-1e-400", std::errc::result_out_of_range, kBefore},
    {"x", std::errc::invalid_argument, kBefore},
    {"", std::errc::invalid_argument, kBefore},
};

void expectDecimals() {
    for (const DecimalRow& row : kDecimals) {
        const std::string text = row.text;
        double number = kBefore;
        const auto [end, error] = decimalFromChars(text.data(), text.data() + text.size(), number);
        EXPECT_EQ(error, row.error) << text;
        EXPECT_EQ(number, row.number) << text;
        const bool isNumber = row.error != std::errc::invalid_argument;
        EXPECT_EQ(end - text.data(), isNumber ? static_cast<std::ptrdiff_t>(text.size()) : 0) << text;
    }
}

TEST(FromChars, ADecimalIsReadAsTheStandardSays) { expectDecimals(); }

class Continental : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(FromChars, TheLocaleOfTheProcessDoesNotMatter) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Continental));
    expectDecimals();
    std::locale::global(before);
}

#ifdef __cpp_lib_to_chars
TEST(FromChars, ADecimalIsReadAsTheStandardLibraryReadsIt) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 20000; ++round) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) {
            continue;
        }
        char buffer[32];
        const std::string text(std::begin(buffer), std::to_chars(std::begin(buffer), std::end(buffer), value).ptr);
        const char* const end = text.data() + text.size();
        double number = 0;
        ASSERT_EQ(decimalFromChars(text.data(), end, number).ptr, end) << text;
        ASSERT_EQ(number, value) << text;
    }
}
#endif

}  // namespace
}  // namespace zelutil::text
