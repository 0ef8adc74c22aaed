// The environment on Windows. Order and contracts: environment.h.
#include "platform/environment.h"

#include <utility>

#include "platform/windows/system_text.h"
#include "platform/world.h"

namespace zelutil::platform {

using namespace windows;

namespace {

/// Kept deliberately: this is the system's table, not the one that a C runtime copied from it at its start. A process
/// may have several runtimes, and what a host sets in one is seen here only where that runtime passes it on.
std::optional<std::string> ownVariable(const char* name) {
    const std::wstring wideName = widen(name);
    SetLastError(ERROR_SUCCESS);
    const auto value =
        textOf([&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(wideName.c_str(), buffer, size); });
    if (!value) {
        return GetLastError() == ERROR_SUCCESS ? std::optional<std::string>("") : std::nullopt;
    }
    return narrow(*value);
}

}  // namespace

std::optional<std::string> environment(const char* name) {
    if (name == nullptr) {
        return std::nullopt;
    }
    auto own = ownVariable(name);
    return worldInForce == nullptr ? own : worldInForce->variable(name, std::move(own));
}

std::optional<std::string> environmentPath(const char* name) { return environment(name); }

std::optional<std::string> environmentPathList(const char* name) { return environment(name); }

const char* fixedTemporaryDirectory() { return "C:\\Temp"; }

}  // namespace zelutil::platform
