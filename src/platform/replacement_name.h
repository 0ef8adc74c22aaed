#ifndef ZELUTIL_PLATFORM_REPLACEMENT_NAME_H
#define ZELUTIL_PLATFORM_REPLACEMENT_NAME_H

#include <cstdint>
#include <string>
#include <string_view>

/// Names of the files that `replaceFile` writes beside its target: "x.cfg" => "x.cfg.zelutil-00001a2b-00000007.tmp".
namespace zelutil::platform {

/// The name for one call of one process.
std::string replacementName(std::string_view targetName, std::uint32_t process, std::uint32_t call);

/// Whether `name` is one that any process could have made for `targetName`.
bool isReplacementName(std::string_view name, std::string_view targetName);

/// The end of the name under which a copy is kept, the first choice being number 1: ".bad", ".bad.2", ".bad.3".
std::string keptSuffix(std::uint32_t number);

/// How many such names are tried before a copy counts as one that cannot be kept.
inline constexpr std::uint32_t kMaximumKeptNames = 10'000;

/// A number that no other call of this process has got.
std::uint32_t nextReplacementCall();

}  // namespace zelutil::platform

#endif
