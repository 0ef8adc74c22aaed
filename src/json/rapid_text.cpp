#include "json/rapid_text.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "text/ascii.h"

namespace zelutil::json {
namespace {

constexpr std::size_t kBlock = 16;

/// Length from which a negative exponent makes every number 0.0, however many digits it has.
constexpr std::size_t kVanishingExponentDigits = 8;

/// The digits of a negative exponent when the minus sign at `minus` begins one.
std::size_t exponentDigits(const char* minus, const char* begin, const char* end) {
    if (minus == begin || (minus[-1] != 'e' && minus[-1] != 'E')) {
        return 0;
    }
    return static_cast<std::size_t>(std::find_if_not(minus + 1, end, ascii::isDigit) - (minus + 1));
}

/// Whether an exponent of a length that must not reach the parser may stand in the text (inside a string perhaps).
bool mayHoldVanishingExponent(const char* begin, const char* end) {
    const auto next = [end](const char* from) {
        return static_cast<const char*>(std::memchr(from, '-', static_cast<std::size_t>(end - from)));
    };
    for (const char* minus = next(begin); minus != nullptr; minus = next(minus + 1)) {
        if (exponentDigits(minus, begin, end) >= kVanishingExponentDigits) {
            return true;
        }
    }
    return false;
}

/// Writes 9999999 over the digits of an exponent that is longer without its leading zeros. The length stays.
void shortenExponent(char* digits, std::size_t count) {
    const char* const significant = std::find_if(digits, digits + count, [](char c) { return c != '0'; });
    if (static_cast<std::size_t>(digits + count - significant) < kVanishingExponentDigits) {
        return;
    }
    const std::size_t zeros = count - (kVanishingExponentDigits - 1);
    std::fill_n(digits, zeros, '0');
    std::fill_n(digits + zeros, kVanishingExponentDigits - 1, '9');
}

/// Past some 2^31, RapidJSON's sum of exponent and fraction digits overflows and it reads out of bounds
/// (CVE-2024-38517). Such numbers are 0.0 and stay so with a shorter exponent.
void shortenVanishingExponents(char* begin, char* end) {
    if (!mayHoldVanishingExponent(begin, end)) {
        return;
    }
    bool inString = false;
    for (char* c = begin; c < end; ++c) {
        if (*c == '"') {
            inString = !inString;
        } else if (inString && *c == '\\') {
            ++c;
        } else if (!inString && *c == '-') {
            shortenExponent(c + 1, exponentDigits(c, begin, end));
        }
    }
}

}  // namespace

std::unique_ptr<char[]> readyForRapidJson(std::string_view text) {
    const std::size_t size = (text.size() / kBlock + 2) * kBlock;
    std::unique_ptr<char[]> copy(new char[size]);
    char* const end = std::copy(text.begin(), text.end(), copy.get());
    std::fill(end, copy.get() + size, '\0');
    shortenVanishingExponents(copy.get(), end);
    return copy;
}

}  // namespace zelutil::json
