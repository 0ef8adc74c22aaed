#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "chapters.h"

#include <zelutil/c_api.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>
#include <zelutil/prefs/user_preference_manager.h>

namespace {

const char* shown(const char* value) { return value == nullptr ? "-" : value; }

void showSetting(const char* name) {
    const std::string& merged = UserPreferenceManager::GetInstance().getUserPrefSetting(name);
    const char* const user = get_user_setting(name);
    std::printf("  %-36s %-14s %-14s %s\n", name, shown(user), shown(get_default_user_setting(name)),
                merged.empty() ? "(empty)" : merged.c_str());
}

/// Settings as values of the host's types, with a fallback for what is none.
void showValues() {
    std::printf("  as values: grid %g, autosave %s, every %d seconds\n", zelutil::host::get<double>("grid", 0.635),
                zelutil::host::get<bool>("autosave", false) ? "on" : "off",
                zelutil::host::get<int>("autosave_interval", 600));
}

/// A preferences dialog would show these.
void showAll() {
    const std::vector<zelutil::host::SettingInfo> all = zelutil::host::settings();
    const auto isUsers = [](const zelutil::host::SettingInfo& setting) { return setting.setByUser; };
    std::printf("  %zu settings, %td of which the user set\n", all.size(),
                std::count_if(all.begin(), all.end(), isUsers));
    for (const zelutil::host::StartWarning& warning : zelutil::host::startWarnings()) {
        std::printf("  at the start: %s\n", warning.text.c_str());
    }
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
    showValues();
    showAll();
}
