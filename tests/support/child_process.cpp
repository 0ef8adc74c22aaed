#include "support/child_process.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "support/environment.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <signal.h>
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

/// The streams of a program; it takes over those that are there and this process closes them.
struct Streams {
    HANDLE in = nullptr;
    HANDLE out = nullptr;
    HANDLE err = nullptr;
};

/// Under Wine a start fails once in some thousands where the machine is loaded; a program that is not there fails each
/// time.
constexpr int kStarts = 3;
constexpr DWORD kMillisecondsBetweenStarts = 300;

/// Returns the handle of the process.
HANDLE start(const ChildProcess& process, const Streams& streams) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = streams.in;
    startup.hStdOutput = streams.out;
    startup.hStdError = streams.err;
    PROCESS_INFORMATION child{};
    std::string line = commandLine(process);
    std::string block = environmentBlock(process.environment);
    BOOL started = 0;
    DWORD error = 0;
    for (int attempt = 0; attempt < kStarts && started == 0; ++attempt) {
        if (attempt > 0) {
            Sleep(kMillisecondsBetweenStarts);
        }
        started = CreateProcessA(process.program.string().c_str(), line.data(), nullptr, nullptr, TRUE, 0, block.data(),
                                 process.directory.string().c_str(), &startup, &child);
        error = GetLastError();
    }
    for (const HANDLE stream : {streams.in, streams.out, streams.err}) {
        if (stream != nullptr) {
            CloseHandle(stream);
        }
    }
    if (started == 0) {
        throw std::runtime_error("cannot start " + process.program.string() + ", error " + std::to_string(error));
    }
    CloseHandle(child.hThread);
    return child.hProcess;
}

int waitForEnd(HANDLE process) {
    WaitForSingleObject(process, INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(process, &exitCode);
    CloseHandle(process);
    return static_cast<int>(exitCode);
}

int runWithOutputIn(const ChildProcess& process, const fs::path& out, const fs::path& err) {
    return waitForEnd(start(process, {nullptr, createInheritable(out), createInheritable(err)}));
}

/// Returns another handle to it, which a child may inherit.
HANDLE ownErrorStream() {
    HANDLE stream = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetStdHandle(STD_ERROR_HANDLE), GetCurrentProcess(), &stream, 0, TRUE,
                    DUPLICATE_SAME_ACCESS);
    return stream;
}

/// One end is this process's own, the other one is for a child.
struct Pipe {
    explicit Pipe(bool childReads) {
        SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        CreatePipe(&reader, &writer, &inheritable, 0);
        own = childReads ? writer : reader;
        childs = childReads ? reader : writer;
        SetHandleInformation(own, HANDLE_FLAG_INHERIT, 0);
    }

    HANDLE own = nullptr;
    HANDLE childs = nullptr;
};

std::string linesIn(const fs::path& file) {
    std::string text = readTextFile(file);
    for (std::size_t end = 0; (end = text.find("\r\n", end)) != std::string::npos;) {
        text.erase(end, 1);
    }
    return text;
}
#else
/// The program that runs those of another processor, with its arguments; empty where none is needed.
const std::vector<std::string> kEmulator = {ZELUTIL_TEST_EMULATOR};

/// Runs in the child: from here on only what a forked process may do.
[[noreturn]] void becomeProgram(const ChildProcess& process, int in, int out, int err) {
    constexpr int kCannotStart = 127;
    for (const auto& [name, value] : process.environment) {
        value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
    std::vector<char*> arguments;
    for (const std::string& part : kEmulator) {
        arguments.push_back(const_cast<char*>(part.c_str()));
    }
    arguments.push_back(const_cast<char*>(process.program.c_str()));
    for (const std::string& argument : process.arguments) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    const bool hasStreams = (in < 0 || dup2(in, STDIN_FILENO) >= 0) && dup2(out, STDOUT_FILENO) >= 0 &&
                            (err < 0 || dup2(err, STDERR_FILENO) >= 0);
    if (hasStreams && chdir(process.directory.c_str()) == 0) {
        execv(arguments.front(), arguments.data());
    }
    _exit(kCannotStart);
}

int waitForEnd(pid_t child) {
    constexpr int kKilled = 128;
    int status = 0;
    if (waitpid(child, &status, 0) != child) {
        throw std::runtime_error("lost a program");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kKilled + WTERMSIG(status);
}

int runWithOutputIn(const ChildProcess& process, const fs::path& out, const fs::path& err) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    const int outFile = open(out.c_str(), kFlags, 0600);
    const int errFile = open(err.c_str(), kFlags, 0600);
    const pid_t child = fork();
    if (child == 0) {
        becomeProgram(process, -1, outFile, errFile);
    }
    close(outFile);
    close(errFile);
    if (child < 0) {
        throw std::runtime_error("cannot start " + process.program.string());
    }
    return waitForEnd(child);
}

std::string linesIn(const fs::path& file) { return readTextFile(file); }
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
    return {exitCode, process.outputInBytes ? readTextFile(out) : linesIn(out), linesIn(err)};
}

#ifdef _WIN32
struct BackgroundProcess::Native {
    explicit Native(const ChildProcess& started) : process(start(started, {in.childs, out.childs, ownErrorStream()})) {}
    ~Native() {
        closeInput();
        CloseHandle(out.own);
    }

    bool write(std::string_view bytes) const {
        DWORD count = 0;
        return WriteFile(in.own, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != 0;
    }

    /// Returns nothing at the end.
    std::string read() const {
        std::string buffer(4096, '\0');
        DWORD count = 0;
        const bool isRead = ReadFile(out.own, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) != 0;
        return buffer.substr(0, isRead ? count : 0);
    }

    void closeInput() {
        if (in.own != nullptr) {
            CloseHandle(in.own);
            in.own = nullptr;
        }
    }

    void kill() const { TerminateProcess(process, 1); }

    Pipe in{true};
    Pipe out{false};
    HANDLE process;
};
#else
struct BackgroundProcess::Native {
    explicit Native(const ChildProcess& started) {
        if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0 || (process = fork()) < 0) {
            throw std::runtime_error("cannot start " + started.program.string());
        }
        if (process == 0) {
            becomeProgram(started, in[0], out[1], -1);
        }
        close(in[0]);
        close(out[1]);
        // A program that is gone is not to take this one with it.
        signal(SIGPIPE, SIG_IGN);
    }
    ~Native() {
        closeInput();
        close(out[0]);
    }

    bool write(std::string_view bytes) const {
        return ::write(in[1], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }

    /// Returns nothing at the end.
    std::string read() const {
        std::string buffer(4096, '\0');
        const ssize_t count = ::read(out[0], buffer.data(), buffer.size());
        return buffer.substr(0, count < 0 ? 0 : static_cast<std::size_t>(count));
    }

    void closeInput() {
        if (in[1] >= 0) {
            close(in[1]);
            in[1] = -1;
        }
    }

    void kill() const { ::kill(process, SIGKILL); }

    int in[2] = {-1, -1};
    int out[2] = {-1, -1};
    pid_t process = -1;
};
#endif

BackgroundProcess::BackgroundProcess(const ChildProcess& process) : native_(std::make_unique<Native>(process)) {}

BackgroundProcess::BackgroundProcess(BackgroundProcess&& other) noexcept = default;

BackgroundProcess& BackgroundProcess::operator=(BackgroundProcess&& other) noexcept {
    std::swap(native_, other.native_);
    std::swap(heard_, other.heard_);
    return *this;
}

BackgroundProcess::~BackgroundProcess() { kill(); }

void BackgroundProcess::tell(const std::string& line) { native_->write(line + '\n'); }

std::optional<std::string> BackgroundProcess::hear() {
    std::size_t end = 0;
    while ((end = heard_.find('\n')) == std::string::npos) {
        const std::string more = native_->read();
        if (more.empty()) {
            return std::nullopt;
        }
        heard_ += more;
    }
    std::string line = heard_.substr(0, end);
    heard_.erase(0, end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return line;
}

std::string BackgroundProcess::ask(const std::string& line) {
    tell(line);
    auto said = hear();
    if (!said) {
        throw std::runtime_error("no word to: " + line);
    }
    return *said;
}

void BackgroundProcess::kill() {
    if (native_ != nullptr) {
        native_->kill();
        waitForEnd(native_->process);
        native_.reset();
    }
}

int BackgroundProcess::finish() {
    native_->closeInput();
    const int exitCode = waitForEnd(native_->process);
    native_.reset();
    return exitCode;
}

#ifdef _WIN32
std::string systemList(const std::vector<std::string>& directories) { return joined(directories, ';'); }

const char* loaderPathVariable() { return "PATH"; }
#else
std::string systemList(const std::vector<std::string>& directories) { return joined(directories, ':'); }

const char* loaderPathVariable() { return "LD_LIBRARY_PATH"; }
#endif

}  // namespace zelutil::test
