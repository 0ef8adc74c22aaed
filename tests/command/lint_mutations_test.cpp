// Clean files with one random change each: how many of these the rules notice, which docs/lint.md says.
#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "command/lint_findings.h"
#include "support/random_text.h"

namespace zelutil::lint {
namespace {

constexpr std::size_t kMutations = 1000;

struct CleanFile {
    std::string text;
    std::string defaults;
};

/// A user's file for the example's defaults, as a person might write it.
constexpr char kUserFile[] = R"({
    "meta": [
        {"header": "Display", "attribute": "display", "overriddensettings": [{"antialiasing": "8"}, {"zoom_factor": "1.5"}],
         "children": [{"header": "Colors", "attribute": "colors",
                       "overriddensettings": [{"display::colors::background": "#000000"}]}]},
        {"header": "Editing", "attribute": "editing", "children": [
            {"header": "Routing", "attribute": "routing", "overriddensettings": [{"track_width": "0.25"}]}]}
    ]
})";

std::vector<CleanFile> cleanFiles() {
    std::vector<CleanFile> files;
    for (const char* const product : {"product", "qt_board/product"}) {
        files.push_back({shippedFile(product, "tessel_settings.cfg"), ""});
        files.push_back({shippedFile(product, "facet_settings.cfg"), ""});
    }
    files.push_back({kUserFile, files[0].text});
    return files;
}

/// A string of the text: from its quotation mark to behind the closing one.
using Range = std::pair<std::size_t, std::size_t>;

std::vector<Range> stringsOf(const std::string& text) {
    std::vector<Range> strings;
    for (std::size_t at = text.find('"'); at != std::string::npos; at = text.find('"', at)) {
        const std::size_t end = text.find('"', at + 1) + 1;
        strings.push_back({at, end});
        at = end;
    }
    return strings;
}

bool isKey(const std::string& text, const Range& string) { return text[string.second] == ':'; }

class Mutator {
public:
    explicit Mutator(unsigned seed) : random_(seed) {}

    /// Returns the name of the change.
    std::string mutate(std::string& text) {
        switch (random_.below(6)) {
            case 0:
                text.erase(random_.below(text.size()), 1);
                return "a byte removed";
            case 1:
                text.insert(random_.below(text.size()), 1, "{}[],:\"x0"[random_.below(9)]);
                return "a byte added";
            case 2:
                return misspell(text, true);
            case 3:
                return misspell(text, false);
            case 4:
                return retype(text);
            default:
                return repeatLine(text);
        }
    }

private:
    Range pickString(const std::string& text, bool key) {
        const std::vector<Range> strings = stringsOf(text);
        while (true) {
            const Range string = strings[random_.below(strings.size())];
            if (isKey(text, string) == key && string.second - string.first > 3) {
                return string;
            }
        }
    }

    /// Swaps two letters of a key or a value that differ.
    std::string misspell(std::string& text, bool key) {
        while (true) {
            const auto [begin, end] = pickString(text, key);
            const std::size_t at = begin + 1 + random_.below(end - begin - 3);
            if (text[at] != text[at + 1]) {
                std::swap(text[at], text[at + 1]);
                return key ? "a key misspelt" : "a value misspelt";
            }
        }
    }

    std::string retype(std::string& text) {
        const auto [begin, end] = pickString(text, false);
        text.replace(begin, end - begin, "17");
        return "a string made a number";
    }

    /// Repeats a line that is an element of an array.
    std::string repeatLine(std::string& text) {
        while (true) {
            const std::size_t at = random_.below(text.size());
            const std::size_t begin = text.rfind('\n', at) + 1;
            const std::size_t end = text.find('\n', begin);
            if (begin == 0 || end == std::string::npos || text.substr(end - 2, 2) != "},") {
                continue;
            }
            text.insert(begin, text.substr(begin, end + 1 - begin));
            return "an element repeated";
        }
    }

    test::RandomText random_;
};

struct Count {
    std::size_t noticed = 0;
    std::size_t all = 0;
};

using Counts = std::map<std::string, Count>;

/// Returns the rows of a table as docs/lint.md has it.
std::string rowsOf(const Counts& counts) {
    std::ostringstream rows;
    for (const auto& [name, count] : counts) {
        rows << "| " << name << " | " << count.noticed << " | " << count.all << " |\n";
    }
    return rows.str();
}

/// Returns the rows of the table in docs/lint.md.
std::string documentedRows() {
    const std::string text = test::readTextFile(ZELUTIL_TEST_PROJECT "/docs/lint.md");
    const std::string head = "| change | noticed | of |\n|---|---|---|\n";
    const std::size_t begin = text.find(head);
    if (begin == std::string::npos) {
        ADD_FAILURE() << "there is no such table";
        return {};
    }
    return text.substr(begin + head.size(), text.find("\n\n", begin) + 1 - begin - head.size());
}

Counts countsOf(const std::vector<CleanFile>& files) {
    Counts counts;
    Count& all = counts["any"];
    for (unsigned seed = 0; seed < kMutations; ++seed) {
        const CleanFile& file = files[seed % files.size()];
        std::string text = file.text;
        Count& count = counts[Mutator(seed).mutate(text)];
        const std::size_t noticed = check(text, file.defaults).empty() ? 0 : 1;
        count.noticed += noticed;
        all.noticed += noticed;
        ++count.all;
        ++all.all;
    }
    return counts;
}

/// The changes are the same in every run, so every rule that notices less than before changes the table.
TEST(LintMutations, TheShareOfRandomChangesThatIsNoticedIsTheDocumentedOne) {
    const std::vector<CleanFile> files = cleanFiles();
    for (const CleanFile& file : files) {
        ASSERT_EQ(told(check(file.text, file.defaults)), "");
    }
    Counts counts = countsOf(files);
    std::cout << rowsOf(counts);
    // A value that stays a string may be any text, and so may a command or a heading.
    for (const char* const change : {"a key misspelt", "an element repeated", "a string made a number"}) {
        EXPECT_EQ(counts[change].noticed, counts[change].all) << change;
    }
    EXPECT_EQ(rowsOf(counts), documentedRows());
}

}  // namespace
}  // namespace zelutil::lint
