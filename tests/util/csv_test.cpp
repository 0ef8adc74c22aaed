#include <zelutil/util/csv.h>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

#include "support/csv_twin.h"
#include "support/process_memory.h"
#include "support/random_text.h"
#include "support/temp_directory.h"
#include "support/text_file.h"

namespace ZelU::UTL {
namespace {

using zelutil::test::TempDirectory;
using zelutil::test::writeTextFile;

using Keys = std::vector<std::string>;

/// The character as a failure should show it.
std::string shown(char c) {
    return "'" + std::string(1, c) + "' (" + std::to_string(static_cast<unsigned char>(c)) + ")";
}

// --- Delimiter ------------------------------------------------------------------------------------------------------

class CsvFile : public testing::Test {
protected:
    std::filesystem::path write(const std::string& bytes) const {
        writeTextFile(directory_ / "table.csv", bytes);
        return directory_ / "table.csv";
    }

    char delimiterOf(const std::string& bytes, Keys keys) const {
        std::ifstream in(write(bytes), std::ios::binary);
        return CsvFileDelim(in, keys);
    }

private:
    TempDirectory directory_;
};

struct DelimiterRow {
    std::string file;
    Keys keys;
    char delimiter;
};

const Keys kKeys = {"name", "id"};

const std::vector<DelimiterRow> kDelimiters = {
    // Directly behind the key.
    {"name;value", kKeys, ';'},
    {"name,value\na,1\n", kKeys, ','},
    {"name|", kKeys, '|'},
    {"name:x", kKeys, ':'},
    {"name_x;", kKeys, '_'},
    {"name.x;", kKeys, '.'},
    {"name\";x", kKeys, '"'},
    {"name\xE4;", kKeys, '\xE4'},
    {"name\x01;", kKeys, '\x01'},
    // Behind white space.
    {"name ,more", kKeys, ','},
    {"name  ;x", kKeys, ';'},
    {"name\t \v\f\r;x", kKeys, ';'},
    {"name\t;\tvalue", kKeys, ';'},
    // Letters of the line may have either case, letters of a key may not.
    {"Name;Value", kKeys, ';'},
    {"NAME|VALUE", kKeys, '|'},
    {"Name;Value", {"Name"}, '\0'},
    {"N\xC4ME;", {"n\xE4me"}, '\0'},
    {"N\xC4ME;", {"n\xC4me"}, ';'},
    // Another key.
    {"id;name", kKeys, ';'},
    {"name2;x", {"name", "name2"}, ';'},
    {"name2;x", {"name2", "name"}, ';'},
    {"Net Name;x", {"net name"}, ';'},
    {"a;b,c", {"a;b"}, ','},
    // Another line.
    {"\nname;x", kKeys, ';'},
    {"title\n\nName;x\nid,y", kKeys, ';'},
    {"names;x\nname,y", kKeys, ','},
    {"# names\nid|name", kKeys, '|'},
    {"title\nname;", kKeys, ';'},
    {"name\r\nid;x", kKeys, ';'},
    // The line does not begin with the key.
    {"title;name", kKeys, '\0'},
    {" name;x", kKeys, '\0'},
    {"\"name\";x", kKeys, '\0'},
    {"\xEF\xBB\xBFname;x", kKeys, '\0'},
    {"nam;e", kKeys, '\0'},
    {"name", {"namelist"}, '\0'},
    // Nothing there at all.
    {"", kKeys, '\0'},
    {"\n\n\n", kKeys, '\0'},
    {"name;x", {}, '\0'},
    {"name", kKeys, '\0'},
    {"name\n", kKeys, '\0'},
    // An empty key begins every line.
    {";x", {""}, ';'},
    {" ;", {""}, ';'},
    {"\n,", {""}, ','},
    {"name;", {"", "name"}, ';'},
    // NUL is a delimiter too, and ends the search.
    {std::string("name\0x\nid;", 10), kKeys, '\0'},
    {std::string("names\nname\0x\nid;", 16), kKeys, '\0'},
};

TEST_F(CsvFile, EveryDelimiterRow) {
    for (const DelimiterRow& row : kDelimiters) {
        std::ifstream in(write(row.file), std::ios::binary);
        Keys keys = row.keys;
        const char delimiter = CsvFileDelim(in, keys);
        EXPECT_EQ(delimiter, row.delimiter) << shown(delimiter) << " for\n" << row.file;
        EXPECT_EQ(keys, row.keys) << row.file;

        EXPECT_TRUE(in.good()) << row.file;
        std::string line;
        std::getline(in, line);
        EXPECT_EQ(line, row.file.substr(0, row.file.find('\n')));
    }
}

TEST_F(CsvFile, WithoutADelimiterTheLastCharacterLookedAtIsAnsweredOddity) {
    const std::vector<DelimiterRow> kRows = {
        {"names;x", kKeys, 's'},       {"nameS;x", kKeys, 's'},       {"name1;x", kKeys, '1'},
        {"name ", kKeys, ' '},         {"name \t", kKeys, '\t'},      {"name value;x", kKeys, 'v'},
        {"name\r\n;x", kKeys, '\r'},   {"names\ntitle", kKeys, 's'},  {"names\nidx", kKeys, 'x'},
        {"names\nname", kKeys, 's'},   {"name9\nid ", kKeys, ' '},    {"x;", {""}, 'x'},
        {"name;", {"na", "nam"}, 'e'}, {"name;", {"nam", "na"}, 'm'},
    };
    for (const DelimiterRow& row : kRows) {
        const char delimiter = delimiterOf(row.file, row.keys);
        EXPECT_EQ(delimiter, row.delimiter) << shown(delimiter) << " for\n" << row.file;
    }
}

TEST_F(CsvFile, ATabIsNeverTheDelimiterOddity) {
    EXPECT_EQ(delimiterOf("Name\tValue\n1\t2\n", kKeys), 'v');
    EXPECT_EQ(delimiterOf("Name\t\"Value\"\n", kKeys), '"');
}

TEST_F(CsvFile, StreamThatIsNotOpenIsLeftAsItIs) {
    Keys keys = kKeys;
    std::ifstream never;
    EXPECT_EQ(CsvFileDelim(never, keys), '\0');
    EXPECT_TRUE(never.good());
    std::ifstream missing(write("name;x").parent_path() / "missing.csv");
    EXPECT_EQ(CsvFileDelim(missing, keys), '\0');
    EXPECT_TRUE(missing.fail());
}

TEST_F(CsvFile, SearchBeginsWhereTheStreamStands) {
    std::ifstream in(write("name;x\nid,y\n"), std::ios::binary);
    Keys keys = kKeys;
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(CsvFileDelim(in, keys), ',');
    EXPECT_EQ(CsvFileDelim(in, keys), ';');
}

TEST_F(CsvFile, StreamAtItsEndIsPutBackToTheBeginning) {
    std::ifstream in(write("name;x\n"), std::ios::binary);
    Keys keys = kKeys;
    std::string line;
    while (std::getline(in, line)) {
    }
    EXPECT_EQ(CsvFileDelim(in, keys), '\0');
    ASSERT_TRUE(std::getline(in, line));
    EXPECT_EQ(line, "name;x");
}

TEST_F(CsvFile, StreamThatThrowsAtTheEndOfTheFileDoesNotThrowHere) {
    std::ifstream in(write("title\nnames\n"), std::ios::binary);
    const auto exceptions = std::ios::failbit | std::ios::badbit | std::ios::eofbit;
    in.exceptions(exceptions);
    Keys keys = kKeys;
    EXPECT_EQ(CsvFileDelim(in, keys), 's');
    EXPECT_EQ(in.exceptions(), exceptions);
    EXPECT_TRUE(in.good());
}

// Opened as a host opens a text file: on Windows the stream takes CR LF for one line end, elsewhere the CR stays and is
// white space here.
TEST_F(CsvFile, EveryLineEndGivesTheSameDelimiter) {
    const char* const kFiles[] = {
        "Title\nName ; Value\nx;1\n",
        "Title\r\nName ; Value\r\nx;1\r\n",
        "Title\nName ; Value",
        "Title\r\nName ; Value",
        "Title\n\nName;",
        "Title\r\n\r\nName;",
    };
    for (const char* const file : kFiles) {
        std::ifstream in(write(file));
        Keys keys = kKeys;
        EXPECT_EQ(CsvFileDelim(in, keys), ';') << file;
        std::string line;
        std::getline(in, line);
        EXPECT_EQ(line.substr(0, 5), "Title") << file;
    }
}

TEST_F(CsvFile, AgreesWithItsTwinOnRandomFiles) {
    zelutil::test::RandomText random(2);
    for (int i = 0; i < 4000; ++i) {
        std::string file;
        for (std::size_t line = random.below(4); line > 0; --line) {
            const char* const beginning[] = {"", "a", "Ab", "aB2", "b", "xab"};
            file += beginning[random.below(6)] + random.text("abB2 \t\r;,\xE4", 4) + (random.below(5) == 0 ? "" : "\n");
        }
        Keys keys;
        for (std::size_t count = random.below(4); count > 0; --count) {
            keys.push_back(random.text("ab2", 3));
        }
        const char delimiter = delimiterOf(file, keys);
        ASSERT_EQ(delimiter, zelutil::test::csvDelimiterTwin(file, keys)) << shown(delimiter) << " for\n" << file;
    }
}

void writeLargeTable(const std::filesystem::path& path, std::size_t size) {
    std::ofstream out(path, std::ios::binary);
    const std::string line = "R1023;resistor;4k7;0603;Title;name;\n";
    std::string chunk;
    while (chunk.size() < (std::size_t{1} << 20)) {
        chunk += line;
    }
    for (std::size_t written = 0; written < size; written += chunk.size()) {
        out << chunk;
    }
    out << "Name : Value";
    out.close();
    ASSERT_TRUE(out);
}

TEST_F(CsvFile, HundredMegabytesAreSearchedLineByLine) {
    constexpr std::int64_t kSize = 100 * 1000 * 1000;
    const auto path = write("");
    writeLargeTable(path, kSize);
    std::ifstream in(path);
    Keys keys = kKeys;
    const std::int64_t memoryBefore = zelutil::test::peakMemory();
    const auto begin = std::chrono::steady_clock::now();

    EXPECT_EQ(CsvFileDelim(in, keys), ':');

    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
    const std::int64_t memory = zelutil::test::peakMemory() - memoryBefore;
    RecordProperty("milliseconds", std::to_string(time.count()));
    RecordProperty("additional_peak_memory_bytes", std::to_string(memory));
    EXPECT_LT(memory, kSize / 2);
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(line, "R1023;resistor;4k7;0603;Title;name;");
}

// --- Quotes ---------------------------------------------------------------------------------------------------------

struct QuotesRow {
    std::string in;
    std::string out;
    int leading;
    int trailing;
    bool balanced;
};

void expectQuotes(const QuotesRow& row) {
    std::string text = row.in;
    int leading = -7;
    int trailing = -7;
    EXPECT_EQ(RemoveLeadingTrailingCharsAndQuotesMixed(text, leading, trailing), row.balanced) << row.in;
    EXPECT_EQ(text, row.out) << row.in;
    EXPECT_EQ(leading, row.leading) << row.in;
    EXPECT_EQ(trailing, row.trailing) << row.in;
}

const std::vector<QuotesRow> kQuotes = {
    // Surroundings alone.
    {"", "", 0, 0, true},
    {" ", "", 0, 0, true},
    {"\t\r\n ", "", 0, 0, true},
    {R"(")", "", 1, 1, true},
    {R"("")", "", 2, 2, true},
    {R"(""")", "", 3, 3, true},
    {R"( " )", "", 1, 1, true},
    {R"("" "")", "", 4, 4, true},
    // No surroundings.
    {"ab", "ab", 0, 0, true},
    {"a", "a", 0, 0, true},
    {"a b", "a b", 0, 0, true},
    {R"(a"b)", R"(a"b)", 0, 0, true},
    {"'ab'", "'ab'", 0, 0, true},
    {"\vab\f", "\vab\f", 0, 0, true},
    {"\f", "\f", 0, 0, true},
    // The same number of quotes on both ends.
    {R"("ab")", "ab", 1, 1, true},
    {R"(""ab"")", "ab", 2, 2, true},
    {R"("a")", "a", 1, 1, true},
    {R"("a b")", "a b", 1, 1, true},
    {R"("a"b")", R"(a"b)", 1, 1, true},
    {R"(" ab ")", " ab ", 1, 1, true},
    {"\"\tab\n\"", "\tab\n", 1, 1, true},
    {"\"\v\"", "\v", 1, 1, true},
    {"\"\xE4\"", "\xE4", 1, 1, true},
    {std::string("\"\0\"", 3), std::string("\0", 1), 1, 1, true},
    // More on one end.
    {R"(""ab")", R"("ab)", 2, 1, false},
    {R"("ab"")", R"(ab")", 1, 2, false},
    {R"("""a")", R"(""a)", 3, 1, false},
    {R"("a""")", R"(a"")", 1, 3, false},
    {R"("""a"")", R"("a)", 3, 2, false},
    // On one end only.
    {R"("ab)", "ab", 1, 0, false},
    {R"(""ab)", "ab", 2, 0, false},
    {R"(ab")", "ab", 0, 1, false},
    {R"(ab"")", "ab", 0, 2, false},
    {R"("ab",)", R"(ab",)", 1, 0, false},
    {R"(,"ab")", R"(,"ab)", 0, 1, false},
    {R"("  ab)", "  ab", 1, 0, false},
    // Blanks without quotes stay.
    {" ab", " ab", 0, 0, true},
    {"ab ", "ab ", 0, 0, true},
    {"\t ab\r\n", "\t ab\r\n", 0, 0, true},
};

TEST(RemoveQuotes, EveryRow) {
    for (const QuotesRow& row : kQuotes) {
        expectQuotes(row);
    }
}

TEST(RemoveQuotes, CharactersAreCutByTheNumberOfQuotesOddity) {
    const std::vector<QuotesRow> kRows = {
        {R"( "ab" )", R"("ab")", 1, 1, true}, {R"( "ab")", R"("ab)", 1, 1, true},   {R"("ab" )", R"(ab")", 1, 1, true},
        {R"( "ab)", R"("ab)", 1, 0, false},   {R"(ab" )", R"(ab")", 0, 1, false},   {R"(" "ab)", R"("ab)", 2, 0, false},
        {R"(ab" ")", R"(ab")", 0, 2, false},  {"\n\n\"ab\"", "\n\"ab", 1, 1, true},
    };
    for (const QuotesRow& row : kRows) {
        expectQuotes(row);
    }
}

TEST(RemoveQuotes, AgreesWithItsTwinOnRandomFields) {
    zelutil::test::RandomText random(3);
    for (int i = 0; i < 200000; ++i) {
        const std::string field = random.text("\"\"\"ab \t\r\n\v", 9);
        const auto expected = zelutil::test::unquoteTwin(field);
        std::string text = field;
        int leading = -7;
        int trailing = -7;
        ASSERT_EQ(RemoveLeadingTrailingCharsAndQuotesMixed(text, leading, trailing), expected.balanced) << field;
        ASSERT_EQ(text, expected.text) << field;
        ASSERT_EQ(leading, expected.leadingQuotes) << field;
        ASSERT_EQ(trailing, expected.trailingQuotes) << field;
    }
}

}  // namespace
}  // namespace ZelU::UTL
