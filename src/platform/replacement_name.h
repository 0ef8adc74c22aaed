#ifndef ZELUTIL_PLATFORM_REPLACEMENT_NAME_H
#define ZELUTIL_PLATFORM_REPLACEMENT_NAME_H

#include <cstdint>
#include <filesystem>
#include <string_view>

/// Names of the files that replacing and keeping make beside their target. Pure text.
///
///     x.cfg => x.cfg.zelutil-00001a2b-00000007.tmp while it is written, x.cfg.bad for a copy that is kept
///
/// A target's name that leaves no room is cut, and a hash of the whole name follows what is left of it.
namespace zelutil::platform {

/// Text in the system's own characters.
using NativeText = std::filesystem::path::string_type;
using NativeTextView = std::basic_string_view<NativeText::value_type>;

/// Most characters that a system takes for a name without a directory.
inline constexpr std::size_t kMaximumNameLength = 255;

/// A copy counts as one that cannot be kept when so many of its names are taken.
inline constexpr std::uint32_t kMaximumKeptNames = 10'000;

/// Returns the name for one call of one process.
NativeText replacementName(NativeTextView targetName, std::uint32_t process, std::uint32_t call);

/// Returns whether `name` is one that any process could have made for `targetName`.
bool isReplacementName(NativeTextView name, NativeTextView targetName);

/// Returns the name under which a copy is kept, the first choice being number 1: it ends in ".bad", ".bad.2", ".bad.3".
NativeText keptName(NativeTextView targetName, std::uint32_t number);

/// Returns whether `name` is one under which a copy of `targetName` is kept.
bool isKeptName(NativeTextView name, NativeTextView targetName);

/// Returns a number that no other call of this process has got.
std::uint32_t nextReplacementCall();

}  // namespace zelutil::platform

#endif
