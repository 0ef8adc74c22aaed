#ifndef ZELUTIL_TESTS_COMMAND_COMMAND_WORLD_H
#define ZELUTIL_TESTS_COMMAND_COMMAND_WORLD_H

#include <filesystem>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/installation_tree.h"
#include "support/temp_directory.h"
#include "support/text_file.h"
#include "support/twin_json.h"

namespace zelutil::test {

/// Two sections, of which one lies in the other, and a third one.
inline constexpr char kCommandDefaults[] = R"({"meta":[
{"header":"Display","attribute":"display","tclCommand":"t","defaultsettings":[
  {"name":"units","value":"mm"},{"name":"zoom","value":"2"}],"children":[
    {"header":"Grid","attribute":"grids","tclCommand":"t","defaultsettings":[
      {"name":"grid","value":"0.5"},{"name":"visible","value":"true"}]}]},
{"header":"Saving","attribute":"saving","tclCommand":"t","defaultsettings":[{"name":"autosave","value":"on"}]}
]})";

/// A user's text that sets "display::grids::grid" to 0.25.
inline constexpr char kCommandUser[] =
    R"({"meta":[{"header":"Display","attribute":"display","overriddensettings":[{"display::grids::grid":"0.25"}]}]})";

/// An installation with `kCommandDefaults` and a user's home, in which the built command is run as a process.
class CommandWorld {
public:
    CommandWorld() { writeTextFile(defaultsFile(), kCommandDefaults); }

    std::filesystem::path defaultsFile() const {
        return (product_ / "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg").make_preferred();
    }
    std::filesystem::path userFile() const { return (home_ / "pcbenv/tessel/tessel_settings.cfg").make_preferred(); }
    const TempDirectory& home() const { return home_; }

    void writeUser(const std::string& text) const { writeTextFile(userFile(), text); }

    ChildResult run(const std::vector<std::string>& arguments, const EnvironmentChanges& changes = {}) const {
        return test::run(process(ZELUTIL_TEST_COMMAND, arguments, changes, true));
    }

    /// Runs another program in the same surroundings.
    ChildResult runProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           const EnvironmentChanges& changes = {}) const {
        return test::run(process(program, arguments, changes, false));
    }

    /// Returns the JSON form without white space, as another parser than the library's reads it; empty where that
    /// cannot read it. The paths in it are the system's own.
    std::string json(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        const auto value = readTwinJson(run(arguments).out);
        return value ? compactText(*value) : std::string();
    }

private:
    ChildProcess process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                         const EnvironmentChanges& changes, bool outputInBytes) const {
        EnvironmentChanges environment = withoutProductVariables();
        const std::string home = windowsText(home_.path());
        environment["QTXROOT"] = systemText(product_.root());
        environment["HOMEDRIVE"] = home.substr(0, 2);
        environment["HOMEPATH"] = home.substr(2);
        environment["NO_COLOR"] = std::nullopt;
        for (const auto& [name, value] : changes) {
            environment[name] = value;
        }
        return {program, arguments, environment, home_.path(), outputInBytes};
    }

    InstallationTree product_;
    TempDirectory home_;
};

/// Returns the path as a JSON text has it.
inline std::string inJson(const std::filesystem::path& path) {
    std::string escaped;
    for (const char c : path.u8string()) {
        escaped += c == '\\' ? "\\\\" : std::string(1, c);
    }
    return escaped;
}

}  // namespace zelutil::test

#endif
