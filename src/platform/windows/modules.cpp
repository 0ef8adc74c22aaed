// Modules on Windows. Order and contracts: modules.h.
#include "platform/modules.h"

#include <string_view>
#include <utility>

#include "platform/environment.h"
#include "platform/windows/system_text.h"
#include "platform/world.h"
#include "text/list.h"

namespace zelutil::platform {

using namespace windows;

namespace {

std::wstring ownModulePath() {
    HMODULE self = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(flags, reinterpret_cast<LPCWSTR>(&ownModulePath), &self) == 0) {
        return {};
    }
    return textOf([&](wchar_t* buffer, DWORD size) { return GetModuleFileNameW(self, buffer, size); }).value_or(L"");
}

HMODULE loadModuleAt(const std::wstring& path) {
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

/// Adds a place to the list of those that were looked at, where there is one. Returns the module.
HMODULE note(std::vector<ModulePlace>* places, ModulePlace::Kind kind, const std::wstring& file, HMODULE module) {
    if (places != nullptr) {
        places->push_back({kind, narrow(file), module != nullptr});
    }
    return module;
}

bool isAbsolute(std::wstring_view directory) {
    const auto isSeparator = [](wchar_t c) { return c == L'\\' || c == L'/'; };
    return directory.size() >= 3 && ((directory[1] == L':' && isSeparator(directory[2])) ||
                                     (isSeparator(directory[0]) && isSeparator(directory[1])));
}

/// The loader's own walk over PATH visits the current directory first, so the entries are visited here.
HMODULE loadModuleFromPath(const std::wstring& fileName, std::vector<ModulePlace>* places) {
    const std::wstring list = widen(environment("PATH").value_or(""));
    for (const std::wstring_view directory : text::split(std::wstring_view(list), L";")) {
        if (isAbsolute(directory)) {
            const std::wstring file = std::wstring(directory) + L'\\' + fileName;
            if (const HMODULE module = note(places, ModulePlace::Kind::Loader, file, loadModuleAt(file))) {
                return module;
            }
        }
    }
    return nullptr;
}

}  // namespace

std::string modulePath() {
    std::string own = narrow(ownModulePath());
    return worldInForce == nullptr ? own : worldInForce->modulePath(std::move(own));
}

void* openModule(const char* baseName, std::vector<ModulePlace>* places) {
    if (worldInForce != nullptr) {
        if (const auto module = worldInForce->openModule(baseName, places)) {
            return *module;
        }
    }
    const std::wstring fileName = widen(baseName) + L".dll";
    HMODULE module = nullptr;
    const bool loaded = GetModuleHandleExW(0, fileName.c_str(), &module) != 0;
    note(places, ModulePlace::Kind::Process, fileName, loaded ? module : nullptr);
    if (loaded) {
        return module;
    }
    const std::wstring own = ownModulePath();
    const std::size_t directoryEnd = own.rfind(L'\\');
    if (directoryEnd != std::wstring::npos) {
        const std::wstring file = own.substr(0, directoryEnd + 1) + fileName;
        module = note(places, ModulePlace::Kind::BesideLibrary, file, loadModuleAt(file));
    }
    if (module == nullptr) {
        module = note(places, ModulePlace::Kind::Loader, fileName,
                      LoadLibraryExW(fileName.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));
    }
    return module != nullptr ? module : loadModuleFromPath(fileName, places);
}

void* moduleFunction(void* module, const char* name) {
    if (worldInForce != nullptr) {
        if (const auto function = worldInForce->moduleFunction(module, name)) {
            return *function;
        }
    }
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

}  // namespace zelutil::platform
