#include "command/shortcuts/shortcut_table.h"

#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "actions/manager_access.h"
#include "host/action_families.h"

namespace zelutil::shortcuts {
namespace {

using host::ActionInfo;
using host::ShortcutSource;

std::string ofAction(int id) { return "action " + std::to_string(id); }

/// Returns where the shortcut comes from, whatever it runs.
std::string originOf(const ShortcutRow& row) {
    const ActionInfo& action = row.action;
    const bool isNone = action.shortcut.empty();
    switch (action.source) {
        case ShortcutSource::Shipped:
            return isNone ? "shipped without a shortcut" : "shipped";
        case ShortcutSource::User:
            return isNone ? "taken away by the user" : "given by the user";
        case ShortcutSource::Parent:
            return "taken over from " + ofAction(action.item.parent_id) +
                   (row.changedByUser ? ", which the user changed" : "");
        case ShortcutSource::StandIn:
            break;
    }
    return "stands in for a parent that is missing";
}

std::string whyOf(const ShortcutRow& row) {
    std::string why = originOf(row);
    if (!row.action.shortcut.empty() && !row.action.runs) {
        why += row.action.heldBy == 0 ? "; runs nothing" : "; runs " + ofAction(row.action.heldBy) + " instead";
    }
    return why;
}

/// Holds what a start without the user's changes gives.
class WithoutUser {
public:
    WithoutUser() : shipped_(actions::ManagerAccess::catalogueOf(UCPActionManager::instance()).texts().defaults) {}

    ShortcutRow rowOf(ActionInfo action) const {
        const host::ActionValues& values = host::valuesOf(shipped_.loaded(), action.id);
        ShortcutRow row;
        row.shortcutWithoutUser = values.shortcut;
        row.changedByUser = action.shortcut != row.shortcutWithoutUser;
        row.menuChangedByUser = action.inMenu != values.inMenu;
        row.runsChangedByUser = !row.changedByUser && action.runs != runs(action);
        row.action = std::move(action);
        row.why = whyOf(row);
        return row;
    }

private:
    /// Returns whether the action holds the shortcut that it shows now.
    bool runs(const ActionInfo& action) const {
        const auto& holders = shipped_.loaded().holders;
        const auto found = holders.find({action.item.context, action.shortcut});
        return found != holders.end() && found->second == action.id;
    }

    host::ShippedActions shipped_;
};

}  // namespace

std::vector<ShortcutRow> shortcutTable() {
    std::vector<ActionInfo> actions = host::actions();
    const WithoutUser withoutUser;
    std::vector<ShortcutRow> rows;
    rows.reserve(actions.size());
    for (ActionInfo& action : actions) {
        rows.push_back(withoutUser.rowOf(std::move(action)));
    }
    std::sort(rows.begin(), rows.end(), [](const ShortcutRow& left, const ShortcutRow& right) {
        return std::tie(left.action.item.context, left.action.id) <
               std::tie(right.action.item.context, right.action.id);
    });
    return rows;
}

bool isChangedByUser(const ShortcutRow& row) {
    return row.changedByUser || row.menuChangedByUser || row.runsChangedByUser;
}

const ShortcutRow* findRow(const std::vector<ShortcutRow>& rows, int id) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [id](const ShortcutRow& row) { return row.action.id == id; });
    return found == rows.end() ? nullptr : &*found;
}

std::vector<std::string> contextsOf(const std::vector<ShortcutRow>& rows) {
    std::set<std::string> contexts;
    for (const ShortcutRow& row : rows) {
        if (!row.action.item.context.empty()) {
            contexts.insert(row.action.item.context);
        }
    }
    return {contexts.begin(), contexts.end()};
}

const char* nameOf(ShortcutSource source) {
    switch (source) {
        case ShortcutSource::Shipped:
            return "shipped";
        case ShortcutSource::User:
            return "user";
        case ShortcutSource::Parent:
            return "parent";
        case ShortcutSource::StandIn:
            break;
    }
    return "standIn";
}

void writeRow(command::JsonWriter& json, const ShortcutRow& row) {
    const ActionInfo& action = row.action;
    json.member("id", action.id);
    json.member("context", action.item.context);
    json.member("command", action.item.command);
    json.member("name", action.item.name);
    json.member("shortcut", action.shortcut);
    json.member("shippedShortcut", action.shippedShortcut);
    json.member("changedByUser", row.changedByUser);
    json.member("source", nameOf(action.source));
    json.member("parent", action.item.parent_id);
    json.member("inMenu", action.inMenu);
    json.member("shippedInMenu", action.shippedInMenu);
    json.member("menuChangedByUser", row.menuChangedByUser);
    json.member("runs", action.runs);
    json.member("runsChangedByUser", row.runsChangedByUser);
    json.member("heldBy", action.heldBy);
    json.member("why", row.why);
}

}  // namespace zelutil::shortcuts
