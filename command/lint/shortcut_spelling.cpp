#include "command/lint/shortcut_spelling.h"

#include <zelutil/util/ascii.h>

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

#include "command/shortcut_keys.h"

namespace zelutil::lint {
namespace {

using command::keyNamed;
using command::modifierMeant;
using command::tokensOf;

/// Another spelling is the usual one when it is so many times as frequent.
constexpr std::size_t kUsual = 2;

/// Nobody presses more keys at once. A text with more parts names none, and they would have to be compared in pairs.
constexpr std::ptrdiff_t kMostParts = 8;

constexpr char kSign[] = "the sign between keys";

bool isCapital(char c) { return ascii::lowerCase(c) != c; }

bool isFunctionKey(std::string_view token) {
    return ascii::lowerCase(token[0]) == 'f' && std::all_of(token.begin() + 1, token.end(), ascii::isDigit);
}

std::string caseOf(std::string_view token) {
    const bool hasCapitals = std::any_of(token.begin(), token.end(), isCapital);
    const bool hasOthers =
        std::any_of(token.begin(), token.end(), [](char c) { return ascii::isLetter(c) && !isCapital(c); });
    if (hasCapitals && hasOthers) {
        return "with some capitals";
    }
    return hasCapitals ? "in capitals" : "in lower case";
}

/// Says whether the modifiers and the key are joined by hyphens, as in "Ctrl-D".
bool isHyphenated(std::string_view token) {
    const std::size_t hyphen = token.find('-');
    return hyphen != std::string_view::npos && hyphen + 1 < token.size() &&
           !command::modifierNamed(token.substr(0, hyphen)).empty();
}

void addKey(std::string_view token, std::vector<SpellingChoice>& choices) {
    if (token.size() == 1 && ascii::isLetter(token[0])) {
        choices.push_back({"letters", isCapital(token[0]) ? "capitals" : "lower case"});
    } else if (isHyphenated(token)) {
        choices.push_back({kSign, inQuotes("-")});
    } else if (token.size() > 1 && isFunctionKey(token)) {
        choices.push_back({"function keys", caseOf(token)});
    } else if (token.size() > 1) {
        choices.push_back({"the key " + keyNamed(token), inQuotes(token)});
        choices.push_back({"named keys", caseOf(token), true});
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

/// Counts how often each spelling occurs, and finds the one that does most often.
struct Spellings {
    std::map<std::string, std::size_t> counts;
    std::string usual;
};

/// By what the choices are about.
using Spelled = std::map<std::string, Spellings>;

/// Each text once, with the number of those that have it: thousands of actions share some hundred shortcuts.
using Texts = std::unordered_map<std::string_view, std::size_t>;

Texts textsOf(const std::vector<WrittenShortcut>& shortcuts) {
    Texts texts;
    for (const WrittenShortcut& shortcut : shortcuts) {
        ++texts[shortcut.text];
    }
    return texts;
}

Spelled spelledIn(const Texts& texts) {
    Spelled all;
    for (const auto& [text, number] : texts) {
        for (const SpellingChoice& choice : choicesOf(text)) {
            all[choice.about].counts[choice.spelling] += number;
        }
    }
    for (auto& [about, spellings] : all) {
        const auto& counts = spellings.counts;
        spellings.usual = std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
                              return a.second < b.second;
                          })->first;
    }
    return all;
}

/// Returns the spelling that most others have where it is another one; the empty text otherwise.
std::string usualInstead(const SpellingChoice& choice, const Spelled& all) {
    const auto& [counts, usual] = all.at(choice.about);
    return counts.at(usual) >= kUsual * counts.at(choice.spelling) ? usual : std::string();
}

/// A choice and the spelling that most others have.
struct Difference {
    SpellingChoice choice;
    std::string usual;
};

/// Returns where a shortcut is spelled unlike most others. The case of all names is not told for a name that is itself
/// usually spelled otherwise: one reason is enough.
std::vector<Difference> differencesOf(std::string_view shortcut, const Spelled& all) {
    std::vector<Difference> differences;
    bool isLastDifferent = false;
    for (const SpellingChoice& choice : choicesOf(shortcut)) {
        const std::string usual = choice.isOfAllNames && isLastDifferent ? std::string() : usualInstead(choice, all);
        isLastDifferent = !usual.empty();
        if (isLastDifferent) {
            differences.push_back({choice, usual});
        }
    }
    return differences;
}

/// Returns one sentence for all that is spelled otherwise.
std::string messageOf(const std::vector<Difference>& differences) {
    std::string others;
    std::string own;
    for (const auto& [choice, usual] : differences) {
        const char* const joint = others.empty() ? "" : " and ";
        others += joint + choice.about + ' ' + usual;
        own += joint + choice.spelling;
    }
    return "The other shortcuts spell " + others + ", this one " + own + ", so it is another key for the library.";
}

}  // namespace

std::vector<SpellingChoice> choicesOf(std::string_view shortcut) {
    std::vector<SpellingChoice> choices;
    if (shortcut.empty() || std::count(shortcut.begin(), shortcut.end(), '+') > kMostParts) {
        return choices;
    }
    const std::vector<std::string_view> tokens = tokensOf(shortcut);
    std::vector<std::string> modifiers;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        modifiers.push_back(modifierMeant(tokens[i]));
        choices.push_back({"the modifier " + modifiers.back(), inQuotes(tokens[i])});
        choices.push_back({"modifiers", caseOf(tokens[i]), true});
    }
    addKey(tokens.back(), choices);
    addOrder(modifiers, choices);
    if (tokens.size() > 1) {
        const bool hasBlanks = shortcut.find(' ') != std::string_view::npos;
        choices.push_back({kSign, inQuotes("+")});
        choices.push_back({"the plus sign", hasBlanks ? "with blanks" : "without blanks"});
    }
    return choices;
}

void checkSpelling(const std::vector<WrittenShortcut>& shortcuts, Report& report) {
    const Texts texts = textsOf(shortcuts);
    const Spelled all = spelledIn(texts);
    std::unordered_map<std::string_view, std::string> messages;
    for (const auto& [text, number] : texts) {
        const std::vector<Difference> differences = differencesOf(text, all);
        if (!differences.empty()) {
            messages.emplace(text, messageOf(differences));
        }
    }
    if (messages.empty()) {
        return;
    }
    for (const WrittenShortcut& shortcut : shortcuts) {
        const auto found = shortcut.place ? messages.find(shortcut.text) : messages.end();
        if (found != messages.end()) {
            report.add(Rule::SpellingOfShortcut, shortcut.place, found->second);
        }
    }
}

}  // namespace zelutil::lint
