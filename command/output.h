#ifndef ZELUTIL_COMMAND_OUTPUT_H
#define ZELUTIL_COMMAND_OUTPUT_H

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "command/colors.h"
#include "command/exit_code.h"
#include "command/finding.h"
#include "command/json_writer.h"

namespace zelutil::command {

/// Says what findings are to whoever calls a subcommand.
enum class FindingsAre {
    TheResult,    ///< They were asked for, and stand on standard output.
    BesideResult  ///< They come with something else, which scripts read: they stand on standard error.
};

struct OutputChoices {
    bool json = false;
    ColorChoice color = ColorChoice::Auto;
    /// Holds how many characters a line of the terminal has; nothing where no person reads on one.
    std::optional<std::size_t> width = std::nullopt;
};

/// Takes what a subcommand has to say and prints it at the end in the form that was asked for: lines for people, or one
/// JSON text for programs:
///
///     {"zelutil": {"format": 1, "command": "get"}, <the subcommand's own members>,
///      "findings": [{"severity", "text", "advice"?, "file"?, "line"?, "column"?}],
///      "error": {"text", "advice"}}
///
/// "error" is there only where the work could not be done. A member may be added to a form without a new number; a
/// change of one that is there gives the number of the next form.
class Output {
public:
    static constexpr int kFormat = 1;

    Output(std::string_view command, FindingsAre findingsAre, const OutputChoices& choices);

    /// Adds a line for people; nothing in the JSON form. Texts from files pass through `printable` before.
    template <typename... Values>
    void line(fmt::format_string<Values...> format, Values&&... values) {
        if (!json_) {
            text_ += fmt::format(format, std::forward<Values>(values)...) + '\n';
        }
    }

    /// Returns the text made printable and in the colour of its part.
    std::string shown(Role role, std::string_view text) const;

    /// Returns a value as `shown` does, and the empty one as "", which is seen.
    std::string shownValue(Role role, std::string_view value) const {
        return shown(role, value.empty() ? "\"\"" : value);
    }

    /// Returns whether the JSON form is printed.
    bool isJson() const { return json_.has_value(); }

    /// Holds how many characters a line for people may have; nothing where it may have any number.
    std::optional<std::size_t> width() const { return width_; }

    /// Has `write`, which takes a `JsonWriter&`, write members in the JSON form; for people nothing is done.
    template <typename Write>
    void members(Write write) {
        if (json_) {
            write(*json_);
        }
    }

    void add(Finding finding) { findings_.push_back(std::move(finding)); }

    /// Puts a finding in the place of one that was added, which what was done since has made untrue.
    void replace(const Finding& old, Finding now);

    /// Has the JSON form printed, as if it had been asked for. To be called before anything is added.
    void useJson();

    /// Has a text printed as it is, in the place of lines, findings and the JSON form. The findings decide the exit
    /// code all the same.
    void printInstead(std::string text) { instead_ = std::move(text); }

    /// Says that the work, or a part of it, could not be done, why, and what to do next. Several reasons stand one
    /// after the other; what was added before is printed all the same.
    void fail(std::string text, std::string advice);

    /// Returns why the work could not be done; the empty text where it could.
    std::string failureText() const { return failure_ ? failure_->text : std::string(); }

    /// Returns what `finish` writes on standard output. Called once, and then in its place.
    std::string text();

    /// Prints everything and returns the exit code that follows from it. Called once.
    ExitCode finish();

private:
    struct Failure {
        std::string text;
        std::string advice;
    };

    std::string linesOfFindings(const Colors& colors) const;
    std::string linesOfFailure() const;
    std::string errorText() const;
    std::string jsonText();
    ExitCode exitCode() const;

    std::string command_;
    FindingsAre findingsAre_;
    std::optional<std::size_t> width_;
    Colors colors_;
    Colors errorColors_;
    std::optional<JsonWriter> json_;
    std::string text_;
    std::optional<std::string> instead_;
    Findings findings_;
    std::optional<Failure> failure_;
};

inline constexpr char kNotPrinted[] = "The output could not be written.";
inline constexpr char kAdviceWhereNotPrinted[] = "See whether the disk is full or the reader has gone.";

/// Returns the lines that tell an error and what to do next.
std::string errorLines(const Colors& colors, std::string_view text, std::string_view advice);

}  // namespace zelutil::command

#endif
