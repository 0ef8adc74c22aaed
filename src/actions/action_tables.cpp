#include "actions/action_tables.h"

#include "actions/action_text.h"

#include <algorithm>
#include <cstring>

namespace zelutil::actions {
namespace {

/// The two contexts that are linked.
constexpr std::string_view kLinked[] = {"ucpedit", "brisk3d"};

}  // namespace

std::string_view ActionCatalogue::linkedContext(std::string_view context) {
    if (context == kLinked[0]) {
        return kLinked[1];
    }
    return context == kLinked[1] ? kLinked[0] : std::string_view();
}

const ActionCatalogue::Holder* ActionCatalogue::Context::holderOf(const std::string& shortcut) const {
    return holders.find(shortcut);
}

ActionCatalogue::Tables::Tables(DefinitionReader& reader) {
    actions.reserve(reader.count());
    ordered.reserve(reader.count());
    ActionDefinition definition;
    while (reader.next(definition)) {
        define(definition);
    }
    if (!std::is_sorted(ordered.begin(), ordered.end())) {
        std::sort(ordered.begin(), ordered.end());
    }
    for (const auto& [parent, ids] : childIds) {
        if (Action* const action = find(parent)) {
            action->children = findAll(ids);
        }
    }
}

void ActionCatalogue::Tables::define(const ActionDefinition& definition) {
    if (!definition.isUsable()) {
        return;
    }
    const auto [place, added] = actions.try_emplace(definition.id);
    if (!added) {
        return;
    }
    Action& action = place->second;
    action.id = definition.id;
    action.parentId = definition.parentId;
    action.name = keep(definition.name);
    action.icon = keep(definition.icon);
    action.command = keep(definition.command);
    action.context = &context(definition.context);
    action.shortcut.defaultValue = definition.shortcut;
    action.rmb.defaultValue = definition.inMenu;
    ordered.emplace_back(action.id, &action);
    if (action.parentId > 0) {
        childIds[action.parentId].push_back(action.id);
    }
    index(action);
}

/// The first with a command, and the first with a shortcut, has it.
///
/// Kept deliberately: the command of a later action with that shortcut counts as bound to it too. So setting it again
/// once it is free changes nothing.
void ActionCatalogue::Tables::index(Action& action) {
    const std::string& shortcut = action.shortcut.defaultValue;
    const auto [place, added] = action.context->commands.try_emplace(action.command);
    action.binding = &place->second;
    if (added) {
        action.binding->action = action.id;
        action.binding->bound = shortcut;
    }
    if (!shortcut.empty()) {
        action.context->holders.try_emplace(shortcut, Holder{action.command, action.id, action.parentId});
    }
}

ActionCatalogue::Action* ActionCatalogue::Tables::find(int id) {
    const auto found = actions.find(id);
    if (found != actions.end()) {
        return &found->second;
    }
    const auto standIn = standIns.find(id);
    return standIn == standIns.end() ? nullptr : &standIn->second;
}

std::vector<ActionCatalogue::Action*> ActionCatalogue::Tables::findAll(const std::vector<int>& ids) {
    std::vector<Action*> found;
    found.reserve(ids.size());
    for (const int id : ids) {
        found.push_back(find(id));
    }
    return found;
}

ActionCatalogue::Action& ActionCatalogue::Tables::findOrStandIn(int id) {
    if (Action* const action = find(id)) {
        return *action;
    }
    // Complete before it is put under its id, so that a lack of memory leaves no half-made action behind.
    Action standIn;
    standIn.context = &context(std::string_view());
    index(standIn);
    standIn.children = findAll(childIds[id]);
    return standIns.try_emplace(id, std::move(standIn)).first->second;
}

ActionCatalogue::Context* ActionCatalogue::Tables::findContext(std::string_view name) const {
    Context* const* const found = contextsByName.find(name);
    return found == nullptr ? nullptr : *found;
}

/// The context's record, made at its first action.
ActionCatalogue::Context& ActionCatalogue::Tables::context(std::string_view name) {
    // Most texts list the actions context by context.
    if (recent_ == nullptr || recent_->name != name) {
        Context* const found = findContext(name);
        recent_ = found != nullptr ? found : &addContext(name);
    }
    return *recent_;
}

ActionCatalogue::Context& ActionCatalogue::Tables::addContext(std::string_view name) {
    const std::string_view kept = keep(name);
    // The index first: where there is no memory for the context, the index has none for that name.
    Context*& indexed = *contextsByName.try_emplace(kept, nullptr).first;
    Context& added = contexts.try_emplace(kept, kept, lasting).first->second;
    indexed = &added;
    const std::string_view linked = linkedContext(kept);
    if (!linked.empty()) {
        added.linked = findContext(linked);
    }
    if (added.linked != nullptr) {
        added.linked->linked = &added;
    }
    return added;
}

/// Returns a copy of the text that lasts as long as the tables.
std::string_view ActionCatalogue::Tables::keep(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    char* const copy = static_cast<char*>(lasting.allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

}  // namespace zelutil::actions
