#ifndef ZELUTIL_TESTS_SUPPORT_TEMP_DIRECTORY_H
#define ZELUTIL_TESTS_SUPPORT_TEMP_DIRECTORY_H

#include <filesystem>
#include <string>

namespace zelutil::test {

/// A directory of the test's own, removed with all it holds at the end of its scope. Its path has no blank, no link and
/// no "." or ".." component.
class TempDirectory {
public:
    TempDirectory();
    /// Below `parent` instead of the system's directory for temporary files.
    explicit TempDirectory(const std::filesystem::path& parent);
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;
    ~TempDirectory();

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& relative) const { return path_ / relative; }

private:
    std::filesystem::path path_;
};

/// The path as the library writes it: drive letter, backslashes ("Z:\tmp\x" for /tmp/x).
std::string windowsText(const std::filesystem::path& path);

/// The file that a text written by the library names: the inverse of `windowsText`.
std::filesystem::path fileOfText(const std::string& windowsText);

/// The directory for temporary files, as a text of the library, when no variable names one.
std::string fixedTemporaryDirectory();

/// The path as the system's environment variables hold it ("/tmp/x", "C:\tmp\x").
std::string systemText(const std::filesystem::path& path);

}  // namespace zelutil::test

#endif
