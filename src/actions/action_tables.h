#ifndef ZELUTIL_ACTIONS_ACTION_TABLES_H
#define ZELUTIL_ACTIONS_ACTION_TABLES_H

#include "actions/action_catalogue.h"

#include <cstddef>
#include <map>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/flat_map.h"

namespace zelutil::actions {

struct ActionDefinition;
class DefinitionReader;

/// Names the action that holds a shortcut.
struct ActionCatalogue::Holder {
    std::string_view command;
    int id = 0;
    int parentId = 0;
};

/// One command of a context, as far as it is known.
///
/// Kept deliberately: a command is bound once per context, so all actions with one command share that.
struct ActionCatalogue::Command {
    /// The first action with the command.
    int action = 0;
    /// The shortcut to which the command is bound now.
    std::string bound;
};

/// Holds all that one context binds.
struct ActionCatalogue::Context {
    Context(std::string_view contextName, std::pmr::memory_resource& lasting) : name(contextName), commands(&lasting) {}

    /// The holder of the shortcut, or null.
    const Holder* holderOf(const std::string& shortcut) const;

    std::string_view name;
    /// The context whose shortcuts count as taken here, or null.
    Context* linked = nullptr;
    std::pmr::unordered_map<std::string_view, Command> commands;
    text::FlatMap<std::string, Holder> holders;
    /// The place that the last survey of `Followers` gave the last action of this context.
    std::size_t place = 0;
};

/// All that one load makes.
///
/// The nodes of actions and commands lie in blocks that go as a whole: "load 10000 actions" of
/// bench/action_load_bench.cpp takes 15 % longer when each is allocated for itself.
struct ActionCatalogue::Tables {
    Tables() = default;
    explicit Tables(DefinitionReader& reader);
    Tables(const Tables&) = delete;
    Tables& operator=(const Tables&) = delete;
    ~Tables() = default;

    Action* find(int id);
    Context* findContext(std::string_view name) const;

    /// The action, or an empty one that stands in for it from now on.
    ///
    /// Kept deliberately: for a parent that no text defines an empty action with id 0 stands under the parent's id.
    Action& findOrStandIn(int id);

    /// Calls `call` with the id under which it stands and every action, ascending.
    template <typename Call>
    void forEach(Call call) const;

    /// For what stays until the next load.
    std::pmr::monotonic_buffer_resource lasting;
    std::unordered_map<std::string_view, Context> contexts;
    /// Finds those by name.
    text::FlatMap<std::string_view, Context*> contextsByName;
    std::pmr::unordered_map<int, Action> actions{&lasting};
    /// The actions of the text, ascending by id.
    std::vector<std::pair<int, const Action*>> ordered;
    /// Those that stand in for missing parents. They come one by one in the middle of a load, when observers may ask.
    std::map<int, Action> standIns;
    std::unordered_map<int, std::vector<int>> childIds;

private:
    std::vector<Action*> findAll(const std::vector<int>& ids);
    void define(const ActionDefinition& definition);
    void index(Action& action);
    std::string_view keep(std::string_view text);
    Context& context(std::string_view name);
    Context& addContext(std::string_view name);

    Context* recent_ = nullptr;
};

template <typename Call>
void ActionCatalogue::Tables::forEach(Call call) const {
    auto standIn = standIns.begin();
    for (const auto& [id, action] : ordered) {
        for (; standIn != standIns.end() && standIn->first < id; ++standIn) {
            call(standIn->first, standIn->second);
        }
        call(id, *action);
    }
    for (; standIn != standIns.end(); ++standIn) {
        call(standIn->first, standIn->second);
    }
}

}  // namespace zelutil::actions

#endif
