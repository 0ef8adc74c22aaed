#ifndef ZELUTIL_PLATFORM_NATIVE_PATHS_H
#define ZELUTIL_PLATFORM_NATIVE_PATHS_H

#include <filesystem>
#include <optional>
#include <string>

/// Paths of the standard library, whose characters are the system's own. The rules for texts are those of platform.h.
namespace zelutil::platform {

/// Returns the file that the functions of this seam open for the text; empty for a text that names no file.
std::filesystem::path nativePathOf(const char* text);

/// Returns the text of a file, made absolute, without "." and ".." components, which go with the component before them,
/// and without a separator at the end but for that of a root. Nothing for the empty path and where no text names this
/// very file, for a character that the narrow encoding lacks, say.
std::optional<std::string> textOfNativePath(const std::filesystem::path& path);

}  // namespace zelutil::platform

#endif
