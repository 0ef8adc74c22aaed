#include "json/view.h"

#include <charconv>
#include <iterator>
#include <system_error>

namespace zelutil::json {

std::optional<std::int32_t> View::integer() const {
    if (!is(Node::Kind::Number)) {
        return std::nullopt;
    }
    const std::string_view digits = tape_->digits(place_);
    const char* const end = digits.data() + digits.size();
    std::int32_t value = 0;
    const auto result = std::from_chars(digits.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional<std::int32_t>(value) : std::nullopt;
}

std::size_t Elements::size() const {
    std::size_t count = 0;
    for (Iterator element = begin_; element != end_; ++element) {
        ++count;
    }
    return count;
}

}  // namespace zelutil::json
