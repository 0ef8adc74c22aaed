#ifndef ZELUTIL_TESTS_SUPPORT_ACCESS_LIST_H
#define ZELUTIL_TESTS_SUPPORT_ACCESS_LIST_H

#include <sys/xattr.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>

namespace zelutil::test {

inline constexpr char kAccessList[] = "system.posix_acl_access";
/// The list that a directory hands down to the files in it.
inline constexpr char kDefaultAccessList[] = "system.posix_acl_default";

/// An access list as the kernel has it: the owner and the user 1234 may read and write, the group and others nothing.
inline std::string accessListForOneMore() {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };
    constexpr std::uint32_t kNobodyNamed = 0xffffffff;
    constexpr std::uint32_t kVersion = 2;
    // Owner, named user, group, mask, others.
    constexpr std::array<Entry, 5> kEntries = {
        {{1, 6, kNobodyNamed}, {2, 6, 1234}, {4, 0, kNobodyNamed}, {0x10, 6, kNobodyNamed}, {0x20, 0, kNobodyNamed}}};
    std::string list(sizeof kVersion + sizeof kEntries, '\0');
    std::memcpy(list.data(), &kVersion, sizeof kVersion);
    std::memcpy(list.data() + sizeof kVersion, kEntries.data(), sizeof kEntries);
    return list;
}

/// False where the file system has no such lists.
inline bool setAccessList(const std::filesystem::path& path, const char* kind, const std::string& list) {
    return ::setxattr(path.c_str(), kind, list.data(), list.size(), 0) == 0;
}

/// Empty where there is none.
inline std::string accessListOf(const std::filesystem::path& path) {
    std::string list(1000, '\0');
    const ssize_t size = ::getxattr(path.c_str(), kAccessList, list.data(), list.size());
    list.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return list;
}

}  // namespace zelutil::test

#endif
