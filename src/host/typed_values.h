#ifndef ZELUTIL_HOST_TYPED_VALUES_H
#define ZELUTIL_HOST_TYPED_VALUES_H

#include <optional>
#include <string_view>

/// Values of settings as numbers and truth values. Pure text; no locale matters.
namespace zelutil::host {

// Return nothing for a text that is none of the type, by the grammar of `read`. Blanks and tabs around it do not count.

std::optional<bool> boolOf(std::string_view text);
std::optional<int> intOf(std::string_view text);
std::optional<double> doubleOf(std::string_view text);

}  // namespace zelutil::host

#endif
