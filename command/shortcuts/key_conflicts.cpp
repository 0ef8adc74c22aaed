#include "command/shortcuts/key_conflicts.h"

#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "actions/manager_access.h"

namespace zelutil::shortcuts {
namespace {

using actions::ActionCatalogue;
using Kind = KeyConflict::Kind;

const ActionCatalogue& catalogueInForce() { return actions::ManagerAccess::catalogueOf(UCPActionManager::instance()); }

int inheritedFrom(const host::ActionInfo& action) {
    return action.source == host::ShortcutSource::Parent ? action.item.parent_id : 0;
}

/// Collects the conflicts, those of linked contexts once for both sides.
class ConflictSearch {
public:
    explicit ConflictSearch(const std::vector<ShortcutRow>& rows) {
        for (const ShortcutRow& row : rows) {
            actions_[row.action.id] = &row.action;
        }
        for (const ShortcutRow& row : rows) {
            lookAt(row.action);
        }
    }

    std::vector<KeyConflict> take() { return std::move(conflicts_); }

private:
    void lookAt(const host::ActionInfo& action) {
        if (action.shortcut.empty()) {
            return;
        }
        if (!action.runs && action.heldBy == 0) {
            add(Kind::HeldByNobody, action);
        }
        for (const int other : catalogueInForce().find(action.id)->allInTheWay(action.shortcut)) {
            const auto [first, second] = std::minmax(action.id, other);
            if (pairs_.emplace(action.shortcut, first, second).second) {
                addPair(action, *actions_.at(other));
            }
        }
    }

    KeyConflict& add(Kind kind, const host::ActionInfo& action) {
        KeyConflict& conflict = conflicts_.emplace_back();
        conflict.kind = kind;
        conflict.shortcut = action.shortcut;
        conflict.action = action.id;
        conflict.context = action.item.context;
        conflict.inheritedFrom = inheritedFrom(action);
        return conflict;
    }

    void addPair(const host::ActionInfo& action, const host::ActionInfo& other) {
        const bool isSame = action.item.context == other.item.context;
        KeyConflict& conflict = add(isSame ? Kind::SameContext : Kind::LinkedContext, action);
        conflict.other = other.id;
        conflict.otherContext = other.item.context;
        conflict.otherInheritedFrom = inheritedFrom(other);
    }

    std::map<int, const host::ActionInfo*> actions_;
    std::set<std::tuple<std::string, int, int>> pairs_;
    std::vector<KeyConflict> conflicts_;
};

}  // namespace

std::vector<KeyConflict> keyConflicts(const std::vector<ShortcutRow>& rows) { return ConflictSearch(rows).take(); }

const char* nameOf(Kind kind) {
    switch (kind) {
        case Kind::SameContext:
            return "sameContext";
        case Kind::LinkedContext:
            return "linkedContext";
        case Kind::HeldByNobody:
            break;
    }
    return "heldByNobody";
}

std::string effectOf(const KeyConflict& conflict) {
    const std::string origin =
        conflict.inheritedFrom == 0 ? "" : ", taken over from action " + std::to_string(conflict.inheritedFrom);
    switch (conflict.kind) {
        case Kind::SameContext:
            return "runs " + std::to_string(conflict.other) + " instead" + origin;
        case Kind::LinkedContext:
            return "also " + std::to_string(conflict.other) + " in " + conflict.otherContext + ", which is linked" +
                   origin;
        case Kind::HeldByNobody:
            break;
    }
    return "runs nothing" + origin;
}

void writeConflict(command::JsonWriter& json, const KeyConflict& conflict) {
    json.member("kind", nameOf(conflict.kind));
    json.member("shortcut", conflict.shortcut);
    json.member("action", conflict.action);
    json.member("context", conflict.context);
    json.member("inheritedFrom", conflict.inheritedFrom);
    json.member("other", conflict.other);
    json.member("otherContext", conflict.otherContext);
    json.member("otherInheritedFrom", conflict.otherInheritedFrom);
}

}  // namespace zelutil::shortcuts
