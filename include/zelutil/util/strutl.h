#ifndef ZELUTIL_UTIL_STRUTL_H
#define ZELUTIL_UTIL_STRUTL_H

#include <zelutil/export.h>

#include <string>

/// Small helpers for narrow texts. White space and letters are those of ASCII, whatever the locale; every other byte
/// stands for itself. Nothing is kept between calls.
namespace ZelU::STRUTL {

/// The number without the zeros, and then the point, that its fraction ends with. White space in front is dropped;
/// white space behind is a character like any other, so nothing before it is a trailing zero. A text with a lower-case
/// "e" keeps all its digits.
///
///     "1.500"  => "1.5"    "2.000"  => "2"         "5."      => "5"         "100"  => "100"
///     "  3.0"  => "3"      "3.0 "   => "3.0 "      "1.0e10"  => "1.0e10"    "1.0E10" => "1.0E1"
///     ".000"   => ""       "-0.0"   => "-0"        "1.2.00"  => "1.2"       "0x1e.0" => "0x1e.0"
ZELUTIL_API std::string RemoveTrailingZeros(const std::string& s);

/// The same in place, except that white space in front stays. Each removed character becomes a NUL. Null does nothing.
///
///     "1.500" => "1.5"    " 3.0" => " 3"    "100" => "100"    "1.0e10" => "1.0e10"    "1.0E10" => "1.0E1"
ZELUTIL_API void removeTrailingZeros(char* str);

/// Compares without regard to case. The result is less than 0, 0 or greater than 0 as `a` comes before, equals or comes
/// after `b`: the difference of the first two bytes that differ, as numbers without sign and with letters in lower
/// case; where one text begins the other, -1 or 1. `b` ends at its first NUL, in both forms.
///
///     ("ABC", "abc") => 0     ("ab", "abc") => -1    ("abc", "ab") => 1    ("a", "C") => -2
///     ("_", "A")     => -2    ("\xC4", "\xE4") => -32
ZELUTIL_API int StrNoCaseCompare(const std::string& a, const std::string& b);
/// The same; a null `b` is the empty text.
ZELUTIL_API int StrNoCaseCompare(const std::string& a, const char* b);

/// The first `n` characters, all of them where there are no more. A negative `n` is 0.
///
///     ("abc", 2) => "ab"    ("abc", 7) => "abc"    ("abc", -1) => ""
ZELUTIL_API std::string SubstrFromLeft(const std::string& s, int n);

/// The last `n` characters, all of them where there are no more. A negative `n` is 0.
///
///     ("abc", 2) => "bc"    ("abc", 7) => "abc"    ("abc", -1) => ""
ZELUTIL_API std::string SubstrFromRight(const std::string& s, int n);

/// The characters from position `start` on. A negative `start` is 0; one beyond the length throws `std::out_of_range`
/// ("invalid string position").
///
///     ("abc", 1) => "bc"    ("abc", 3) => ""    ("abc", -5) => "abc"    ("abc", 4) throws
ZELUTIL_API std::string SubstrFromMid(const std::string& s, int start);

/// At most `count` of them. A negative `count` is 0.
///
///     ("abcd", 1, 2) => "bc"    ("abcd", 2, 9) => "cd"    ("abcd", 1, -1) => ""    ("abcd", 5, 0) throws
ZELUTIL_API std::string SubstrFromMid(const std::string& s, int start, int count);

}  // namespace ZelU::STRUTL

#endif
