#ifndef ZELUTIL_JSON_PARSE_FAILURE_H
#define ZELUTIL_JSON_PARSE_FAILURE_H

#include <rapidjson/error/error.h>

namespace zelutil::json {

inline constexpr char kTooLargeText[] = "The text is larger than 64 MiB.";
inline constexpr char kControlCharacterText[] = "A control character may not stand here.";

/// Returns a sentence for people about an error of the parser; `there` is the character at which it stopped.
const char* failureText(rapidjson::ParseErrorCode code, char there);

}  // namespace zelutil::json

#endif
