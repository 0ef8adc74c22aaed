// Bringing a text into canonical form, against the standard library's lexically_normal.
#include <zelutil/file/path.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/comparison.h"

namespace {

using zelutil::bench::Comparison;
using Texts = std::vector<std::string>;

/// Texts whose canonical forms have equal lengths on both sides: absolute, without a separator at the end.
const Texts kPlain = {"c:/vorn/marl/share/pcb/zelmgr/zeldict.l", "c:/vorn/marl/tools/bin/zelutil.dll",
                      "d:/projects/router/boards/main/rev_c/router_main.brd", "c:/temp/Tmp0000494e.log"};
const Texts kDots = {"c:/vorn/marl/tools/bin/../../share/pcb/./zelmgr/zeldict.l", "c:/a/b/c/../../../d/e",
                     "d:/projects/./router/../router/boards/./main", "c:/temp/x/../y/../z/file.txt"};
const Texts kDoubled = {"c:/vorn//marl/share//pcb/zelmgr//zeldict.l", "c:/temp//a//b//c//d//e"};

Texts makeLong() {
    Texts texts(1, "c:");
    for (int i = 0; i < 60; ++i) {
        texts[0] += "/directory_" + std::to_string(i);
    }
    return texts;
}

template <typename Length>
auto over(const Texts& texts, Length length) {
    return [&texts, length] {
        std::uint64_t digest = 0;
        for (const std::string& text : texts) {
            digest = digest * 31 + static_cast<std::uint64_t>(length(text));
        }
        return digest;
    };
}

void compare(const char* task, const Texts& texts) {
    Comparison(task, texts.size())
        .zelutil(
            over(texts,
                 [](const std::string& text) { return std::strlen(static_cast<const char*>(ZelU::File::Path(text))); }))
        .peer("lexically_normal", over(texts, [](const std::string& text) {
                  return std::filesystem::path(text).lexically_normal().native().size();
              }));
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Texts longText = makeLong();
    compare("normalise plain paths", kPlain);
    compare("normalise paths with . and ..", kDots);
    compare("normalise doubled separators", kDoubled);
    compare("normalise 60 components", longText);
}
