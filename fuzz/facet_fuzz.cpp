// Whatever the text, its facets are read quietly, and reading it a second time adds nothing to the first.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "facet/facet_groups.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 16;
    if (size > kLargestInput) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    zelutil::facet::FacetGroups groups;
    groups.add(text);
    const bool known = groups.find("g", "a") != nullptr;
    groups.add(text);
    if (known != (groups.find("g", "a") != nullptr) || groups.find("", "a") != nullptr ||
        groups.find("g", "") != nullptr) {
        std::abort();
    }
    return 0;
}
