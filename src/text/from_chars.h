#ifndef ZELUTIL_TEXT_FROM_CHARS_H
#define ZELUTIL_TEXT_FROM_CHARS_H

#include <algorithm>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "text/ascii.h"

/// `std::from_chars` for standard libraries that have it for integers only, as LLVM's has before its 20th release.
namespace zelutil::text {

/// Returns the length of the decimal number that the text begins with, 0 where there is none.
///
///     "-1.5e3 mm" => 6    "5.e" => 2    ".5" => 2    "+5" => 0    "." => 0    "inf" => 0
inline std::size_t lengthOfDecimal(std::string_view text) {
    const auto behindDigits = [&text](std::size_t begin) {
        return static_cast<std::size_t>(
            std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), ascii::isDigit) -
            text.begin());
    };
    const std::size_t whole = text.substr(0, 1) == "-" ? 1 : 0;
    const std::size_t point = behindDigits(whole);
    const bool hasPoint = text.substr(point, 1) == ".";
    const std::size_t mantissa = hasPoint ? behindDigits(point + 1) : point;
    if (mantissa - whole == (hasPoint ? 1 : 0)) {
        return 0;
    }
    const std::size_t letter = text.substr(mantissa, 1).find_first_of("eE");
    if (letter != 0) {
        return mantissa;
    }
    const std::size_t sign = text.substr(mantissa + 1, 1).find_first_of("+-") == 0 ? 1 : 0;
    const std::size_t digits = mantissa + 1 + sign;
    const std::size_t end = digits < text.size() ? behindDigits(digits) : digits;
    return end > digits ? end : mantissa;
}

/// Does what `std::from_chars` does, but for words such as "inf". It reads by a stream, whose locale is its own:
/// `std::strtod` would read by that of the process.
inline std::from_chars_result decimalFromChars(const char* begin, const char* end, double& number) {
    const std::string decimal(begin, lengthOfDecimal({begin, static_cast<std::size_t>(end - begin)}));
    if (decimal.empty()) {
        return {begin, std::errc::invalid_argument};
    }
    std::istringstream stream(decimal);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    // Some standard libraries fail at every number next to zero, also where a double holds it.
    const bool isTooLarge = stream.fail() && std::fabs(value) > 1;
    const bool isTooSmall =
        std::fpclassify(value) == FP_ZERO && decimal.find_first_of("123456789") < decimal.find_first_of("eE");
    if (isTooLarge || isTooSmall) {
        return {begin + decimal.size(), std::errc::result_out_of_range};
    }
    number = value;
    return {begin + decimal.size(), std::errc()};
}

template <typename Integer>
std::from_chars_result fromChars(const char* begin, const char* end, Integer& number) {
    return std::from_chars(begin, end, number);
}

inline std::from_chars_result fromChars(const char* begin, const char* end, double& number) {
#ifdef __cpp_lib_to_chars
    return std::from_chars(begin, end, number);
#else
    return decimalFromChars(begin, end, number);
#endif
}

}  // namespace zelutil::text

#endif
