#ifndef ZELUTIL_TESTS_SUPPORT_CHILD_PROCESS_H
#define ZELUTIL_TESTS_SUPPORT_CHILD_PROCESS_H

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zelutil::test {

/// Values by variable; nothing: undefined.
using EnvironmentChanges = std::map<std::string, std::optional<std::string>>;

/// Every variable the library looks at undefined, but for "PATH", TMP and TEMP.
EnvironmentChanges withoutProductVariables();

/// A program to be run to its end.
struct ChildProcess {
    std::filesystem::path program;
    std::vector<std::string> arguments;
    /// The variables that differ from this process's environment.
    EnvironmentChanges environment;
    std::filesystem::path directory;
    /// Whether its output is to be seen byte by byte. Otherwise a line of it ends in "\n" on every system.
    bool outputInBytes = false;
};

struct ChildResult {
    int exitCode;
    std::string out;
    /// The text that it wrote on its standard error; a line ends in "\n" on every system.
    std::string err;
};

/// Throws when the program cannot be started.
ChildResult run(const ChildProcess& process);

/// A program that runs beside the test and talks with it by lines. It is killed at the end of the scope.
class BackgroundProcess {
public:
    /// Throws when the program cannot be started.
    explicit BackgroundProcess(const ChildProcess& process);
    BackgroundProcess(BackgroundProcess&& other) noexcept;
    BackgroundProcess& operator=(BackgroundProcess&& other) noexcept;
    BackgroundProcess(const BackgroundProcess&) = delete;
    BackgroundProcess& operator=(const BackgroundProcess&) = delete;
    ~BackgroundProcess();

    /// Writes a line to its standard input.
    void tell(const std::string& line);

    /// Returns the next line of its standard output without the line's end; nothing once it has closed it.
    std::optional<std::string> hear();

    /// Tells a line and returns the line it says to that. Throws where there is none.
    std::string ask(const std::string& line);

    /// Ends it at once, wherever it is, and waits for its end.
    void kill();

    /// Closes its standard input, waits for its end and returns its exit code.
    int finish();

private:
    struct Native;

    std::unique_ptr<Native> native_;
    std::string heard_;
};

/// The directories as a variable like "PATH" holds them.
std::string systemList(const std::vector<std::string>& directories);

/// The variable with the directories in which the loader looks for modules: "LD_LIBRARY_PATH", "PATH".
const char* loaderPathVariable();

}  // namespace zelutil::test

#endif
