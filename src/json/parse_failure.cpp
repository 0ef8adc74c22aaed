#include "json/parse_failure.h"

#include <rapidjson/reader.h>
#include "json/rapid_text.h"

#include <algorithm>
#include <cmath>

#include "json/document.h"

namespace zelutil::json {
namespace {

constexpr char kTooLargeText[] = "The text is larger than 64 MiB.";
constexpr char kControlCharacterText[] = "A control character may not stand here.";

/// Returns what the builder has refused, which stops the parser.
const char* refusalText(char there) {
    return there == '[' || there == '{' ? "Arrays and objects stand inside each other more than 1024 levels deep."
                                        : "The number is too large.";
}

/// Returns a sentence about an error of the parser; `there` is the character at which it stopped.
const char* failureText(rapidjson::ParseErrorCode code, char there) {
    switch (code) {
        case rapidjson::kParseErrorNone:
            return nullptr;
        case rapidjson::kParseErrorDocumentEmpty:
            return there == '\0' ? "The text holds no value." : "A value is missing or is none.";
        case rapidjson::kParseErrorDocumentRootNotSingular:
            return "Something stands behind the end of the value.";
        case rapidjson::kParseErrorValueInvalid:
            return "A value is missing or is none.";
        case rapidjson::kParseErrorObjectMissName:
            return "The name of a member is missing, or a comma stands before the closing brace.";
        case rapidjson::kParseErrorObjectMissColon:
            return "A colon is missing behind the name of a member.";
        case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
            return "A comma or a closing brace is missing behind a member.";
        case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
            return "A comma or a closing bracket is missing behind an element.";
        case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
            return "Behind \\u four hexadecimal digits must stand.";
        case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
            return "The second half of a surrogate pair is missing.";
        case rapidjson::kParseErrorStringEscapeInvalid:
            return there == '\\' ? "There is no such escape; a backslash itself is written twice."
                                 : "A string must be closed on its line; a control character may not stand in it.";
        case rapidjson::kParseErrorStringMissQuotationMark:
            return "The closing quotation mark of a string is missing.";
        case rapidjson::kParseErrorNumberTooBig:
            return "The number is too large.";
        case rapidjson::kParseErrorNumberMissFraction:
            return "A digit is missing behind the decimal point.";
        case rapidjson::kParseErrorNumberMissExponent:
            return "A digit is missing in the exponent.";
        case rapidjson::kParseErrorTermination:
            return refusalText(there);
        case rapidjson::kParseErrorStringInvalidEncoding:
        case rapidjson::kParseErrorUnspecificSyntaxError:
            break;
    }
    return "The text is no JSON from here on.";
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

/// Refuses what a document must not hold, as the parser goes over a text.
class Bounds : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Bounds> {
public:
    // The parser calls them by these names.
    // NOLINTBEGIN(readability-identifier-naming)
    static bool Double(double d) { return std::isfinite(d); }
    bool StartObject() { return enter(); }
    bool EndObject(rapidjson::SizeType /*count*/) { return leave(); }
    bool StartArray() { return enter(); }
    bool EndArray(rapidjson::SizeType /*count*/) { return leave(); }
    // NOLINTEND(readability-identifier-naming)

private:
    bool enter() { return ++depth_ <= kMaximumDepth; }
    bool leave() {
        --depth_;
        return true;
    }

    unsigned depth_ = 0;
};

std::optional<ParseFailure> failureForParser(std::string_view text) {
    const std::unique_ptr<char[]> copy = readyForRapidJson(text);
    rapidjson::InsituStringStream stream(copy.get());
    Bounds bounds;
    rapidjson::Reader reader;
    const auto result = reader.Parse<rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag>(stream, bounds);
    if (!result.IsError()) {
        return std::nullopt;
    }
    return ParseFailure{failureText(result.Code(), copy[result.Offset()]), result.Offset()};
}

/// The parser may read past a character that it refuses only for where it stands, so an earlier fault counts first.
ParseFailure failureAtControlCharacter(std::string_view text) {
    const auto* const met = std::find_if(text.begin(), text.end(), mightPassUnnoticed);
    const auto offset = static_cast<std::size_t>(met - text.begin());
    const std::optional<ParseFailure> before = failureForParser(text.substr(0, offset));
    return before && before->offset < offset ? *before : ParseFailure{kControlCharacterText, offset};
}

}  // namespace

std::optional<ParseFailure> parseFailureOf(std::string_view text) {
    const bool isMarked = text.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    const std::size_t begin = isMarked ? kByteOrderMark.size() : 0;
    text.remove_prefix(begin);
    if (text.size() > kMaximumTextSize) {
        return ParseFailure{kTooLargeText, begin};
    }
    // For the parser, a zero byte ends the text.
    text = text.substr(0, text.find('\0'));
    std::optional<ParseFailure> failure =
        holdsControlCharacterThatMightPass(text) ? failureAtControlCharacter(text) : failureForParser(text);
    if (failure) {
        failure->offset += begin;
    }
    return failure;
}

}  // namespace zelutil::json
