#ifndef ZELUTIL_COMMAND_TEXT_H
#define ZELUTIL_COMMAND_TEXT_H

#include <zelutil/file/path.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "zelutil/file/path.h"

/// Texts as the command takes and prints them, which is in UTF-8 on every system.
namespace zelutil::command {

/// Returns the text with U+FFFD in place of each byte that is no part of UTF-8.
std::string validUtf8(std::string_view text);

/// The bytes of a text that are no part of UTF-8.
struct BadBytes {
    std::size_t first = 0;  ///< The place of the first of them.
    std::size_t count = 0;
};

/// Returns them; nothing where the text is UTF-8.
std::optional<BadBytes> badBytesOf(std::string_view text);

/// Returns "0xE4".
std::string nameOfByte(char byte);

/// Returns the text as a line of a terminal shows it: as `validUtf8`, and with control characters spelled out.
///
///     "a\tb" => "a\\tb"    "\x1b[31m" => "\\x1b[31m"
std::string printable(std::string_view text);

/// Returns the beginning of the text, of at most `most` bytes, that ends with a whole character.
std::string beginningOf(std::string_view text, std::size_t most);

/// Returns the system's own path, as people write it.
std::string textOf(const std::filesystem::path& path);

/// Returns the path as the library spells it.
std::string libraryText(const ZelU::File::Path& path);

/// Returns the system's spelling of a path of the library, such as `SaveResult::path`.
std::string nativeText(const std::string& libraryPath);

/// Returns the system's own path for one of the library, without the quotes that a blank puts it into; as it stands
/// where it names no file.
std::string nativeOrAsItStands(std::string libraryPath);

/// Returns whether a path of the library names no file only because the system has no such drive, as Linux has Z:
/// alone.
bool hasUnknownDrive(const std::string& libraryPath);
inline constexpr char kOnlyDrive[] =
    "The only drive is Z:, which is the root directory: name the file, or the home in HOMEDRIVE, so.";

/// Returns the path that an argument names.
std::filesystem::path pathOf(const std::string& argument);

}  // namespace zelutil::command

#endif
