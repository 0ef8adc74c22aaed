#ifndef ZELUTIL_COMMAND_LINT_SARIF_H
#define ZELUTIL_COMMAND_LINT_SARIF_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command/lint/report.h"

namespace zelutil::lint {

struct CheckedFile {
    std::string path;  ///< The system's own path, in UTF-8.
    std::vector<Finding> findings;
};

/// Returns the findings in the form of SARIF 2.1.0, which code hosts and editors show in place; nothing where the text
/// would be too large for a reader. `failure` says why some files were not checked; it is empty where all were.
std::optional<std::string> sarifText(const std::vector<CheckedFile>& files, const std::string& failure);

/// Returns the text as a SARIF message holds it: braces stand for arguments there and brackets for links, so each of
/// these signs is escaped.
///
///     "{\"id\": 1}" => "{{\"id\": 1}}"    "a[0]\\b" => "a\\[0\\]\\\\b"
std::string messageText(std::string_view text);

/// Tells what a backslash in a path is.
enum class PathForm {
    Posix,   ///< A character like others.
    Windows  ///< A separator.
};

inline constexpr PathForm kOwnPathForm =
    std::filesystem::path::preferred_separator == '/' ? PathForm::Posix : PathForm::Windows;

/// Returns the path as a reference of a URI: relative as it is, absolute with "file://".
///
///     "a dir/f.cfg" => "a%20dir/f.cfg"    "/f.cfg" => "file:///f.cfg"    "C:\\f.cfg" => "file:///C:/f.cfg"
///     "\\\\server\\share\\f.cfg" => "file://server/share/f.cfg"
std::string uriOf(std::string_view path, PathForm form = kOwnPathForm);

}  // namespace zelutil::lint

#endif
