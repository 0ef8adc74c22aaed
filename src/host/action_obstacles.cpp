#include "host/action_obstacles.h"

#include <algorithm>
#include <optional>

namespace zelutil::host {
namespace {

std::string named(int id) { return "Action " + std::to_string(id); }

std::string keyText(const std::string& shortcut) {
    return shortcut.empty() ? std::string("no shortcut") : "the shortcut \"" + shortcut + "\"";
}

NotRestored obstacle(int id, Obstacle kind, int other, std::string text) {
    NotRestored result;
    result.action = id;
    result.obstacle = kind;
    result.otherAction = other;
    result.text = std::move(text);
    return result;
}

/// The one that holds the shortcut in the action's context or in the one linked with it.
int holderAround(const ActionState& reached, const std::string& context, const std::string& shortcut) {
    for (const std::string& place : {context, linkedContext(context)}) {
        const auto found = reached.holders.find(ActionState::Place(place, shortcut));
        if (found != reached.holders.end()) {
            return found->second;
        }
    }
    return 0;
}

/// The first action below that shows something else than it is to, and 0 for none.
int childBelow(const ShippedActions& shipped, const ActionState& aim, const ActionState& reached,
               const ShippedAction& action) {
    std::set<int> seen{action.id};
    std::vector<int> pending = action.children;
    while (!pending.empty()) {
        const int id = pending.back();
        pending.pop_back();
        if (!seen.insert(id).second) {
            continue;
        }
        const ShippedAction& child = *shipped.find(id);
        const int holder = holderAround(reached, child.context, valuesOf(aim, action.id).shortcut);
        if (holder != 0 && holder != id && holder != action.id && holder != child.parent) {
            return id;
        }
        pending.insert(pending.end(), child.children.begin(), child.children.end());
    }
    return 0;
}

int shippedWithSame(const ShippedActions& shipped, const ShippedAction& action, const std::string& shortcut) {
    const auto same = std::find_if(shipped.inOrder().begin(), shipped.inOrder().end(), [&](const ShippedAction& other) {
        return other.id != action.id && other.context == action.context && other.values.shortcut == shortcut;
    });
    return shortcut.empty() || action.values.shortcut != shortcut || same == shipped.inOrder().end() ? 0 : same->id;
}

NotRestored standInObstacle(int id) {
    return obstacle(id, Obstacle::FollowsParent, 0,
                    named(id) +
                        " is in no shipped text and only stands in for a parent; a new process starts it "
                        "without a shortcut and outside the menu.");
}

NotRestored parentObstacle(const ShippedActions& shipped, const ActionState& reached, const ShippedAction& action) {
    if (shipped.find(action.parent) == nullptr) {
        return obstacle(action.id, Obstacle::FollowsParent, action.parent,
                        named(action.id) + " belongs to action " + std::to_string(action.parent) +
                            ", which no shipped text defines, and starts without a shortcut and outside the menu.");
    }
    return obstacle(action.id, Obstacle::FollowsParent, action.parent,
                    named(action.id) + " takes over what action " + std::to_string(action.parent) +
                        " has and starts with " + keyText(valuesOf(reached, action.id).shortcut) +
                        (valuesOf(reached, action.id).inMenu ? ", in the menu." : ", outside the menu."));
}

}  // namespace

std::string linkedContext(const std::string& context) {
    const std::string_view linked = actions::ActionCatalogue::linkedContext(context);
    return linked.empty() ? context : std::string(linked);
}

std::string_view keyboardOf(std::string_view context) {
    const std::string_view linked = actions::ActionCatalogue::linkedContext(context);
    return linked.empty() ? context : std::min(context, linked);
}

bool followsAnother(const ShippedActions& shipped, const ActionState& aim, const std::set<int>& lost, int id) {
    const ShippedAction* const action = shipped.find(id);
    if (action == nullptr) {
        return true;
    }
    if (action->parent < 1 || !shipped.alwaysFollows(*action)) {
        return false;
    }
    if (shipped.find(action->parent) == nullptr) {
        return valuesOf(aim, id) != ActionValues();
    }
    return lost.count(action->parent) == 0 && valuesOf(aim, id) != valuesOf(aim, action->parent);
}

NotRestored obstacleOf(const ShippedActions& shipped, const ActionState& aim, const ActionState& reached, int id) {
    const ShippedAction* const action = shipped.find(id);
    if (action == nullptr) {
        return standInObstacle(id);
    }
    const ActionValues& wanted = valuesOf(aim, id);
    const bool hasParent = action->parent > 0;
    if (hasParent && (shipped.find(action->parent) == nullptr || wanted != valuesOf(aim, action->parent))) {
        return parentObstacle(shipped, reached, *action);
    }
    const int holder = holderAround(reached, action->context, wanted.shortcut);
    if (const int twin = shippedWithSame(shipped, *action, wanted.shortcut)) {
        return obstacle(id, Obstacle::ShippedTwice, twin,
                        named(id) + " and action " + std::to_string(twin) + " are both shipped with " +
                            keyText(wanted.shortcut) + ", and only one of them gets it at a start.");
    }
    if (holder != 0 && holder != id) {
        return obstacle(id, Obstacle::TakenByAnother, holder,
                        named(id) + " cannot have " + keyText(wanted.shortcut) + " at a start: action " +
                            std::to_string(holder) + " has it.");
    }
    if (const int child = childBelow(shipped, aim, reached, *action)) {
        return obstacle(id, Obstacle::ChildRefuses, child,
                        named(id) + " cannot have " + keyText(wanted.shortcut) + " at a start: its child " +
                            std::to_string(child) + " cannot follow.");
    }
    if (hasParent) {
        return parentObstacle(shipped, reached, *action);
    }
    return obstacle(id, Obstacle::TakenByAnother, holder == id ? 0 : holder,
                    named(id) + " starts with " + keyText(valuesOf(reached, id).shortcut) +
                        " where other actions have had a shortcut in turn.");
}

std::vector<NotRestored> notRestoredBy(const ShippedActions& shipped, const ActionState& aim,
                                       const ActionEntries& entries) {
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue catalogue(nobody);
    catalogue.load(shipped.text(), userTextOf(entries));
    const ActionState reached = stateOf(catalogue);
    std::set<int> ids = differentKeys(aim, reached);
    const std::set<int> flags = differentFlags(aim, reached);
    ids.insert(flags.begin(), flags.end());
    std::vector<NotRestored> named;
    for (const int id : ids) {
        named.push_back(obstacleOf(shipped, aim, reached, id));
    }
    return named;
}

}  // namespace zelutil::host
