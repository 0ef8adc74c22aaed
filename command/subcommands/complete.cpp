// zelutil complete: what the shell offers while a command line is being typed. The script that asks for it is
// completion/zelutil.bash.
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/pattern.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/subcommands/table.h"
#include "command/text.h"
#include "command/world/bundled_world.h"

namespace zelutil::command {
namespace {

using Words = std::vector<std::string>;

Words namesOfSubcommands() {
    Words names;
    for (const Subcommand* const subcommand : subcommands()) {
        if (!subcommand->hidden) {
            names.emplace_back(subcommand->name);
        }
    }
    return names;
}

void addOptionsOf(const CLI::App& parser, Words& words) {
    for (const CLI::Option* const option : parser.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            words.push_back("--" + name);
        }
    }
}

Words beginningWith(const std::string& beginning, const Words& words) {
    Words chosen;
    std::copy_if(words.begin(), words.end(), std::back_inserter(chosen),
                 [&](const std::string& word) { return beginsWith(word, beginning); });
    return chosen;
}

/// Returns the full names that begin so, or where none does the bare ones.
Words namesOfSettings(const std::string& beginning, Output& output) {
    const KnownSettings known(output);
    Words full;
    Words bare;
    for (const host::SettingInfo& setting : known.all()) {
        full.push_back(setting.fullName);
        bare.insert(bare.end(), setting.bareNames.begin(), setting.bareNames.end());
    }
    const Words chosen = beginningWith(beginning, full);
    return chosen.empty() ? beginningWith(beginning, bare) : chosen;
}

Words argumentsFor(const Subcommand& subcommand, const std::string& beginning, Output& output) {
    if (subcommand.valuesOf != nullptr) {
        return beginningWith(beginning, subcommand.valuesOf(""));
    }
    if (subcommand.completes == Completes::Files || beginning.find('=') != std::string::npos) {
        return {};
    }
    Words names = namesOfSettings(beginning, output);
    if (subcommand.completes == Completes::Assignments) {
        std::for_each(names.begin(), names.end(), [](std::string& name) { name += '='; });
    }
    return names;
}

/// Returns the subcommand among the words that are there already, or null.
const Subcommand* subcommandAmong(const Words& words) {
    for (const std::string& word : words) {
        for (const Subcommand* const subcommand : subcommands()) {
            if (word == subcommand->name) {
                return subcommand;
            }
        }
    }
    return nullptr;
}

Words optionsFor(const CLI::App& app, const Subcommand* subcommand) {
    Words options;
    if (subcommand != nullptr) {
        addOptionsOf(*app.get_subcommand(subcommand->name), options);
    }
    addOptionsOf(app, options);
    std::sort(options.begin(), options.end());
    options.erase(std::unique(options.begin(), options.end()), options.end());
    return options;
}

/// Returns whether a value stands behind the option.
bool takesValue(const CLI::App& app, const Subcommand* subcommand, const std::string& option) {
    const CLI::Option* known = app.get_option_no_throw(option);
    if (known == nullptr && subcommand != nullptr) {
        known = app.get_subcommand(subcommand->name)->get_option_no_throw(option);
    }
    return !option.empty() && option.front() == '-' && known != nullptr && known->get_items_expected_max() > 0;
}

/// Returns the words in their order, without those that are there already.
Words eachOnce(const Words& words) {
    Words once;
    std::unordered_set<std::string> known;
    std::copy_if(words.begin(), words.end(), std::back_inserter(once),
                 [&](const std::string& word) { return known.insert(word).second; });
    return once;
}

/// Returns what the option takes; nothing where that is a file or not known.
Words valuesBehind(const std::string& option, const Subcommand* subcommand, Output& output) {
    if (option == "--color") {
        return {"auto", "always", "never"};
    }
    if (option == "--section") {
        return KnownSettings(output).areThere() ? eachOnce(sectionsAndGroups()) : Words();
    }
    if (option == "--context") {
        return shortcuts::contextsOf(shortcuts::KnownShortcuts(output).rows());
    }
    return subcommand == nullptr || subcommand->valuesOf == nullptr ? Words() : subcommand->valuesOf(option);
}

/// Returns the ids of the actions that the user has changed and that are not among the words yet.
Words changedActions(const Words& words, Output& output) {
    Words ids;
    const shortcuts::KnownShortcuts known(output);
    for (const shortcuts::ShortcutRow& row : known.rows()) {
        std::string id = std::to_string(row.action.id);
        const bool isNamed = std::find(words.begin(), words.end(), id) != words.end();
        if (isChangedByUser(row) && row.action.item.parent_id < 1 && !isNamed) {
            ids.push_back(std::move(id));
        }
    }
    return ids;
}

/// `words` are those behind the program's name, the one that is being typed last.
Words candidates(const CLI::App& app, Words words, Output& output) {
    const std::string typed = words.empty() ? std::string() : words.back();
    if (!words.empty()) {
        words.pop_back();
    }
    const std::string before = words.empty() ? std::string() : words.back();
    const Subcommand* const subcommand = subcommandAmong(words);
    if (takesValue(app, subcommand, before)) {
        return beginningWith(typed, valuesBehind(before, subcommand, output));
    }
    const std::string option = typed.substr(0, typed.find('='));
    if (option.size() < typed.size() && takesValue(app, subcommand, option)) {
        Words values = valuesBehind(option, subcommand, output);
        std::for_each(values.begin(), values.end(), [&](std::string& value) { value.insert(0, option + '='); });
        return beginningWith(typed, values);
    }
    if (!typed.empty() && typed.front() == '-') {
        return beginningWith(typed, optionsFor(app, subcommand));
    }
    if (subcommand == &kReset && std::find(words.begin(), words.end(), "--shortcuts") != words.end()) {
        return beginningWith(typed, changedActions(words, output));
    }
    return subcommand == nullptr ? beginningWith(typed, namesOfSubcommands())
                                 : argumentsFor(*subcommand, typed, output);
}

/// Returns the bundle that is named before the word that is being typed; the empty text for none.
std::string bundleAmong(const Words& words) {
    constexpr std::string_view kOption = "--world";
    std::string bundle;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == kOption && i + 2 < words.size()) {
            bundle = words[i + 1];
        } else if (beginsWith(word, std::string(kOption) + '=')) {
            bundle = word.substr(kOption.size() + 1);
        }
    }
    return bundle;
}

/// Returns whether what is offered is what the command line itself would find: that of a bundle, if it names one.
bool enterWorldAmong(const Words& words) {
    const std::string bundle = bundleAmong(words);
    return bundle.empty() || !world::enterWorld(pathOf(bundle));
}

Work declareComplete(CLI::App& arguments) {
    const auto words = std::make_shared<Words>();
    addTexts(arguments, "WORD", *words, "The words behind the program's name, the last of which is being typed");
    return [words, &arguments](Output& output) {
        if (!enterWorldAmong(*words)) {
            return;
        }
        for (const std::string& candidate : candidates(*arguments.get_parent(), *words, output)) {
            output.line("{}", candidate);
        }
    };
}

}  // namespace

const Subcommand kComplete{"complete",
                           "Print what may stand at the end of a command line",
                           "$ zelutil complete -- get display::",
                           FindingsAre::BesideResult,
                           declareComplete,
                           Completes::Files,
                           true};

}  // namespace zelutil::command
