#include "file/installed_file.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>

#include "file/hierarchy_search.h"
#include "file/path_form.h"

namespace zelutil::file {
namespace {

constexpr char kDirectory[] = "share/qtxsetup/canvas/resources/tessel/";

}  // namespace

std::string installedSettingsFile(const char* name) {
    settlePathForm();
    try {
        // Kept deliberately: unless a host asked for plain paths, one with a blank comes in double quotes, which no
        // file has in its name, so that nothing is read below such a root. Part of the published behaviour; hosts may
        // depend on the values they get there.
        return textToOpen(ZelU::File::Hierarchy::FindFile(name, kDirectory));
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return {};
    }
}

std::string installedSettingsFile(const char* name, const ZelU::File::Path* root, text::SearchTrace& trace) {
    return textToOpen(findFile(name, kDirectory, root, trace));
}

ZelU::File::Path placeOfSettingsFile(const ZelU::File::Path& root, const char* name) {
    return root + kDirectory + name;
}

}  // namespace zelutil::file
