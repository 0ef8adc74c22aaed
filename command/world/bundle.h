#ifndef ZELUTIL_COMMAND_WORLD_BUNDLE_H
#define ZELUTIL_COMMAND_WORLD_BUNDLE_H

#include <filesystem>
#include <string>
#include <vector>

#include "command/doctor/diagnosis.h"
#include "command/finding.h"
#include "command/world/manifest.h"
#include "command/world/redaction.h"

/// Makes a bundle: a directory that stands for the machine, with all that the command's output depends on.
namespace zelutil::command::world {

/// A file in a bundle.
struct BundledFile {
    enum class Kind {
        Copied,
        Redacted,
        StandIn,     ///< Only that it is there matters; it is empty.
        Unreadable,  ///< It cannot be read here either, or is too large to be read. It has the size, and no content.
    };

    /// The path on the machine, after the redaction.
    std::string path;
    Kind kind = Kind::StandIn;
};

/// Returns "copied", "redacted", "stand-in" or "unreadable".
const char* nameOf(BundledFile::Kind kind);

struct Bundle {
    std::vector<BundledFile> files;
    std::vector<std::string> variables;
    /// Holds what the doctor says of the bundle's machine.
    Diagnosis diagnosis;
    Findings findings;
};

/// Asks the machine in force all that the subcommands ask it, and puts that into a directory, which is empty. Throws
/// std::filesystem::filesystem_error where something cannot be written. The bundle's machine is in force afterwards.
Bundle makeBundle(const std::filesystem::path& directory, const Redaction& redaction);

}  // namespace zelutil::command::world

#endif
