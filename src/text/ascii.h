#ifndef ZELUTIL_TEXT_ASCII_H
#define ZELUTIL_TEXT_ASCII_H

#include <zelutil/util/ascii.h>

/// Character classes of ASCII, beside the folding of case that hosts see too. The C library's ask the locale, and may
/// be given no negative char.
namespace zelutil::ascii {

/// The blank and the control characters \t \n \v \f \r.
constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace zelutil::ascii

#endif
