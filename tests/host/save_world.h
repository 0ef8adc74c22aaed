#ifndef ZELUTIL_TESTS_HOST_SAVE_WORLD_H
#define ZELUTIL_TESTS_HOST_SAVE_WORLD_H

#include <random>
#include <stdexcept>
#include <string>

/// Shipped defaults for hosts that save: settings whose bare names several sections share, and actions.
namespace zelutil::test {

struct SaveWorldSize {
    int settings = 8;
    int actions = 12;
    int contexts = 3;
};

/// The usual numbers of a whole product.
inline constexpr SaveWorldSize kProductSize{3091, 1105, 238};

inline constexpr int kSectionsOfWorld = 4;

/// The full name of a setting of the world. Every section has settings of the same bare names.
inline std::string settingOfWorld(int number) {
    return "part" + std::to_string(number % kSectionsOfWorld) + "::value" + std::to_string(number / kSectionsOfWorld);
}

inline std::string defaultOfWorld(int number) { return "default " + std::to_string(number); }

/// Actions have the ids from 1 on. They take turns in the contexts, and those of one context have a key each.
inline std::string actionsOfWorld(const SaveWorldSize& size) {
    std::string text = R"({"actions":[)";
    for (int id = 1; id <= size.actions; ++id) {
        const std::string number = std::to_string(id);
        text += (id == 1 ? "" : ",") + std::string(R"({"id":)") + number + R"(,"context":"context)" +
                std::to_string(id % size.contexts) + R"(","command":"command)" + number + R"(","shortcut":"Ctrl+)" +
                number + R"(","rmb":)" + (id % 5 == 0 ? "true" : "false") + "}";
    }
    return text + "]}";
}

inline std::string defaultsOfWorld(const SaveWorldSize& size = {}) {
    std::string text = R"({"meta":[)";
    for (int section = 0; section < kSectionsOfWorld; ++section) {
        const std::string name = "part" + std::to_string(section);
        text += R"({"header":"Part","attribute":")" + name + R"(","tclCommand":"t","defaultsettings":[)";
        for (int number = section; number < size.settings; number += kSectionsOfWorld) {
            text += (number == section ? "" : ",") + std::string(R"({"name":"value)") +
                    std::to_string(number / kSectionsOfWorld) + R"(","value":")" + defaultOfWorld(number) + "\"}";
        }
        text += "]},";
    }
    return text + R"({"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"t","defaultsettings":)" +
           actionsOfWorld(size) + "}]}";
}

/// Returns the text of a user's file with another value for the first setting, of which the file has to hold one.
inline std::string withFirstValue(std::string text, const std::string& value) {
    const std::string key = "\"" + settingOfWorld(0) + "\": \"";
    const std::size_t place = text.find(key);
    if (place == std::string::npos) {
        throw std::invalid_argument(text);
    }
    const std::size_t begin = place + key.size();
    return text.replace(begin, text.find('"', begin) - begin, value);
}

/// Holds what one of several hosts changes before one of its saves. Each has four settings and four actions of its own.
struct StormStep {
    StormStep(std::mt19937& random, int own, int others, int number)
        : setting(own + others * static_cast<int>(random() % 4)),
          action(1 + own + others * static_cast<int>(random() % 4)),
          inMenu(random() % 2 == 0),
          pause(static_cast<int>(random() % 3000)),
          value(std::to_string(own) + '-' + std::to_string(number)) {}

    std::string shortcut() const { return "Key" + value; }

    int setting;
    int action;
    bool inMenu;
    int pause;  ///< Microseconds.
    std::string value;
};

}  // namespace zelutil::test

#endif
