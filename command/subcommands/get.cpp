// zelutil get: the values of settings.
#include <memory>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct GetChoices {
    std::vector<std::string> names;
    bool valueOnly = false;
};

void get(const GetChoices& choices, Output& output) {
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    const std::vector<host::SettingInfo> settings = known.find(choices.names, output);
    if (!choices.valueOnly) {
        showSettings(settings, output);
        return;
    }
    for (const host::SettingInfo& setting : settings) {
        output.line("{}", setting.value);
    }
    writeSettings(settings, output);
}

Work declareGet(CLI::App& arguments) {
    const auto choices = std::make_shared<GetChoices>();
    addTexts(arguments, "NAME", choices->names, "Settings, by bare or full name")->required();
    arguments.add_flag("--value", choices->valueOnly, "Print the values alone, as they stand");
    return [choices](Output& output) { get(*choices, output); };
}

}  // namespace

const Subcommand kGet{"get",
                      "Print the values of settings",
                      "$ zelutil get grid\n"
                      "display::grids::grid=0.635",
                      FindingsAre::BesideResult,
                      declareGet,
                      Completes::Settings};

}  // namespace zelutil::command
