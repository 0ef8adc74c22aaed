// Modules on POSIX systems. Order and contracts: modules.h.
#include "platform/modules.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string_view>
#include <utility>

#include "platform/environment.h"
#include "platform/posix/drive_text.h"
#include "platform/world.h"
#include "text/list.h"

namespace zelutil::platform {
namespace {

/// Path of the file mapped at `address`, as the kernel lists it; empty where it lists none.
std::string mappedFileAt(const void* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);) {
        std::istringstream fields(line);
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        char dash = '\0';
        fields >> std::hex >> start >> dash >> end;
        const std::size_t path = line.find('/');
        if (start <= wanted && wanted < end && path != std::string::npos) {
            return line.substr(path);
        }
    }
    return {};
}

/// Path of the file that holds the code at `address`. The loader knows it as it was told, which may be relative to a
/// current directory that has changed since; then the kernel is asked.
std::string modulePathOf(const void* address) {
    Dl_info info{};
    const bool known = ::dladdr(address, &info) != 0 && info.dli_fname != nullptr;
    return known && info.dli_fname[0] == '/' ? info.dli_fname : mappedFileAt(address);
}

std::string ownModulePath() { return modulePathOf(reinterpret_cast<const void*>(&ownModulePath)); }

void* loadModuleAt(const std::string& path) { return ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); }

/// Adds a place to the list of those that were looked at, where there is one. Returns the module.
void* note(std::vector<ModulePlace>* places, ModulePlace::Kind kind, const std::string& file, void* module) {
    if (places != nullptr) {
        places->push_back({kind, textFromSystemPath(file), module != nullptr});
    }
    return module;
}

/// The loader's own walk over LD_LIBRARY_PATH takes an empty entry for the current directory, and visits relative ones
/// too. So the others are visited here, and the loader is asked only when none of these leads to such a file.
void* loadModuleByName(const std::string& fileName, std::vector<ModulePlace>* places) {
    const auto load = [places](const std::string& file) {
        return note(places, ModulePlace::Kind::Loader, file, loadModuleAt(file));
    };
    const std::string list = environment("LD_LIBRARY_PATH").value_or("");
    if (list.empty()) {
        return load(fileName);
    }
    bool isFoundFromHere = false;
    for (const std::string_view directory : text::split(std::string_view(list), ":;")) {
        const std::string file = directory.empty() ? fileName : std::string(directory) + '/' + fileName;
        if (file.front() != '/') {
            isFoundFromHere = isFoundFromHere || ::access(file.c_str(), F_OK) == 0;
        } else if (void* const module = load(file)) {
            return module;
        }
    }
    return isFoundFromHere ? nullptr : load(fileName);
}

}  // namespace

std::string modulePath() {
    std::string own = textFromSystemPath(ownModulePath());
    return worldInForce == nullptr ? own : worldInForce->modulePath(std::move(own));
}

void* openModule(const char* baseName, std::vector<ModulePlace>* places) {
    if (worldInForce != nullptr) {
        if (const auto module = worldInForce->openModule(baseName, places)) {
            return *module;
        }
    }
    const std::string fileName = std::string("lib") + baseName + ".so";
    void* const loaded = ::dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (note(places, ModulePlace::Kind::Process, fileName, loaded) != nullptr) {
        return loaded;
    }
    const std::string own = ownModulePath();
    const std::size_t directoryEnd = own.rfind('/');
    if (directoryEnd != std::string::npos) {
        const std::string file = own.substr(0, directoryEnd + 1) + fileName;
        if (void* const beside = note(places, ModulePlace::Kind::BesideLibrary, file, loadModuleAt(file))) {
            return beside;
        }
    }
    return loadModuleByName(fileName, places);
}

void* moduleFunction(void* module, const char* name) {
    if (worldInForce != nullptr) {
        if (const auto function = worldInForce->moduleFunction(module, name)) {
            return *function;
        }
    }
    return ::dlsym(module, name);
}

}  // namespace zelutil::platform
