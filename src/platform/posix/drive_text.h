#ifndef ZELUTIL_PLATFORM_POSIX_DRIVE_TEXT_H
#define ZELUTIL_PLATFORM_POSIX_DRIVE_TEXT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Translation between Windows path texts and the paths of a system without drives, on which "Z:" is the root
/// directory. Pure text.
namespace zelutil::platform {

/// The system's path for a Windows text; nothing when the text names no file.
///
///     Z:\home\ann   => /home/ann        z:/home\\ann => /home/ann      Z:    => /
///     \home\ann     => /home/ann        notes.txt    => notes.txt      Z:a   => a
///     C:\home, \\server\share, a?b, the empty text => nothing
std::optional<std::string> systemPathFromText(std::string_view text);

/// Writes the system's path for a Windows text and a zero into a buffer. Returns false for a text that names no file,
/// needs more than other separators, is short or has no room there; `systemPathFromText` takes them all.
///
/// "file not found over eight candidates" of bench/find_bench.cpp asks for many files that are not there, each by a
/// text of its own.
bool copySystemPath(std::string_view text, char* buffer, std::size_t size);

/// The Windows text for a system's path: an absolute one gets the drive in front, another stands as it is.
///
///     /opt/product => Z:/opt/product    Z:/opt => Z:/opt    notes.txt => notes.txt
std::string textFromSystemPath(std::string_view path);

/// The ";" list of Windows texts for a ":" list of the system's paths. Empty entries stay.
std::string textListFromSystemList(std::string_view list);

}  // namespace zelutil::platform

#endif
