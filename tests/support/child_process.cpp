#include "support/child_process.h"

#include <stdexcept>
#include <string_view>

#include "support/environment.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#endif

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

std::string joined(const std::vector<std::string>& texts, char separator) {
    std::string list;
    for (const std::string& text : texts) {
        if (&text != &texts.front()) {
            list += separator;
        }
        list += text;
    }
    return list;
}

#ifdef _WIN32
/// The argument as the C runtime's parser reads it back.
std::string quoted(const std::string& argument) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '"') {
            // Those before a quote are doubled, and one more escapes it.
            text.append(backslashes + 1, '\\');
        }
        backslashes = c == '\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, '\\') + '"';
}

std::string commandLine(const ChildProcess& process) {
    std::string line = quoted(process.program.string());
    for (const std::string& argument : process.arguments) {
        line += ' ' + quoted(argument);
    }
    return line;
}

struct IgnoringCase {
    bool operator()(const std::string& a, const std::string& b) const { return _stricmp(a.c_str(), b.c_str()) < 0; }
};

/// "NAME=value" texts, each with its NUL, and a NUL at the end.
std::string environmentBlock(const EnvironmentChanges& changes) {
    std::map<std::string, std::string, IgnoringCase> variables;
    char* const strings = GetEnvironmentStringsA();
    for (const char* entry = strings; *entry != '\0'; entry += std::string_view(entry).size() + 1) {
        const std::string text(entry);
        const std::size_t equals = text.find('=', 1);
        variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    FreeEnvironmentStringsA(strings);
    for (const auto& [name, value] : changes) {
        variables.erase(name);
        if (value) {
            variables[name] = *value;
        }
    }
    std::string block;
    for (const auto& [name, value] : variables) {
        block += name + '=' + value + '\0';
    }
    return block + '\0';
}

HANDLE createInheritable(const fs::path& file) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                       nullptr);
}

int runWithOutputIn(const ChildProcess& process, const fs::path& out, const fs::path& err) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = createInheritable(out);
    startup.hStdError = createInheritable(err);
    PROCESS_INFORMATION child{};
    std::string line = commandLine(process);
    std::string block = environmentBlock(process.environment);
    const BOOL started = CreateProcessA(process.program.string().c_str(), line.data(), nullptr, nullptr, TRUE, 0,
                                        block.data(), process.directory.string().c_str(), &startup, &child);
    CloseHandle(startup.hStdOutput);
    CloseHandle(startup.hStdError);
    if (started == 0) {
        throw std::runtime_error("cannot start " + process.program.string());
    }
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(child.hProcess, &exitCode);
    CloseHandle(child.hProcess);
    CloseHandle(child.hThread);
    return static_cast<int>(exitCode);
}

std::string outputIn(const fs::path& file) {
    std::string text = readTextFile(file);
    for (std::size_t end = 0; (end = text.find("\r\n", end)) != std::string::npos;) {
        text.erase(end, 1);
    }
    return text;
}
#else
/// Runs in the child: from here on only what a forked process may do.
[[noreturn]] void becomeProgram(const ChildProcess& process, int out, int err) {
    constexpr int kCannotStart = 127;
    for (const auto& [name, value] : process.environment) {
        value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
    std::vector<char*> arguments{const_cast<char*>(process.program.c_str())};
    for (const std::string& argument : process.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    if (dup2(out, STDOUT_FILENO) >= 0 && dup2(err, STDERR_FILENO) >= 0 && chdir(process.directory.c_str()) == 0) {
        execv(process.program.c_str(), arguments.data());
    }
    _exit(kCannotStart);
}

int runWithOutputIn(const ChildProcess& process, const fs::path& out, const fs::path& err) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    const int outFile = open(out.c_str(), kFlags, 0600);
    const int errFile = open(err.c_str(), kFlags, 0600);
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(process, outFile, errFile);
    }
    close(outFile);
    close(errFile);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        throw std::runtime_error("cannot start " + process.program.string());
    }
    constexpr int kKilled = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
}

std::string outputIn(const fs::path& file) { return readTextFile(file); }
#endif

}  // namespace

EnvironmentChanges withoutProductVariables() {
    EnvironmentChanges changes;
    for (const char* const name : productVariables()) {
        changes[name] = std::nullopt;
    }
    return changes;
}

ChildResult run(const ChildProcess& process) {
    const TempDirectory directory;
    const fs::path out = directory / "out";
    const fs::path err = directory / "err";
    const int exitCode = runWithOutputIn(process, out, err);
    return {exitCode, outputIn(out), outputIn(err)};
}

#ifdef _WIN32
std::string systemList(const std::vector<std::string>& directories) { return joined(directories, ';'); }

const char* loaderPathVariable() { return "PATH"; }
#else
std::string systemList(const std::vector<std::string>& directories) { return joined(directories, ':'); }

const char* loaderPathVariable() { return "LD_LIBRARY_PATH"; }
#endif

}  // namespace zelutil::test
