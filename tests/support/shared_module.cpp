#include "support/shared_module.h"

#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace zelutil::test {

#ifdef _WIN32
std::string moduleFileName(const std::string& baseName) { return baseName + ".dll"; }

void* loadModule(const std::filesystem::path& file) {
    void* const module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return module != nullptr ? module : throw std::runtime_error("cannot load " + file.string());
}

void unloadModule(void* module) { FreeLibrary(static_cast<HMODULE>(module)); }

bool moduleIsLoaded(const std::filesystem::path& file) { return GetModuleHandleW(file.c_str()) != nullptr; }

void* functionOf(void* module, const char* name) {
    void* const function = reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
    return function != nullptr ? function : throw std::runtime_error(std::string("no function ") + name);
}
#else
std::string moduleFileName(const std::string& baseName) { return "lib" + baseName + ".so"; }

void* loadModule(const std::filesystem::path& file) {
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    return module != nullptr ? module : throw std::runtime_error(dlerror());
}

void unloadModule(void* module) { dlclose(module); }

bool moduleIsLoaded(const std::filesystem::path& file) {
    void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    if (module == nullptr) {
        return false;
    }
    dlclose(module);
    return true;
}

void* functionOf(void* module, const char* name) {
    void* const function = dlsym(module, name);
    return function != nullptr ? function : throw std::runtime_error(std::string("no function ") + name);
}
#endif

}  // namespace zelutil::test
