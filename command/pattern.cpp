#include "command/pattern.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <optional>

namespace zelutil::command {
namespace {

std::string folded(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ascii::lowerCase);
    return lower;
}

/// Matches with the last `*` only: what an earlier one stands for need never grow again.
bool matchesWhole(std::string_view pattern, std::string_view text) {
    std::size_t inPattern = 0;
    std::optional<std::size_t> star;
    std::size_t afterStar = 0;
    for (std::size_t inText = 0; inText < text.size();) {
        const bool hasMore = inPattern < pattern.size();
        if (hasMore && pattern[inPattern] == '*') {
            star = inPattern++;
            afterStar = inText;
        } else if (hasMore && (pattern[inPattern] == '?' || pattern[inPattern] == text[inText])) {
            ++inPattern;
            ++inText;
        } else if (star) {
            inPattern = *star + 1;
            inText = ++afterStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

}  // namespace

bool matches(std::string_view pattern, std::string_view text) {
    const std::string wanted = folded(pattern);
    const std::string given = folded(text);
    if (wanted.find_first_of("*?") == std::string::npos) {
        return given.find(wanted) != std::string::npos;
    }
    return matchesWhole(wanted, given);
}

bool beginsWith(std::string_view text, std::string_view beginning) {
    return folded(text.substr(0, beginning.size())) == folded(beginning);
}

}  // namespace zelutil::command
