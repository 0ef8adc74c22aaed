#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "chapters.h"
#include "text_difference.h"
#include "user_file.h"

#include <zelutil/actions/action_manager.h>
#include <zelutil/actions/action_observer.h>
#include <zelutil/c_api.h>
#include <zelutil/host/observers.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

namespace {

using SubManagerType = UserPreferenceManager::SubManagerType;
using zelutil::host::NotRestored;
using zelutil::host::SaveResult;
using zelutil::host::Subscription;

constexpr int kMove = 19;
constexpr int kZoomToFit = 33;
constexpr int kMeasure = 37;
constexpr int kCopperArea = 52;
constexpr int kFanOut = 51;

/// Prints what it is told; a host would refresh its menus and views.
class Listener : public IUCPActionObserver,
                 public ZelU::Marl::IUserPreferenceObserver,
                 public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    void onShortcutChanged(int actionId, const std::string& oldShortcut, const std::string& newShortcut) override {
        std::printf("    heard: action %d, shortcut \"%s\" -> \"%s\"\n", actionId, oldShortcut.c_str(),
                    newShortcut.c_str());
    }

    void onRMBMenuChanged(int actionId, bool inMenu) override {
        std::printf("    heard: action %d is %s the menu\n", actionId, inMenu ? "in" : "out of");
    }

    void onUserSettingsChanged(const std::set<std::string>& changedNames) override {
        for (const std::string& name : changedNames) {
            std::printf("    heard: setting %s\n", name.c_str());
        }
    }

    void onSubManagerSettingsChanged(const std::map<SubManagerType, std::string>& changedTexts) override {
        for (const auto& [type, text] : changedTexts) {
            std::printf("    heard: sub-manager %d, %zu bytes\n", static_cast<int>(type), text.size());
        }
    }
};

/// Has the listener told of everything for as long as the subscriptions live.
std::vector<Subscription> attach(Listener& listener) {
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(zelutil::host::observe(static_cast<IUCPActionObserver&>(listener)));
    subscriptions.push_back(zelutil::host::observe(static_cast<ZelU::Marl::IUserPreferenceObserver&>(listener)));
    subscriptions.push_back(
        zelutil::host::observe(static_cast<ZelU::Marl::IUserPreferenceSubManagerObserver&>(listener)));
    return subscriptions;
}

void rebind(UCPActionManager& actions, int id, const char* shortcut) {
    const std::string name = actions.getAction(id).second.name;
    std::printf("  %s to %s\n", name.c_str(), shortcut);
    if (const int holder = actions.isShortcutTaken(id, shortcut)) {
        std::printf("    refused: %s has it in %s\n", actions.getAction(holder).second.name.c_str(),
                    actions.getAction(holder).second.context.c_str());
        return;
    }
    actions.updateShortcut(id, shortcut);
}

/// Gives each of two actions the other's shortcut, for which one of them is without any in between.
void swapShortcuts(UCPActionManager& actions, int one, int other) {
    const std::string ofOne = actions.getShortcut(one);
    const std::string ofOther = actions.getShortcut(other);
    std::printf("  %s and %s swap %s and %s\n", actions.getAction(one).second.name.c_str(),
                actions.getAction(other).second.name.c_str(), ofOne.c_str(), ofOther.c_str());
    actions.updateShortcut(one, "");
    actions.updateShortcut(other, ofOne);
    actions.updateShortcut(one, ofOther);
}

/// Shows what a host tells its user after a save.
void showResult(const SaveResult& result) {
    std::printf("  %s\n", result.text.c_str());
    for (const NotRestored& item : result.notRestored) {
        std::printf("  will not come back: %s\n", item.text.c_str());
    }
}

void save(const std::map<std::string, std::string>& settings) {
    for (const auto& [name, value] : settings) {
        const char* const before = get_user_setting(name.c_str());
        std::printf("  %s: %s -> %s\n", name.c_str(), before == nullptr ? "(empty)" : before, value.c_str());
    }
    const std::string fileBefore = readUserFile();
    showResult(zelutil::host::save(settings));
    std::puts("  what changed in the user's file:");
    printDifference(fileBefore, readUserFile());
}

}  // namespace

void editAndSave() {
    std::puts("\nEditing");
    Listener listener;
    const std::vector<Subscription> attached = attach(listener);
    UCPActionManager& actions = UCPActionManager::instance();
    rebind(actions, kMove, "T");
    rebind(actions, kMove, "P");  // held in the linked context
    rebind(actions, kMove, "Shift+M");
    rebind(actions, kZoomToFit, "Ctrl+End");  // its children in other editors follow
    swapShortcuts(actions, kMeasure, kCopperArea);
    std::puts("  Fan-out into the menu");
    actions.updateRMBMenu(kFanOut, true);

    std::puts("\nSaving");
    save({{"autosave_interval", "60"}, {"GRID", "0.25"}, {"display::colors::background", "#202020"}, {"units", "mil"}});
}

void showReadBack() {
    std::puts("\nA process started after the save reads");
    for (const char* const name : {"autosave_interval", "grid", "display::colors::background", "units"}) {
        const char* const value = get_user_setting(name);
        std::printf("  %-30s %s\n", name, value == nullptr ? "-" : value);
    }
    UCPActionManager& actions = UCPActionManager::instance();
    for (const int id : {kMove, kZoomToFit, kMeasure, kCopperArea, kFanOut}) {
        const UCPActionItem action = actions.getAction(id).second;
        std::printf("  %-30s %s%s\n", action.name.c_str(), actions.getShortcut(id).c_str(),
                    action.rmb.overwritten ? " (menu changed)" : "");
    }
}
