#ifndef ZELUTIL_PLATFORM_ENVIRONMENT_H
#define ZELUTIL_PLATFORM_ENVIRONMENT_H

#include <optional>
#include <string>

/// The process's environment. The rules for paths are those of platform.h.
namespace zelutil::platform {

/// Text of the variable as it stands, or nothing when it is not defined. Defined but empty is a value.
std::optional<std::string> environment(const char* name);

/// The same for a variable that holds one whole path: the value comes as a Windows text.
std::optional<std::string> environmentPath(const char* name);

/// The same for a list of directories: the entries are Windows texts separated by ";".
std::optional<std::string> environmentPathList(const char* name);

/// Directory for temporary files where the environment names none.
const char* fixedTemporaryDirectory();

}  // namespace zelutil::platform

#endif
