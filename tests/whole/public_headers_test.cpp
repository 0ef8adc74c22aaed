#include <gtest/gtest.h>
#include <zelutil/zelutil.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/text_file.h"

namespace {

namespace fs = std::filesystem;

const fs::path kInclude = ZELUTIL_TEST_INCLUDE;

std::vector<std::string> linesOf(const std::string& header) {
    std::istringstream text(zelutil::test::readTextFile(kInclude / header));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Returns what stands between "<" and ">" in the include lines of a header; a quoted include comes with its quotes.
std::vector<std::string> includesOf(const std::string& header) {
    const std::string directive = "#include ";
    std::vector<std::string> names;
    for (const std::string& line : linesOf(header)) {
        if (line.rfind(directive, 0) == 0) {
            const std::string name = line.substr(directive.size());
            names.push_back(name.front() == '<' ? name.substr(1, name.find('>') - 1) : name);
        }
    }
    return names;
}

bool isOurs(const std::string& header) { return header.rfind("zelutil/", 0) == 0; }

std::set<std::string> publicHeaders() {
    std::set<std::string> headers;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kInclude)) {
        if (entry.path().extension() == ".h") {
            headers.insert(entry.path().lexically_relative(kInclude).generic_string());
        }
    }
    return headers;
}

TEST(PublicHeaders, TheOneForAllIncludesEachOfTheOthersInOrder) {
    std::set<std::string> others = publicHeaders();
    EXPECT_EQ(others.erase("zelutil/zelutil.h"), 1u);
    const std::vector<std::string> inOrder(others.begin(), others.end());
    EXPECT_EQ(includesOf("zelutil/zelutil.h"), inOrder);
}

TEST(PublicHeaders, IncludeOnlyEachOtherAndTheStandardLibrary) {
    const std::set<std::string> ofTheCLanguage = {"stdbool.h"};
    for (const std::string& header : publicHeaders()) {
        for (const std::string& name : includesOf(header)) {
            const bool ofTheCppLanguage = name.find_first_of("./\"") == std::string::npos;
            EXPECT_TRUE(isOurs(name) || ofTheCppLanguage || ofTheCLanguage.count(name) == 1)
                << header << " includes " << name;
        }
    }
}

TEST(PublicHeaders, OnlyOneOfThemKnowsTheOperatingSystem) {
    for (const std::string& header : publicHeaders()) {
        if (header == "zelutil/export.h") {
            continue;
        }
        for (const std::string& line : linesOf(header)) {
            for (const char* const macro :
                 {"_WIN32", "_WIN64", "__linux", "__unix", "__MINGW", "__APPLE", "_MSC_VER"}) {
                EXPECT_EQ(line.find(macro), std::string::npos) << header << ": " << line;
            }
        }
    }
}

TEST(PublicHeaders, HaveGuardsNamedAfterThem) {
    for (const std::string& header : publicHeaders()) {
        std::string guard = header;
        std::transform(guard.begin(), guard.end(), guard.begin(),
                       [](unsigned char c) { return std::isalnum(c) ? static_cast<char>(std::toupper(c)) : '_'; });
        const std::vector<std::string> lines = linesOf(header);
        ASSERT_GE(lines.size(), 3u) << header;
        EXPECT_EQ(lines[0], "#ifndef " + guard);
        EXPECT_EQ(lines[1], "#define " + guard);
        EXPECT_EQ(lines.back(), "#endif") << header;
    }
}

}  // namespace
