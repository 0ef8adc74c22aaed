// zelutil report: everything on one page.
#include <algorithm>
#include <memory>

#include "command/arguments.h"
#include "command/explain/unread_user_file.h"
#include "command/html/result_file.h"
#include "command/report/report_content.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

int numberOf(std::size_t count) { return static_cast<int>(count); }

void writeCounts(JsonWriter& json, const report::Content& content) {
    const auto changed = std::count_if(content.settings.begin(), content.settings.end(),
                                       [](const report::Setting& setting) { return setting.info.setByUser; });
    json.member("settings", numberOf(content.settings.size()));
    json.member("changedSettings", static_cast<int>(changed));
    json.member("actions", numberOf(content.actions.size()));
    json.member("conflicts", numberOf(content.conflicts.size()));
    json.member("symptoms", numberOf(content.diagnosis.symptoms.size()));
}

void makeReport(const std::string& file, Output& output) {
    const report::Content content = report::contentHere();
    const std::optional<std::string> data = jsonOf(content);
    if (!data) {
        output.fail("There is too much for a page.", "\"zelutil list\" and \"zelutil doctor\" print parts of it.");
        return;
    }
    std::string page = report::pageOf(*data);
    output.members([&](JsonWriter& json) { writeCounts(json, content); });
    if (content.isUserFileUnread) {
        tellUnreadUserFile(output);
    }
    if (!file.empty()) {
        writePage(file, page, output);
        return;
    }
    page.pop_back();  // A line has its own end.
    output.line("{}", page);
}

Work declareReport(CLI::App& arguments) {
    const auto file = std::make_shared<std::string>();
    addName(arguments, "-o,--output", *file, "Write it into that file instead of printing it")->type_name("FILE");
    return [file](Output& output) { makeReport(*file, output); };
}

}  // namespace

const Subcommand kReport{"report", "Make a page with all settings, shortcuts and searches, to be read in a browser",
                         "$ zelutil report -o report.html\n"
                         "Written to report.html",
                         FindingsAre::BesideResult, declareReport};

}  // namespace zelutil::command
