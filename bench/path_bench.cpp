// Bringing a text into canonical form and taking its parent, against the standard library, GLib and Qt.
#include <glib.h>
#include <zelutil/file/path.h>

#include <QDir>
#include <QString>
#include <algorithm>
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

std::vector<QString> qtTextsOf(const Texts& texts) {
    std::vector<QString> result;
    std::transform(texts.begin(), texts.end(), std::back_inserter(result), QString::fromStdString);
    return result;
}

void compare(const char* task, const Texts& texts) {
    Comparison(task, texts.size())
        .zelutil(
            over(texts,
                 [](const std::string& text) { return std::strlen(static_cast<const char*>(ZelU::File::Path(text))); }))
        .peer("lexically_normal", over(texts,
                                       [](const std::string& text) {
                                           return std::filesystem::path(text).lexically_normal().native().size();
                                       }))
        .peer("GLib", over(texts,
                           [](const std::string& text) {
                               gchar* const path = g_canonicalize_filename(text.c_str(), "/");
                               // It knows no drives, so that a "/" comes first.
                               const std::size_t length = std::strlen(path) - 1;
                               g_free(path);
                               return length;
                           }))
        .peer("Qt", [qtTexts = qtTextsOf(texts)] {
            std::uint64_t digest = 0;
            for (const QString& text : qtTexts) {
                digest = digest * 31 + static_cast<std::uint64_t>(QDir::cleanPath(text).size());
            }
            return digest;
        });
}

/// Each side has the path in its own form.
void compareParents(const char* task, const Texts& texts) {
    std::vector<ZelU::File::Path> paths(texts.begin(), texts.end());
    std::vector<std::filesystem::path> standard(texts.begin(), texts.end());
    const auto lengths = [](const auto& inputs, auto length) {
        return [inputs, length] {
            std::uint64_t digest = 0;
            for (const auto& input : inputs) {
                digest = digest * 31 + static_cast<std::uint64_t>(length(input));
            }
            return digest;
        };
    };
    Comparison(task, texts.size())
        .zelutil(lengths(paths, [](const auto& path) { return std::strlen(path.Parent()); }))
        .peer("parent_path", lengths(standard, [](const auto& path) { return path.parent_path().native().size(); }))
        .peer("GLib", lengths(texts,
                              [](const std::string& text) {
                                  gchar* const parent = g_path_get_dirname(text.c_str());
                                  const std::size_t length = std::strlen(parent);
                                  g_free(parent);
                                  return length;
                              }))
        .peer("limit: string copy", lengths(texts, [](const std::string& text) {
                  const std::string copy(text, 0, text.rfind('/'));
                  benchmark::DoNotOptimize(copy.data());
                  return copy.size();
              }));
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Texts longText = makeLong();
    compare("normalise plain paths", kPlain);
    compare("normalise paths with . and ..", kDots);
    compare("normalise doubled separators", kDoubled);
    compare("normalise 60 components", longText);
    compareParents("parent of a path", kPlain);
}
