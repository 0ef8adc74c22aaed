// The console on POSIX. Order and contracts: console.h.
#include "command/system/console.h"

#include <unistd.h>

#include <cstdio>

#include "platform/environment.h"

namespace zelutil::command {
namespace {

std::FILE* fileOf(Stream stream) { return stream == Stream::Output ? stdout : stderr; }

}  // namespace

std::vector<std::string> argumentsOfProgram(int count, const char* const* values) {
    return count > 0 ? std::vector<std::string>(values + 1, values + count) : std::vector<std::string>();
}

bool isTerminal(Stream stream) { return isatty(fileno(fileOf(stream))) != 0; }

bool showsColors(Stream stream) {
    return isTerminal(stream) && platform::environment("TERM").value_or("dumb") != "dumb";
}

bool write(Stream stream, std::string_view text) {
    std::FILE* const file = fileOf(stream);
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

}  // namespace zelutil::command
