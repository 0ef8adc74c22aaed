// The environment on POSIX systems. Order and contracts: environment.h.
#include "platform/environment.h"

#include <cstdlib>
#include <utility>

#include "platform/posix/drive_text.h"
#include "platform/world.h"

namespace zelutil::platform {

std::optional<std::string> environment(const char* name) {
    const char* const value = name == nullptr ? nullptr : std::getenv(name);
    auto own = value == nullptr ? std::nullopt : std::optional<std::string>(value);
    return worldInForce == nullptr || name == nullptr ? own : worldInForce->variable(name, std::move(own));
}

std::optional<std::string> environmentPath(const char* name) {
    const auto value = environment(name);
    return value ? std::optional<std::string>(textFromSystemPath(*value)) : std::nullopt;
}

std::optional<std::string> environmentPathList(const char* name) {
    const auto value = environment(name);
    return value ? std::optional<std::string>(textListFromSystemList(*value)) : std::nullopt;
}

const char* fixedTemporaryDirectory() { return "Z:\\tmp"; }

}  // namespace zelutil::platform
