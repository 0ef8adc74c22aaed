// Files that are none to read: pipes, and links that lead round in a circle.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "command/command_world.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

/// Runs the command with an end to its time, since it may wait for whoever writes into a pipe.
ChildResult runForSeconds(const CommandWorld& world, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"20", ZELUTIL_TEST_COMMAND});
    return world.runProgram("/usr/bin/timeout", arguments);
}

TEST(SpecialFiles, APipeIsNoRegularFileToLint) {
    const CommandWorld world;
    const std::string pipe = world.home() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0666), 0);
    for (const auto& arguments : {std::vector<std::string>{"lint", pipe}, std::vector<std::string>{"import", pipe}}) {
        const ChildResult result = runForSeconds(world, arguments);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.err, "zelutil: error: \"" + pipe +
                                  "\" is no regular file.\n"
                                  "    Write what is to be read into a file first, and name that.\n");
    }
}

/// Returns what a call prints on standard error where nothing can be written on standard output.
std::string saidOnAFullDisk(const CommandWorld& world, const std::string& call) {
    return world.runProgram("/bin/sh", {"-c", std::string(ZELUTIL_TEST_COMMAND) + ' ' + call + " >/dev/full"}).err;
}

TEST(SpecialFiles, WhereTheOutputCannotBeWrittenThatIsTold) {
    const CommandWorld world;
    constexpr char kAdvice[] = "    See whether the disk is full or the reader has gone.\n";
    const std::string help = std::string("zelutil: error: The output could not be written.\n") + kAdvice;
    EXPECT_EQ(saidOnAFullDisk(world, "--help"), help);
    EXPECT_EQ(saidOnAFullDisk(world, "--version"), help);
    EXPECT_EQ(
        saidOnAFullDisk(world, "set grid=3"),
        std::string("zelutil: error: What was asked for is done, but the output could not be written.\n") + kAdvice);
    EXPECT_EQ(world.run({"get", "grid", "--value"}).out, "3\n");
}

TEST(SpecialFiles, ALinkThatLeadsRoundInACircleIsToldAsSuch) {
    const CommandWorld world;
    const std::string link = world.home() / "link";
    fs::create_symlink("link", link);
    for (const auto& arguments : {std::vector<std::string>{"lint", link}, std::vector<std::string>{"plan", link}}) {
        const ChildResult result = world.run(arguments);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.err, "zelutil: error: \"" + link +
                                  "\" is a link that leads round in a circle.\n"
                                  "    Have the link lead to the file, or name the file itself.\n");
    }
}

}  // namespace
}  // namespace zelutil::test
