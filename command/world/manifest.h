#ifndef ZELUTIL_COMMAND_WORLD_MANIFEST_H
#define ZELUTIL_COMMAND_WORLD_MANIFEST_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "command/system/console.h"
#include "command/world/mirror.h"
#include "platform/modules.h"

namespace zelutil::command::world {

/// Records what the library was told by the closed common library.
struct CommonLibrary {
    /// Lists where its module was looked for.
    std::vector<platform::ModulePlace> places;
    bool isThere = false;
    std::vector<std::string> missingFunctions;
    std::optional<std::string> toolsPath;
    bool initDone = true;
    bool canSearch = false;
    /// Names what the search for the user's file found.
    std::optional<std::string> found;
};

/// Says of files and directories, by paths without links, whether something holds for them.
using Rights = std::map<std::filesystem::path, bool>;

/// Says of paths why the system does not tell whether something is there.
using Reasons = std::map<std::filesystem::path, std::errc>;

/// Describes the machine of a bundle beside the files. All texts are as that machine has them.
struct Manifest {
    static constexpr int kFormat = 1;

    /// "posix" or "windows".
    std::string system;
    bool redacted = false;
    std::filesystem::path directory;
    /// The library's own file, as `platform::modulePath` returns it.
    std::string module;
    /// The variables that were asked for and are defined.
    std::map<std::string, std::string> variables;
    Links links;
    /// The links in the places of directories that lead to nothing.
    Links deadDirectories;
    /// The user and the machine; empty in a bundle of an earlier version.
    Account account;
    /// The files that are there and cannot be read, by paths without links.
    std::set<std::filesystem::path> unreadable;
    Rights writeable;
    Reasons hidden;
    CommonLibrary commonLibrary;
};

/// Returns the name of the system that this program runs on, as a manifest has it.
const char* nameOfThisSystem();

/// Returns the text of the file; nothing where it would be too large.
std::optional<std::string> textOfManifest(const Manifest& manifest);

/// Returns nothing for a text that is no manifest of this format, and for one with a path that leads out of the bundle.
/// Of one of another system only its name is returned, because its paths are none here. What is of another type than it
/// should be counts as empty or false.
std::optional<Manifest> manifestOf(std::string_view text);

}  // namespace zelutil::command::world

#endif
