#ifndef ZELUTIL_TESTS_SUPPORT_SHARED_MODULE_H
#define ZELUTIL_TESTS_SUPPORT_SHARED_MODULE_H

#include <filesystem>
#include <string>

namespace zelutil::test {

/// File name of a module: "libname.so", "name.dll".
std::string moduleFileName(const std::string& baseName);

/// Loads the module in the file, or raises its count when it is in the process already. Throws when it cannot.
void* loadModule(const std::filesystem::path& file);

/// Takes one load back.
void unloadModule(void* module);

/// Whether the process holds the module that was loaded from this file.
bool moduleIsLoaded(const std::filesystem::path& file);

/// The module's function of that name. Throws when it has none.
void* functionOf(void* module, const char* name);

template <typename Function>
Function functionOf(void* module, const char* name) {
    return reinterpret_cast<Function>(functionOf(module, name));
}

}  // namespace zelutil::test

#endif
