#ifndef ZELUTIL_TESTS_FILE_FILE_FIXTURE_H
#define ZELUTIL_TESTS_FILE_FILE_FIXTURE_H

#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <string>

#include "support/temp_directory.h"
#include "support/text_file.h"

namespace zelutil::test {

/// A directory of the test's own, and its files by name: as the library sees them, and as they are.
class FilesOfADirectory : public ::testing::Test {
protected:
    ZelU::File::Path path(const std::string& name) const { return ZelU::File::Path(windowsText(directory / name)); }

    void write(const std::string& name, const std::string& bytes) const { writeTextFile(directory / name, bytes); }

    std::string bytesOf(const std::string& name) const { return readTextFile(directory / name); }

    /// Also true of a symbolic link to nothing.
    bool isThere(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(directory / name));
    }

    TempDirectory directory;
};

}  // namespace zelutil::test

#endif
