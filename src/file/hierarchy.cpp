#include <zelutil/file/hierarchy.h>

#include <cstdio>
#include <string>

#include "common_library/common_library.h"
#include "file/hierarchy_root.h"
#include "platform/platform.h"

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

/// Kept deliberately: a text that begins with a single separator has the current directory put in front as it stands,
/// so that without a drive two separators meet there. Systems read them as one.
Path pcbEnvBelowHome() {
    const auto valueOf = [](const char* name) { return zelutil::platform::environment(name).value_or(""); };
    return Path(valueOf("HOMEDRIVE") + valueOf("HOMEPATH") + "/pcbenv");
}

}  // namespace

const Path& Hierarchy::GetRoot() {
    static Path root;
    if (root.Empty()) {
        zelutil::file::locateRoot(root);
    }
    if (zelutil::common_library::initDone()) {
        return root;
    }
    // A common library that is not ready may still change its mind, so the root is looked for again at the next call.
    // Kept deliberately: until it is ready every call answers what was found first, even the empty path, so that hosts
    // that start early all see one tree.
    static const Path saved = root;
    root = Path();
    return saved;
}

const Path& Hierarchy::GetPcbEnv() {
    static Path directory = pcbEnvBelowHome();
    if (directory.Empty()) {
        directory = pcbEnvBelowHome();
    }
    return directory;
}

}  // namespace ZelU::File
