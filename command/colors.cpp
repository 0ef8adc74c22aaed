#include "command/colors.h"

#include <fmt/color.h>

#include "platform/environment.h"

namespace zelutil::command {
namespace {

bool areShown(ColorChoice choice, Stream stream) {
    if (choice != ColorChoice::Auto) {
        return choice == ColorChoice::Always;
    }
    return platform::environment("NO_COLOR").value_or("").empty() && showsColors(stream);
}

fmt::text_style styleOf(Role role) {
    switch (role) {
        case Role::Name:
            return fmt::fg(fmt::terminal_color::cyan);
        case Role::Value:
            return fmt::fg(fmt::terminal_color::green);
        case Role::Old:
            return fmt::fg(fmt::terminal_color::yellow);
        case Role::Faint:
            return fmt::emphasis::faint;
        case Role::Note:
            return fmt::emphasis::bold | fmt::fg(fmt::terminal_color::blue);
        case Role::Warning:
            return fmt::emphasis::bold | fmt::fg(fmt::terminal_color::magenta);
        case Role::Error:
            break;
    }
    return fmt::emphasis::bold | fmt::fg(fmt::terminal_color::red);
}

}  // namespace

Colors::Colors(ColorChoice choice, Stream stream) : shown_(areShown(choice, stream)) {}

std::string Colors::operator()(Role role, std::string_view text) const {
    return shown_ ? fmt::format(styleOf(role), "{}", text) : std::string(text);
}

Role roleOf(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return Role::Note;
        case Severity::Warning:
            return Role::Warning;
        case Severity::Error:
            break;
    }
    return Role::Error;
}

}  // namespace zelutil::command
