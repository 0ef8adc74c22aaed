#ifndef ZELUTIL_TESTS_SUPPORT_HELD_FILE_H
#define ZELUTIL_TESTS_SUPPORT_HELD_FILE_H

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>

namespace zelutil::test {

/// The file, held open for reading and shared as told, until the end of its scope.
class HeldFile {
public:
    HeldFile(const std::filesystem::path& path, DWORD sharing)
        : handle_(CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() { CloseHandle(handle_); }

private:
    HANDLE handle_;
};

}  // namespace zelutil::test

#endif
