#include "common_library/common_library.h"

#include <array>

#include "platform/files.h"
#include "platform/modules.h"

namespace zelutil::common_library {
namespace {

constexpr char kModuleName[] = "qtxCommon";
constexpr std::size_t kToolsPathSize = 1024;
constexpr std::size_t kFoundPathSize = 2048;

constexpr char kGetToolsPathInBuf[] = "qtxGetToolsPathInBuf";
constexpr char kInitDone[] = "qtxInitDone";
constexpr char kInitialize[] = "wemInitialize";
constexpr char kSearch[] = "wemSearch";

/// The common library's functions; each is null where it is missing.
struct Functions {
    bool moduleIsThere = false;
    int (*getToolsPathInBuf)(char* buffer, int size, int reserved) = nullptr;
    int (*initDone)() = nullptr;
    int (*initialize)(void** handle, ...) = nullptr;
    int (*search)(void* handle, const char* relativeName, char* buffer, int bufferSize) = nullptr;
};

template <typename Function>
void bind(Function& function, void* module, const char* name) {
    function = reinterpret_cast<Function>(platform::moduleFunction(module, name));
}

Functions bindAll(std::vector<platform::ModulePlace>* places) {
    Functions functions;
    if (void* const module = platform::openModule(kModuleName, places)) {
        functions.moduleIsThere = true;
        bind(functions.getToolsPathInBuf, module, kGetToolsPathInBuf);
        bind(functions.initDone, module, kInitDone);
        bind(functions.initialize, module, kInitialize);
        bind(functions.search, module, kSearch);
    }
    return functions;
}

const Functions& functions(std::vector<platform::ModulePlace>* places = nullptr) {
    static const Functions bound = bindAll(places);
    return bound;
}

/// The path that `fill(buffer, size)` writes when it answers true. A text that fills the whole buffer is cut there.
template <std::size_t Size, typename Fill>
std::optional<std::string> pathWrittenBy(Fill fill) {
    std::array<char, Size> buffer{};
    if (!fill(buffer.data(), static_cast<int>(Size))) {
        return std::nullopt;
    }
    buffer.back() = '\0';
    return platform::fromSystemPath(buffer.data());
}

}  // namespace

std::optional<std::string> toolsPath() {
    const auto getToolsPathInBuf = functions().getToolsPathInBuf;
    return pathWrittenBy<kToolsPathSize>([&](char* buffer, int size) {
        return getToolsPathInBuf != nullptr && getToolsPathInBuf(buffer, size, 0) != 0;
    });
}

bool initDone() {
    const auto initDone = functions().initDone;
    return initDone == nullptr || initDone() != 0;
}

void locate(text::SearchTrace& trace) {
    using Source = text::Candidate::Source;
    using Verdict = text::Candidate::Verdict;
    std::vector<platform::ModulePlace> places;
    functions(&places);
    for (const platform::ModulePlace& place : places) {
        const Source source = place.kind == platform::ModulePlace::Kind::Process         ? Source::Process
                              : place.kind == platform::ModulePlace::Kind::BesideLibrary ? Source::BesideLibrary
                                                                                         : Source::Loader;
        trace.tell(source, place.taken ? Verdict::Taken : Verdict::NotThere, place.file.c_str());
    }
}

std::optional<std::vector<std::string>> missingFunctions() {
    const Functions& bound = functions();
    if (!bound.moduleIsThere) {
        return std::nullopt;
    }
    std::vector<std::string> missing;
    const auto look = [&](auto function, const char* name) {
        if (function == nullptr) {
            missing.emplace_back(name);
        }
    };
    look(bound.getToolsPathInBuf, kGetToolsPathInBuf);
    look(bound.initDone, kInitDone);
    look(bound.initialize, kInitialize);
    look(bound.search, kSearch);
    return missing;
}

std::optional<SetupPathSearch> SetupPathSearch::prepare() {
    const auto initialize = functions().initialize;
    void* handle = nullptr;
    if (initialize == nullptr || initialize(&handle) != 0) {
        return std::nullopt;
    }
    return SetupPathSearch(handle);
}

std::optional<std::string> SetupPathSearch::find(const char* relativeName) const {
    const auto search = functions().search;
    return pathWrittenBy<kFoundPathSize>(
        [&](char* buffer, int size) { return search != nullptr && search(handle_, relativeName, buffer, size) == 0; });
}

}  // namespace zelutil::common_library
