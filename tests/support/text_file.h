#ifndef ZELUTIL_TESTS_SUPPORT_TEXT_FILE_H
#define ZELUTIL_TESTS_SUPPORT_TEXT_FILE_H

#include <filesystem>
#include <string>
#include <string_view>

namespace zelutil::test {

/// Writes the bytes, making the missing directories. Throws when it cannot.
void writeTextFile(const std::filesystem::path& path, std::string_view bytes);

/// The file's bytes. Throws when it cannot be read.
std::string readTextFile(const std::filesystem::path& path);

}  // namespace zelutil::test

#endif
