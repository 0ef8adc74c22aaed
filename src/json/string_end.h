#ifndef ZELUTIL_JSON_STRING_END_H
#define ZELUTIL_JSON_STRING_END_H

namespace zelutil::json {

/// Returns the place behind the string that begins at `quote`; the end of the text for one that is not closed.
inline const char* behindString(const char* quote, const char* end) {
    const char* c = quote + 1;
    while (c < end && *c != '"') {
        c += *c == '\\' && end - c > 1 ? 2 : 1;
    }
    return c < end ? c + 1 : end;
}

}  // namespace zelutil::json

#endif
