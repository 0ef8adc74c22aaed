#ifndef ZELUTIL_PLATFORM_PLATFORM_H
#define ZELUTIL_PLATFORM_PLATFORM_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The one door to the operating system, and the guide for porting the library: one folder per system defines
/// these functions, with the same file names in each. Threads and critical sections follow in threads.h.
///
/// Every path that crosses this header is a Windows text in the narrow (ANSI) encoding: backslash or slash separates,
/// a drive letter and a colon may lead. Where the system has no drives, the drive "Z:" is its root directory: a text
/// with another drive letter, a network text (two leading separators) and a text that holds one of `" * ? < > |` names
/// no file. A drive letter and a colon alone name the drive's root directory.
///
/// No function prints. None throws but for lack of memory.
namespace zelutil::platform {

// --- Fixed texts ----------------------------------------------------------------------------------------------------

/// Directory for temporary files where the environment names none.
const char* fixedTemporaryDirectory();

/// File name of this library, without a directory: "zelutil.dll", "libzelutil.so".
const char* libraryFileName();

/// The text of a path that another party wrote in the system's own form, as a Windows text: "/opt/x" => "Z:/opt/x"
/// where the system has no drives; a Windows text is answered as it stands.
std::string fromSystemPath(std::string_view text);

// --- Environment ----------------------------------------------------------------------------------------------------

/// Text of the variable as it stands, or nothing when it is not defined. Defined but empty is a value.
std::optional<std::string> environment(const char* name);

/// The same for a variable that holds one whole path: the value comes as a Windows text.
std::optional<std::string> environmentPath(const char* name);

/// The same for a list of directories: the entries are Windows texts separated by ";".
std::optional<std::string> environmentPathList(const char* name);

// --- Directories and files ------------------------------------------------------------------------------------------

/// The process's current directory, absolute, with backslashes; empty when the system does not tell.
std::string currentDirectory();

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

/// Renames a file or directory within one volume. False when it cannot be done, also when `to` exists.
bool renameFile(const char* from, const char* to);

/// Removes one file (of a symbolic link, the link). False for a directory and where it cannot be done.
bool removeFile(const char* path);

/// Makes the directory and its missing parents. True when it is there afterwards.
bool makeDirectories(const char* path);

/// Bytes of a regular file that others may have open, whole. Nothing when it cannot be opened or read, when it is no
/// regular file, or when it has more than `maximumSize` bytes (it is then not read at all).
std::optional<std::string> readFile(const char* path, std::uint64_t maximumSize);

/// Creates or truncates the file and writes `bytes`. False when any step fails; what is in the file is then undefined.
bool writeFile(const char* path, std::string_view bytes);

// --- Modules --------------------------------------------------------------------------------------------------------

/// Full path of the file this code was loaded from (the library, or a program that holds it in static form); empty when
/// the system does not tell.
std::string modulePath();

/// The module with this base name ("qtxCommon" is qtxCommon.dll or libqtxCommon.so): the one already in the process,
/// else the one beside this library, else the one where the loader looks by default, never one of the current
/// directory. It stays loaded. Null when there is none. Not to be called while this library is being loaded or
/// unloaded.
void* openModule(const char* baseName);

/// The function of that C name in `module`, or null.
void* moduleFunction(void* module, const char* name);

}  // namespace zelutil::platform

#endif
