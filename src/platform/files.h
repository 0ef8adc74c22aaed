#ifndef ZELUTIL_PLATFORM_FILES_H
#define ZELUTIL_PLATFORM_FILES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Directories and files. The rules for paths are those of platform.h.
namespace zelutil::platform {

/// The text of a path that another party wrote in the system's own form, as a Windows text: "/opt/x" => "Z:/opt/x"
/// where the system has no drives; a Windows text is returned as it stands.
std::string fromSystemPath(std::string_view text);

/// False for a text that no file can have as its path: the empty one and those that the rules exclude.
bool namesFile(const char* path);

/// The process's current directory, absolute, with backslashes; empty when the system does not tell. It may have
/// characters that no text of this encoding can name: they are replaced as the system replaces them.
std::string currentDirectory();

/// The same for a text that is to name the directory: empty also when it would name none or another one.
std::string namedCurrentDirectory();

/// Makes `path` the current directory. False when it is none or may not be entered.
bool changeDirectory(const char* path);

struct FileStatus {
    bool directory;
    /// Windows derives it from the extension (.exe, .com, .bat, .cmd) and sets it for directories.
    bool ownerExecute;
    bool ownerWrite;
    /// Bytes; whatever the system says of a directory.
    std::int64_t size;
};

/// Status of the file or directory, symbolic links followed; nothing when there is none.
std::optional<FileStatus> fileStatus(const char* path);

/// Renames a file or directory within one volume. False when it cannot be done, also when `to` exists, even if it was
/// made in this very moment; both are then as before.
bool renameFile(const char* from, const char* to);

/// Removes one file (of a symbolic link, the link). False for a directory and where it cannot be done.
bool removeFile(const char* path);

/// Makes the directory and its missing parents. True when it is there afterwards.
bool makeDirectories(const char* path);

/// Bytes of a regular file that others may have open, whole. Nothing when it cannot be opened or read, when it is no
/// regular file, or when it has more than `maximumSize` bytes (it is then not read at all). Where the system lets a
/// program shut others out of a file, reading waits for such a program, a tenth of a second at most.
std::optional<std::string> readFile(const char* path, std::uint64_t maximumSize);

/// Creates or truncates the file and writes `bytes`. False when any step fails; what is in the file is then undefined.
bool writeFile(const char* path, std::string_view bytes);

/// The same for a file that is to be made: false, and nothing changes, when something has that name, even if it was
/// made in this very moment. A symbolic link to nothing stays, and the file is made where it leads.
bool writeNewFile(const char* path, std::string_view bytes);

}  // namespace zelutil::platform

#endif
