// zelutil diff: the settings that differ from their shipped defaults.
#include <algorithm>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

void diff(Output& output) {
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    std::vector<host::SettingInfo> different;
    std::copy_if(known.all().begin(), known.all().end(), std::back_inserter(different),
                 [](const auto& setting) { return setting.value != setting.defaultValue; });
    for (const host::SettingInfo& setting : different) {
        output.line("{}: {} -> {}", output.shown(Role::Name, setting.fullName),
                    output.shownValue(Role::Old, setting.defaultValue), output.shownValue(Role::Value, setting.value));
    }
    writeSettings(different, output);
}

}  // namespace

const Subcommand kDiff{"diff", "Show the settings that differ from the shipped defaults",
                       "$ zelutil diff\n"
                       "display::grids::grid: 0.635 -> 0.25",
                       FindingsAre::BesideResult, [](CLI::App&) -> Work { return diff; }};

}  // namespace zelutil::command
