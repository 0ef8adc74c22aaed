#ifndef ZELUTIL_COMMAND_SYSTEM_CONSOLE_H
#define ZELUTIL_COMMAND_SYSTEM_CONSOLE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The command's door to the system, as src/platform/ is the library's: what a program needs of it and a library does
/// not. One source per system defines these functions. All texts are UTF-8.
namespace zelutil::command {

enum class Stream { Output, Error };

/// Returns the arguments that the program was started with, without its own name. `count` and `values` are those of
/// `main`; they are not used where the system keeps the arguments in a better encoding.
std::vector<std::string> argumentsOfProgram(int count, const char* const* values);

/// Has everything that is printed from now on by other ways than `write` appear on standard error: the library prints
/// lines of its own on standard output, as for QTX_ZELUTIL_DEBUG, and programs read that. Called once, at the
/// beginning.
void keepOutputForResults();

/// Names the user and the machine; a name is empty where the system does not tell it.
struct Account {
    std::string user;
    std::string host;
};

Account account();

/// Returns whether a person reads the stream on a terminal.
bool isTerminal(Stream stream);

/// Returns whether the stream is a terminal that shows colours, and prepares it for them.
bool showsColors(Stream stream);

/// Returns how many characters a line of the terminal has; nothing where the stream is none.
std::optional<std::size_t> widthOf(Stream stream);

/// Writes the text and returns whether all of it got there.
bool write(Stream stream, std::string_view text);

}  // namespace zelutil::command

#endif
