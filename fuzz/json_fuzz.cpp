// Whatever the text, parsing ends quietly; what was parsed can be written, and what was written can be
// parsed. (It need not read back as the same: the default parse of a fraction may miss by the last bit.)
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
    if (text.valid() && !(Text(*compact).valid() && Text(*pretty).valid())) {
        std::abort();
    }
    return 0;
}
