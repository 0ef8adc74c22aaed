#ifndef ZELUTIL_TEXT_LIST_H
#define ZELUTIL_TEXT_LIST_H

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace zelutil::text {

/// Returns the pieces of a text between its separators, empty ones too: always one more than there are separators.
/// They are valid as long as the text is.
///
///     "a;;b" => "a", "", "b"    "a;" => "a", ""    "" => ""
template <typename Char>
std::vector<std::basic_string_view<Char>> split(std::basic_string_view<Char> list, const Char* separators) {
    std::vector<std::basic_string_view<Char>> parts;
    for (;;) {
        const std::size_t end = std::min(list.find_first_of(separators), list.size());
        parts.push_back(list.substr(0, end));
        if (end == list.size()) {
            return parts;
        }
        list.remove_prefix(end + 1);
    }
}

}  // namespace zelutil::text

#endif
