// The forms of the sheet that are lines of text.
#include <zelutil/util/ascii.h>

#include <algorithm>
#include <string_view>

#include "command/sheet/sheet.h"
#include "command/text.h"

namespace zelutil::command::sheet {
namespace {

bool isWordCharacter(char c) {
    const char lower = ascii::lowerCase(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
}

/// Returns whether the character means something in a cell of Markdown. A backslash takes that away.
bool isMarkdownSign(const std::string& text, std::size_t at) {
    constexpr std::string_view kSigns = "\\`*_[]<>#|~&$";
    // Within a word an underscore is an underscore.
    const bool isWithinWord =
        at > 0 && at + 1 < text.size() && isWordCharacter(text[at - 1]) && isWordCharacter(text[at + 1]);
    return kSigns.find(text[at]) != std::string_view::npos && !(text[at] == '_' && isWithinWord);
}

std::string markdownText(std::string_view text) {
    const std::string shown = printable(text);
    std::string escaped;
    for (std::size_t at = 0; at < shown.size(); ++at) {
        escaped += isMarkdownSign(shown, at) ? "\\" : "";
        escaped += shown[at];
    }
    return escaped;
}

std::string markdownRow(const Entry& entry) {
    std::string row;
    for (const std::string& text : {entry.shortcut, entry.name, entry.command, remarkOf(entry)}) {
        row += text.empty() ? "|  " : "| " + markdownText(text) + ' ';
    }
    return row + "|\n";
}

bool isBlankOrControl(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; }

/// Returns whether a spreadsheet may take the text for a formula. It may pass over blanks and control characters. A
/// single sign is a key.
bool isFormula(std::string_view text) {
    constexpr std::string_view kBeginnings = "=+-@";
    const auto begin = std::find_if_not(text.begin(), text.end(), isBlankOrControl);
    return text.end() - begin > 1 && kBeginnings.find(*begin) != std::string_view::npos;
}

/// Puts an apostrophe before every formula. A spreadsheet may begin a cell behind other signs than a comma, even where
/// quotation marks are around them.
std::string withoutFormulas(std::string_view text) {
    constexpr std::string_view kSeparators = ";\t\r\n";
    const bool isSpaced = text.size() > 1 && (text.front() == '\t' || text.front() == '\r');
    std::string spoilt = isSpaced && !isFormula(text) ? "'" : "";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool beginsCell = at == 0 || kSeparators.find(text[at - 1]) != std::string_view::npos;
        spoilt += beginsCell && isFormula(text.substr(at)) ? "'" : "";
        spoilt += text[at];
    }
    return spoilt;
}

std::string csvText(std::string_view text) {
    std::string cell = withoutFormulas(validUtf8(text));
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    for (std::size_t quote = cell.find('"'); quote != std::string::npos; quote = cell.find('"', quote + 2)) {
        cell.insert(quote, 1, '"');
    }
    return '"' + cell + '"';
}

std::string csvRow(const std::vector<std::string>& texts) {
    std::string row;
    for (const std::string& text : texts) {
        row += (row.empty() ? "" : ",") + csvText(text);
    }
    return row + "\r\n";
}

}  // namespace

std::string remarkOf(const Entry& entry) {
    std::string remark;
    if (entry.changed) {
        remark = entry.shipped.empty() ? "changed, had none" : "changed, was " + entry.shipped;
    }
    if (!entry.runs && !entry.shortcut.empty()) {
        remark += remark.empty() ? "" : "; ";
        remark += entry.heldBy.empty() ? "runs nothing" : "runs " + entry.heldBy + " instead";
    }
    return remark;
}

std::string markdownOf(const Sheet& sheet) {
    std::string text = "# Keyboard shortcuts\n";
    for (const Context& context : sheet) {
        text += "\n## " + markdownText(context.name) + "\n\n";
        text += "| Shortcut | Action | Command | Remark |\n|---|---|---|---|\n";
        for (const Entry& entry : context.entries) {
            text += markdownRow(entry);
        }
    }
    return text;
}

std::string csvOf(const Sheet& sheet) {
    std::string text = csvRow({"context", "shortcut", "action", "command", "id", "shipped", "changed", "remark"});
    for (const Context& context : sheet) {
        for (const Entry& entry : context.entries) {
            text += csvRow({context.name, entry.shortcut, entry.name, entry.command, std::to_string(entry.id),
                            entry.shipped, entry.changed ? "yes" : "no", remarkOf(entry)});
        }
    }
    return text;
}

}  // namespace zelutil::command::sheet
