#ifndef ZELUTIL_COMMAND_HTML_EMBEDDED_TEXTS_H
#define ZELUTIL_COMMAND_HTML_EMBEDDED_TEXTS_H

#include <string_view>

/// Files of the project that the build turns into texts of the program.
namespace zelutil::command::html {

extern const std::string_view kSheetCss;      ///< command/sheet/sheet.css
extern const std::string_view kReportPage;    ///< command/report/page.html
extern const std::string_view kReportCss;     ///< command/report/report.css
extern const std::string_view kReportGridJs;  ///< command/report/grid.js
extern const std::string_view kReportJs;      ///< command/report/report.js

}  // namespace zelutil::command::html

#endif
