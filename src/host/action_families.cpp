#include "host/action_families.h"

#include "actions/action_text.h"
#include "host/action_obstacles.h"
#include "json/writer.h"

#include <algorithm>
#include <numeric>
#include <set>

namespace zelutil::host {
namespace {

using actions::ActionCatalogue;

/// Sets that are joined one by one.
class JoinedSets {
public:
    explicit JoinedSets(std::size_t count) : above_(count) { std::iota(above_.begin(), above_.end(), std::size_t{0}); }

    std::size_t of(std::size_t member) {
        while (above_[member] != member) {
            above_[member] = above_[above_[member]];
            member = above_[member];
        }
        return member;
    }

    void join(std::size_t first, std::size_t second) { above_[of(first)] = of(second); }

private:
    std::vector<std::size_t> above_;
};

/// Joins the actions that meet at one shortcut of one keyboard, at one command or in one family.
class Grouping {
public:
    Grouping(const ShippedActions& shipped, const ActionState& aim)
        : shipped_(shipped), aim_(aim), sets_(shipped.inOrder().size()) {}

    std::vector<ActionGroup> groups() {
        joinFamiliesAndCommands();
        joinHolders();
        joinShortcuts();
        std::map<std::size_t, ActionGroup> bySet;
        for (std::size_t place = 0; place < shipped_.inOrder().size(); ++place) {
            bySet[sets_.of(place)].push_back(shipped_.inOrder()[place].id);
        }
        std::vector<ActionGroup> groups;
        for (auto& [set, ids] : bySet) {
            std::sort(ids.begin(), ids.end());
            groups.push_back(std::move(ids));
        }
        std::sort(groups.begin(), groups.end());
        return groups;
    }

private:
    using Place = std::pair<std::string_view, std::string_view>;

    /// Above it, who meets whom is not told apart any more.
    static constexpr std::size_t kMostMeetings = 400000;

    void joinFamiliesAndCommands() {
        std::map<Place, std::size_t> byCommand;
        std::unordered_map<int, std::size_t> byId;
        for (std::size_t place = 0; place < shipped_.inOrder().size(); ++place) {
            const ShippedAction& action = shipped_.inOrder()[place];
            placeOf_[action.id] = place;
            sets_.join(byCommand.try_emplace(Place(action.context, action.command), place).first->second, place);
            sets_.join(byId.try_emplace(action.id, place).first->second, place);
            if (action.parent > 0) {
                sets_.join(byId.try_emplace(action.parent, place).first->second, place);
            }
        }
    }

    void joinHolders() {
        for (const auto& [place, id] : aim_.holders) {
            const auto holder = placeOf_.find(id);
            if (holder != placeOf_.end()) {
                meet(holder->second, place.second);
            }
        }
    }

    /// A shortcut of an action can come to all below it.
    void joinShortcuts() {
        for (std::size_t place = 0; place < shipped_.inOrder().size(); ++place) {
            const ShippedAction& action = shipped_.inOrder()[place];
            std::set<std::string_view> shortcuts{action.values.shortcut};
            const auto found = aim_.values.find(action.id);
            if (found != aim_.values.end()) {
                shortcuts.insert(found->second.shortcut);
            }
            shortcuts.erase(std::string_view());
            spread(action, shortcuts);
        }
    }

    void spread(const ShippedAction& from, const std::set<std::string_view>& shortcuts) {
        if (shortcuts.empty()) {
            return;
        }
        std::vector<int> pending{from.id};
        while (!pending.empty()) {
            const std::size_t place = placeOf_[pending.back()];
            pending.pop_back();
            for (const std::string_view shortcut : shortcuts) {
                meet(place, shortcut);
            }
            if (meetings_ > kMostMeetings) {
                sets_.join(0, place);
                return;
            }
            for (const int child : shipped_.inOrder()[place].children) {
                if (child != from.id) {
                    pending.push_back(child);
                }
            }
        }
    }

    void meet(std::size_t place, std::string_view shortcut) {
        ++meetings_;
        const Place key(keyboardOf(shipped_.inOrder()[place].context), shortcut);
        sets_.join(byShortcut_.try_emplace(key, place).first->second, place);
    }

    const ShippedActions& shipped_;
    const ActionState& aim_;
    JoinedSets sets_;
    std::unordered_map<int, std::size_t> placeOf_;
    std::map<Place, std::size_t> byShortcut_;
    std::size_t meetings_ = 0;
};

}  // namespace

ShippedActions::ShippedActions(std::string_view text) : text_(text) {
    const actions::ObserverRegistry nobody;
    ActionCatalogue catalogue(nobody);
    catalogue.load(text_, {});
    loaded_ = stateOf(catalogue);
    actions::DefinitionReader reader(text_);
    actions::ActionDefinition definition;
    while (reader.next(definition)) {
        const ActionCatalogue::Action* const action = catalogue.find(definition.id);
        // An element that makes no sense defines no action, and of two with one id the first does.
        if (action == nullptr || action->id != definition.id || definition.parentId < 0 || definition.command.empty() ||
            definition.context.empty()) {
            continue;
        }
        add({definition.id,
             definition.parentId,
             std::string(definition.context),
             std::string(definition.command),
             {std::string(definition.shortcut), definition.inMenu},
             {},
             0});
    }
    linkChildren();
    measureDepths();
}

void ShippedActions::linkChildren() {
    for (const ShippedAction& action : actions_) {
        const auto parent = places_.find(action.parent);
        if (parent != places_.end()) {
            actions_[parent->second].children.push_back(action.id);
        }
    }
}

void ShippedActions::measureDepths() {
    std::vector<std::size_t> pending;
    for (std::size_t place = 0; place < actions_.size(); ++place) {
        if (places_.count(actions_[place].parent) == 0) {
            pending.push_back(place);
        }
    }
    while (!pending.empty()) {
        const ShippedAction& action = actions_[pending.back()];
        pending.pop_back();
        for (const int child : action.children) {
            const std::size_t place = places_[child];
            actions_[place].depth = action.depth + 1;
            pending.push_back(place);
        }
    }
}

void ShippedActions::add(const ShippedAction& action) {
    if (places_.try_emplace(action.id, actions_.size()).second) {
        actions_.push_back(action);
    }
}

const ShippedAction* ShippedActions::find(int id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? nullptr : &actions_[found->second];
}

int ShippedActions::topAbove(int id) const {
    int top = id;
    for (std::size_t steps = 0; steps < actions_.size(); ++steps) {
        const ShippedAction* const action = find(top);
        if (action == nullptr || action->parent < 1 || find(action->parent) == nullptr) {
            return top;
        }
        top = action->parent;
    }
    return id;
}

bool ShippedActions::alwaysFollows(const ShippedAction& action) const {
    // The pass over the children goes in ascending id, so each must come after all above it that have parents.
    const ShippedAction* below = &action;
    while (below->parent > 0) {
        const ShippedAction* const above = find(below->parent);
        if (above == nullptr) {
            return true;
        }
        if (above->parent > 0 && above->id >= below->id) {
            return false;
        }
        below = above;
    }
    return below != &action;
}

std::string shippedTextOf(const std::vector<const ShippedAction*>& actions) {
    json::CompactWriter writer;
    writer.beginObject();
    writer.key("actions");
    writer.beginArray();
    for (const ShippedAction* const action : actions) {
        writer.beginObject();
        writer.key("id");
        writer.integer(action->id);
        writer.key("parent_id");
        writer.integer(action->parent);
        writer.key("context");
        writer.text(action->context);
        writer.key("command");
        writer.text(action->command);
        writer.key("shortcut");
        writer.text(action->values.shortcut);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
    return writer.take().value_or(std::string());
}

std::vector<ActionGroup> groupsOf(const ShippedActions& shipped, const ActionState& aim) {
    return Grouping(shipped, aim).groups();
}

}  // namespace zelutil::host
