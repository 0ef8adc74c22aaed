// The console on Windows. Order and contracts: console.h.
#include "command/system/console.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <cstdio>
#include <memory>

#include "platform/windows/windows_h.h"
// It needs what windows.h declares.
#include <shellapi.h>

namespace zelutil::command {
namespace {

/// A console call takes at most 64 KiB at once on older systems.
constexpr std::size_t kMostCharactersAtOnce = 16000;

std::string utf8Of(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) {
        return {};
    }
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow.data(), size, nullptr, nullptr);
    narrow.pop_back();
    return narrow;
}

std::wstring wideOf(std::string_view text) {
    const int bytes = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), size);
    return wide;
}

/// Standard output once others do not print on it; null before.
std::FILE* resultFile = nullptr;

std::FILE* fileOf(Stream stream) {
    if (stream == Stream::Error) {
        return stderr;
    }
    return resultFile != nullptr ? resultFile : stdout;
}

HANDLE handleOf(Stream stream) {
    if (stream == Stream::Output && resultFile != nullptr) {
        return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(resultFile)));
    }
    return GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

/// The console takes UTF-16, whatever its code page is.
bool writeToConsole(HANDLE console, std::string_view text) {
    const std::wstring wide = wideOf(text);
    for (std::size_t from = 0; from < wide.size();) {
        const std::wstring part = wide.substr(from, kMostCharactersAtOnce);
        DWORD written = 0;
        if (WriteConsoleW(console, part.data(), static_cast<DWORD>(part.size()), &written, nullptr) == 0 ||
            written == 0) {
            return false;
        }
        from += written;
    }
    return true;
}

}  // namespace

std::vector<std::string> argumentsOfProgram(int /*count*/, const char* const* /*values*/) {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> list(CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> arguments;
    for (int number = 1; list != nullptr && number < count; ++number) {
        arguments.push_back(utf8Of(list.get()[number]));
    }
    return arguments;
}

void keepOutputForResults() {
    const int output = _fileno(stdout);
    const int error = _fileno(stderr);
    // A program without a console has neither.
    const int own = output < 0 || error < 0 ? -1 : _dup(output);
    resultFile = own < 0 ? nullptr : _fdopen(own, "wb");
    if (resultFile != nullptr) {
        // A result has its own line ends: those of CSV have a CR, which the text mode would double. The letter alone
        // leaves the descriptor in that mode.
        _setmode(own, _O_BINARY);
        _dup2(error, output);
    }
}

Account account() {
    std::array<wchar_t, 256> text{};
    Account account;
    auto size = static_cast<DWORD>(text.size());
    if (GetUserNameW(text.data(), &size) != 0) {
        account.user = utf8Of(text.data());
    }
    size = static_cast<DWORD>(text.size());
    if (GetComputerNameExW(ComputerNamePhysicalDnsHostname, text.data(), &size) != 0) {
        account.host = utf8Of(text.data());
    }
    return account;
}

bool isTerminal(Stream stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool showsColors(Stream stream) {
    DWORD mode = 0;
    const HANDLE console = handleOf(stream);
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::optional<std::size_t> widthOf(Stream stream) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(handleOf(stream), &info) == 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left) + 1;
}

bool write(Stream stream, std::string_view text) {
    if (isTerminal(stream)) {
        return writeToConsole(handleOf(stream), text);
    }
    std::FILE* const file = fileOf(stream);
    return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

}  // namespace zelutil::command
