#include <zelutil/actions/action_manager.h>

#include "actions/action_catalogue.h"
#include "actions/manager_access.h"
#include "actions/observer_registry.h"
#include "actions/overwritable.h"
#include "util/process_wide.h"

using zelutil::actions::ActionCatalogue;
using zelutil::actions::ObserverRegistry;

struct UCPActionManager::State {
    ObserverRegistry observers;
    ActionCatalogue catalogue{observers};
};

ActionCatalogue& zelutil::actions::ManagerAccess::catalogueOf(UCPActionManager& manager) {
    return manager.state_->catalogue;
}

const ActionCatalogue& zelutil::actions::ManagerAccess::catalogueOf(const UCPActionManager& manager) {
    return manager.state_->catalogue;
}

UCPActionManager& UCPActionManager::instance() {
    // Local, so that it may use the private constructor and destructor.
    struct Holder {
        UCPActionManager manager;
    };
    static zelutil::ProcessWide<Holder> holder([] { return new Holder; });
    return holder.get().manager;
}

UCPActionManager::UCPActionManager() : state_(std::make_unique<State>()) {}

UCPActionManager::~UCPActionManager() = default;

void UCPActionManager::load(const std::string& defaultsText, const std::string& userText) {
    state_->catalogue.load(defaultsText, userText);
}

// NOLINTNEXTLINE(readability-const-return-type): the type is part of the interface.
const std::string UCPActionManager::getAllUserSettings() const { return state_->catalogue.userText(); }

bool UCPActionManager::isModified() const { return state_->catalogue.modified(); }

std::pair<bool, const UCPActionItem> UCPActionManager::getAction(int id) const {
    const ActionCatalogue::Action* const action = state_->catalogue.find(id);
    return {action != nullptr, action == nullptr ? UCPActionItem() : action->item()};
}

int UCPActionManager::getActionIdByCommand(const std::string& context, const std::string& command) const {
    return state_->catalogue.idByCommand(context, command);
}

int UCPActionManager::getActionIdByShortcut(const std::string& context, const std::string& shortcut) const {
    return state_->catalogue.idByShortcut(context, shortcut);
}

std::vector<UCPActionItem> UCPActionManager::getAllActions() const { return state_->catalogue.items(); }

std::vector<int> UCPActionManager::getChildActionIds(int id) const { return state_->catalogue.childIds(id); }

std::string UCPActionManager::getCommand(const std::string& context, const std::string& shortcut, bool fallback) const {
    return std::string(state_->catalogue.command(context, shortcut, fallback));
}

std::string UCPActionManager::getShortcut(int id) const {
    const ActionCatalogue::Action* const action = state_->catalogue.find(id);
    return action == nullptr ? std::string() : zelutil::actions::effectiveValue(action->shortcut);
}

std::vector<UCPActionItem> UCPActionManager::getRMBMenuItems() const { return state_->catalogue.menuItems(); }

int UCPActionManager::isShortcutTaken(int id, const std::string& shortcut) const {
    return state_->catalogue.shortcutTakenBy(id, shortcut);
}

bool UCPActionManager::updateShortcut(int id, const std::string& shortcut) {
    return state_->catalogue.updateShortcut(id, shortcut);
}

bool UCPActionManager::updateShortcut(const std::string& context, const std::string& command,
                                      const std::string& shortcut) {
    return state_->catalogue.updateShortcut(state_->catalogue.idByCommand(context, command), shortcut);
}

bool UCPActionManager::stealShortcut(int id, const std::string& shortcut) {
    return state_->catalogue.stealShortcut(id, shortcut);
}

void UCPActionManager::updateRMBMenu(int id, bool inMenu) { state_->catalogue.updateMenu(id, inMenu); }

bool UCPActionManager::attachObserver(int id, IUCPActionObserver* observer) {
    if (observer == nullptr || state_->catalogue.find(id) == nullptr) {
        return false;
    }
    state_->observers.attach(id, observer);
    return true;
}

bool UCPActionManager::attachObserver(IUCPActionObserver* observer) {
    if (observer == nullptr) {
        return false;
    }
    state_->observers.attach(ObserverRegistry::kAllActions, observer);
    return true;
}

void UCPActionManager::detachObserver(IUCPActionObserver* observer) { state_->observers.detach(observer); }
