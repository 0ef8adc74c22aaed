#include "actions/action_catalogue.h"

#include "actions/action_text.h"
#include "actions/overwritable.h"

#include <algorithm>
#include <iterator>

namespace zelutil::actions {
namespace {

/// What `command` falls back to.
constexpr std::string_view kFallbackContext = "ucpedit";
/// The context that is linked with it.
constexpr std::string_view kLinkedContext = "brisk3d";

const std::vector<int> kNoIds;

}  // namespace

// --- Loading --------------------------------------------------------------------------------------------------------

void ActionCatalogue::load(std::string_view defaultsText, std::string_view userText) {
    clear();
    loadDefaults(defaultsText);
    loadUserEntries(userText);
    updateFromParents();
}

void ActionCatalogue::clear() {
    contexts_.clear();
    actions_.clear();
    childIds_.clear();
    modified_ = false;
}

void ActionCatalogue::loadDefaults(std::string_view text) {
    DefinitionReader reader(text);
    ActionDefinition definition;
    while (reader.next(definition)) {
        define(definition);
    }
}

void ActionCatalogue::define(const ActionDefinition& definition) {
    if (definition.id < 1 || definition.parentId < 0 || definition.command.empty() || definition.context.empty()) {
        return;
    }
    const std::size_t before = actions_.size();
    Action& action = actions_.try_emplace(actions_.end(), definition.id)->second;
    if (actions_.size() == before) {
        return;
    }
    UCPActionItem& item = action.item;
    item.id = definition.id;
    item.parent_id = definition.parentId;
    item.name = definition.name;
    item.icon = definition.icon;
    item.context = definition.context;
    item.command = definition.command;
    item.shortcut.defaultValue = definition.shortcut;
    item.rmb.defaultValue = definition.inMenu;
    if (item.parent_id > 0) {
        childIds_[item.parent_id].push_back(item.id);
    }
    index(action);
}

/// The first with a command, and the first with a shortcut, has it.
void ActionCatalogue::index(Action& action) {
    const UCPActionItem& item = action.item;
    action.context = &contexts_.try_emplace(item.context, &nodes_).first->second;
    const auto [binding, added] = action.context->bindings.try_emplace(item.command);
    action.binding = &binding->second;
    const std::string& shortcut = item.shortcut.defaultValue;
    if (added) {
        binding->second = {shortcut, item.id};
    }
    if (!shortcut.empty()) {
        action.context->holders.try_emplace(shortcut, Holder{item.command, item.id});
    }
}

void ActionCatalogue::loadUserEntries(std::string_view text) {
    UserEntryReader reader(text);
    UserEntry entry;
    while (reader.next(entry)) {
        if (entry.shortcut) {
            updateShortcut(entry.id, std::string(*entry.shortcut));
        }
        if (entry.inMenu) {
            updateMenu(entry.id, *entry.inMenu);
        }
    }
}

/// Kept deliberately: one pass in ascending id, not down the tree. A grandchild with a lower id than its parent takes
/// over the parent's menu flag and name as they are before the parent has taken over its own parent's.
void ActionCatalogue::updateFromParents() {
    std::vector<int> children;
    for (const auto& [parent, ids] : childIds_) {
        children.insert(children.end(), ids.begin(), ids.end());
    }
    std::sort(children.begin(), children.end());
    for (const int id : children) {
        takeOverFromParent(id);
    }
}

void ActionCatalogue::takeOverFromParent(int id) {
    Action* const child = find(id);
    // Where an observer has loaded anew meanwhile, the id may be gone or top-level.
    if (child == nullptr || child->item.parent_id < 1) {
        return;
    }
    const UCPActionItem& parent = parentOf(*child).item;
    child->item.shortcut = parent.shortcut;
    child->item.rmb = parent.rmb;
    if (child->item.name.empty()) {
        child->item.name = parent.name;
    }
    // Kept deliberately: the item has the parent's shortcut by now, also where the context refuses it. The answer is
    // not looked at, so where nothing would change the question for conflicts is saved.
    const std::string shortcut = effectiveValue(child->item.shortcut);
    if (child->binding->shortcut != shortcut) {
        updateShortcut(id, shortcut);
    }
}

/// Kept deliberately: for a parent that no text defines an empty item with id 0 is put under the parent's id and stays.
ActionCatalogue::Action& ActionCatalogue::parentOf(const Action& child) {
    const auto [parent, missing] = actions_.try_emplace(child.item.parent_id);
    if (missing) {
        index(parent->second);
    }
    return parent->second;
}

// --- Queries --------------------------------------------------------------------------------------------------------

const ActionCatalogue::Action* ActionCatalogue::find(int id) const {
    const auto found = actions_.find(id);
    return found == actions_.end() ? nullptr : &found->second;
}

ActionCatalogue::Action* ActionCatalogue::find(int id) {
    const auto found = actions_.find(id);
    return found == actions_.end() ? nullptr : &found->second;
}

const ActionCatalogue::Context* ActionCatalogue::findContext(std::string_view name) const {
    const auto found = contexts_.find(name);
    return found == contexts_.end() ? nullptr : &found->second;
}

const UCPActionItem* ActionCatalogue::item(int id) const {
    const Action* const action = find(id);
    return action == nullptr ? nullptr : &action->item;
}

std::vector<UCPActionItem> ActionCatalogue::items() const {
    std::vector<UCPActionItem> items;
    items.reserve(actions_.size());
    for (const auto& [id, action] : actions_) {
        items.push_back(action.item);
    }
    return items;
}

std::vector<UCPActionItem> ActionCatalogue::menuItems() const {
    std::vector<UCPActionItem> items;
    for (const auto& [id, action] : actions_) {
        if (effectiveValue(action.item.rmb)) {
            items.push_back(action.item);
        }
    }
    return items;
}

const std::vector<int>& ActionCatalogue::childIds(int id) const {
    const auto found = childIds_.find(id);
    return found == childIds_.end() ? kNoIds : found->second;
}

int ActionCatalogue::idByCommand(std::string_view context, std::string_view command) const {
    const Context* const names = findContext(context);
    if (names == nullptr) {
        return 0;
    }
    const auto found = names->bindings.find(command);
    return found == names->bindings.end() ? 0 : found->second.id;
}

const ActionCatalogue::Holder* ActionCatalogue::findHolder(std::string_view context,
                                                           const std::string& shortcut) const {
    const Context* const names = findContext(context);
    if (names == nullptr) {
        return nullptr;
    }
    const auto found = names->holders.find(shortcut);
    return found == names->holders.end() ? nullptr : &found->second;
}

int ActionCatalogue::idByShortcut(std::string_view context, const std::string& shortcut) const {
    const Holder* const holder = findHolder(context, shortcut);
    return holder == nullptr ? 0 : holder->id;
}

std::string_view ActionCatalogue::command(std::string_view context, const std::string& shortcut, bool fallback) const {
    if (shortcut.empty()) {
        return {};
    }
    const Holder* holder = findHolder(context, shortcut);
    if (holder == nullptr && fallback) {
        holder = findHolder(kFallbackContext, shortcut);
    }
    return holder == nullptr ? std::string_view() : holder->command;
}

std::string ActionCatalogue::userText() const {
    if (!modified_) {
        return {};
    }
    UserTextWriter writer;
    for (const auto& [id, action] : actions_) {
        if (action.item.parent_id == 0 && action.item.hasOverwrite()) {
            writer.add(action.item);
        }
    }
    return writer.text();
}

// --- Conflicts ------------------------------------------------------------------------------------------------------

const ActionCatalogue::Context* ActionCatalogue::linkedContext(std::string_view name) const {
    if (name == kLinkedContext) {
        return findContext(kFallbackContext);
    }
    return name == kFallbackContext ? findContext(kLinkedContext) : nullptr;
}

/// The id of the action that holds the shortcut in `context` against the wish of `item`, or 0.
///
/// Kept deliberately: only parent and child share a shortcut. A grandparent in the same context is another action, and
/// the child between them is refused what its own child may not have.
int ActionCatalogue::conflictIn(const Context* context, const UCPActionItem& item, const std::string& shortcut) const {
    if (context == nullptr) {
        return 0;
    }
    const auto found = context->holders.find(shortcut);
    if (found == context->holders.end()) {
        return 0;
    }
    const int holder = found->second.id;
    if (holder < 1 || holder == item.id || holder == item.parent_id) {
        return 0;
    }
    const Action* const other = find(holder);
    return other == nullptr || other->item.parent_id == item.id ? 0 : holder;
}

int ActionCatalogue::shortcutTakenBy(int id, const std::string& shortcut) const {
    if (shortcut.empty()) {
        return 0;
    }
    std::vector<int> pending;
    int current = id;
    while (const Action* const action = find(current)) {
        if (const int holder = conflictIn(action->context, action->item, shortcut)) {
            return holder;
        }
        if (const int holder = conflictIn(linkedContext(action->item.context), action->item, shortcut)) {
            return holder;
        }
        // An action has one parent, so the only one that a circle of parents can lead back to is the first.
        const std::vector<int>& children = childIds(current);
        std::copy_if(children.rbegin(), children.rend(), std::back_inserter(pending),
                     [id](int child) { return child != id; });
        if (pending.empty()) {
            return 0;
        }
        current = pending.back();
        pending.pop_back();
    }
    return 0;
}

}  // namespace zelutil::actions
