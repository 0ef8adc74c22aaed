#include "command/shortcuts/columns.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

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

/// Narrower than that a column says nothing.
constexpr std::size_t kNarrowest = 12;

constexpr std::size_t kBetween = 2;

/// Returns the number of the widest column with explanations.
std::size_t explanationsIn(const std::vector<Cell>& row, const std::vector<std::size_t>& widths) {
    std::size_t widest = 0;
    for (std::size_t column = 0; column < row.size(); ++column) {
        const bool isWider = row[widest].role != Role::Faint || widths[column] > widths[widest];
        widest = row[column].role == Role::Faint && isWider ? column : widest;
    }
    return widest;
}

/// Returns the first characters of the text, the last of which is an ellipsis, where it has more.
std::string shortened(const std::string& text, std::size_t characters) {
    const std::string shown = command::printable(text);
    if (widthOf(text) <= characters) {
        return text;
    }
    std::size_t end = 0;
    for (std::size_t left = characters - 1; left != 0; --left) {
        ++end;
        while (end < shown.size() && (static_cast<unsigned char>(shown[end]) & 0xC0) == 0x80) {
            ++end;
        }
    }
    return shown.substr(0, end) + "\xE2\x80\xA6";
}

/// Shortens a column so that the lines have no more characters than the terminal, as far as that can be.
void fit(std::vector<std::vector<Cell>>& rows, std::vector<std::size_t>& widths, std::size_t most) {
    const std::size_t all = std::accumulate(widths.begin(), widths.end(), kBetween * (widths.size() - 1));
    const std::size_t column = explanationsIn(rows.front(), widths);
    if (all <= most || rows.front()[column].role != Role::Faint) {
        return;
    }
    const std::size_t tooMany = all - most;
    widths[column] = std::max(std::min(widths[column], kNarrowest), widths[column] - std::min(widths[column], tooMany));
    for (std::vector<Cell>& row : rows) {
        row[column].text = shortened(row[column].text, widths[column]);
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
        blanks += widths[column] - widthOf(row[column].text) + kBetween;
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
    std::vector<std::vector<Cell>> fitted = rows;
    if (output.width()) {
        fit(fitted, widths, *output.width());
    }
    output.line("{}", lineOf(head, widths, output));
    for (const std::vector<Cell>& row : fitted) {
        output.line("{}", lineOf(row, widths, output));
    }
}

}  // namespace zelutil::shortcuts
