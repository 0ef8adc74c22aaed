#include <zelutil/file/hierarchy.h>

#include <atomic>
#include <cstdio>
#include <utility>

#include "common_library/common_library.h"
#include "file/hierarchy_root.h"
#include "file/hierarchy_search.h"
#include "file/kept_paths.h"
#include "util/process_wide.h"

namespace ZelU::File {

namespace Exceptions {

Base::~Base() = default;

HierarchyNotFound::HierarchyNotFound() {
    // Both streams: a host with a console shows the one, a host that logs its errors keeps the other.
    for (std::FILE* const stream : {stdout, stderr}) {
        std::fputs(
            "ERROR: Vorn Marl hierarchy root could not be located.\n"
            "Make sure <qtxroot>/tools/bin is included in the $PATH\n",
            stream);
        std::fflush(stream);
    }
}

HierarchyNotFound::~HierarchyNotFound() = default;

}  // namespace Exceptions

namespace {

/// The root, and which one is answered meanwhile. No lock is held while it is looked for: the common library may call
/// the host back, and the host any of our functions, on this thread or, waiting for it, on another. So two threads may
/// look at once; each returns what it found, and what is kept is always one whole path.
class InstallationRoot {
public:
    const Path& ask() {
        const Path* const known = root_;
        const Path& root = known != nullptr ? *known : locate();
        return zelutil::common_library::initDone() ? root : untilInitDone(root);
    }

    /// Returns the root that is in force without looking for it; null where there is none yet.
    const Path* inForce() const {
        const Path* const known = root_;
        const bool mayChange = known == nullptr && !zelutil::common_library::initDone();
        return mayChange ? first_.load() : known;
    }

private:
    const Path& locate() {
        Path path;
        const bool found = zelutil::file::locateRoot(path);
        const Path& root = kept_.keep(std::move(path));
        if (found) {
            root_ = root.Empty() ? nullptr : &root;
            return root;
        }
        // Kept deliberately: the last directory tried becomes the root, so that after a failure a host that asks again
        // gets that directory instead of another failure. What another thread has found meanwhile stays.
        if (!root.Empty()) {
            const Path* none = nullptr;
            root_.compare_exchange_strong(none, &root);
        }
        throw Exceptions::HierarchyNotFound();
    }

    /// A common library that is not ready may still change its mind, so the root is looked for again at the next call.
    /// Kept deliberately: until it is ready every call returns what was found first, even the empty path, so that all
    /// calls before then see one tree.
    const Path& untilInitDone(const Path& root) {
        const Path* first = nullptr;
        const bool isFirst = first_.compare_exchange_strong(first, &root);
        root_ = nullptr;
        return isFirst ? root : *first;
    }

    zelutil::file::KeptPaths kept_;
    /// Null until there is one that is not empty.
    std::atomic<const Path*> root_{nullptr};
    /// The first that was found before the common library was ready.
    std::atomic<const Path*> first_{nullptr};
};

class UserEnvironment {
public:
    const Path& ask() {
        if (const Path* const known = directory_) {
            return *known;
        }
        zelutil::text::NoTrace noTrace;
        const Path& directory = kept_.keep(zelutil::file::locateUserEnvironment(noTrace));
        const Path* known = nullptr;
        if (directory.Empty() || directory_.compare_exchange_strong(known, &directory)) {
            return directory;
        }
        return *known;
    }

private:
    zelutil::file::KeptPaths kept_;
    /// Null until there is one that is not empty.
    std::atomic<const Path*> directory_{nullptr};
};

InstallationRoot& installationRoot() {
    static zelutil::ProcessWide<InstallationRoot> root([] { return new InstallationRoot; });
    return root.get();
}

}  // namespace

const Path& Hierarchy::GetRoot() { return installationRoot().ask(); }

const Path& Hierarchy::GetPcbEnv() {
    static zelutil::ProcessWide<UserEnvironment> environment([] { return new UserEnvironment; });
    return environment.get().ask();
}

}  // namespace ZelU::File

const ZelU::File::Path* zelutil::file::rootInForce() { return ZelU::File::installationRoot().inForce(); }
