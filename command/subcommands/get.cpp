// zelutil get: the values of settings.
#include <memory>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct Choices {
    std::vector<std::string> names;
    bool valueOnly = false;
};

void get(const Choices& choices, Output& output) {
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    const std::vector<host::SettingInfo> settings = known.find(choices.names, output);
    for (const host::SettingInfo& setting : settings) {
        if (choices.valueOnly) {
            output.line("{}", setting.value);
        } else {
            output.line("{}={}", output.shown(Role::Name, setting.fullName), output.shown(Role::Value, setting.value));
        }
    }
    output.members([&](JsonWriter& json) {
        json.objects("settings", settings, [&](const auto& setting) { writeSetting(json, setting); });
    });
}

Work declare(CLI::App& arguments) {
    const auto choices = std::make_shared<Choices>();
    addTexts(arguments, "NAME", choices->names, "Settings, by bare or full name")->required();
    arguments.add_flag("--value", choices->valueOnly, "Print the values alone, as they stand");
    return [choices](Output& output) { get(*choices, output); };
}

}  // namespace

const Subcommand kGet{"get", "Print the values of settings",
                      "$ zelutil get grid\n"
                      "display::grids::grid=0.635",
                      FindingsAre::BesideResult, declare};

}  // namespace zelutil::command
