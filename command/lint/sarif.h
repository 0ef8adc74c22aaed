#ifndef ZELUTIL_COMMAND_LINT_SARIF_H
#define ZELUTIL_COMMAND_LINT_SARIF_H

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
/// would be too large for a reader.
std::optional<std::string> sarifText(const std::vector<CheckedFile>& files);

/// Returns the path as a reference of a URI: relative as it is, absolute with "file://".
///
///     "a dir/f.cfg" => "a%20dir/f.cfg"    "/f.cfg" => "file:///f.cfg"    "C:\\f.cfg" => "file:///C:/f.cfg"
std::string uriOf(std::string_view path);

}  // namespace zelutil::lint

#endif
