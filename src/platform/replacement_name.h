#ifndef ZELUTIL_PLATFORM_REPLACEMENT_NAME_H
#define ZELUTIL_PLATFORM_REPLACEMENT_NAME_H

#include <cstdint>
#include <filesystem>
#include <string_view>

/// Names of the files that replacing and keeping make beside their target. Pure text.
///
///     x.cfg => x.cfg.zelutil-00001a2b-00000007.tmp while it is written, x.cfg.bad for a copy that is kept
///
/// Where the target's name leaves no room, as much of it as fits stands there with a hash of the whole name.
namespace zelutil::platform {

/// Text in the system's own characters.
using NativeText = std::filesystem::path::string_type;
using NativeTextView = std::basic_string_view<NativeText::value_type>;

/// Most characters that a system takes for a name without a directory.
inline constexpr std::size_t kMaximumNameLength = 255;

/// How many names a kept copy is tried under before it counts as one that cannot be kept.
inline constexpr std::uint32_t kMaximumKeptNames = 10'000;

/// The name for one call of one process.
NativeText replacementName(NativeTextView targetName, std::uint32_t process, std::uint32_t call);

/// Whether `name` is one that any process could have made for `targetName`.
bool isReplacementName(NativeTextView name, NativeTextView targetName);

/// The name under which a copy is kept, the first choice being number 1: it ends in ".bad", ".bad.2", ".bad.3".
NativeText keptName(NativeTextView targetName, std::uint32_t number);

/// A number that no other call of this process has got.
std::uint32_t nextReplacementCall();

}  // namespace zelutil::platform

#endif
