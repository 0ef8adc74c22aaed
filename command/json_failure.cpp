#include "command/json_failure.h"

#include <string_view>

namespace zelutil::command {
namespace {

constexpr std::string_view kWhiteSpace = " \t\r\n";

/// Returns the last character that is no white space; a null character where there is none.
char lastOf(std::string_view text) {
    const std::size_t last = text.find_last_not_of(kWhiteSpace);
    return last == std::string_view::npos ? '\0' : text[last];
}

}  // namespace

std::string textOfFailure(const json::LocatedDocument& document) {
    const auto failure = *document.failure();
    const std::string_view text = document.text();
    const std::size_t place = failure.position.offset;
    const char there = place < text.size() ? text[place] : '\0';
    if (lastOf(text.substr(0, place)) == ',' && (there == ']' || there == '}')) {
        return std::string("A comma stands behind the last ") + (there == ']' ? "element." : "member.");
    }
    return failure.text;
}

}  // namespace zelutil::command
