#ifndef ZELUTIL_JSON_PARSE_FAILURE_H
#define ZELUTIL_JSON_PARSE_FAILURE_H

#include <cstddef>
#include <optional>
#include <string_view>

namespace zelutil::json {

/// Says for people why a text is malformed, and where: the offset counts bytes from its beginning.
struct ParseFailure {
    const char* text = nullptr;
    std::size_t offset = 0;
};

/// Returns why a document refuses a text; nothing for one that it takes. The text is read anew for that, by RapidJSON.
std::optional<ParseFailure> parseFailureOf(std::string_view text);

}  // namespace zelutil::json

#endif
