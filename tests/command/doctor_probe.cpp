// A host in small: prints, a line each, what the library returns for the searches that its arguments name.
#include <zelutil/file/hierarchy.h>
#include <zelutil/host/save.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <cstdio>
#include <map>
#include <string>

#include "common_library/common_library.h"
#include "facet/facet_groups.h"
#include "file/hierarchy_search.h"
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

std::string site() {
    zelutil::text::NoTrace nobody;
    const ZelU::File::Path directory(zelutil::file::siteText(nobody).value_or(""));
    return static_cast<const char*>(directory);
}

/// Returns where a file is found that a site and no installation has.
std::string fileOfSite() {
    const ZelU::File::Path file = Hierarchy::FindFile("of_site.txt", "share/local/tessel");
    return static_cast<const char*>(file);
}

std::string hasCommonLibrary() { return zelutil::common_library::missingFunctions() ? "yes" : "no"; }

std::string isInitialised() { return zelutil::common_library::initDone() ? "yes" : "no"; }

/// Says whether another value of the first setting comes into the user's file.
std::string isSaved() {
    const auto settings = zelutil::host::settings();
    if (settings.empty()) {
        return "no settings";
    }
    return zelutil::host::save({{settings.front().fullName, "of the probe"}}).ok() ? "yes" : "no";
}

const std::map<std::string, std::string (*)()> kSearches = {
    {"site", site},
    {"file-of-site", fileOfSite},
    {"common-library", hasCommonLibrary},
    {"initialised", isInitialised},
    {"saved", isSaved},
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
