#include "command/arguments.h"

namespace zelutil::command {
namespace {

constexpr char kProtection = '\x01';

CLI::Option* unprotected(CLI::Option* option) {
    const auto unprotect = [](std::string& text) {
        if (!text.empty() && text.front() == kProtection) {
            text.erase(0, 1);
        }
        return std::string();
    };
    // Without a type, the help shows "NAME ..." and not "NAME TEXT ...".
    return option->transform(CLI::Validator(unprotect, ""))->type_name("");
}

CLI::Option* named(CLI::Option* option) {
    const auto check = [](const std::string& given) { return std::string(given.empty() ? "The text is empty." : ""); };
    return option->check(CLI::Validator(check, ""));
}

}  // namespace

std::vector<std::string> protectedArguments(std::vector<std::string> arguments) {
    for (std::string& argument : arguments) {
        if (!argument.empty() && (argument.front() == '[' || argument.front() == '{')) {
            argument.insert(0, 1, kProtection);
        }
    }
    return arguments;
}

CLI::Option* addText(CLI::App& arguments, const std::string& name, std::string& text, const std::string& description) {
    return unprotected(arguments.add_option(name, text, description));
}

CLI::Option* addName(CLI::App& arguments, const std::string& name, std::string& text, const std::string& description) {
    return named(addText(arguments, name, text, description));
}

CLI::Option* addNames(CLI::App& arguments, const std::string& name, std::vector<std::string>& texts,
                      const std::string& description) {
    return named(addTexts(arguments, name, texts, description));
}

CLI::Option* addTexts(CLI::App& arguments, const std::string& name, std::vector<std::string>& texts,
                      const std::string& description) {
    CLI::Option* const option = unprotected(arguments.add_option(name, texts, description));
    // An option takes the one text behind it each time it stands there: what follows is the subcommand's own.
    return name.front() == '-' ? option->allow_extra_args(false) : option;
}

}  // namespace zelutil::command
