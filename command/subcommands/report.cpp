// zelutil report: everything on one page.
#include <algorithm>
#include <atomic>
#include <memory>

#include "command/arguments.h"
#include "command/explain/unread_user_file.h"
#include "command/html/result_file.h"
#include "command/progress.h"
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

struct Report {
    report::Content content;
    std::string page;  ///< Empty where there is too much for one.
};

/// Makes the page, which takes some seconds of a hundred thousand settings.
Report reportHere() {
    Report made;
    constexpr std::size_t kSteps = report::kStepsToContent + 2;
    workWithProgress(kSteps, 1, progressOnTerminal(), [&](std::atomic<std::size_t>& done) {
        made.content = report::contentHere(done);
        const std::optional<std::string> data = jsonOf(made.content);
        ++done;
        made.page = data ? report::pageOf(*data) : std::string();
    });
    return made;
}

void makeReport(const std::string& file, Output& output) {
    auto [content, page] = reportHere();
    if (page.empty()) {
        output.fail("There is too much for a page.", "\"zelutil list\" and \"zelutil doctor\" print parts of it.");
        return;
    }
    output.members([&, &shown = content](JsonWriter& json) { writeCounts(json, shown); });
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
