// Whatever the text, parsing ends quietly, and the parser that places failures accepts and refuses the same; what was
// parsed can be written, and what was written can be parsed. (It need not read back as the same: the default parse of a
// fraction may miss by the last bit.)
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "json/document.h"
#include "json/parse_failure.h"
#include "json/writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 16;
    if (size > kLargestInput) {
        return 0;
    }
    using namespace zelutil::json;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const Document document(text);
    if (document.valid() == parseFailureOf(text).has_value()) {
        std::abort();
    }
    if (!document.valid()) {
        return 0;
    }
    PrettyWriter writer;
    writer.copy(document.root());
    for (const auto& written : {compactText(document.root()), writer.take()}) {
        if (!written || !Document(*written).valid()) {
            std::abort();
        }
    }
    return 0;
}
