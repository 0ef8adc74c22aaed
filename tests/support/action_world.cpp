#include "support/action_world.h"

namespace zelutil::test {

const std::array<std::string, 4> kWorldContexts = {"ucpedit", "brisk3d", "board", ""};
const std::array<std::string, 5> kWorldCommands = {"open", "close", "route", "zoom", ""};
const std::array<std::string, 4> kWorldShortcuts = {"F1", "F2", "Ctrl+S", ""};

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
    text("context", definition.context, kWorldContexts[static_cast<std::size_t>(below(random, 3))]);
    text("command", definition.command, kWorldCommands[static_cast<std::size_t>(below(random, 4))]);
    text("shortcut", definition.shortcut, oneOf(random, kWorldShortcuts));
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
        const Read<std::string> shortcut = randomText(random, oneOf(random, kWorldShortcuts));
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

}  // namespace

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

}  // namespace zelutil::test
