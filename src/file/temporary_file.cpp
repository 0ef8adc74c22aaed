#include <zelutil/file/path.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "platform/environment.h"
#include "util/process_wide.h"

namespace ZelU {
namespace File {
namespace {

/// A path whose file goes when the last handle to it goes.
struct DoomedFile {
    explicit DoomedFile(const Path& doomed) : path(doomed) {}
    DoomedFile(const DoomedFile&) = delete;
    DoomedFile& operator=(const DoomedFile&) = delete;
    ~DoomedFile() {
        try {
            path.DeleteTheFile();
        } catch (const std::bad_alloc&) {
            // The file stays; it is too late to tell anybody.
        }
    }

    Path path;
};

using DeletionList = std::vector<std::shared_ptr<DoomedFile>>;

DeletionList& deletionList() {
    static zelutil::ProcessWide<DeletionList> list([] { return new DeletionList; });
    return list.get();
}

std::uint32_t nextNumber() {
    static std::atomic<std::uint32_t> counter{static_cast<std::uint32_t>(std::rand())};
    return counter++;
}

/// Kept deliberately: without a suffix the name ends in its dot. Part of the published behaviour; hosts may depend on
/// it.
std::string nextName(const std::string& suffix) {
    std::array<char, sizeof "Tmp00000000"> stem{};
    std::snprintf(stem.data(), stem.size(), "Tmp%08x", static_cast<unsigned>(nextNumber()));
    const bool hasDot = !suffix.empty() && suffix.front() == '.';
    return std::string(stem.data()) + (hasDot ? "" : ".") + suffix;
}

Path pathInEnvironment(const char* name) { return Path(zelutil::platform::environmentPath(name).value_or("")); }

Path chooseTemporaryDirectory() {
    for (const char* const name : {"TMP", "TEMP"}) {
        // Kept deliberately: a file counts too, and then there are no temporary files; a wrong variable is to be
        // noticed rather than to be passed over.
        Path directory = pathInEnvironment(name);
        if (directory.Exists()) {
            return directory;
        }
    }
    return Path(std::string(zelutil::platform::fixedTemporaryDirectory()));
}

}  // namespace

void Path::DeleteMeOnExit() {
    // The place first: a handle that finds none would take the file with it.
    DeletionList& list = deletionList();
    list.emplace_back();
    list.back() = std::make_shared<DoomedFile>(*this);
}

Path Path::GetTempFile(const Path& dir, bool deleteOnExit, const char* suffix) {
    if (!dir.IsDirectory()) {
        return {};
    }
    // Kept deliberately: a host's own sequence of std::rand starts anew here. A host that never seeds it draws other
    // numbers in each run because of this.
    std::srand(static_cast<unsigned>(std::clock()));
    // Kept deliberately: the suffix is a path text like others, which may add a directory or climb. The caller chose
    // it.
    const std::string ending = suffix == nullptr ? "" : suffix;
    Path candidate = dir + nextName(ending);
    while (candidate.Exists()) {
        Path next = dir + nextName(ending);
        // A suffix such as "/.." takes the name away again; counting on would not end.
        if (next == candidate) {
            return {};
        }
        candidate = next;
    }
    if (deleteOnExit) {
        candidate.DeleteMeOnExit();
    }
    return candidate;
}

Path Path::GetTempFile(bool deleteOnExit, const char* suffix) {
    static zelutil::ProcessWide<const Path> directory([] { return new const Path(chooseTemporaryDirectory()); });
    return GetTempFile(directory.get(), deleteOnExit, suffix);
}

}  // namespace File
}  // namespace ZelU
