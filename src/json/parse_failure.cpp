#include "json/parse_failure.h"

namespace zelutil::json {
namespace {

/// Returns what the builder has refused, which stops the parser.
const char* refusalText(char there) {
    return there == '[' || there == '{' ? "Arrays and objects stand inside each other more than 1024 levels deep."
                                        : "The number is too large.";
}

}  // namespace

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

}  // namespace zelutil::json
