#ifndef ZELUTIL_JSON_RAPID_TEXT_H
#define ZELUTIL_JSON_RAPID_TEXT_H

#include <memory>
#include <string_view>

// RapidJSON writes texts, reads single numbers and says why a text is malformed. Every file that includes it does so
// behind this one, since its templates are others with vector instructions than without.
#if defined(__SSE2__) || defined(_M_X64)
#define RAPIDJSON_SSE2
#endif
#include <rapidjson/rapidjson.h>

namespace zelutil::json {

/// Returns a copy of the text that RapidJSON may overwrite: it ends with a zero, is padded to whole blocks of 16 bytes,
/// of which the parser reads all, and has no exponent that would make the parser read out of bounds.
std::unique_ptr<char[]> readyForRapidJson(std::string_view text);

}  // namespace zelutil::json

#endif
