#include "action_corpus.h"

namespace zelutil::bench {
namespace {

constexpr const char* kModifiers[] = {"",           "Ctrl+",           "Alt+",  "Shift+",    "Ctrl+Alt+", "Ctrl+Shift+",
                                      "Alt+Shift+", "Ctrl+Alt+Shift+", "Meta+", "Meta+Ctrl+"};
constexpr std::size_t kLetters = 26;

std::string shortcutOf(std::size_t i) {
    const std::size_t key = i / std::size(kModifiers);
    const std::string name =
        key < kLetters ? std::string(1, static_cast<char>('A' + key)) : "F" + std::to_string(key - kLetters + 1);
    return kModifiers[i % std::size(kModifiers)] + name;
}

}  // namespace

std::vector<CorpusAction> makeActions(std::size_t contexts, std::size_t actionsPerContext) {
    std::vector<CorpusAction> actions;
    for (std::size_t context = 0; context < contexts; ++context) {
        for (std::size_t i = 0; i < actionsPerContext; ++i) {
            actions.push_back({static_cast<int>(actions.size()) + 1, "editor_" + std::to_string(context), shortcutOf(i),
                               "route command_" + std::to_string(i)});
        }
    }
    return actions;
}

std::string actionText(const std::vector<CorpusAction>& actions) {
    std::string text = "{\"actions\":[";
    for (const CorpusAction& action : actions) {
        const std::string number = std::to_string(action.id);
        text += action.id == 1 ? "\n" : ",\n";
        text += "  {\"id\": " + number + ", \"name\": \"Command " + number +
                "\", \"icon\": \"command.svg\", \"context\": \"" + action.context + "\", \"command\": \"" +
                action.command + "\", \"shortcut\": \"" + action.shortcut + "\", \"rmb\": true}";
    }
    return text + "\n]}\n";
}

}  // namespace zelutil::bench
