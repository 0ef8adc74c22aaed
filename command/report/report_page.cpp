// The page is made of files of its own, which the build has turned into texts.
#include <string_view>

#include "command/html/embedded_texts.h"
#include "command/html/html_text.h"
#include "command/report/report_content.h"

namespace zelutil::command::report {
namespace {

/// Appends what stands before the mark, and takes it and the mark off the text.
void appendUpTo(std::string_view mark, std::string_view& text, std::string& page) {
    const std::size_t end = text.find(mark);
    page += text.substr(0, end);
    text.remove_prefix(end + mark.size());
}

}  // namespace

std::string pageOf(std::string_view json) {
    std::string_view rest = html::kReportPage;
    std::string page;
    appendUpTo("{{style}}", rest, page);
    page += html::kReportCss;
    appendUpTo("{{data}}", rest, page);
    page += html::asScriptData(json);
    appendUpTo("{{script}}", rest, page);
    page += html::kReportGridJs;
    page += html::kReportJs;
    return page.append(rest);
}

}  // namespace zelutil::command::report
