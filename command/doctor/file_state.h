#ifndef ZELUTIL_COMMAND_DOCTOR_FILE_STATE_H
#define ZELUTIL_COMMAND_DOCTOR_FILE_STATE_H

#include <string>

#include "command/doctor/diagnosis.h"

namespace zelutil::command {

enum class FileUse {
    Shipped,  ///< It comes with the product and is read only.
    Users,    ///< Saves write it.
};

/// Looks at a file that the library opens by this text, which may be empty.
FileState stateOfFile(const std::string& path, FileUse use);

/// Returns the nearest thing that is there in the place of one of the file's directories and is none; empty for none.
std::string blockerOf(const std::string& path);

/// Returns the topmost directory above the file that is not there; empty where all are, or where there is no such path.
std::string topmostMissingDirectory(const std::string& path);

}  // namespace zelutil::command

#endif
