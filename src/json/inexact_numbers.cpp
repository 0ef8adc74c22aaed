#include "json/inexact_numbers.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "json/string_end.h"
#include "text/ascii.h"

namespace zelutil::json {
namespace {

/// So many tell any two values of a double apart.
constexpr std::size_t kSignificantDigits = 17;

bool continuesNumber(char c) { return ascii::isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E'; }

template <typename Integer>
bool isHeldAs(std::string_view number) {
    Integer value = 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc();
}

/// Counts the digits from the first to the last that is no zero.
std::size_t significantDigits(std::string_view number) {
    std::size_t count = 0;
    std::size_t upToLast = 0;
    for (const char c : number.substr(0, number.find_first_of("eE"))) {
        if (ascii::isDigit(c) && (count != 0 || c != '0')) {
            ++count;
            upToLast = c == '0' ? upToLast : count;
        }
    }
    return upToLast;
}

bool isInexact(std::string_view number) {
    if (number.find_first_of(".eE") == std::string_view::npos) {
        return !isHeldAs<std::int64_t>(number) && !isHeldAs<std::uint64_t>(number);
    }
    return significantDigits(number) > kSignificantDigits;
}

}  // namespace

std::vector<std::string_view> inexactNumbers(std::string_view text) {
    std::vector<std::string_view> numbers;
    const char* const end = text.data() + text.size();
    for (const char* c = text.data(); c < end;) {
        if (*c == '"') {
            c = behindString(c, end);
        } else if (*c == '-' || ascii::isDigit(*c)) {
            const char* const begin = c;
            c = std::find_if_not(c, end, continuesNumber);
            const std::string_view number(begin, static_cast<std::size_t>(c - begin));
            if (isInexact(number)) {
                numbers.push_back(number);
            }
        } else {
            ++c;
        }
    }
    return numbers;
}

}  // namespace zelutil::json
