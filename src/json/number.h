#ifndef ZELUTIL_JSON_NUMBER_H
#define ZELUTIL_JSON_NUMBER_H

#include <optional>
#include <string_view>

#include <rapidjson/document.h>
#include "json/rapid_text.h"
#include "json/tape.h"

namespace zelutil::json {

/// Returns the number with these digits; nothing for one that is too large.
std::optional<rapidjson::Value> rapidNumber(std::string_view digits, Numbers numbers);

/// Returns whether there is one.
bool isNumberInRange(std::string_view digits, Numbers numbers);

}  // namespace zelutil::json

#endif
