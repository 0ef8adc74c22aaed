#include <gtest/gtest.h>
#include <zelutil/file/path.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

// Each case runs a small program that links the library, enters files for deletion and ends.
namespace {

namespace fs = std::filesystem;
using zelutil::test::ChildResult;
using zelutil::test::TempDirectory;
using zelutil::test::windowsText;
using zelutil::test::writeTextFile;

using Names = std::set<std::string>;

class DeleteOnExit : public testing::Test {
protected:
    std::string text(const std::string& name) const { return windowsText(directory / name); }

    void write(const std::string& name) const { writeTextFile(directory / name, "x"); }

    /// Runs the program to its end; answers what it printed. It must not print anything on standard error.
    std::string run(const std::vector<std::string>& arguments) const {
        const ChildResult result = zelutil::test::run({ZELUTIL_TEST_PROBE, arguments, {}, directory.path()});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    Names entries() const {
        Names names;
        for (const fs::directory_entry& entry : fs::directory_iterator(directory.path())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    TempDirectory directory;
};

TEST_F(DeleteOnExit, RemovesTheFilesThatWereEnteredAndNoOther) {
    write("first");
    write("second file");
    write("not entered");
    EXPECT_EQ(run({"enter", text("first"), "enter", text("second file")}), "");
    EXPECT_EQ(entries(), Names{"not entered"});
}

TEST_F(DeleteOnExit, WorksForReturnFromMainAndForExit) {
    write("first");
    EXPECT_EQ(run({"enter", text("first"), "exit"}), "");
    EXPECT_EQ(entries(), Names{});
}

TEST_F(DeleteOnExit, RemovesAFileMadeAfterItWasEntered) {
    EXPECT_EQ(run({"enter", text("file"), "make", text("file"), "make", text("other")}), "");
    EXPECT_EQ(entries(), Names{"other"});
}

TEST_F(DeleteOnExit, APathMayBeEnteredMoreThanOnce) {
    write("file");
    EXPECT_EQ(run({"enter", text("file"), "enter", text("file"), "enter", text("file")}), "");
    EXPECT_EQ(entries(), Names{});
}

TEST_F(DeleteOnExit, AStaticObjectOfTheHostMayStillEnterAFile) {
    for (const char* const earlier : {"enter", "make"}) {
        write("late");
        EXPECT_EQ(run({earlier, text("early"), "enter-late", text("late")}), "");
        EXPECT_FALSE(fs::exists(directory / "late")) << "after " << earlier;
    }
}

TEST_F(DeleteOnExit, WhatDoesNotExistIsPassedOverInSilence) {
    write("last");
    EXPECT_EQ(run({"enter", text("missing"), "enter", text("missing/file"), "enter", "", "enter", "?", "enter",
                   text("last")}),
              "");
    EXPECT_EQ(entries(), Names{});
}

TEST_F(DeleteOnExit, ADirectoryStays) {
    fs::create_directory(directory / "empty");
    EXPECT_EQ(run({"enter", text("empty")}), "");
    EXPECT_EQ(entries(), Names{"empty"});
}

TEST_F(DeleteOnExit, ARelativePathMeansTheDirectoryOfItsEntry) {
    write("file");
    write("sub/file");
    EXPECT_EQ(run({"enter", "file", "chdir", text("sub")}), "");
    EXPECT_EQ(entries(), Names{"sub"});
    EXPECT_TRUE(fs::exists(directory / "sub/file"));
}

TEST_F(DeleteOnExit, TemporaryFilesGoWhenThatWasAskedFor) {
    const std::string out = run({"temporary", text("."), "keep", text("."), "temporary", text(".")});
    ASSERT_EQ(entries().size(), 1U);
    // The second of the three names.
    const std::string kept = *entries().begin();
    EXPECT_EQ(out.find(kept), kept.size() + 1) << out;
}

}  // namespace
