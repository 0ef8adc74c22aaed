#include "support/action_world.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace zelutil::test {

namespace {

const std::array<std::string, 3> kNames = {"", "First", "Second"};

/// A member's text and what it means.
template <typename T>
struct Read {
    std::string json;
    T meaning;
};

bool rarely(Random& random) { return below(random, 12) == 0; }

Read<int> randomInteger(Random& random, int value) {
    if (!rarely(random)) {
        return {std::to_string(value), value};
    }
    static const std::array<std::string, 6> kNoIntegers = {"3.0", "1e0", "\"2\"", "null", "5000000000", "[1]"};
    return {oneOf(random, kNoIntegers), 0};
}

Read<std::string> randomText(Random& random, const std::string& value) {
    if (!rarely(random)) {
        return {"\"" + value + "\"", value};
    }
    static const std::array<std::string, 4> kNoTexts = {"1", "null", "[\"F1\"]", "{}"};
    return {oneOf(random, kNoTexts), ""};
}

Read<bool> randomFlag(Random& random) {
    static const std::array<Read<bool>, 7> kFlags = {{{"true", true},
                                                      {"true", true},
                                                      {"false", false},
                                                      {"false", false},
                                                      {"\"true\"", false},
                                                      {"1", false},
                                                      {"null", false}}};
    return oneOf(random, kFlags);
}

/// Appends a member; a second one of the same name, now and then, must not count.
void append(Random& random, std::string& object, const std::string& name, const std::string& value) {
    object += object.size() > 1 ? ",\"" : "\"";
    object += name + "\":" + value;
    if (rarely(random)) {
        object += ",\"" + name + "\":\"F2\"";
    }
}

constexpr int kFamilySize = 9;

int randomParent(Random& random) {
    static const std::array<int, 16> kParents = {0, 0, 0, 0, 0, 0, 1, 1, 2, 2, 3, 4, 5, 6, 7, -1};
    return oneOf(random, kParents);
}

std::string definitionText(Random& random, TwinDefinition& definition) {
    std::string object = "{";
    const Read<int> id = randomInteger(random, rarely(random) ? below(random, 3) - 2 : 1 + below(random, 6));
    append(random, object, "id", id.json);
    definition.id = id.meaning;
    if (below(random, 4) != 0) {
        const Read<int> parent = randomInteger(random, randomParent(random));
        append(random, object, "parent_id", parent.json);
        definition.parentId = parent.meaning;
    }
    const auto text = [&](const char* name, std::string& field, const std::string& value) {
        if (!rarely(random)) {
            const Read<std::string> read = randomText(random, value);
            append(random, object, name, read.json);
            field = read.meaning;
        }
    };
    text("name", definition.name, oneOf(random, kNames));
    text("icon", definition.icon, oneOf(random, kNames));
    text("context", definition.context, smallStock().contexts[static_cast<std::size_t>(below(random, 3))]);
    text("command", definition.command, smallStock().commands[static_cast<std::size_t>(below(random, 4))]);
    text("shortcut", definition.shortcut, oneOf(random, smallStock().shortcuts));
    if (below(random, 3) == 0) {
        const Read<bool> flag = randomFlag(random);
        append(random, object, "rmb", flag.json);
        definition.rmb = flag.meaning;
    }
    return object + "}";
}

std::string entryText(Random& random, TwinUserEntry& entry) {
    std::string object = "{";
    if (below(random, 20) != 0) {
        const Read<int> id = randomInteger(random, 1 + below(random, 8));
        append(random, object, "id", id.json);
        entry.id = id.meaning;
    }
    if (below(random, 4) != 0) {
        const Read<std::string> shortcut = randomText(random, oneOf(random, smallStock().shortcuts));
        append(random, object, "shortcut", shortcut.json);
        entry.shortcut = shortcut.meaning;
    }
    if (below(random, 3) == 0) {
        const Read<bool> flag = randomFlag(random);
        append(random, object, "rmb", flag.json);
        entry.rmb = flag.meaning;
    }
    return object + "}";
}

/// {"actions":[...]} of `count` elements, each made and understood by `element`.
template <typename Meaning, typename Element>
std::string listText(Random& random, int count, std::vector<Meaning>& meanings, Element element) {
    std::string list;
    for (int i = 0; i < count; ++i) {
        list += i == 0 ? "" : ",";
        list += element(random, meanings.emplace_back());
    }
    return "{\"actions\":[" + list + "]}";
}

/// The ids of a family from the top down.
std::vector<int> familyIds(Random& random) {
    std::vector<int> ids(static_cast<std::size_t>(1 + below(random, kFamilySize)));
    std::iota(ids.begin(), ids.end(), 1);
    switch (below(random, 4)) {
        case 0:
        case 1:
            std::reverse(ids.begin(), ids.end());
            break;
        case 2:
            for (std::size_t i = ids.size() - 1; i > 0; --i) {
                std::swap(ids[i], ids[static_cast<std::size_t>(below(random, static_cast<int>(i) + 1))]);
            }
            break;
        default:
            break;
    }
    return ids;
}

std::string plainText(const TwinDefinition& definition) {
    return R"({"id":)" + std::to_string(definition.id) + R"(,"parent_id":)" + std::to_string(definition.parentId) +
           R"(,"name":")" + definition.name + R"(","context":")" + definition.context + R"(","command":")" +
           definition.command + R"(","shortcut":")" + definition.shortcut + R"(","rmb":)" +
           (definition.rmb ? "true" : "false") + "}";
}

/// Mostly gives a member of a family properties of its own; `mixed` decides how often.
void furnish(Random& random, int mixed, TwinDefinition& definition) {
    const ActionStock& stock = familyStock();
    const auto own = static_cast<std::size_t>(definition.id);
    definition.name = oneOf(random, kNames);
    definition.context = below(random, 10) < mixed ? oneOf(random, stock.contexts) : stock.contexts[own];
    definition.command = below(random, 10) < mixed ? oneOf(random, stock.commands) : stock.commands[0];
    definition.shortcut = below(random, 10) < mixed ? oneOf(random, stock.shortcuts) : stock.shortcuts[own];
    definition.rmb = below(random, 4) == 0;
}

}  // namespace

const ActionStock& smallStock() {
    static const ActionStock stock = {{-1, 0, 1, 2, 3, 4, 5, 6, 7, 8},
                                      {"ucpedit", "brisk3d", "board", ""},
                                      {"open", "close", "route", "zoom", ""},
                                      {"F1", "F2", "Ctrl+S", ""}};
    return stock;
}

const ActionStock& familyStock() {
    static const ActionStock stock = [] {
        ActionStock made = {{-1, 0}, {"ucpedit", "brisk3d"}, {"turn", "open", ""}, {"", "F1"}};
        for (int id = 1; id <= kFamilySize + 4; ++id) {
            made.ids.push_back(id);
        }
        for (int i = 2; i <= kFamilySize; ++i) {
            made.contexts.push_back("view" + std::to_string(i));
            made.shortcuts.push_back("Alt+" + std::to_string(i));
        }
        made.contexts.emplace_back();
        return made;
    }();
    return stock;
}

int below(Random& random, int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

ActionWorld randomActionWorld(Random& random) {
    ActionWorld world;
    world.defaultsText = listText(random, below(random, 9), world.definitions, definitionText);
    const std::string object = listText(random, below(random, 5), world.entries, entryText);
    world.userText = "[" + object + "]";
    if (rarely(random)) {
        const std::array<std::string, 5> unusable = {object, "[" + object + "," + object + "]", "", "{}", "[" + object};
        world.userText = oneOf(random, unusable);
        world.entries.clear();
    }
    if (below(random, 40) == 0) {
        const std::array<std::string, 4> unusable = {"[" + world.defaultsText + "]", world.defaultsText + "}", "",
                                                     "{\"actions\":{}}"};
        world.defaultsText = oneOf(random, unusable);
        world.definitions.clear();
    }
    return world;
}

ActionWorld randomActionFamilies(Random& random) {
    ActionWorld world;
    const ActionStock& stock = familyStock();
    const std::vector<int> ids = familyIds(random);
    const int mixed = below(random, 4) * 2;
    const bool chain = below(random, 3) != 0;
    // The top has no parent, one that is missing, or one of its own family.
    const std::array<int, 6> tops = {0, 0, 0, stock.ids.back(), stock.ids.back() - 1, ids.back()};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        TwinDefinition& definition = world.definitions.emplace_back();
        definition.id = ids[i];
        const std::size_t above =
            chain || i == 0 ? i - 1 : static_cast<std::size_t>(below(random, static_cast<int>(i)));
        definition.parentId = i == 0 ? oneOf(random, tops) : ids[above];
        furnish(random, mixed, definition);
    }
    // Strangers, who hold what the family would like to have.
    for (int id = kFamilySize + 1; id <= kFamilySize + 2; ++id) {
        if (below(random, 2) == 0) {
            TwinDefinition& definition = world.definitions.emplace_back();
            definition.id = id;
            definition.context = oneOf(random, stock.contexts);
            definition.command = "stand";
            definition.shortcut = oneOf(random, stock.shortcuts);
        }
    }
    if (below(random, 2) == 0) {
        std::reverse(world.definitions.begin(), world.definitions.end());
    }
    std::string list;
    for (const TwinDefinition& definition : world.definitions) {
        list += (list.empty() ? "" : ",") + plainText(definition);
    }
    world.defaultsText = "{\"actions\":[" + list + "]}";
    world.userText =
        "[" +
        listText(random, below(random, 4), world.entries,
                 [&](Random&, TwinUserEntry& entry) {
                     entry.id = 1 + below(random, kFamilySize);
                     entry.shortcut = oneOf(random, stock.shortcuts);
                     return "{\"id\":" + std::to_string(entry.id) + ",\"shortcut\":\"" + *entry.shortcut + "\"}";
                 }) +
        "]";
    return world;
}

}  // namespace zelutil::test
