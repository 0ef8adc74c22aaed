#ifndef ZELUTIL_TESTS_COMMAND_SHORTCUTS_WORLD_H
#define ZELUTIL_TESTS_COMMAND_SHORTCUTS_WORLD_H

#include <string>

#include "command/command_world.h"

namespace zelutil::test {

/// Three contexts, of which "ucpedit" and "brisk3d" are linked. Action 21 cannot follow its parent 2, because 22 holds
/// the shortcut in their context.
inline constexpr char kShortcutActions[] = R"({"actions":[
{"id":1,"name":"Fit","context":"ucpedit","command":"zoom fit","shortcut":"Home","rmb":true},
{"id":2,"name":"Move","context":"ucpedit","command":"move","shortcut":"M"},
{"id":3,"name":"Rotate","context":"ucpedit","command":"rotate","shortcut":"R"},
{"id":4,"name":"Lock","context":"ucpedit","command":"lock"},
{"id":11,"parent_id":1,"context":"brisk3d","command":"zoom fit"},
{"id":12,"name":"Orbit","context":"brisk3d","command":"orbit","shortcut":"O"},
{"id":21,"parent_id":2,"context":"panel","command":"move"},
{"id":22,"name":"Mark","context":"panel","command":"mark","shortcut":"M"}
]})";

/// Returns shipped defaults with these actions.
inline std::string defaultsWithActions(const std::string& actions) {
    return R"({"meta":[{"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"t","defaultsettings":)" +
           actions + "}]}";
}

/// Returns a user's text with these entries for the actions, such as {"id":1,"shortcut":"F1"}.
inline std::string userWithActions(const std::string& entries) {
    return R"({"meta":[{"header":"Keys","attribute":"keys","overriddensettings":[{"actions":[)" + entries + "]}]}]}";
}

/// A world whose installation has actions.
class ShortcutsWorld : public CommandWorld {
public:
    explicit ShortcutsWorld(const std::string& actions = kShortcutActions) {
        writeTextFile(defaultsFile(), defaultsWithActions(actions));
    }

    void writeUserActions(const std::string& entries) const { writeUser(userWithActions(entries)); }
};

}  // namespace zelutil::test

#endif
