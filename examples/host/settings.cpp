#include <cstdio>
#include <string>

#include "chapters.h"

#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>

namespace {

const char* shown(const char* value) { return value == nullptr ? "-" : value; }

void showSetting(const char* name) {
    const std::string& merged = UserPreferenceManager::GetInstance().getUserPrefSetting(name);
    const char* const user = get_user_setting(name);
    std::printf("  %-36s %-14s %-14s %s\n", name, shown(user), shown(get_default_user_setting(name)),
                merged.empty() ? "(empty)" : merged.c_str());
}

}  // namespace

void showSettings() {
    std::printf("\nSettings\n  %-36s %-14s %-14s %s\n", "name", "in force", "default", "through the class");
    for (const char* const name : {// The user changed it; in full, in capitals, bare.
                                   "display::grids::grid", "DISPLAY::Grids::GRID", "grid", "Grid",
                                   // Not changed by the user.
                                   "general::locale::language", "language",
                                   // The section does not lend its settings bare names.
                                   "display::colors::background", "background",
                                   // Two sections have this name; only one of them lends it.
                                   "track_width", "editing::routing::diffpair::track_width",
                                   // A value of the user's under its full name, in another section's list.
                                   "editing::routing::diffpair::gap", "brisk3d::shadows",
                                   // Empty, and unknown: the C functions answer null for both.
                                   "autosave_directory", "no_such_setting"}) {
        showSetting(name);
    }
    std::printf("  %zu sections hold settings or belong to a sub-manager\n",
                UserPreferenceManager::GetInstance().getAllUserPrefUISettings().size());
}
