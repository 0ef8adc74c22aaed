// zelutil set: gives settings values, by the library's own save.
#include <zelutil/host/save.h>

#include <map>
#include <memory>

#include "command/arguments.h"
#include "command/known_settings.h"
#include "command/saved_settings.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

struct Assignment {
    std::string name;
    std::string value;
};

Assignment assignmentOf(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("\"" + text + "\" is no assignment, which is NAME=VALUE.");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::vector<Assignment> assignmentsOf(const std::vector<std::string>& texts) {
    std::vector<Assignment> assignments;
    for (const std::string& text : texts) {
        assignments.push_back(assignmentOf(text));
    }
    return assignments;
}

/// Bare and full names may mean one setting, which has one value.
void checkEachOnce(const std::vector<Assignment>& assignments, const std::vector<host::SettingInfo>& settings) {
    std::map<std::string, std::string> names;
    for (std::size_t number = 0; number < settings.size(); ++number) {
        const auto [other, isNew] = names.emplace(settings[number].fullName, assignments[number].name);
        if (!isNew) {
            throw UsageError("\"" + other->second + "\" and \"" + assignments[number].name +
                             "\" are the same setting.");
        }
    }
}

void set(const std::vector<std::string>& texts, Output& output) {
    const std::vector<Assignment> assignments = assignmentsOf(texts);
    const KnownSettings known(output);
    if (!known.areThere()) {
        return;
    }
    std::vector<std::string> names;
    std::map<std::string, std::string> values;
    for (const auto& [name, value] : assignments) {
        names.push_back(name);
        values[name] = value;
    }
    const std::optional<std::vector<host::SettingInfo>> before = known.findAll(names, output);
    if (!before) {
        return;
    }
    checkEachOnce(assignments, *before);
    tellSaved(*before, host::save(values), output);
}

Work declareSet(CLI::App& arguments) {
    const auto assignments = std::make_shared<std::vector<std::string>>();
    addTexts(arguments, "SETTING", *assignments, "Settings, by bare or full name, with their new values")
        ->required()
        ->type_name("NAME=VALUE");
    return [assignments](Output& output) { set(*assignments, output); };
}

}  // namespace

const Subcommand kSet{"set",
                      "Give settings values and save them in the user's file",
                      "$ zelutil set grid=0.25 units=mil",
                      FindingsAre::BesideResult,
                      declareSet,
                      Completes::Assignments};

}  // namespace zelutil::command
