// zelutil sheet: the shortcuts in force, to be printed.
#include <memory>

#include "command/arguments.h"
#include "command/html/result_file.h"
#include "command/pattern.h"
#include "command/sheet/sheet_rows.h"
#include "command/shortcuts/known_shortcuts.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

using shortcuts::KnownShortcuts;

struct SheetChoices {
    bool html = false;
    bool markdown = false;
    bool csv = false;
    std::string context;
    std::string file;
};

using SheetForm = std::string (*)(const sheet::Sheet&);

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && beginsWith(text.substr(text.size() - end.size()), end);
}

/// Returns whether the name of the file has an ending.
bool hasEnding(const std::string& file) { return file.find('.', file.find_last_of("/\\") + 1) != std::string::npos; }

/// Returns the form that an option names or else the ending of the file; Markdown where there is neither.
SheetForm formOf(const SheetChoices& choices) {
    if (choices.html + choices.markdown + choices.csv > 1) {
        throw UsageError("--html, --md and --csv are three forms, of which a sheet has one.");
    }
    if (choices.html || choices.markdown || choices.csv) {
        return choices.html ? sheet::htmlOf : choices.csv ? sheet::csvOf : sheet::markdownOf;
    }
    if (endsWith(choices.file, ".html") || endsWith(choices.file, ".htm")) {
        return sheet::htmlOf;
    }
    if (endsWith(choices.file, ".csv")) {
        return sheet::csvOf;
    }
    if (hasEnding(choices.file) && !endsWith(choices.file, ".md") && !endsWith(choices.file, ".txt")) {
        throw UsageError("The ending of \"" + choices.file +
                         "\" names no form: end it in .html, .md or .csv, or give --html, --md or --csv.");
    }
    return sheet::markdownOf;
}

void writeEntry(JsonWriter& json, const sheet::Entry& entry) {
    json.member("id", entry.id);
    json.member("name", entry.name);
    json.member("command", entry.command);
    json.member("shortcut", entry.shortcut);
    json.member("shipped", entry.shipped);
    json.member("changed", entry.changed);
    json.member("runs", entry.runs);
    json.member("remark", remarkOf(entry));
}

void writeContexts(JsonWriter& json, const sheet::Sheet& contexts) {
    json.objects("contexts", contexts, [&](const sheet::Context& context) {
        json.member("context", context.name);
        json.objects("shortcuts", context.entries, [&](const sheet::Entry& entry) { writeEntry(json, entry); });
    });
}

void makeSheet(const SheetChoices& choices, Output& output) {
    const SheetForm form = formOf(choices);
    const KnownShortcuts known(output);
    if (!known.areThere() || (!choices.context.empty() && !known.hasContext(choices.context, output))) {
        return;
    }
    const sheet::Sheet contexts = sheet::sheetOf(known.rows(), choices.context);
    if (contexts.empty()) {
        output.add({Severity::Note, "No action has a shortcut.", "", std::nullopt});
    }
    output.members([&](JsonWriter& json) { writeContexts(json, contexts); });
    std::string text = form(contexts);
    if (!choices.file.empty()) {
        writePage(choices.file, text, output);
        return;
    }
    text.pop_back();  // A line has its own end.
    output.line("{}", text);
}

Work declareSheet(CLI::App& arguments) {
    const auto choices = std::make_shared<SheetChoices>();
    arguments.add_flag("--html", choices->html, "Make a page with pictures of the keyboard");
    arguments.add_flag("--md", choices->markdown, "Make tables in Markdown");
    arguments.add_flag("--csv", choices->csv, "Make one table of comma-separated values");
    addName(arguments, "--context", choices->context, "Take only the actions of that context")->type_name("CONTEXT");
    addName(arguments, "-o,--output", choices->file,
            "Write it into that file, whose ending says the form where no option does")
        ->type_name("FILE");
    return [choices](Output& output) { makeSheet(*choices, output); };
}

}  // namespace

const Subcommand kSheet{"sheet", "Make a sheet of the shortcuts in force, to be printed",
                        "$ zelutil sheet --html -o shortcuts.html\n"
                        "Written to shortcuts.html",
                        FindingsAre::BesideResult, declareSheet};

}  // namespace zelutil::command
