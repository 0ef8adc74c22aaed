// Whatever the texts, normalisation agrees with its slow literal twin, on a whole text and on what is appended to it.
//
// An input is texts separated by NULs, after two bytes: what is known of the path before, and where the first text
// begins to be new. The first text is the current directory, the second is normalised, and the others are appended.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "file/path_text.h"
#include "support/literal_normalise.h"

namespace {

using zelutil::file::PathFlags;
using zelutil::test::LiteralPath;

std::string takeText(std::string_view& input) {
    const std::size_t end = std::min(input.find('\0'), input.size());
    const std::string text(input.substr(0, end));
    input.remove_prefix(std::min(end + 1, input.size()));
    return text;
}

/// The path as both see it, from `start` on.
void normaliseBoth(LiteralPath& path, std::size_t start, const std::string& directory) {
    std::string text = path.text;
    PathFlags flags{path.hasSpace, path.absolute};
    zelutil::file::normalise(text, flags, start, [&] { return directory; });
    zelutil::test::literalNormalise(path, start, directory);
    if (text != path.text || flags.hasSpace != path.hasSpace || flags.absolute != path.absolute) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The twin's time grows with the square of the length.
    constexpr std::size_t kLargestInput = 1 << 12;
    constexpr std::size_t kHeader = 2;
    if (size < kHeader || size > kLargestInput) {
        return 0;
    }
    std::string_view input(reinterpret_cast<const char*>(data) + kHeader, size - kHeader);
    const std::string directory = takeText(input);
    LiteralPath path{takeText(input), (data[0] & 1) != 0, (data[0] & 2) != 0};
    normaliseBoth(path, std::min<std::size_t>(data[1], path.text.size()), directory);
    while (!input.empty()) {
        const std::size_t end = path.text.size();
        path.text += '/' + takeText(input);
        normaliseBoth(path, end, directory);
    }
    return 0;
}
