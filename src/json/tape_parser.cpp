#include "json/tape_parser.h"

#include <cstring>

#include "json/document.h"
#include "json/number.h"
#include "text/ascii.h"

#if defined(__SSE2__) && defined(__GNUC__)
#include <emmintrin.h>
#endif

namespace zelutil::json {
namespace {

/// A number of so many characters and no exponent is finite.
constexpr std::size_t kLengthOfFiniteNumbers = 300;

constexpr std::uint64_t kEightBlanks = 0x2020202020202020;

/// Preference files have about one value in so many bytes.
constexpr std::size_t kBytesPerNode = 8;

constexpr bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

constexpr bool endsPlainText(char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < ' '; }

/// Returns the first character that does not stand for itself in a string; `end` where there is none.
const char* plainTextEnd(const char* c, const char* end) {
#if defined(__SSE2__) && defined(__GNUC__)
    constexpr std::ptrdiff_t kVector = 16;
    const __m128i quotes = _mm_set1_epi8('"');
    const __m128i backslashes = _mm_set1_epi8('\\');
    const __m128i lastControls = _mm_set1_epi8(' ' - 1);
    for (; end - c >= kVector; c += kVector) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(c));
        const __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(block, quotes), _mm_cmpeq_epi8(block, backslashes));
        const __m128i controls = _mm_cmpeq_epi8(_mm_max_epu8(block, lastControls), lastControls);
        const int found = _mm_movemask_epi8(_mm_or_si128(marks, controls));
        if (found != 0) {
            return c + __builtin_ctz(static_cast<unsigned>(found));
        }
    }
#endif
    while (c != end && !endsPlainText(*c)) {
        ++c;
    }
    return c;
}

std::uint64_t eightBytesAt(const char* c) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, c, sizeof bytes);
    return bytes;
}

/// Returns the character that an escape of one letter means; '\0' for a letter that is none.
char meaningOf(char letter) {
    switch (letter) {
        case '"':
        case '\\':
        case '/':
            return letter;
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return '\0';
    }
}

/// Returns what a hexadecimal digit counts; -1 for another character.
constexpr int hexDigitValue(char c) {
    if (ascii::isDigit(c)) {
        return c - '0';
    }
    const char letter = ascii::lowerCase(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

constexpr std::uint32_t kFirstHighSurrogate = 0xD800;
constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;
constexpr std::uint32_t kBehindSurrogates = 0xE000;

constexpr bool isHighSurrogate(std::uint32_t code) { return code >= kFirstHighSurrogate && code < kFirstLowSurrogate; }
constexpr bool isLowSurrogate(std::uint32_t code) { return code >= kFirstLowSurrogate && code < kBehindSurrogates; }

/// Appends a character in UTF-8; a lone low surrogate as if it were one.
void appendCharacter(std::string& text, std::uint32_t code) {
    const auto later = [code](unsigned shift) { return static_cast<char>(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | code >> 6U);
        text += later(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | code >> 12U);
        text += {later(6), later(0)};
    } else {
        text += static_cast<char>(0xF0U | code >> 18U);
        text += {later(12), later(6), later(0)};
    }
}

}  // namespace

bool TapeParser::parse() {
    tape_.nodes_.reserve(static_cast<std::size_t>(end_ - c_) / kBytesPerNode + 1);
    bool isWellFormed = readValue();
    while (isWellFormed && open_ != kNone) {
        isWellFormed = readOn();
    }
    skipSpace();
    return isWellFormed && peek() == '\0';
}

bool TapeParser::skip(char c) {
    const bool isThere = c_ != end_ && *c_ == c;
    c_ += isThere ? 1 : 0;
    return isThere;
}

/// Blanks that indent a line are skipped eight at a time.
void TapeParser::skipSpace() {
    while (c_ != end_ && isSpace(*c_)) {
        ++c_;
        while (end_ - c_ >= static_cast<std::ptrdiff_t>(sizeof kEightBlanks) && eightBytesAt(c_) == kEightBlanks) {
            c_ += sizeof kEightBlanks;
        }
    }
}

/// Returns whether there was one.
bool TapeParser::skipDigits() {
    const char* const begin = c_;
    while (c_ != end_ && ascii::isDigit(*c_)) {
        ++c_;
    }
    return c_ != begin;
}

void TapeParser::add(Kind kind, const char* begin, std::size_t extent) {
    tape_.nodes_.emplace_back(kind, static_cast<std::uint32_t>(begin - begin_), static_cast<std::uint32_t>(extent));
}

/// Reads a value, of a container only the beginning.
bool TapeParser::readValue() {
    skipSpace();
    switch (peek()) {
        case '"':
            return readString(Kind::Text, Kind::EscapedText);
        case '{':
            return open(Kind::Object);
        case '[':
            return open(Kind::Array);
        case 't':
            return readLiteral("true", Kind::True);
        case 'f':
            return readLiteral("false", Kind::False);
        case 'n':
            return readLiteral("null", Kind::Null);
        default:
            return readNumber();
    }
}

/// Reads the next element or member of the open container, or its end.
bool TapeParser::readOn() {
    skipSpace();
    if (skip(closing_)) {
        close();
        return true;
    }
    const bool isFirst = tape_.nodes_.size() == std::size_t{open_} + 1;
    if (!isFirst && !skip(',')) {
        return false;
    }
    return closing_ == '}' ? readMember() : readValue();
}

bool TapeParser::readMember() {
    skipSpace();
    if (peek() != '"' || !readString(Kind::Key, Kind::EscapedKey)) {
        return false;
    }
    skipSpace();
    return skip(':') && readValue();
}

bool TapeParser::readLiteral(std::string_view literal, Kind kind) {
    const auto left = static_cast<std::size_t>(end_ - c_);
    if (left < literal.size() || std::memcmp(c_, literal.data(), literal.size()) != 0) {
        return false;
    }
    add(kind, c_, literal.size());
    c_ += literal.size();
    return true;
}

bool TapeParser::readNumber() {
    const char* const begin = c_;
    skip('-');
    if (!skip('0') && !skipDigits()) {
        return false;
    }
    if (skip('.') && !skipDigits()) {
        return false;
    }
    const bool hasExponent = skip('e') || skip('E');
    if (hasExponent) {
        // Either sign, but not both.
        const bool isNegative = skip('-');
        if (!isNegative) {
            skip('+');
        }
        if (!skipDigits()) {
            return false;
        }
    }
    const std::string_view number(begin, static_cast<std::size_t>(c_ - begin));
    if ((hasExponent || number.size() > kLengthOfFiniteNumbers) && !isNumberInRange(number, tape_.numbers())) {
        return false;
    }
    add(Kind::Number, begin, number.size());
    return true;
}

/// Reads the string whose quotation mark is next.
bool TapeParser::readString(Kind plain, Kind escaped) {
    const char* const begin = c_ + 1;
    const char* const stop = plainTextEnd(begin, end_);
    if (stop == end_ || *stop != '"') {
        return readEscaped(escaped, begin, stop);
    }
    add(plain, c_, static_cast<std::size_t>(stop - begin));
    c_ = stop + 1;
    return true;
}

/// Goes on with a string that holds something else than plain text at `stop`.
bool TapeParser::readEscaped(Kind kind, const char* begin, const char* stop) {
    const char* const quote = c_;
    const std::size_t first = tape_.unescaped_.size();
    for (;; begin = c_, stop = plainTextEnd(begin, end_)) {
        tape_.unescaped_.append(begin, stop);
        c_ = stop;
        if (skip('"')) {
            break;
        }
        if (!skip('\\') || !readEscape()) {
            return false;
        }
    }
    add(kind, quote, tape_.pieces_.size());
    tape_.pieces_.push_back({first, tape_.unescaped_.size() - first});
    return true;
}

/// Reads what follows a backslash.
bool TapeParser::readEscape() {
    if (skip('u')) {
        return readUnicodeEscape();
    }
    const char meaning = meaningOf(peek());
    if (meaning == '\0') {
        return false;
    }
    ++c_;
    tape_.unescaped_ += meaning;
    return true;
}

/// A high surrogate wants a low one behind it; a low one may stand alone.
bool TapeParser::readUnicodeEscape() {
    std::uint32_t code = 0;
    if (!readFourHexDigits(code)) {
        return false;
    }
    if (isHighSurrogate(code)) {
        std::uint32_t low = 0;
        if (!skip('\\') || !skip('u') || !readFourHexDigits(low) || !isLowSurrogate(low)) {
            return false;
        }
        code = 0x10000 + ((code - kFirstHighSurrogate) << 10U) + (low - kFirstLowSurrogate);
    }
    appendCharacter(tape_.unescaped_, code);
    return true;
}

bool TapeParser::readFourHexDigits(std::uint32_t& code) {
    constexpr unsigned kCount = 4;
    code = 0;
    for (unsigned i = 0; i < kCount; ++i, ++c_) {
        const int digit = hexDigitValue(peek());
        if (digit < 0) {
            return false;
        }
        code = code << 4U | static_cast<std::uint32_t>(digit);
    }
    return true;
}

bool TapeParser::open(Kind kind) {
    if (++depth_ > kMaximumDepth) {
        return false;
    }
    const auto place = static_cast<std::uint32_t>(tape_.nodes_.size());
    add(kind, c_++, open_);
    open_ = place;
    setClosing();
    return true;
}

void TapeParser::close() {
    Node& container = tape_.nodes_[open_];
    open_ = container.extent;
    container.extent = static_cast<std::uint32_t>(tape_.nodes_.size());
    --depth_;
    setClosing();
}

void TapeParser::setClosing() { closing_ = open_ != kNone && tape_.nodes_[open_].kind() == Kind::Object ? '}' : ']'; }

}  // namespace zelutil::json
