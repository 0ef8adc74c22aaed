#include <zelutil/util/csv.h>

#include <algorithm>
#include <fstream>
#include <string_view>

#include "text/ascii.h"

namespace zelutil {
namespace {

constexpr std::string_view kSurroundings = " \t\n\r\"";

bool beginsWith(std::string_view line, std::string_view key) {
    return line.size() >= key.size() && std::equal(key.begin(), key.end(), line.begin(),
                                                   [](char wanted, char c) { return wanted == ascii::lowerCase(c); });
}

/// Whether the delimiter follows in `rest`, what a line has behind its key. `looked` becomes the last character looked
/// at, in lower case; it stays where there is none.
///
/// Kept deliberately: a tab is passed over as white space, so a file delimited by tabs has no delimiter.
bool findDelimiterAfterKey(std::string_view rest, char& looked) {
    for (const char c : rest) {
        looked = ascii::lowerCase(c);
        if (!ascii::isSpace(c)) {
            return !ascii::isLetter(c) && !ascii::isDigit(c);
        }
    }
    return false;
}

bool findDelimiterInLine(std::string_view line, const std::vector<std::string>& keys, char& looked) {
    return std::any_of(keys.begin(), keys.end(), [&](const std::string& key) {
        return beginsWith(line, key) && findDelimiterAfterKey(line.substr(key.size()), looked);
    });
}

/// The last character looked at when the search is over.
///
/// Kept deliberately: where no delimiter is found, that is some character of the file all the same.
char searchForDelimiter(std::ifstream& in, const std::vector<std::string>& keys) {
    char looked = 0;
    std::string line;
    while (std::getline(in, line) && !findDelimiterInLine(line, keys, looked)) {
    }
    return looked;
}

int quotesIn(std::string_view text) { return static_cast<int>(std::count(text.begin(), text.end(), '"')); }

}  // namespace
}  // namespace zelutil

namespace ZelU::UTL {

char CsvFileDelim(std::ifstream& in, std::vector<std::string>& keys) {
    if (!in.is_open()) {
        return 0;
    }
    // A host may have asked for exceptions; meeting the end of the file is no failure here.
    const std::ios::iostate exceptions = in.exceptions();
    in.exceptions(std::ios::goodbit);
    const char delimiter = zelutil::searchForDelimiter(in, keys);
    in.clear();
    in.seekg(0);
    in.exceptions(exceptions);
    return delimiter;
}

bool RemoveLeadingTrailingCharsAndQuotesMixed(std::string& s, int& leadingQuotes, int& trailingQuotes) {
    const std::size_t first = s.find_first_not_of(zelutil::kSurroundings);
    if (first == std::string::npos) {
        leadingQuotes = trailingQuotes = zelutil::quotesIn(s);
        s.clear();
        return true;
    }
    const std::size_t behind = s.find_last_not_of(zelutil::kSurroundings) + 1;
    const std::string_view text(s);
    leadingQuotes = zelutil::quotesIn(text.substr(0, first));
    trailingQuotes = zelutil::quotesIn(text.substr(behind));

    // Kept deliberately: as many characters are cut as there are quotes, whatever those characters are, so a field with
    // a blank outside its quotes loses the blank and keeps the quotes. The text itself always remains: each end is cut
    // by no more than the quotes that stand there.
    const bool bothEnds = leadingQuotes != 0 && trailingQuotes != 0;
    const auto front = static_cast<std::size_t>(bothEnds ? std::min(leadingQuotes, trailingQuotes) : leadingQuotes);
    const auto back = static_cast<std::size_t>(bothEnds ? std::min(leadingQuotes, trailingQuotes) : trailingQuotes);
    s.erase(s.size() - back);
    s.erase(0, front);
    return leadingQuotes == trailingQuotes;
}

}  // namespace ZelU::UTL
