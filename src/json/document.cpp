#include "json/document.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <system_error>

#include "json/parse_failure.h"
#include "text/ascii.h"

namespace zelutil::json {
namespace {

/// The iterative parser accepts and builds the same as the recursive one and needs no stack.
constexpr unsigned kParseFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag;
constexpr unsigned kExactParseFlags = kParseFlags | rapidjson::kParseNumbersAsStringsFlag;

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

template <typename Number>
std::optional<Number> numberFrom(std::string_view digits) {
    Number number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() ? std::optional<Number>(number) : std::nullopt;
}

/// Returns false for a number that is too large.
bool addExactNumber(std::string_view digits, rapidjson::Document& document) {
    if (digits.find_first_of(".eE") == std::string_view::npos) {
        if (const auto integer = numberFrom<std::int64_t>(digits)) {
            return document.Int64(*integer);
        }
        if (const auto integer = numberFrom<std::uint64_t>(digits)) {
            return document.Uint64(*integer);
        }
    }
    // Out of range are also numbers next to zero.
    const std::size_t exponent = digits.find_first_of("eE");
    const bool isSmall = exponent == std::string_view::npos ? digits.find('.') != std::string_view::npos
                                                            : digits.substr(exponent + 1, 1) == "-";
    const auto number = numberFrom<double>(digits);
    return (number || isSmall) && document.Double(number.value_or(0.0));
}

constexpr bool mightPassUnnoticed(char c) { return c >= '\x1A' && c <= '\x1F'; }

/// The vectorised parser of the packaged RapidJSON accepts 0x1A to 0x1F inside strings. They may stand nowhere in a
/// JSON text.
bool holdsControlCharacterThatMightPass(std::string_view text) {
    // Without a way out of the loop the compiler takes many bytes at once.
    unsigned found = 0;
    for (const char c : text) {
        found |= static_cast<unsigned>(mightPassUnnoticed(c));
    }
    return found != 0;
}

/// Takes no notes. Its calls compile to nothing.
class NoNotes {
public:
    void skipped(std::size_t) const {}
    void reached(std::size_t) const {}
    void failed(const char*, std::size_t) const {}
    void failed(rapidjson::ParseErrorCode, char, std::size_t) const {}
    void metControlCharacter(std::string_view) const {}
};

/// Takes the notes of a parse, with offsets that count what was skipped before the parser began.
class NoteTaker {
public:
    explicit NoteTaker(ParseNotes& notes) : notes_(&notes) {}

    void skipped(std::size_t bytes) { base_ = bytes; }
    void reached(std::size_t offset) { notes_->offsets.push_back(static_cast<std::uint32_t>(base_ + offset)); }
    void failed(const char* why, std::size_t offset) {
        notes_->failure = why;
        notes_->failureOffset = base_ + offset;
    }
    void failed(rapidjson::ParseErrorCode code, char there, std::size_t offset) {
        failed(failureText(code, there), offset);
    }
    void metControlCharacter(std::string_view text) {
        const auto* const met = std::find_if(text.begin(), text.end(), mightPassUnnoticed);
        failed(kControlCharacterText, static_cast<std::size_t>(met - text.begin()));
        notes_->stoppedAtControlCharacter = true;
    }

private:
    ParseNotes* notes_;
    std::size_t base_ = 0;
};

// While the parser reads a string or a number it works on a copy of the stream, so that the stream itself still stands
// where that begins when the event comes. It does for arrays and objects, too.
static_assert(rapidjson::StreamTraits<rapidjson::InsituStringStream>::copyOptimization == 1);

constexpr std::size_t kNullLength = 4;
constexpr std::size_t kTrueLength = 4;
constexpr std::size_t kFalseLength = 5;

/// Passes the parser's events on to a document and refuses what the document must not hold.
template <typename Notes>
class BoundedBuilder {
public:
    using Ch = char;

    BoundedBuilder(rapidjson::Document& document, rapidjson::InsituStringStream& stream, Notes& notes)
        : document_(document), stream_(stream), notes_(notes) {}

    // The parser calls them by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    bool Null() { return note(kNullLength) && document_.Null(); }
    bool Bool(bool b) { return note(b ? kTrueLength : kFalseLength) && document_.Bool(b); }
    bool Int(int i) { return note() && document_.Int(i); }
    bool Uint(unsigned i) { return note() && document_.Uint(i); }
    bool Int64(std::int64_t i) { return note() && document_.Int64(i); }
    bool Uint64(std::uint64_t i) { return note() && document_.Uint64(i); }
    bool Double(double d) { return std::isfinite(d) && note() && document_.Double(d); }
    /// Comes for every number where they are read exactly, which the parser itself does not always do.
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return note() && addExactNumber(std::string_view(digits, length), document_);
    }
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        return note() && document_.String(text, length, copy);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return note() && document_.Key(text, length, copy);
    }
    bool StartObject() { return enter() && note() && document_.StartObject(); }
    bool EndObject(rapidjson::SizeType count) { return leave() && document_.EndObject(count); }
    bool StartArray() { return enter() && note() && document_.StartArray(); }
    bool EndArray(rapidjson::SizeType count) { return leave() && document_.EndArray(count); }
    // NOLINTEND(readability-identifier-naming)

private:
    bool enter() { return ++depth_ <= kMaximumDepth; }
    bool leave() {
        --depth_;
        return true;
    }

    /// Notes where the value or key begins of which the event is: the stream has passed `read` bytes of it.
    bool note(std::size_t read = 0) {
        notes_.reached(stream_.Tell() - read);
        return true;
    }

    rapidjson::Document& document_;
    rapidjson::InsituStringStream& stream_;
    Notes& notes_;
    unsigned depth_ = 0;
};

/// A copy of the text that the parser may overwrite, ended by a zero and padded to whole blocks.
std::unique_ptr<char[]> paddedCopy(std::string_view text) {
    const std::size_t size = (text.size() / kBlock + 2) * kBlock;
    std::unique_ptr<char[]> copy(new char[size]);
    char* const end = std::copy(text.begin(), text.end(), copy.get());
    std::fill(end, copy.get() + size, '\0');
    return copy;
}

}  // namespace

Document::Document(std::string_view text, Numbers numbers) : valid_(parse(text, numbers, NoNotes())) {}

Document::Document(std::string_view text, ParseNotes& notes) : valid_(parse(text, Numbers::Fast, NoteTaker(notes))) {}

template <typename Notes>
bool Document::parse(std::string_view text, Numbers numbers, Notes notes) {
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        text.remove_prefix(kByteOrderMark.size());
        notes.skipped(kByteOrderMark.size());
    }
    if (text.size() > kMaximumTextSize) {
        notes.failed(kTooLargeText, 0);
        return false;
    }
    // For the parser, a zero byte ends the text.
    text = text.substr(0, text.find('\0'));
    if (holdsControlCharacterThatMightPass(text)) {
        notes.metControlCharacter(text);
        return false;
    }
    buffer_ = paddedCopy(text);
    shortenVanishingExponents(buffer_.get(), buffer_.get() + text.size());
    bool valid = false;
    auto populate = [&](rapidjson::Document& document) {
        rapidjson::InsituStringStream stream(buffer_.get());
        BoundedBuilder<Notes> builder(document, stream, notes);
        rapidjson::Reader reader;
        const auto result = numbers == Numbers::Exact ? reader.Parse<kExactParseFlags>(stream, builder)
                                                      : reader.Parse<kParseFlags>(stream, builder);
        valid = !result.IsError();
        if (!valid) {
            notes.failed(result.Code(), buffer_[result.Offset()], result.Offset());
        }
        return valid;
    };
    document_.Populate(populate);
    return valid;
}

}  // namespace zelutil::json
