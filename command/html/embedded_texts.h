#ifndef ZELUTIL_COMMAND_HTML_EMBEDDED_TEXTS_H
#define ZELUTIL_COMMAND_HTML_EMBEDDED_TEXTS_H

#include <string_view>

/// Files of the project that the build turns into texts of the program.
namespace zelutil::command::html {

extern const std::string_view kSheetCss;  ///< command/sheet/sheet.css

}  // namespace zelutil::command::html

#endif
