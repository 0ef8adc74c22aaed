// Whatever the text, parsing ends quietly; what was parsed can be written, and reads back as the same.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "json/json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 16;
    if (size > kLargestInput) {
        return 0;
    }
    using namespace zelutil::json;
    const Text text(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto compact = compactText(text.root());
    const auto pretty = prettyText(text.root());
    if (!compact || !pretty) {
        std::abort();
    }
    if (text.valid() && compactText(Text(*pretty).root()) != compact) {
        std::abort();
    }
    return 0;
}
