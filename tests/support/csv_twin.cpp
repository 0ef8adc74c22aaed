#include "support/csv_twin.h"

namespace zelutil::test {
namespace {

bool contains(const std::string& set, char c) { return set.find(c) != std::string::npos; }

const std::string kUpper = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string kLower = "abcdefghijklmnopqrstuvwxyz";
const std::string kDigits = "0123456789";
const std::string kSpace = " \t\n\v\f\r";
const std::string kJunk = " \t\n\r\"";

std::vector<std::string> linesOf(const std::string& file) {
    std::vector<std::string> lines(1);
    for (const char c : file) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

std::string lowerCaseOf(const std::string& text) {
    std::string lower;
    for (const char c : text) {
        const std::size_t letter = kUpper.find(c);
        lower += letter == std::string::npos ? c : kLower[letter];
    }
    return lower;
}

bool isJunk(const std::string& text) {
    for (const char c : text) {
        if (!contains(kJunk, c)) {
            return false;
        }
    }
    return true;
}

int countQuotes(const std::string& text) {
    int count = 0;
    for (const char c : text) {
        count += c == '"' ? 1 : 0;
    }
    return count;
}

}  // namespace

char csvDelimiterTwin(const std::string& file, const std::vector<std::string>& keys) {
    char examined = 0;
    for (const std::string& text : linesOf(file)) {
        if (text.empty()) {
            continue;
        }
        const std::string line = lowerCaseOf(text);
        for (const std::string& key : keys) {
            if (line.find(key) != 0) {
                continue;
            }
            for (std::size_t i = key.size(); i < line.size(); ++i) {
                examined = line[i];
                if (contains(kSpace, examined)) {
                    continue;
                }
                if (contains(kLower, examined) || contains(kDigits, examined)) {
                    break;
                }
                return examined;
            }
        }
    }
    return examined;
}

UnquotedTwin unquoteTwin(const std::string& text) {
    if (isJunk(text)) {
        return {"", countQuotes(text), countQuotes(text), true};
    }
    std::size_t first = 0;
    while (contains(kJunk, text[first])) {
        ++first;
    }
    std::size_t last = text.size() - 1;
    while (contains(kJunk, text[last])) {
        --last;
    }
    UnquotedTwin result{text, countQuotes(text.substr(0, first)), countQuotes(text.substr(last + 1)), false};
    result.balanced = result.leadingQuotes == result.trailingQuotes;
    if (first == 0 && last == text.size() - 1) {
        return result;
    }
    if (result.leadingQuotes == 0) {
        for (int i = 0; i < result.trailingQuotes; ++i) {
            result.text.pop_back();
        }
    } else if (result.trailingQuotes == 0) {
        for (int i = 0; i < result.leadingQuotes; ++i) {
            result.text.erase(result.text.begin());
        }
    } else {
        for (int i = 0; i < result.leadingQuotes && i < result.trailingQuotes; ++i) {
            result.text.erase(result.text.begin());
            result.text.pop_back();
        }
    }
    return result;
}

}  // namespace zelutil::test
