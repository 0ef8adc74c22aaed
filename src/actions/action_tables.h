#ifndef ZELUTIL_ACTIONS_ACTION_TABLES_H
#define ZELUTIL_ACTIONS_ACTION_TABLES_H

#include "actions/action_catalogue.h"

#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zelutil::actions {

/// Who holds a shortcut.
struct ActionCatalogue::Holder {
    std::string_view command;
    int id = 0;
    int parentId = 0;
};

/// What one context binds.
struct ActionCatalogue::Context {
    using Commands = std::pmr::unordered_map<std::string_view, Action*>;

    Context(std::string_view contextName, std::string_view linkedContext, Commands& commandsOfContext,
            std::pmr::memory_resource& memory)
        : name(contextName), linked(linkedContext), holders(&memory), commands(commandsOfContext) {}

    std::string_view name;
    /// Name of the context whose shortcuts count as taken here; empty for none.
    std::string_view linked;
    std::pmr::unordered_map<std::string, Holder> holders;
    /// The first action with each command.
    Commands& commands;
};

/// All that one load makes.
struct ActionCatalogue::Tables {
    /// A copy that lasts.
    std::string_view keep(std::string_view text);

    /// The context's record, made at its first action.
    Context& context(std::string_view name);
    Context& addContext(std::string_view name);

    /// For what stays until the next load. Commands are never destroyed: all they own is in here, and walking over the
    /// nodes of 10,000 actions takes 0.4 ms.
    std::pmr::monotonic_buffer_resource lasting;
    /// For holders, which come and go with the edits.
    std::pmr::unsynchronized_pool_resource changing{&lasting};
    std::pmr::unordered_map<int, Action> actions{&lasting};
    /// All actions, ascending by the id under which they stand.
    std::vector<std::pair<int, Action*>> ordered;
    std::unordered_map<int, std::vector<int>> childIds;
    std::unordered_map<std::string_view, Context> contexts;
    Context* recent = nullptr;
};

}  // namespace zelutil::actions

#endif
