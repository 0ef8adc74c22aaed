#include "actions/action_catalogue.h"

#include "actions/action_tables.h"
#include "actions/action_text.h"
#include "actions/overwritable.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

namespace zelutil::actions {
namespace {

/// What `command` falls back to.
constexpr std::string_view kFallbackContext = "ucpedit";
/// The context that is linked with it.
constexpr std::string_view kLinkedContext = "brisk3d";

const std::vector<int> kNoIds;

std::string_view linkedWith(std::string_view context) {
    if (context == kLinkedContext) {
        return kFallbackContext;
    }
    return context == kFallbackContext ? kLinkedContext : std::string_view();
}

}  // namespace

ActionCatalogue::ActionCatalogue(const ObserverRegistry& observers)
    : observers_(observers), tables_(std::make_unique<Tables>()) {}

ActionCatalogue::~ActionCatalogue() = default;

std::string_view ActionCatalogue::Tables::keep(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    char* const copy = static_cast<char*>(lasting.allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

ActionCatalogue::Context& ActionCatalogue::Tables::context(std::string_view name) {
    // Most texts list the actions context by context.
    if (recent != nullptr && recent->name == name) {
        return *recent;
    }
    const auto found = contexts.find(name);
    recent = found == contexts.end() ? &addContext(name) : &found->second;
    return *recent;
}

ActionCatalogue::Context& ActionCatalogue::Tables::addContext(std::string_view name) {
    void* const place = lasting.allocate(sizeof(Context::Commands), alignof(Context::Commands));
    auto* const commands = new (place) Context::Commands(&lasting);
    const std::string_view kept = keep(name);
    return contexts.try_emplace(kept, kept, linkedWith(kept), *commands, changing).first->second;
}

// --- Loading --------------------------------------------------------------------------------------------------------

void ActionCatalogue::load(std::string_view defaultsText, std::string_view userText) {
    tables_ = std::make_unique<Tables>();
    modified_ = false;
    loadDefaults(defaultsText);
    loadUserEntries(userText);
    updateFromParents();
}

void ActionCatalogue::loadDefaults(std::string_view text) {
    DefinitionReader reader(text);
    ActionDefinition definition;
    while (reader.next(definition)) {
        define(definition);
    }
    auto& ordered = tables_->ordered;
    if (!std::is_sorted(ordered.begin(), ordered.end())) {
        std::sort(ordered.begin(), ordered.end());
    }
}

void ActionCatalogue::define(const ActionDefinition& definition) {
    if (definition.id < 1 || definition.parentId < 0 || definition.command.empty() || definition.context.empty()) {
        return;
    }
    const auto [place, added] = tables_->actions.try_emplace(definition.id);
    if (!added) {
        return;
    }
    Action& action = place->second;
    action.id = definition.id;
    action.parentId = definition.parentId;
    action.name = tables_->keep(definition.name);
    action.icon = tables_->keep(definition.icon);
    action.command = tables_->keep(definition.command);
    action.context = &tables_->context(definition.context);
    action.shortcut.defaultValue = definition.shortcut;
    action.rmb.defaultValue = definition.inMenu;
    tables_->ordered.emplace_back(action.id, &action);
    if (action.parentId > 0) {
        tables_->childIds[action.parentId].push_back(action.id);
    }
    index(action);
}

/// The first with a command, and the first with a shortcut, has it.
void ActionCatalogue::index(Action& action) {
    action.first = action.context->commands.try_emplace(action.command, &action).first->second;
    action.bound = action.shortcut.defaultValue;
    if (!action.bound.empty()) {
        action.context->holders.try_emplace(action.bound, Holder{action.command, action.id, action.parentId});
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
    for (const auto& [parent, ids] : tables_->childIds) {
        children.insert(children.end(), ids.begin(), ids.end());
    }
    std::sort(children.begin(), children.end());
    for (const int id : children) {
        takeOverFromParent(id);
    }
}

void ActionCatalogue::takeOverFromParent(int id) {
    Action* const child = findForEdit(id);
    // Where an observer has loaded anew meanwhile, the id may be gone or top-level.
    if (child == nullptr || child->parentId < 1) {
        return;
    }
    const Action& parent = parentOf(*child);
    child->shortcut = parent.shortcut;
    child->rmb = parent.rmb;
    if (child->name.empty()) {
        child->name = parent.name;
    }
    // Kept deliberately: the child has the parent's shortcut by now, also where the context refuses it. The answer is
    // not looked at, so where nothing would change the question for conflicts is saved.
    const std::string shortcut = effectiveValue(child->shortcut);
    if (child->first->bound != shortcut) {
        updateShortcut(id, shortcut);
    }
}

/// Kept deliberately: for a parent that no text defines an empty action with id 0 is put under the parent's id and
/// stays.
ActionCatalogue::Action& ActionCatalogue::parentOf(const Action& child) {
    const auto [parent, missing] = tables_->actions.try_emplace(child.parentId);
    if (missing) {
        parent->second.context = &tables_->context(std::string_view());
        index(parent->second);
        const std::pair<int, Action*> entry(child.parentId, &parent->second);
        auto& ordered = tables_->ordered;
        ordered.insert(std::lower_bound(ordered.begin(), ordered.end(), entry), entry);
    }
    return parent->second;
}

// --- Queries --------------------------------------------------------------------------------------------------------

UCPActionItem ActionCatalogue::Action::item() const {
    UCPActionItem item;
    item.id = id;
    item.parent_id = parentId;
    item.name = name;
    item.icon = icon;
    item.context = context->name;
    item.command = command;
    item.shortcut = shortcut;
    item.rmb = rmb;
    return item;
}

const ActionCatalogue::Action* ActionCatalogue::find(int id) const {
    const auto found = tables_->actions.find(id);
    return found == tables_->actions.end() ? nullptr : &found->second;
}

ActionCatalogue::Action* ActionCatalogue::findForEdit(int id) {
    const auto found = tables_->actions.find(id);
    return found == tables_->actions.end() ? nullptr : &found->second;
}

const ActionCatalogue::Context* ActionCatalogue::findContext(std::string_view name) const {
    const auto found = tables_->contexts.find(name);
    return found == tables_->contexts.end() ? nullptr : &found->second;
}

std::vector<UCPActionItem> ActionCatalogue::items() const {
    std::vector<UCPActionItem> items;
    items.reserve(tables_->ordered.size());
    for (const auto& [id, action] : tables_->ordered) {
        items.push_back(action->item());
    }
    return items;
}

std::vector<UCPActionItem> ActionCatalogue::menuItems() const {
    std::vector<UCPActionItem> items;
    for (const auto& [id, action] : tables_->ordered) {
        if (effectiveValue(action->rmb)) {
            items.push_back(action->item());
        }
    }
    return items;
}

const std::vector<int>& ActionCatalogue::childIds(int id) const {
    const auto found = tables_->childIds.find(id);
    return found == tables_->childIds.end() ? kNoIds : found->second;
}

int ActionCatalogue::idByCommand(std::string_view context, std::string_view command) const {
    const Context* const names = findContext(context);
    if (names == nullptr) {
        return 0;
    }
    const auto found = names->commands.find(command);
    return found == names->commands.end() ? 0 : found->second->id;
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
    for (const auto& [id, action] : tables_->ordered) {
        if (action->parentId == 0 && (action->shortcut.overwritten || action->rmb.overwritten)) {
            writer.add(action->id, action->shortcut, action->rmb);
        }
    }
    return writer.text();
}

// --- Conflicts ------------------------------------------------------------------------------------------------------

/// The id of the action that holds the shortcut in `context` against the wish of `action`, or 0.
///
/// Kept deliberately: only parent and child share a shortcut. A grandparent in the same context is another action, and
/// the child between them is refused what its own child may not have.
int ActionCatalogue::conflictIn(const Context* context, const Action& action, const std::string& shortcut) const {
    if (context == nullptr) {
        return 0;
    }
    const auto found = context->holders.find(shortcut);
    if (found == context->holders.end()) {
        return 0;
    }
    const Holder& holder = found->second;
    const bool own = holder.id == action.id || holder.id == action.parentId || holder.parentId == action.id;
    return own ? 0 : holder.id;
}

int ActionCatalogue::conflictOf(const Action& action, const std::string& shortcut) const {
    if (const int holder = conflictIn(action.context, action, shortcut)) {
        return holder;
    }
    const std::string_view linked = action.context->linked;
    return linked.empty() ? 0 : conflictIn(findContext(linked), action, shortcut);
}

int ActionCatalogue::shortcutTakenBy(int id, const std::string& shortcut) const {
    if (shortcut.empty()) {
        return 0;
    }
    std::vector<int> pending;
    int current = id;
    while (const Action* const action = find(current)) {
        if (const int holder = conflictOf(*action, shortcut)) {
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
