#ifndef ZELUTIL_PLATFORM_MODULES_H
#define ZELUTIL_PLATFORM_MODULES_H

#include <string>
#include <vector>

/// This library's own file and the modules it binds at run time. The rules for paths are those of platform.h.
namespace zelutil::platform {

/// File name by which hosts load this library, without a directory: "zelutil.dll", "libzelutil.so". On Linux it is a
/// link to the file, whose name ends in the version.
const char* libraryFileName();

/// Full path of the file this code was loaded from (the library, or a program that holds it in static form); empty when
/// the system does not tell.
std::string modulePath();

/// A place where a module was looked for.
struct ModulePlace {
    enum class Kind { Process, BesideLibrary, Loader };

    Kind kind;
    /// The module's file; its name alone where only the loader knows where it looks.
    std::string file;
    bool taken;
};

/// The module with this base name ("qtxCommon" is qtxCommon.dll or libqtxCommon.so): the one already in the process,
/// else the one beside this library, else the one where the loader looks by default, never one of the current
/// directory. It stays loaded. Null when there is none. Not to be called while this library is being loaded or
/// unloaded.
///
/// Unless `places` is null, it gets what was looked at, in its order, up to the one that was taken.
void* openModule(const char* baseName, std::vector<ModulePlace>* places = nullptr);

/// The function of that C name in `module`, or null.
void* moduleFunction(void* module, const char* name);

}  // namespace zelutil::platform

#endif
