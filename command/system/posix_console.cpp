// The console on POSIX. Order and contracts: console.h.
#include "command/system/console.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cstdio>

#include "platform/environment.h"

namespace zelutil::command {
namespace {

/// Standard output once others do not print on it; null before.
std::FILE* resultFile = nullptr;

std::FILE* fileOf(Stream stream) {
    if (stream == Stream::Error) {
        return stderr;
    }
    return resultFile != nullptr ? resultFile : stdout;
}

}  // namespace

std::vector<std::string> argumentsOfProgram(int count, const char* const* values) {
    return count > 0 ? std::vector<std::string>(values + 1, values + count) : std::vector<std::string>();
}

void keepOutputForResults() {
    // A stream that a shell has closed stays closed.
    const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    resultFile = own < 0 ? nullptr : fdopen(own, "w");
    if (resultFile != nullptr) {
        dup2(STDERR_FILENO, STDOUT_FILENO);
    }
}

Account account() {
    Account account;
    // The one thread of the command asks once.
    if (const passwd* const entry = getpwuid(getuid())) {  // NOLINT(concurrency-mt-unsafe)
        account.user = entry->pw_name;
    }
    std::array<char, 256> host{};
    if (gethostname(host.data(), host.size() - 1) == 0) {
        account.host = host.data();
    }
    return account;
}

bool isTerminal(Stream stream) { return isatty(fileno(fileOf(stream))) != 0; }

bool showsColors(Stream stream) {
    return isTerminal(stream) && platform::environment("TERM").value_or("dumb") != "dumb";
}

std::optional<std::size_t> widthOf(Stream stream) {
    winsize size{};
    const bool isKnown = ioctl(fileno(fileOf(stream)), TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return isKnown ? std::optional<std::size_t>(size.ws_col) : std::nullopt;
}

bool write(Stream stream, std::string_view text) {
    std::FILE* const file = fileOf(stream);
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

}  // namespace zelutil::command
