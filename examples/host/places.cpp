#include <cstdio>

#include "chapters.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/file/path.h>

namespace {

using ZelU::File::Hierarchy;
using ZelU::File::Path;

constexpr char kSettingsDirectory[] = "share/qtxsetup/canvas/resources/tessel/";
constexpr char kSettingsFile[] = "tessel_settings.cfg";

void showFile(const char* what, const Path& path) {
    if (!path.Exists()) {
        std::printf("  %-22s %s (not there)\n", what, static_cast<const char*>(path));
        return;
    }
    std::printf("  %-22s %s (%lld bytes)\n", what, static_cast<const char*>(path), static_cast<long long>(path.Size()));
}

}  // namespace

void showPlaces() {
    std::puts(
        "Places\n  The first lines are the library's own trace; it shows them while QTX_ZELUTIL_DEBUG is defined.");
    std::fflush(stdout);
    const Path& root = Hierarchy::GetRoot();
    const Path& userDirectory = Hierarchy::GetPcbEnv();

    std::printf("  %-22s %s\n", "installation root", static_cast<const char*>(root));
    std::printf("  %-22s %s (HOMEDRIVE, HOMEPATH)\n", "user environment", static_cast<const char*>(userDirectory));
    showFile("shipped defaults", Hierarchy::FindFile(kSettingsFile, kSettingsDirectory));
    showFile("user's settings", userDirectory + "tessel" + kSettingsFile);
    showFile("facets", Hierarchy::FindFile("facet_settings.cfg", kSettingsDirectory));
}
