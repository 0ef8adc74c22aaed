// A host in small: prints, a line each, what the library returns for the searches that its arguments name.
#include <zelutil/file/hierarchy.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdio>
#include <map>
#include <string>

#include "facet/facet_groups.h"
#include "file/installed_file.h"
#include "prefs/preference_files.h"

namespace {

using ZelU::File::Hierarchy;

std::string root() {
    try {
        return static_cast<const char*>(Hierarchy::GetRoot());
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return {};
    }
}

std::string standIn() {
    const std::string first = root();
    const std::string second = first.empty() ? root() : std::string();
    return second;
}

/// Says whether the start read the user's file or found none.
std::string isUserFileUnread() {
    for (const zelutil::host::StartWarning& warning : zelutil::host::startWarnings()) {
        if (warning.kind == zelutil::host::StartWarning::Kind::FileNotRead) {
            return "yes";
        }
    }
    return "no";
}

std::string areThereSections() {
    return UserPreferenceManager::GetInstance().getAllUserPrefUISettings().empty() ? "no" : "yes";
}

const std::map<std::string, std::string (*)()> kSearches = {
    {"root", root},
    {"stand-in", standIn},
    {"environment", [] { return std::string(static_cast<const char*>(Hierarchy::GetPcbEnv())); }},
    {"defaults", [] { return zelutil::prefs::defaultsFilePath(); }},
    {"user-file-read", [] { return zelutil::prefs::userFilePath(); }},
    {"user-file-written", zelutil::host::userFilePath},
    {"user-file-unread", isUserFileUnread},
    {"sections", areThereSections},
    {"facets", [] { return zelutil::file::installedSettingsFile(zelutil::facet::kFacetFileName); }},
};

}  // namespace

int main(int, char** arguments) {
    for (++arguments; *arguments != nullptr; ++arguments) {
        std::printf("%s %s\n", *arguments, kSearches.at(*arguments)().c_str());
    }
    return 0;
}
