// The environment on Windows. Order and contracts: environment.h.
#include "platform/environment.h"

#include "platform/windows/system_text.h"

namespace zelutil::platform {

using namespace windows;

std::optional<std::string> environment(const char* name) {
    if (name == nullptr) {
        return std::nullopt;
    }
    const std::wstring wideName = widen(name);
    SetLastError(ERROR_SUCCESS);
    const auto value =
        textOf([&](wchar_t* buffer, DWORD size) { return GetEnvironmentVariableW(wideName.c_str(), buffer, size); });
    if (!value) {
        return GetLastError() == ERROR_SUCCESS ? std::optional<std::string>("") : std::nullopt;
    }
    return narrow(*value);
}

std::optional<std::string> environmentPath(const char* name) { return environment(name); }

std::optional<std::string> environmentPathList(const char* name) { return environment(name); }

const char* fixedTemporaryDirectory() { return "C:\\Temp"; }

}  // namespace zelutil::platform
