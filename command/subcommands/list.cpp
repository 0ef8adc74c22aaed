// zelutil list: settings and their values, all or some.
#include <algorithm>
#include <memory>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/nearest_names.h"
#include "command/pattern.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct ListChoices {
    std::string pattern;
    std::string section;
    bool changed = false;
};

/// Returns whether the section is the wanted one or lies below it.
bool isWithin(const std::string& section, const std::string& wanted) {
    return beginsWith(section + "::", wanted + "::");
}

bool isChosen(const host::SettingInfo& setting, const ListChoices& choices) {
    return (!choices.changed || setting.setByUser) &&
           (choices.section.empty() || isWithin(setting.section, choices.section)) &&
           (choices.pattern.empty() || matches(choices.pattern, setting.fullName));
}

/// Tells a section that is none, so that nothing can be listed.
void checkSection(const std::string& wanted, Output& output) {
    const std::vector<std::string> sections = sectionsAndGroups();
    const bool isKnown =
        std::any_of(sections.begin(), sections.end(), [&](const auto& section) { return isWithin(section, wanted); });
    if (!wanted.empty() && !isKnown) {
        std::string advice = questionAbout(nearestNames(wanted, sections));
        if (advice.empty()) {
            advice = "\"zelutil list\" shows all settings with their sections.";
        }
        output.add({Severity::Error, "There is no section \"" + wanted + "\".", std::move(advice), std::nullopt});
    }
}

std::vector<host::SettingInfo> chosen(const KnownSettings& known, const ListChoices& choices) {
    std::vector<host::SettingInfo> settings;
    std::copy_if(known.all().begin(), known.all().end(), std::back_inserter(settings),
                 [&](const auto& setting) { return isChosen(setting, choices); });
    return settings;
}

void list(const ListChoices& choices, Output& output) {
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    checkSection(choices.section, output);
    const std::vector<host::SettingInfo> settings = chosen(known, choices);
    if (settings.empty()) {
        output.add({Severity::Note, "No setting is as asked for.", "", std::nullopt});
    }
    showSettings(settings, output);
}

Work declareList(CLI::App& arguments) {
    const auto choices = std::make_shared<ListChoices>();
    addName(arguments, "PATTERN", choices->pattern,
            "Part of a full name, or a pattern for all of it with * for any text and ? for a character");
    arguments.add_flag("--changed", choices->changed, "List only what the user has set");
    addName(arguments, "--section", choices->section, "List only that section and those in it")->type_name("SECTION");
    return [choices](Output& output) { list(*choices, output); };
}

}  // namespace

const Subcommand kList{"list", "List settings with their values",
                       "$ zelutil list --section general::locale '*::lang*'\n"
                       "general::locale::language=en",
                       FindingsAre::BesideResult, declareList};

}  // namespace zelutil::command
