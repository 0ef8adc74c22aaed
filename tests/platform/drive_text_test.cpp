#include "platform/posix/drive_text.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace zelutil::platform {
namespace {

struct Row {
    const char* text;
    const char* path;
};

TEST(DriveText, NamesAFileOnTheDriveOfTheRoot) {
    constexpr Row kRows[] = {
        {R"(Z:\home\ann)", "/home/ann"},
        {R"(Z:/home/ann)", "/home/ann"},
        {R"(z:\home\ann)", "/home/ann"},
        {R"(Z:\home/ann\f.txt)", "/home/ann/f.txt"},
        {R"(Z:)", "/"},
        {R"(z:)", "/"},
        {R"(Z:\)", "/"},
        {R"(Z:/)", "/"},
        {R"(Z:\home\)", "/home/"},
        // Doubled separators are one, whichever they are.
        {R"(Z:\\home\\ann)", "/home/ann"},
        {R"(Z:\/home/\ann//x)", "/home/ann/x"},
        // Behind the colon stands no separator: relative, as on Windows.
        {R"(Z:a)", "a"},
        {R"(Z:a\b)", "a/b"},
        {R"(Z:..\a)", "../a"},
        // Case, dots, blanks and other characters are the file's own.
        {R"(Z:\Home\My Files\.x)", "/Home/My Files/.x"},
        {R"(Z:\a\..\b)", "/a/../b"},
        {"Z:\\\xe9:;,\x01", "/\xe9:;,\x01"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(systemPathFromText(row.text), row.path) << row.text;
    }
}

TEST(DriveText, EveryPlaceOfALongTextCounts) {
    for (std::size_t size = 1; size < 50; ++size) {
        const std::string name(size, 'n');
        EXPECT_EQ(systemPathFromText("Z:\\" + name), "/" + name);
        for (std::size_t place = 0; place < size; ++place) {
            std::string text = "Z:\\" + name;
            std::string path = "/" + name;
            for (const char c : {'"', '*', '?', '<', '>', '|'}) {
                text[3 + place] = c;
                EXPECT_EQ(systemPathFromText(text), std::nullopt) << text;
            }
            text[3 + place] = '\\';
            path[1 + place] = '/';
            if (place == 0) {
                path.erase(0, 1);  // it follows the first one
            }
            EXPECT_EQ(systemPathFromText(text), path) << text;
        }
    }
}

/// Copies a text into a buffer of that size that ends where its memory ends.
std::optional<std::string> copied(const std::string& text, std::size_t size) {
    std::vector<char> buffer(size, '#');
    return copySystemPath(text, buffer.data(), size) ? std::make_optional<std::string>(buffer.data()) : std::nullopt;
}

TEST(DriveText, ALongPlainTextIsCopiedIntoABuffer) {
    EXPECT_EQ(copied(R"(Z:\home/ann\notes of mine.txt)", 100), "/home/ann/notes of mine.txt");
    EXPECT_EQ(copied(R"(home\ann/notes of mine.txt)", 100), "home/ann/notes of mine.txt");
    EXPECT_EQ(copied(R"(C:\home\ann\notes of mine.txt)", 100), std::nullopt);
    EXPECT_EQ(copied(R"(\\home\ann\notes of mine.txt)", 100), std::nullopt);
    EXPECT_EQ(copied("", 100), std::nullopt);
    EXPECT_EQ(copied("Z:", 100), std::nullopt);
}

TEST(DriveText, ACopyIsTheSameTextAndFitsItsBuffer) {
    for (std::size_t size = 17; size < 50; ++size) {
        const std::string name(size - 1, 'n');
        EXPECT_EQ(copied("Z:\\" + name, size), std::nullopt) << "no room for the zero";
        EXPECT_EQ(copied("Z:\\" + name, size + 1), "/" + name);
        for (std::size_t place = 0; place < name.size(); ++place) {
            for (const char c : {'"', '*', '?', '<', '>', '|', '/', '\\', ' '}) {
                std::string text = "Z:\\" + name;
                text[3 + place] = c;
                const bool isPlain = c == ' ' || ((c == '/' || c == '\\') && place != 0);
                EXPECT_EQ(copied(text, size + 1), isPlain ? systemPathFromText(text) : std::nullopt) << text;
            }
        }
    }
}

TEST(DriveText, WithoutADriveIsBelowTheRootOrTheCurrentDirectory) {
    constexpr Row kRows[] = {
        {R"(\home\ann)", "/home/ann"},
        {R"(/home/ann)", "/home/ann"},
        {R"(notes.txt)", "notes.txt"},
        {R"(a\b)", "a/b"},
        {R"(a\\b)", "a/b"},
        {R"(.)", "."},
        {R"(..\a)", "../a"},
        {R"(\)", "/"},
        {R"(:)", ":"},
        {R"(1:\a)", "1:/a"},
        {R"(ab:\c)", "ab:/c"},
        {R"( )", " "},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(systemPathFromText(row.text), row.path) << row.text;
    }
}

TEST(DriveText, NamesNoFileElsewhere) {
    for (const char* const text : {"", R"(C:)", R"(C:\home)", R"(c:/home)", R"(Y:\a)", R"(A:a)", R"(B:)",
                                   R"(\\server\share)", R"(//server/share)", R"(\/server)", R"(/\server)", R"(\\)"}) {
        EXPECT_EQ(systemPathFromText(text), std::nullopt) << text;
    }
}

TEST(DriveText, NamesNoFileWithACharacterOfNoName) {
    for (const char character : {'"', '*', '?', '<', '>', '|'}) {
        for (const char* const pattern : {"#", R"(Z:\#)", R"(Z:\a#b\c)", "a#", "#a", R"(Z:\a\#)"}) {
            std::string text = pattern;
            text[text.find('#')] = character;
            EXPECT_EQ(systemPathFromText(text), std::nullopt) << text;
        }
    }
}

TEST(DriveText, OfASystemsPathHasTheDriveInFront) {
    constexpr Row kRows[] = {
        {"Z:/opt/product", "/opt/product"},
        {"Z:/", "/"},
        {"Z://opt", "//opt"},
        {R"(Z:/a\b)", R"(/a\b)"},
        {"notes.txt", "notes.txt"},
        {"./a", "./a"},
        {"", ""},
        {"~/a", "~/a"},
        // A text in Windows form stands as it is.
        {"Z:/opt", "Z:/opt"},
        {R"(Z:\opt)", R"(Z:\opt)"},
        {R"(C:\x)", R"(C:\x)"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(textFromSystemPath(row.path), row.text) << row.path;
    }
}

TEST(DriveText, OfAnAbsolutePathNamesThatPath) {
    for (const char* const path : {"/", "/home/ann", "/home/ann/f.txt", "/a b/.c"}) {
        EXPECT_EQ(systemPathFromText(textFromSystemPath(path)), path);
    }
}

TEST(DriveText, OfAListTranslatesEachEntry) {
    constexpr Row kRows[] = {
        {"Z:/usr/bin;Z:/bin", "/usr/bin:/bin"},
        {"Z:/bin", "/bin"},
        {"bin;Z:/bin;.", "bin:/bin:."},
        // Empty entries stay where they are.
        {"", ""},
        {";", ":"},
        {";Z:/bin", ":/bin"},
        {"Z:/bin;", "/bin:"},
        {"Z:/a;;Z:/b", "/a::/b"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(textListFromSystemList(row.path), row.text) << row.path;
    }
}

}  // namespace
}  // namespace zelutil::platform
