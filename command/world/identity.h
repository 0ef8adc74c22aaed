#ifndef ZELUTIL_COMMAND_WORLD_IDENTITY_H
#define ZELUTIL_COMMAND_WORLD_IDENTITY_H

#include <set>
#include <string>

namespace zelutil::command::world {

/// Tells by which names a machine knows its user and itself.
struct Identity {
    /// Names of the user and of the machine.
    std::set<std::string> words;
    /// The homes, as the library sees them and as other programs do, with separators between them.
    std::string homes;
};

/// Asks the machine in force, which may be that of a bundle.
Identity identityInForce();

}  // namespace zelutil::command::world

#endif
