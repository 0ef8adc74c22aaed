// zelutil manual: the manual page, made of what the parsers know, so that it is in step with them.
#include <zelutil/version.h>

#include "command/arguments.h"
#include "command/subcommands/table.h"

namespace zelutil::command {
namespace {

/// Returns the text as roff prints it: a hyphen may not become a dash, nor a line that begins with a point a request.
std::string roff(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        const bool beginsLine = escaped.empty() || escaped.back() == '\n';
        if (beginsLine && (c == '.' || c == '\'')) {
            escaped += "\\&";
        }
        switch (c) {
            case '\\':
                escaped += "\\e";
                break;
            case '-':
                escaped += "\\-";
                break;
            case '\'':
                escaped += "\\(aq";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

void paragraph(Output& output, std::string_view title, std::string_view text) {
    output.line(".SH {}\n{}", title, text);
}

void definition(Output& output, const std::string& term, const std::string& text) {
    output.line(".TP\n{}\n{}", term, roff(text));
}

/// Returns an option as it is typed, with a word for its value.
std::string termOf(const CLI::Option& option) {
    const std::string name = option.get_positional() ? option.get_name(true, false) : option.get_name(false, true);
    std::string term = "\\fB" + roff(name) + "\\fR";
    return option.get_type_name().empty() ? term : term + " \\fI" + roff(option.get_type_name()) + "\\fR";
}

void addOptions(const CLI::App& parser, Output& output) {
    for (const CLI::Option* const option : parser.get_options()) {
        if (option != parser.get_help_ptr()) {
            definition(output, termOf(*option), option->get_description() + ".");
        }
    }
}

std::string synopsisOf(const CLI::App& parser) {
    std::string synopsis = "\\fBzelutil " + roff(parser.get_name()) + "\\fR";
    for (const CLI::Option* const option : parser.get_options()) {
        if (option->get_positional()) {
            const std::string name = "\\fI" + roff(option->get_name(true, false)) + "\\fR";
            const bool isList = option->get_allow_extra_args();
            const std::string words = isList ? name + "..." : name;
            synopsis += option->get_required() ? ' ' + words : " [" + words + ']';
        }
    }
    return synopsis + " [\\fIoptions\\fR]";
}

void addSubcommand(const Subcommand& subcommand, const CLI::App& parser, Output& output) {
    output.line(".SS {}\n{}.", synopsisOf(parser), roff(subcommand.description));
    addOptions(parser, output);
    output.line(".PP\n.nf\n.RS\n{}\n.RE\n.fi", roff(subcommand.example));
}

void addSubcommands(const CLI::App& app, Output& output) {
    output.line(".SH SUBCOMMANDS");
    for (const Subcommand* const subcommand : subcommands()) {
        if (!subcommand->hidden) {
            addSubcommand(*subcommand, *app.get_subcommand(subcommand->name), output);
        }
    }
}

void addSurroundings(Output& output) {
    output.line(".SH EXIT STATUS");
    definition(output, "0", "Fine.");
    definition(
        output, "1",
        "Done, and there are findings: warnings or errors. Where a name is unknown among those of set or reset, it "
        "is a finding too, and nothing was done.");
    definition(output, "2", "Called wrongly; nothing was done.");
    definition(output, "3", "It could not be done.");
    output.line(".SH ENVIRONMENT");
    definition(output, "QTXROOT, QTX_ROOT, QTXINSTDIR",
               "Name the root of the installation, where the command does not lie in its tools/bin.");
    definition(output, "PATH", "Is searched for the installation where none of these names it.");
    definition(output, "tessel_settings", "Names the file of the shipped defaults.");
    definition(output, "HOMEDRIVE, HOMEPATH",
               "Name the user's home directory, in which the user's file is pcbenv/tessel/tessel_settings.cfg. Outside "
               "Windows the drive Z: is the root directory.");
    definition(output, "QTX_SITE", "Names the site's directory, in which some files are looked for first.");
    definition(output, "regression_testing",
               "Has the user's file written in the current directory, where it is set to anything.");
    definition(output, "QTX_ZELUTIL_DEBUG",
               "Has the library print lines of its own, which stand on standard error here.");
    definition(output, "NO_COLOR", "Has no colours used where it is set and not empty; --color goes before it.");
}

void writeManual(const CLI::App& app, Output& output) {
    output.line(".TH ZELUTIL 1 \"\" \"zelutil {}\"", roff(ZELUTIL_VERSION));
    paragraph(output, "NAME", "zelutil \\- shows and sets the preferences of the design applications");
    paragraph(output, "SYNOPSIS", "\\fBzelutil\\fR \\fIsubcommand\\fR [\\fIoptions\\fR] [\\fIarguments\\fR]");
    paragraph(output, "DESCRIPTION", roff(app.get_description()));
    output.line(".SH OPTIONS");
    addOptions(app, output);
    addSubcommands(app, output);
    addSurroundings(output);
}

Work declareManual(CLI::App& arguments) {
    return [&arguments](Output& output) { writeManual(*arguments.get_parent(), output); };
}

}  // namespace

const Subcommand kManual{"manual",
                         "Print the manual page in roff",
                         "$ zelutil manual | man -l -",
                         FindingsAre::BesideResult,
                         declareManual,
                         Completes::Files,
                         true};

}  // namespace zelutil::command
