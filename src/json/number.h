#ifndef ZELUTIL_JSON_NUMBER_H
#define ZELUTIL_JSON_NUMBER_H

#include <string_view>

#include <rapidjson/document.h>
#include "json/rapid_text.h"
#include "json/tape.h"

namespace zelutil::json {

/// Makes the value the number with these digits. Returns false for one that is too large.
bool readNumber(std::string_view digits, Numbers numbers, rapidjson::Value& value);

/// Returns whether there is such a number.
bool isNumberInRange(std::string_view digits, Numbers numbers);

}  // namespace zelutil::json

#endif
