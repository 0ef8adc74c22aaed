#ifndef ZELUTIL_PLATFORM_WINDOWS_REPLACE_RULES_H
#define ZELUTIL_PLATFORM_WINDOWS_REPLACE_RULES_H

#include <optional>
#include <string>
#include <string_view>

#include "platform/windows/windows_h.h"

/// The decisions of replacing a file that need values only, for the sources of the Windows seam only.
namespace zelutil::platform::windows {

/// Returns the attributes of a file that replaces one with the attributes `old`. It is not backed up yet, whatever that
/// one was.
DWORD attributesOfNewFile(DWORD old);

/// Returns whether a stream of that name, as the system lists it, is another than the contents: ":note:$DATA" is.
bool isNamedStream(std::wstring_view name);

/// Returns `path`, or the extended form of `fullPath` where names made beside it would be longer than the system takes
/// otherwise. A path that is itself too long stays as it is.
///
///     C:\a\b => C:\a\b                                      C:\<250 characters> => \\?\C:\<250 characters>
///     \\server\share\<240 characters> => \\?\UNC\server\share\<240 characters>
std::wstring pathWithRoomBeside(const std::wstring& path, const std::wstring& fullPath);

/// Returns the path that a symbolic link's reparse data name; `link` is the link's own path. Nothing when the data are
/// those of something else, or damaged.
///
///     C:\a\link, relative "..\b"  => C:\a\..\b              C:\a\link, "\??\D:\b" => D:\b
///     C:\a\link, "\??\UNC\s\x"    => \\s\x                  \\?\C:\a\link, relative "..\b" => C:\a\..\b
std::optional<std::wstring> targetOfLink(std::string_view reparseData, const std::wstring& link);

}  // namespace zelutil::platform::windows

#endif
