#ifndef ZELUTIL_TESTS_FILE_HIERARCHY_FIXTURE_H
#define ZELUTIL_TESTS_FILE_HIERARCHY_FIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_directory.h"

namespace zelutil::test {

inline constexpr char kNotFound[] =
    "ERROR: Vorn Marl hierarchy root could not be located.\n"
    "Make sure <qtxroot>/tools/bin is included in the $PATH\n";

/// A path in a printed line, and the line's end.
inline std::string quoted(const std::string& path) { return "\"" + path + "\"\n"; }

/// Returns what the probe prints for this root.
inline std::string rootLine(const std::filesystem::path& root) { return "root " + quoted(windowsText(root)); }

/// Each case runs a small program that links the library, so that the environment, the current directory and the place
/// of the library's file are the case's own from the start. All it prints is compared.
class HierarchyProbe : public ::testing::Test {
protected:
    HierarchyProbe() { environment["PATH"] = std::nullopt; }

    /// Runs the probe in `here`, with no variable of the product and no "PATH" but those in `environment`.
    ChildResult probe(const std::vector<std::string>& arguments) const {
        return run({program, arguments, environment, here});
    }

    /// All it writes on standard output; on standard error it has to write `err`.
    std::string outputOf(const std::vector<std::string>& arguments, const std::string& err = "") const {
        const ChildResult result = probe(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, err);
        return result.out;
    }

    void setPath(const std::vector<std::filesystem::path>& directories) {
        std::vector<std::string> texts;
        for (const std::filesystem::path& directory : directories) {
            texts.push_back(systemText(directory));
        }
        environment["PATH"] = systemList(texts);
    }

    void trace() { environment["QTX_ZELUTIL_DEBUG"] = "0"; }

    /// Puts the program and the library into a directory and has them run from there.
    void installProgram(const std::filesystem::path& directory) {
        std::filesystem::create_directories(directory);
        for (const char* const file : {ZELUTIL_TEST_PROBE, ZELUTIL_TEST_LIBRARY}) {
            std::filesystem::copy(file, directory, std::filesystem::copy_options::overwrite_existing);
        }
        for (const std::filesystem::directory_entry& entry :
             std::filesystem::directory_iterator(std::filesystem::path(ZELUTIL_TEST_LIBRARY).parent_path())) {
            if (entry.path().extension() == ".dll" && entry.path().filename().string().rfind("lib", 0) == 0) {
                std::filesystem::copy(entry.path(), directory);
            }
        }
        program = directory / std::filesystem::path(ZELUTIL_TEST_PROBE).filename();
    }

    TempDirectory work;
    std::filesystem::path here = work.path();
    std::filesystem::path product = work / "product";
    std::filesystem::path other = work / "other";
    std::filesystem::path program = ZELUTIL_TEST_PROBE;
    EnvironmentChanges environment = withoutProductVariables();
};

}  // namespace zelutil::test

#endif
