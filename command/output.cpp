#include "command/output.h"

#include <algorithm>

#include "command/system/console.h"
#include "command/text.h"

namespace zelutil::command {
namespace {

/// Returns "file:line:column: " as compilers print it, as far as it is known.
std::string placeText(const Place& place) {
    std::string text = printable(place.file);
    for (const std::optional<int>& number : {place.line, place.column}) {
        text += number ? fmt::format(":{}", *number) : "";
    }
    return text + ": ";
}

std::string linesOf(const Finding& finding, const Colors& colors) {
    std::string lines = finding.place ? placeText(*finding.place) : "";
    lines += fmt::format("{} {}\n", colors(roleOf(finding.severity), fmt::format("{}:", nameOf(finding.severity))),
                         printable(finding.text));
    return finding.advice.empty() ? lines : lines + fmt::format("    {}\n", printable(finding.advice));
}

void writePlace(JsonWriter& json, const Place& place) {
    json.member("file", place.file);
    if (place.line) {
        json.member("line", *place.line);
    }
    if (place.column) {
        json.member("column", *place.column);
    }
}

void writeMembers(JsonWriter& json, const Finding& finding) {
    json.member("severity", nameOf(finding.severity));
    json.member("text", finding.text);
    if (!finding.advice.empty()) {
        json.member("advice", finding.advice);
    }
    if (finding.place) {
        writePlace(json, *finding.place);
    }
}

constexpr char kDoneAndNotPrinted[] = "What was asked for is done, but the output could not be written.";

/// Begins the one object of the form, whose end is written with the findings.
void beginForm(JsonWriter& json, std::string_view command) {
    json.beginObject();
    json.key("zelutil");
    json.beginObject();
    json.member("format", Output::kFormat);
    json.member("command", command);
    json.endObject();
}

}  // namespace

std::string errorLines(const Colors& colors, std::string_view text, std::string_view advice) {
    return fmt::format("zelutil: {} {}\n    {}\n", colors(Role::Error, "error:"), printable(text), printable(advice));
}

Output::Output(std::string_view command, FindingsAre findingsAre, const OutputChoices& choices)
    : command_(command),
      findingsAre_(findingsAre),
      width_(choices.width),
      colors_(choices.color, Stream::Output),
      errorColors_(choices.color, Stream::Error) {
    if (choices.json) {
        useJson();
    }
}

void Output::useJson() {
    if (!json_) {
        beginForm(json_.emplace(), command_);
    }
}

void Output::replace(const Finding& old, Finding now) {
    const auto found = std::find_if(findings_.begin(), findings_.end(), [&](const Finding& one) {
        return one.severity == old.severity && one.text == old.text && one.advice == old.advice;
    });
    if (found != findings_.end()) {
        *found = std::move(now);
    }
}

std::string Output::shown(Role role, std::string_view text) const { return colors_(role, printable(text)); }

void Output::fail(std::string text, std::string advice) {
    if (!failure_) {
        failure_ = Failure{std::move(text), std::move(advice)};
        return;
    }
    failure_->text += ' ' + text;
    if (failure_->advice.find(advice) == std::string::npos) {
        failure_->advice += ' ' + advice;
    }
}

std::string Output::linesOfFindings(const Colors& colors) const {
    std::string lines;
    for (const Finding& finding : findings_) {
        lines += linesOf(finding, colors);
    }
    return lines;
}

std::string Output::linesOfFailure() const {
    return failure_ ? errorLines(errorColors_, failure_->text, failure_->advice) : "";
}

std::string Output::jsonText() {
    json_->objects("findings", findings_, [&](const Finding& finding) { writeMembers(*json_, finding); });
    if (failure_) {
        json_->key("error");
        json_->beginObject();
        json_->member("text", failure_->text);
        json_->member("advice", failure_->advice);
        json_->endObject();
    }
    json_->endObject();
    std::optional<std::string> text = json_->take();
    if (!text) {
        fail("The result is too large for the JSON form.", "Ask for less at once.");
        return {};
    }
    return *text + '\n';
}

std::string Output::errorText() const {
    const bool hasFindings = !json_ && findingsAre_ == FindingsAre::BesideResult;
    return (hasFindings ? linesOfFindings(errorColors_) : "") + linesOfFailure();
}

ExitCode Output::exitCode() const {
    if (failure_) {
        return ExitCode::Failed;
    }
    const bool anySerious = std::any_of(findings_.begin(), findings_.end(),
                                        [](const Finding& finding) { return finding.severity != Severity::Note; });
    return anySerious ? ExitCode::Found : ExitCode::Fine;
}

std::string Output::text() {
    if (instead_) {
        return *instead_;
    }
    if (json_) {
        return jsonText();
    }
    return findingsAre_ == FindingsAre::TheResult ? text_ + linesOfFindings(colors_) : text_;
}

ExitCode Output::finish() {
    if (!write(Stream::Output, text())) {
        fail(failure_ ? kNotPrinted : kDoneAndNotPrinted, kAdviceWhereNotPrinted);
    }
    write(Stream::Error, errorText());
    return exitCode();
}

}  // namespace zelutil::command
