#include <zelutil/actions/action_manager.h>
#include <zelutil/host/actions.h>

#include "actions/manager_access.h"
#include "actions/overwritable.h"
#include "host/action_families.h"
#include "host/current_preferences.h"

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

const ActionCatalogue& catalogue() { return actions::ManagerAccess::catalogueOf(UCPActionManager::instance()); }

/// The first use of the preferences fills the actions; what a host has loaded itself it would replace.
const ActionCatalogue& filledCatalogue() {
    if (catalogue().loads() == 0) {
        currentPreferences();
    }
    return catalogue();
}

/// Returns whether the action is bound to the shortcut that it shows. It is not where another action was in the way.
bool isBoundToItsOwn(const ActionCatalogue::Action& action) {
    return action.binding == nullptr || action.boundTo() == actions::effectiveValue(action.shortcut);
}

/// Returns whether the child was edited alone, which gives it another shortcut than its parent's until the next load. A
/// child that could not follow its parent shows another one, too.
bool isEditedAlone(const ActionCatalogue::Action& child) {
    const ActionCatalogue::Action* const parent = catalogue().find(child.parentId);
    return parent != nullptr && actions::effectiveValue(parent->shortcut) != actions::effectiveValue(child.shortcut) &&
           isBoundToItsOwn(*parent) && isBoundToItsOwn(child);
}

ShortcutSource sourceOf(const ActionCatalogue::Action& action) {
    if (action.id == 0) {
        return ShortcutSource::StandIn;
    }
    if (action.parentId > 0) {
        return isEditedAlone(action) ? ShortcutSource::User : ShortcutSource::Parent;
    }
    return action.shortcut.overwritten ? ShortcutSource::User : ShortcutSource::Shipped;
}

ActionInfo infoOf(int id, const ActionCatalogue::Action& action) {
    ActionInfo info;
    info.id = id;
    info.item = action.item();
    info.shortcut = actions::effectiveValue(action.shortcut);
    info.inMenu = actions::effectiveValue(action.rmb);
    info.shippedShortcut = action.shortcut.defaultValue;
    info.shippedInMenu = action.rmb.defaultValue;
    info.source = sourceOf(action);
    const int holder = info.shortcut.empty() ? 0 : catalogue().idByShortcut(action.contextName(), info.shortcut);
    info.runs = holder != 0 && holder == id;
    info.heldBy = info.runs ? 0 : holder;
    return info;
}

/// Only the shipped text still knows what a child had before it took over its parent's.
void setShipped(ActionInfo& info, const ShippedActions& shipped) {
    const ShippedAction* const action = shipped.find(info.id);
    if (action != nullptr) {
        info.shippedShortcut = action->values.shortcut;
        info.shippedInMenu = action->values.inMenu;
    }
}

}  // namespace

std::vector<ActionInfo> actions() {
    const ShippedActions shipped(filledCatalogue().texts().defaults);
    std::vector<ActionInfo> infos;
    catalogue().forEachAction([&](int id, const ActionCatalogue::Action& action) {
        infos.push_back(infoOf(id, action));
        setShipped(infos.back(), shipped);
    });
    return infos;
}

std::optional<ActionInfo> action(int id) {
    const ActionCatalogue::Action* const found = filledCatalogue().find(id);
    if (found == nullptr) {
        return std::nullopt;
    }
    ActionInfo info = infoOf(id, *found);
    if (found->parentId > 0) {
        setShipped(info, ShippedActions(catalogue().texts().defaults));
    }
    return info;
}

}  // namespace zelutil::host
