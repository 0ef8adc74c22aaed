// The environment on POSIX systems. Order and contracts: environment.h.
#include "platform/environment.h"

#include <cstdlib>

#include "platform/posix/drive_text.h"

namespace zelutil::platform {

std::optional<std::string> environment(const char* name) {
    const char* const value = name == nullptr ? nullptr : std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::string> environmentPath(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(textFromSystemPath(value));
}

std::optional<std::string> environmentPathList(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(textListFromSystemList(value));
}

const char* fixedTemporaryDirectory() { return "Z:\\tmp"; }

}  // namespace zelutil::platform
