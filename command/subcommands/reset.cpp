// zelutil reset: gives settings their shipped defaults again.
#include <zelutil/host/save.h>

#include <memory>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/saved_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct ResetChoices {
    std::vector<std::string> names;
    bool all = false;
};

std::vector<host::SettingInfo> setByUser(const KnownSettings& known) {
    std::vector<host::SettingInfo> settings;
    for (const host::SettingInfo& setting : known.all()) {
        if (setting.setByUser) {
            settings.push_back(setting);
        }
    }
    return settings;
}

void reset(const ResetChoices& choices, Output& output) {
    if (choices.all != choices.names.empty()) {
        throw UsageError("A reset takes either names or --all.");
    }
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    const auto before = choices.all ? std::optional(setByUser(known)) : known.findAll(choices.names, output);
    if (!before) {
        return;
    }
    std::vector<std::string> names;
    for (const host::SettingInfo& setting : *before) {
        names.push_back(findableName(setting));
    }
    tellSaved(*before, host::reset(names), output);
}

Work declareReset(CLI::App& arguments) {
    const auto choices = std::make_shared<ResetChoices>();
    addTexts(arguments, "NAME", choices->names, "Settings, by bare or full name");
    arguments.add_flag("--all", choices->all, "Reset everything that the user has set");
    return [choices](Output& output) { reset(*choices, output); };
}

}  // namespace

const Subcommand kReset{"reset",
                        "Give settings their shipped defaults again and take them out of the user's file",
                        "$ zelutil reset grid",
                        FindingsAre::BesideResult,
                        declareReset,
                        Completes::Settings};

}  // namespace zelutil::command
