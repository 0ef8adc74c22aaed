#include "command/shortcuts/columns.h"

#include <algorithm>
#include <cstddef>

#include "command/text.h"

namespace zelutil::shortcuts {
namespace {

using command::Output;
using command::Role;

/// Returns how many characters of UTF-8 the printed cell has.
std::size_t widthOf(const std::string& text) {
    const std::string shown = command::printable(text);
    return static_cast<std::size_t>(std::count_if(
        shown.begin(), shown.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void widen(const std::vector<Cell>& row, std::vector<std::size_t>& widths) {
    for (std::size_t column = 0; column < row.size(); ++column) {
        widths[column] = std::max(widths[column], widthOf(row[column].text));
    }
}

/// The blanks stand behind the colours, and none at the end of the line.
std::string lineOf(const std::vector<Cell>& row, const std::vector<std::size_t>& widths, const Output& output) {
    std::string line;
    std::size_t blanks = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        if (!row[column].text.empty()) {
            line += std::string(blanks, ' ') + output.shown(row[column].role, row[column].text);
            blanks = 0;
        }
        blanks += widths[column] - widthOf(row[column].text) + 2;
    }
    return line;
}

}  // namespace

void showColumns(const std::vector<std::string>& headings, const std::vector<std::vector<Cell>>& rows, Output& output) {
    if (rows.empty()) {
        return;
    }
    std::vector<Cell> head;
    for (const std::string& heading : headings) {
        head.push_back({heading, Role::Faint});
    }
    std::vector<std::size_t> widths(headings.size(), 0);
    widen(head, widths);
    for (const std::vector<Cell>& row : rows) {
        widen(row, widths);
    }
    output.line("{}", lineOf(head, widths, output));
    for (const std::vector<Cell>& row : rows) {
        output.line("{}", lineOf(row, widths, output));
    }
}

}  // namespace zelutil::shortcuts
