#ifndef ZELUTIL_COMMAND_SHEET_SHEET_H
#define ZELUTIL_COMMAND_SHEET_SHEET_H

#include <string>
#include <vector>

/// The printable sheet of the shortcuts in force, and its three forms.
namespace zelutil::command::sheet {

/// An action that has a shortcut, or had one before the user took it away.
struct Entry {
    int id = 0;
    /// The action's name for people: its own, else its parent's, else the command.
    std::string name;
    std::string command;
    /// The shortcut in force; empty for none.
    std::string shortcut;
    /// The shortcut without the user's changes.
    std::string shipped;
    /// Whether the user changed it.
    bool changed = false;
    /// Whether the shortcut runs the action.
    bool runs = true;
    /// The name of the action that it runs instead; empty for none.
    std::string heldBy;
};

struct Context {
    std::string name;
    std::vector<Entry> entries;
};

using Sheet = std::vector<Context>;

/// Returns what there is to say about the entry: what the user changed, and who has the key instead. Empty for nothing.
///
///     "changed, was Ctrl+M"    "changed, had none"    "runs Move instead"    "runs nothing"
std::string remarkOf(const Entry& entry);

/// Returns one page of HTML that needs nothing else: for each context a picture of the keyboard for each combination of
/// modifiers, and a table.
std::string htmlOf(const Sheet& sheet);

/// Returns a table in Markdown for each context.
std::string markdownOf(const Sheet& sheet);

/// Returns one table of comma-separated values with CRLF at the ends of lines. A text that a spreadsheet would take for
/// a formula gets an apostrophe before it.
std::string csvOf(const Sheet& sheet);

}  // namespace zelutil::command::sheet

#endif
