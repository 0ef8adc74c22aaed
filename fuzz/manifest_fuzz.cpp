// Whatever the text, reading it as the manifest of a bundle ends quietly, and what is read leads to files of the bundle
// alone: the current directory, links and all paths, and those that go up from them as far as one likes. What is
// written again reads as the same.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string_view>

#include "command/world/manifest.h"
#include "command/world/mirror.h"

namespace {

namespace fs = std::filesystem;
using namespace zelutil::command::world;

const fs::path kFiles = "/bundle/files";

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Requires that the system, which does not look behind a null character, finds the place below the files.
void requireInside(const fs::path& place) {
    const fs::path seen = fs::path(place.c_str()).lexically_normal();
    auto component = seen.begin();
    for (const fs::path& expected : kFiles) {
        require(component != seen.end() && *component == expected);
        ++component;
    }
}

void checkPath(const Mirror& mirror, const fs::path& path) {
    requireInside(mirror.placeOf(path));
    requireInside(mirror.placeOf(path / "x"));
    requireInside(mirror.placeOf(path / "../../../../../../x"));
}

template <typename Answer>
void checkPaths(const Mirror& mirror, const std::map<fs::path, Answer>& answers) {
    for (const auto& [path, answer] : answers) {
        checkPath(mirror, path);
    }
}

void check(const Manifest& manifest) {
    const Mirror mirror(kFiles, manifest.directory, manifest.links);
    checkPath(mirror, "");
    checkPath(mirror, manifest.directory);
    for (const Links* const links : {&manifest.links, &manifest.deadDirectories}) {
        for (const auto& [from, to] : *links) {
            checkPath(mirror, from);
            checkPath(mirror, to);
        }
    }
    for (const fs::path& path : manifest.unreadable) {
        checkPath(mirror, path);
    }
    checkPaths(mirror, manifest.writeable);
    checkPaths(mirror, manifest.hidden);
}

void requireReadAgain(const Manifest& manifest) {
    const auto text = textOfManifest(manifest);
    require(text.has_value());
    const auto again = manifestOf(*text);
    require(again && textOfManifest(*again) == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kLargestInput = 1 << 13;
    if (size > kLargestInput) {
        return 0;
    }
    const auto manifest = manifestOf({reinterpret_cast<const char*>(data), size});
    if (manifest) {
        check(*manifest);
        requireReadAgain(*manifest);
    }
    return 0;
}
