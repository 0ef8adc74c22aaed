#ifndef ZELUTIL_PLATFORM_WORLD_H
#define ZELUTIL_PLATFORM_WORLD_H

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "platform/modules.h"
#include "platform/native_paths.h"
#include "platform/replacement_name.h"

namespace zelutil::platform {

/// Stands between the seam and the machine, so that a program can note what is asked of its machine, or have another
/// machine's files and variables in their place. Functions of the seam that ask the system for one of these ask the
/// world too and return what that returns. A library that hosts load never has one.
class World {
public:
    /// Returns the value of a variable as the world has it. `own` is that of this process.
    virtual std::optional<std::string> variable(const char* name, std::optional<std::string> own) = 0;

    /// Returns the current directory; `own` is that of this process, and empty where the system does not tell.
    virtual NativeText directory(NativeText own) = 0;

    /// Returns where this machine has the file that has this path in the world. The path may be relative.
    virtual NativeText file(NativeText path) = 0;

    /// Returns whether the user may read the file with this path, as far as the world knows; true where this machine is
    /// to be asked.
    virtual bool mayRead(NativeText path) = 0;

    /// Returns what `platform::modulePath` returns; `own` is that of this process.
    virtual std::string modulePath(std::string own) = 0;

    /// Returns what `platform::openModule` returns, and fills its places; nothing where this machine is to be asked.
    virtual std::optional<void*> openModule(const char* baseName, std::vector<ModulePlace>* places) = 0;

    /// Returns a function of a module that `openModule` returned; nothing for one that the machine has opened.
    virtual std::optional<void*> moduleFunction(void* module, const char* name) = 0;

    // Programs ask this about files beside the seam. `own` is what the machine itself says of the file in its place.

    /// Returns whether the user may write the file or directory.
    virtual bool mayWrite(NativeText path, bool own) = 0;

    /// Returns why something may be there that the system does not tell of; `std::errc()` where nothing hides it.
    virtual std::errc hiddenBy(NativeText path, std::errc own) = 0;

protected:
    ~World() = default;
};

/// The world in force; null, where there is none, means the machine itself. To be changed while nothing else uses the
/// seam.
inline World* worldInForce = nullptr;

/// Returns where this machine has the file that has this path: for what is done with files beside the seam.
inline std::filesystem::path placeInWorld(const std::filesystem::path& path) {
    return worldInForce == nullptr ? path : std::filesystem::path(worldInForce->file(path.native()));
}

/// Returns whether the world in force lets the file that the text names be read.
inline bool mayReadInWorld(const char* text) {
    return worldInForce == nullptr || worldInForce->mayRead(nativePathOf(text).native());
}

/// Has the machine itself in force for its lifetime: for files that are this machine's whatever the world is.
class OutsideTheWorld {
public:
    OutsideTheWorld() : world_(worldInForce) { worldInForce = nullptr; }
    OutsideTheWorld(const OutsideTheWorld&) = delete;
    OutsideTheWorld& operator=(const OutsideTheWorld&) = delete;
    ~OutsideTheWorld() { worldInForce = world_; }

private:
    World* world_;
};

}  // namespace zelutil::platform

#endif
