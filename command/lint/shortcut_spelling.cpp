#include "command/lint/shortcut_spelling.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <map>
#include <utility>

#include "command/nearest_names.h"

namespace zelutil::lint {
namespace {

/// Another spelling is the usual one when it is so many times as frequent.
constexpr std::size_t kUsual = 2;

struct KeyName {
    std::string_view name;  ///< In lower case.
    std::string_view key;
};

constexpr KeyName kModifiers[] = {{"ctrl", "ctrl"},   {"control", "ctrl"}, {"shift", "shift"}, {"alt", "alt"},
                                  {"altgr", "altgr"}, {"meta", "meta"},    {"super", "meta"},  {"win", "meta"},
                                  {"cmd", "meta"},    {"option", "alt"}};

constexpr KeyName kKeys[] = {{"esc", "escape"},    {"return", "enter"},   {"del", "delete"},     {"ins", "insert"},
                             {"pgup", "pageup"},   {"prior", "pageup"},   {"pgdn", "pagedown"},  {"pgdown", "pagedown"},
                             {"next", "pagedown"}, {"bksp", "backspace"}, {"back", "backspace"}, {"spacebar", "space"}};

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return ascii::lowerCase(c); });
    return lower;
}

/// Returns the text without blanks at its ends.
std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// Returns what stands between the plus signs. One at the end is a key.
std::vector<std::string_view> tokensOf(std::string_view shortcut) {
    std::vector<std::string_view> tokens;
    std::size_t plus = shortcut.find('+');
    while (plus != std::string_view::npos && plus + 1 < shortcut.size()) {
        tokens.push_back(trimmed(shortcut.substr(0, plus)));
        shortcut.remove_prefix(plus + 1);
        plus = shortcut.find('+', 1);
    }
    tokens.push_back(trimmed(shortcut));
    return tokens;
}

/// A name that is nearly a modifier's is a misspelt one.
std::string modifierOf(std::string_view token) {
    const std::string lower = lowerCase(token);
    std::string nearest = lower;
    for (const auto& [name, key] : kModifiers) {
        if (name == lower) {
            return std::string(key);
        }
        if (name.size() > 2 && command::editDistance(name, lower) == 1) {
            nearest = key;
        }
    }
    return nearest;
}

std::string keyOf(std::string_view token) {
    const std::string lower = lowerCase(token);
    for (const auto& [name, key] : kKeys) {
        if (name == lower) {
            return std::string(key);
        }
    }
    return lower;
}

void addKey(std::string_view token, std::vector<SpellingChoice>& choices) {
    const bool isLetter = token.size() == 1 && ascii::lowerCase(token[0]) >= 'a' && ascii::lowerCase(token[0]) <= 'z';
    if (isLetter) {
        choices.push_back({"letters", token[0] == ascii::lowerCase(token[0]) ? "lower case" : "capitals"});
    } else if (token.size() > 1) {
        choices.push_back({"the key " + keyOf(token), quoted(token)});
    }
}

/// Adds in which order each two modifiers stand.
void addOrder(const std::vector<std::string>& modifiers, std::vector<SpellingChoice>& choices) {
    for (std::size_t i = 0; i < modifiers.size(); ++i) {
        for (std::size_t j = i + 1; j < modifiers.size(); ++j) {
            const auto [first, second] = std::minmax(modifiers[i], modifiers[j]);
            std::string about = "the order of " + first + " and " + second;
            choices.push_back({std::move(about), modifiers[i] + " first"});
        }
    }
}

using Counts = std::map<std::string, std::map<std::string, std::size_t>>;

Counts countsOf(const std::vector<WrittenShortcut>& shortcuts) {
    Counts counts;
    for (const WrittenShortcut& shortcut : shortcuts) {
        for (const auto& [about, spelling] : choicesOf(shortcut.text)) {
            ++counts[about][spelling];
        }
    }
    return counts;
}

/// Returns the spelling that most others have where it is another one; the empty text otherwise.
std::string usualInstead(const SpellingChoice& choice, const Counts& counts) {
    const auto& spellings = counts.at(choice.about);
    const auto usual = std::max_element(spellings.begin(), spellings.end(),
                                        [](const auto& a, const auto& b) { return a.second < b.second; });
    return usual->second >= kUsual * spellings.at(choice.spelling) ? usual->first : std::string();
}

}  // namespace

std::vector<SpellingChoice> choicesOf(std::string_view shortcut) {
    std::vector<SpellingChoice> choices;
    if (shortcut.empty()) {
        return choices;
    }
    const std::vector<std::string_view> tokens = tokensOf(shortcut);
    std::vector<std::string> modifiers;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        modifiers.push_back(modifierOf(tokens[i]));
        choices.push_back({"the modifier " + modifiers.back(), quoted(tokens[i])});
    }
    addKey(tokens.back(), choices);
    addOrder(modifiers, choices);
    if (tokens.size() > 1) {
        const bool hasBlanks = shortcut.find(' ') != std::string_view::npos;
        choices.push_back({"the plus sign", hasBlanks ? "with blanks" : "without blanks"});
    }
    return choices;
}

void checkSpelling(const std::vector<WrittenShortcut>& shortcuts, Report& report) {
    const Counts counts = countsOf(shortcuts);
    for (const WrittenShortcut& shortcut : shortcuts) {
        for (const SpellingChoice& choice : shortcut.place ? choicesOf(shortcut.text) : std::vector<SpellingChoice>()) {
            const std::string usual = usualInstead(choice, counts);
            if (!usual.empty()) {
                report.add(Rule::SpellingOfShortcut, shortcut.place,
                           "The other shortcuts spell " + choice.about + ' ' + usual + ", this one " + choice.spelling +
                               ", so it is another key for the library.");
            }
        }
    }
}

}  // namespace zelutil::lint
