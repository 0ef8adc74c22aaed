#include "peers/action_peers.h"

#if defined(__SSE2__)
#define RAPIDJSON_SSE2
#endif
#define RAPIDJSON_NAMESPACE in_situ_rapidjson
#define RAPIDJSON_NAMESPACE_BEGIN namespace in_situ_rapidjson {
#define RAPIDJSON_NAMESPACE_END }
#include <rapidjson/document.h>
#include <simdjson.h>

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zelutil::bench::peers {
namespace {

struct Action {
    int id = 0;
    int parentId = 0;
    std::string name;
    std::string icon;
    std::string context;
    std::string command;
    std::string shortcut;
    bool inMenu = false;
};

/// The actions of the maps of the last load. A load makes new ones, as the library's does.
struct Maps {
    std::unordered_map<int, Action> actions;
    std::map<int, std::vector<int>> children;
    std::unordered_map<std::string, std::unordered_map<std::string, int>> commands;
    std::unordered_map<std::string, std::unordered_map<std::string, int>> holders;

    void add(Action action) {
        if (action.parentId > 0) {
            children[action.parentId].push_back(action.id);
        }
        commands[action.context].emplace(action.command, action.id);
        holders[action.context].emplace(action.shortcut, action.id);
        actions.emplace(action.id, std::move(action));
    }
};

Action actionOf(const nlohmann::json& element) {
    return {element.at("id"),      element.value("parent_id", 0), element.at("name"),     element.at("icon"),
            element.at("context"), element.at("command"),         element.at("shortcut"), element.value("rmb", false)};
}

std::string textOf(simdjson::dom::element value) { return std::string(std::string_view(value)); }

Action actionOf(simdjson::dom::element element) {
    Action action;
    action.id = static_cast<int>(std::int64_t(element["id"]));
    action.name = textOf(element["name"]);
    action.icon = textOf(element["icon"]);
    action.context = textOf(element["context"]);
    action.command = textOf(element["command"]);
    action.shortcut = textOf(element["shortcut"]);
    action.inMenu = bool(element["rmb"]);
    return action;
}

}  // namespace

std::uint64_t loadByNlohmann(const std::string& text) {
    static std::unique_ptr<Maps> loaded;
    auto maps = std::make_unique<Maps>();
    int last = 0;
    const nlohmann::json document = nlohmann::json::parse(text);
    for (const nlohmann::json& element : document.at("actions")) {
        last = element.at("id");
        maps->add(actionOf(element));
    }
    loaded = std::move(maps);
    return loaded->actions.at(last).shortcut.size();
}

std::uint64_t loadBySimdjson(const std::string& text) {
    static std::unordered_map<int, Action> loaded;
    std::unordered_map<int, Action> actions;
    simdjson::dom::parser parser;
    int last = 0;
    const simdjson::dom::array elements = parser.parse(text)["actions"];
    for (const simdjson::dom::element element : elements) {
        Action action = actionOf(element);
        last = action.id;
        actions.emplace(action.id, std::move(action));
    }
    loaded = std::move(actions);
    return loaded.at(last).shortcut.size();
}

std::uint64_t parseInSitu(const std::string& text) {
    const std::size_t padded = text.size() + 64;
    const std::unique_ptr<char[]> copy(new char[padded]());
    text.copy(copy.get(), text.size());
    in_situ_rapidjson::Document document;
    document.ParseInsitu(copy.get());
    const auto& actions = document["actions"];
    return actions[actions.Size() - 1]["shortcut"].GetStringLength();
}

}  // namespace zelutil::bench::peers
