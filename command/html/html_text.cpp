#include "command/html/html_text.h"

#include "command/text.h"

namespace zelutil::command::html {
namespace {

std::string_view referenceFor(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return {};
    }
}

/// A sequence of bytes that a script may not have as it stands, and its JSON escape.
struct ScriptEscape {
    std::string_view bytes;
    std::string_view escape;
};

// The last two are the line and the paragraph separator, which end lines of scripts.
constexpr ScriptEscape kScriptEscapes[] = {
    {"<", "\\u003C"}, {">", "\\u003E"}, {"&", "\\u0026"}, {"\xE2\x80\xA8", "\\u2028"}, {"\xE2\x80\xA9", "\\u2029"}};

/// Returns the one that the text begins with, or null.
const ScriptEscape* scriptEscapeAt(std::string_view text) {
    for (const ScriptEscape& row : kScriptEscapes) {
        if (text.substr(0, row.bytes.size()) == row.bytes) {
            return &row;
        }
    }
    return nullptr;
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : printable(text)) {
        const std::string_view reference = referenceFor(c);
        result += reference.empty() ? std::string_view(&c, 1) : reference;
    }
    return result;
}

std::string asScriptData(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    while (!json.empty()) {
        const ScriptEscape* const row = scriptEscapeAt(json);
        result += row == nullptr ? json.substr(0, 1) : row->escape;
        json.remove_prefix(row == nullptr ? 1 : row->bytes.size());
    }
    return result;
}

}  // namespace zelutil::command::html
