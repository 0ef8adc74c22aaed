#ifndef ZELUTIL_COMMAND_DOCTOR_FILE_STATE_H
#define ZELUTIL_COMMAND_DOCTOR_FILE_STATE_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "command/doctor/diagnosis.h"
#include "command/section_owners.h"
#include "json/located_document.h"

namespace zelutil::command {

enum class FileUse {
    Shipped,  ///< It comes with the product and is read only.
    Users,    ///< Saves write it.
};

/// The bytes of a file that is JSON. They are parsed once for all that is asked of them.
struct ReadFile {
    explicit ReadFile(std::string bytes) : text(std::move(bytes)), document(text) {}
    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;

    const std::string text;
    const json::LocatedDocument document;
};

struct FileLook {
    FileState state;
    /// Null unless the state is `FileState::Kind::Fine`.
    std::unique_ptr<const ReadFile> read;
};

/// Looks at a file that the library opens by this text, which may be empty. The sections that are there twice and what
/// a save would leave out are not told: that takes the defaults.
FileLook lookAtFile(const std::string& path, FileUse use);

/// Returns the state alone.
inline FileState stateOfFile(const std::string& path, FileUse use) { return lookAtFile(path, use).state; }

/// Returns the attribute paths that an earlier section of a file has too, where the later one stands. A file of the
/// defaults has no owners.
std::vector<FileState::Remark> repeatedSectionsIn(const ReadFile& file, const SectionOwners& owners);

/// Returns the nearest thing that is there in the place of one of the file's directories and is none; empty for none.
std::string blockerOf(const std::string& path);

/// Returns the topmost directory above the file that is not there; empty where all are, or where there is no such path.
std::string topmostMissingDirectory(const std::string& path);

}  // namespace zelutil::command

#endif
