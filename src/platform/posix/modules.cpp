// Modules on POSIX systems. Order and contracts: modules.h.
#include "platform/modules.h"

#include <dlfcn.h>
#include <link.h>
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

/// Returns the dynamic section of a loaded module; null where it has none.
const ElfW(Dyn) * dynamicSectionOf(const dl_phdr_info& module) {
    for (const ElfW(Phdr)* header = module.dlpi_phdr; header != module.dlpi_phdr + module.dlpi_phnum; ++header) {
        if (header->p_type == PT_DYNAMIC) {
            return reinterpret_cast<const ElfW(Dyn)*>(module.dlpi_addr + header->p_vaddr);
        }
    }
    return nullptr;
}

/// Returns the name that a loaded module bears in itself; null where it bears none.
const char* ownNameOf(const dl_phdr_info& module) {
    const ElfW(Dyn)* const section = dynamicSectionOf(module);
    ElfW(Addr) texts = 0;
    const ElfW(Dyn)* name = nullptr;
    for (const ElfW(Dyn)* entry = section; entry != nullptr && entry->d_tag != DT_NULL; ++entry) {
        texts = entry->d_tag == DT_STRTAB ? entry->d_un.d_ptr : texts;
        name = entry->d_tag == DT_SONAME ? entry : name;
    }
    // Some loaders leave addresses as they are in the file, and all do in what the kernel maps.
    texts += texts < module.dlpi_addr ? module.dlpi_addr : 0;
    return name == nullptr ? nullptr : reinterpret_cast<const char*>(texts + name->d_un.d_val);
}

/// Returns 1, so that no more are visited, where the module's file or the module itself has the name.
int hasName(dl_phdr_info* module, std::size_t /*size*/, void* name) {
    const std::string_view wanted = *static_cast<const std::string*>(name);
    const std::string_view path = module->dlpi_name == nullptr ? "" : module->dlpi_name;
    const char* const own = ownNameOf(*module);
    return path.substr(path.rfind('/') + 1) == wanted || (own != nullptr && own == wanted) ? 1 : 0;
}

/// Returns the module of that name that is in the process; null for none. Whether one that is called so counts, the
/// loader knows. Asked for a name that no module has, it would look for a file through all its directories: 150 to 190
/// microseconds the first time, for nothing where the module stands beside this library, and 20 more where it is
/// nowhere: "start with 100 settings" of bench/start_bench.cpp.
void* loadedModule(const std::string& fileName) {
    std::string name = fileName;
    return ::dl_iterate_phdr(hasName, &name) == 0 ? nullptr
                                                  : ::dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
}

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
    void* const loaded = loadedModule(fileName);
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
