#include "text_difference.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// lengths[i][j]: how many lines the rests from `a[i]` and from `b[j]` have in common at most, in order.
std::vector<std::vector<int>> commonLengths(const Lines& a, const Lines& b) {
    std::vector<std::vector<int>> lengths(a.size() + 1, std::vector<int>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            lengths[i][j] = a[i] == b[j] ? lengths[i + 1][j + 1] + 1 : std::max(lengths[i + 1][j], lengths[i][j + 1]);
        }
    }
    return lengths;
}

}  // namespace

void printDifference(const std::string& before, const std::string& after) {
    const Lines a = linesOf(before);
    const Lines b = linesOf(after);
    const auto lengths = commonLengths(a, b);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (j == b.size() || (i < a.size() && lengths[i + 1][j] >= lengths[i][j + 1])) {
            std::printf("    - %s\n", a[i++].c_str());
        } else {
            std::printf("    + %s\n", b[j++].c_str());
        }
    }
}
