#ifndef ZELUTIL_JSON_INEXACT_NUMBERS_H
#define ZELUTIL_JSON_INEXACT_NUMBERS_H

#include <string_view>
#include <vector>

namespace zelutil::json {

/// Returns the numbers of a JSON text that have more digits than a document holds, as they stand: integers beyond 64
/// bits, and others with more than 17 significant digits.
std::vector<std::string_view> inexactNumbers(std::string_view text);

}  // namespace zelutil::json

#endif
