#ifndef ZELUTIL_COMMAND_ARGUMENTS_H
#define ZELUTIL_COMMAND_ARGUMENTS_H

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/// Declares arguments of subcommands with the parser, CLI11.
namespace zelutil::command {

/// Returns the arguments as the parser is to see them. It would split "[a,b]" into "a" and "b", and
/// drop "{}", so a bracket at the beginning gets a character before it, which `addText` and `addTexts` take away.
std::vector<std::string> protectedArguments(std::vector<std::string> arguments);

/// Adds a text, which stays as it was given. A subcommand adds no other options that take texts.
CLI::Option* addText(CLI::App& arguments, const std::string& name, std::string& text, const std::string& description);

/// Adds the name of something, which is not empty: where a script's variable is empty, everything is not what was
/// meant.
CLI::Option* addName(CLI::App& arguments, const std::string& name, std::string& text, const std::string& description);

/// Adds one or more names, of which none is empty.
CLI::Option* addNames(CLI::App& arguments, const std::string& name, std::vector<std::string>& texts,
                      const std::string& description);

/// Adds one or more texts. An option ("--rule") takes one text and may be repeated.
CLI::Option* addTexts(CLI::App& arguments, const std::string& name, std::vector<std::string>& texts,
                      const std::string& description);

}  // namespace zelutil::command

#endif
