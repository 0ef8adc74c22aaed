#include <cstdio>
#include <map>
#include <set>
#include <string>

#include "chapters.h"
#include "text_difference.h"
#include "user_file.h"

#include <zelutil/actions/action_manager.h>
#include <zelutil/actions/action_observer.h>
#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

namespace {

using SubManagerType = UserPreferenceManager::SubManagerType;
using ZelU::Marl::UserPreferenceServer;

constexpr int kMove = 19;
constexpr int kZoomToFit = 33;
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

/// Listens to everything for as long as it lives.
class Attached {
public:
    explicit Attached(Listener& listener) : listener_(listener) {
        UCPActionManager::instance().attachObserver(&listener_);
        UserPreferenceServer::getInstance().attach(static_cast<ZelU::Marl::IUserPreferenceObserver*>(&listener_));
        UserPreferenceServer::getInstance().attach(
            static_cast<ZelU::Marl::IUserPreferenceSubManagerObserver*>(&listener_));
    }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;
    ~Attached() {
        UCPActionManager::instance().detachObserver(&listener_);
        UserPreferenceServer::getInstance().detach(static_cast<ZelU::Marl::IUserPreferenceObserver*>(&listener_));
        UserPreferenceServer::getInstance().detach(
            static_cast<ZelU::Marl::IUserPreferenceSubManagerObserver*>(&listener_));
    }

private:
    Listener& listener_;
};

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

/// The actions' text for a save. Empty when no shortcut has changed since the start, and then nothing is passed on:
/// what the user's file holds for the actions stays. The text is read back only when it stands in an array.
std::map<SubManagerType, std::string> actionText(const UCPActionManager& actions) {
    const std::string edits = actions.getAllUserSettings();
    if (edits.empty()) {
        return {};
    }
    return {{SubManagerType::Actions, "[" + edits + "]"}};
}

void save(const std::map<std::string, std::string>& settings) {
    for (const auto& [name, value] : settings) {
        const char* const before = get_user_setting(name.c_str());
        std::printf("  %s: %s -> %s\n", name.c_str(), before == nullptr ? "(empty)" : before, value.c_str());
    }
    const std::string fileBefore = readUserFile();
    UserPreferenceManager::GetInstance().updateUserPrefSettings(settings, actionText(UCPActionManager::instance()));
    std::puts("  what changed in the user's file:");
    printDifference(fileBefore, readUserFile());
}

}  // namespace

void editAndSave() {
    std::puts("\nEditing");
    Listener listener;
    const Attached attached(listener);
    UCPActionManager& actions = UCPActionManager::instance();
    rebind(actions, kMove, "T");
    rebind(actions, kMove, "P");  // held in the linked context
    rebind(actions, kMove, "Shift+M");
    rebind(actions, kZoomToFit, "Ctrl+End");  // its children in other editors follow
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
    for (const int id : {kMove, kZoomToFit, kFanOut}) {
        const UCPActionItem action = actions.getAction(id).second;
        std::printf("  %-30s %s%s\n", action.name.c_str(), actions.getShortcut(id).c_str(),
                    action.rmb.overwritten ? " (menu changed)" : "");
    }
}
