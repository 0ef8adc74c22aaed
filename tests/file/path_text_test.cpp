#include "file/path_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>

namespace {

using zelutil::file::normalise;
using zelutil::file::PathFlags;

constexpr char kWork[] = R"(C:\work)";

/// The current directory for a text that has no business to ask for it.
std::string unexpectedQuestion() {
    ADD_FAILURE() << "the current directory was asked for";
    return kWork;
}

// --- Whole texts that are absolute by themselves --------------------------------------------------------------------

struct WholeRow {
    const char* text;
    const char* out;
    bool blank = false;
};

std::ostream& operator<<(std::ostream& stream, const WholeRow& row) {
    return stream << "[" << row.text << "] => [" << row.out << "]" << (row.blank ? " blank" : "");
}

/// The absolute flag is neither looked at nor touched, and an old blank flag does not matter.
void expectNormalised(const WholeRow& row) {
    SCOPED_TRACE(testing::Message() << row);
    for (const bool absolute : {false, true}) {
        for (const bool blankBefore : {false, true}) {
            std::string text = row.text;
            PathFlags flags{blankBefore, absolute};
            normalise(text, flags, 0, unexpectedQuestion);
            EXPECT_EQ(text, row.out);
            EXPECT_EQ(flags.hasSpace, row.blank);
            EXPECT_EQ(flags.absolute, absolute);
        }
    }
}

template <std::size_t N>
void expectAllNormalised(const WholeRow (&rows)[N]) {
    for (const WholeRow& row : rows) {
        expectNormalised(row);
    }
}

TEST(PathText, SeparatorsBecomeSingleBackslashesAndNoneStaysAtTheEnd) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a)", R"(c:\a)"},
        {R"(c:\a)", R"(c:\a)"},
        {R"(C:/A)", R"(C:\A)"},
        {R"(c:/a/b/c)", R"(c:\a\b\c)"},
        {R"(c:\a/b\c)", R"(c:\a\b\c)"},
        {R"(c:/a//b)", R"(c:\a\b)"},
        {R"(c:/a//b/)", R"(c:\a\b)"},
        {R"(c:/a\/b)", R"(c:\a\b)"},
        {R"(c:\a/\b)", R"(c:\a\b)"},
        {R"(c:\\a\\b\\c)", R"(c:\a\b\c)"},
        {R"(c:/a/)", R"(c:\a)"},
        {R"(c:/a//)", R"(c:\a)"},
        {R"(c:\a\\)", R"(c:\a)"},
        {R"(c:)", R"(c:)"},
        {R"(c:/)", R"(c:)"},
        {R"(c:\)", R"(c:)"},
        {R"(c://)", R"(c:)"},
        // A drive letter and a colon are enough: what follows need not be a separator.
        {R"(c:a)", R"(c:a)"},
        {R"(c:a/b)", R"(c:a\b)"},
        {R"(c:/d:/x)", R"(c:\d:\x)"},
        // All letters, and no more than letters, are drives (the others are relative, see below).
        {R"(a:/x)", R"(a:\x)"},
        {R"(z:/x)", R"(z:\x)"},
        {R"(A:/x)", R"(A:\x)"},
        {R"(Z:/x)", R"(Z:\x)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, OfThreeSeparatorsInARowTheThirdIsLeftAsItIsOddity) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a///b)", R"(c:\a\/b)"},
        {R"(c:\a\\\b)", R"(c:\a\\b)"},
        {R"(c:\a\\/b)", R"(c:\a\/b)"},
        {R"(c:/a//\b)", R"(c:\a\\b)"},
        {R"(c:/a////b)", R"(c:\a\/\b)"},
        {R"(c:\a\\\\b)", R"(c:\a\\b)"},
        {R"(c:/a/////b)", R"(c:\a\/\b)"},
        // At the end a backslash goes, a slash that was left is a character and stays.
        {R"(c:///)", R"(c:\/)"},
        {R"(c:////)", R"(c:\/)"},
        {R"(c://///)", R"(c:\/)"},
        {R"(c:\\\)", R"(c:)"},
        {R"(c:\\\\)", R"(c:)"},
        {R"(c:/a///)", R"(c:\a\/)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, WhatSlidesIntoThePlaceOfADoubledSeparatorIsNotExaminedOddity) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a//?b)", R"(c:\a\?b)"},
        {R"(c:/a//*)", R"(c:\a\*)"},
        {R"(c:/a//|b)", R"(c:\a\|b)"},
        {R"(c:/a//b?)", ""},
        {"c:/a//\nb", "c:\\a\\\nb"},
        {R"(c:/a// b)", R"(c:\a\ b)", false},
        {R"(c:/a//  b)", R"(c:\a\  b)", true},
        {R"(c:/a//"b)", R"(c:\a\"b)"},
        {R"(c:/a//""b)", R"(c:\a\"b)"},
        // Dots are looked at later, wherever they came from.
        {R"(c:/a//./b)", R"(c:\a\b)"},
        {R"(c:/a//../b)", R"(c:\b)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ANetworkPathKeepsItsLeadingPair) {
    constexpr WholeRow kRows[] = {
        {R"(//server/share)", R"(\\server\share)"},
        {R"(\\server\share)", R"(\\server\share)"},
        {R"(/\server\share)", R"(\\server\share)"},
        {R"(\/server/share)", R"(\\server\share)"},
        {R"(//server/)", R"(\\server)"},
        {R"(//server//share/)", R"(\\server\share)"},
        {R"(//server/my share)", R"(\\server\my share)", true},
        {R"(//server/share/./a)", R"(\\server\share\a)"},
        {R"(//server/share/a/..)", R"(\\server\share)"},
        {R"(//server/share/..)", R"(\\server)"},
        {R"(//a/./b)", R"(\\a\b)"},
        {R"(//a/../b)", R"(\\b)"},
        {R"(//a/b/../../c)", R"(\\c)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, MoreThanTwoLeadingSeparatorsLeaveTheFourthOddity) {
    constexpr WholeRow kRows[] = {
        {R"(///server)", R"(\\server)"},
        {R"(\\\server)", R"(\\server)"},
        {R"(////server)", R"(\\/server)"},
        {R"(\\\\server)", R"(\\\server)"},
        {R"(////)", R"(\\/)"},
        {R"(//server//share///x)", R"(\\server\share\/x)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, SeparatorsAloneAreNoPath) {
    constexpr WholeRow kRows[] = {
        {"", ""}, {R"(/)", ""}, {R"(\)", ""}, {R"(//)", ""}, {R"(\\)", ""}, {R"(///)", ""}, {R"(\\\\)", ""},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ComponentsOfOneDotAreRemoved) {
    constexpr WholeRow kRows[] = {
        {R"(c:/.)", R"(c:)"},           {R"(c:/./)", R"(c:)"},
        {R"(c:/./a)", R"(c:\a)"},       {R"(c:/a/.)", R"(c:\a)"},
        {R"(c:/a/./)", R"(c:\a)"},      {R"(c:/a/./b)", R"(c:\a\b)"},
        {R"(c:/a/././b)", R"(c:\a\b)"}, {R"(c:/./a/./b/.)", R"(c:\a\b)"},
        {R"(c:a/.)", R"(c:a)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ComponentsOfTwoDotsTakeTheOneBeforeWithThem) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a/..)", R"(c:)"},          {R"(c:/a/../)", R"(c:)"},         {R"(c:/a/../b)", R"(c:\b)"},
        {R"(c:/a/b/..)", R"(c:\a)"},      {R"(c:/a/b/../c)", R"(c:\a\c)"},  {R"(c:/a/b/../..)", R"(c:)"},
        {R"(c:/a/b/../../c)", R"(c:\c)"}, {R"(c:/a/../b/../c)", R"(c:\c)"}, {R"(c:/a/./..)", R"(c:)"},
        {R"(c:/a/.././b)", R"(c:\b)"},    {R"(c:/a.b/../c)", R"(c:\c)"},    {R"(c:/.../..)", R"(c:)"},
        {R"(c:a/b/..)", R"(c:a)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ClimbingAboveTheDriveIsNoPathAndHasNoBlank) {
    constexpr WholeRow kRows[] = {
        {R"(c:/..)", ""},
        {R"(c:/../)", ""},
        {R"(c:/../a)", ""},
        {R"(c:/a/../..)", ""},
        {R"(c:/a/../../b)", ""},
        {R"(c:/a/../../..)", ""},
        {R"(c:/./..)", ""},
        {R"(c:/.//..)", ""},
        {R"(c:/a b/../..)", "", false},
        {R"(c:/../a b)", "", false},
        {R"(c:a/..)", ""},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, NamesThatMerelyBeginOrEndWithDotsAreNames) {
    constexpr WholeRow kRows[] = {
        {R"(c:/...)", R"(c:\...)"},
        {R"(c:/....)", R"(c:\....)"},
        {R"(c:/a/.../b)", R"(c:\a\...\b)"},
        {R"(c:/.a)", R"(c:\.a)"},
        {R"(c:/..a)", R"(c:\..a)"},
        {R"(c:/a./b)", R"(c:\a.\b)"},
        {R"(c:/a../b)", R"(c:\a..\b)"},
        {R"(c:/a/.b/..c/d)", R"(c:\a\.b\..c\d)"},
        {R"(c:/. /a)", R"(c:\. \a)", true},
        {R"(c:/.. /a)", R"(c:\.. \a)", true},
        // Behind the drive's colon stands no separator, so these are part of the first name.
        {R"(c:.)", R"(c:.)"},
        {R"(c:..)", R"(c:..)"},
        {R"(c:../a)", R"(c:..\a)"},
        {R"(c:../.a)", R"(c:..\.a)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, AnEmptyComponentIsAComponentForTwoDotsOddity) {
    constexpr WholeRow kRows[] = {
        {R"(c:\a\\\..\b)", R"(c:\a\b)"},
        {R"(c:\a\..\\\b)", R"(c:\\b)"},
        {R"(c:/a/..///b)", R"(c:\/b)"},
        // A slash that was left unconverted is a character of its name.
        {R"(c:/a///../b)", R"(c:\a\/..\b)"},
        // The pair that leads a network path encloses an empty component, and a server is one like others.
        {R"(//server/..)", R"(\)"},
        {R"(//server/share/../..)", R"(\)"},
        {R"(//server/../../x)", R"(\x)"},
        {R"(//..)", ""},
        {R"(//../a)", R"(\a)"},
        {R"(//.)", R"(\)"},
        {R"(//./a)", R"(\\a)"},
        {R"(//a/../..)", ""},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, TheBlankFlagOutlivesARemovedComponentOddity) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a b/..)", R"(c:)", true},
        {R"(c:/a b/../c)", R"(c:\c)", true},
        {R"(// /../..)", "", true},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, AnInvalidCharacterAnywhereGivesTheEmptyText) {
    for (const char invalid : {'\n', '\r', '*', '<', '>', '?', '|'}) {
        for (const char* const pattern : {"#", "#c:/a", "c#:/a", "c:#/a", "c:/#", "c:/a#", "c:/a#b", "c:/a b#",
                                          "c:/# b", "c:/a/#", "//server/#", "#/..", "c:/../#", "a#", "/#"}) {
            std::string text = pattern;
            text[text.find('#')] = invalid;
            SCOPED_TRACE(testing::Message() << "code " << int{invalid});
            expectNormalised({text.c_str(), "", false});
        }
    }
}

TEST(PathText, OtherCharactersAreLeftAsTheyAre) {
    constexpr WholeRow kRows[] = {
        {"c:/a\tb", "c:\\a\tb"},
        {"c:/\x01\x09\x0b\x0c\x0e\x1f", "c:\\\x01\x09\x0b\x0c\x0e\x1f"},
        {"c:/{}~\x7f", "c:\\{}~\x7f"},
        {"c:/\x80\xa0\xdc\xe9\xff", "c:\\\x80\xa0\xdc\xe9\xff"},
        {R"(c:/!#$%&'()+,-;=@[]^_`)", R"(c:\!#$%&'()+,-;=@[]^_`)"},
        {R"(c:/a:b)", R"(c:\a:b)"},
        {R"(c:/0123456789)", R"(c:\0123456789)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ANulIsACharacterLikeOthers) {
    std::string text("c:/a\0/./b", 9);
    PathFlags flags;
    normalise(text, flags, 0, unexpectedQuestion);
    EXPECT_EQ(text, std::string("c:\\a\0\\b", 7));
}

TEST(PathText, DoubleQuotesAreRemoved) {
    constexpr WholeRow kRows[] = {
        {R"("c:/a")", R"(c:\a)"},
        {R"("c:/my files")", R"(c:\my files)", true},
        {R"(c:/"a")", R"(c:\a)"},
        {R"(c:/a")", R"(c:\a)"},
        {R"(c:/a/")", R"(c:\a)"},
        {R"(c":/a)", R"(c:\a)"},
        {R"("\\server\share")", R"(\\server\share)"},
        {R"(c:\"a b"\c)", R"(c:\a b\c)", true},
        {R"(c:\a\".."\b)", R"(c:\b)"},
        {R"(c:/a/."./b)", R"(c:\b)"},
        {R"(")", ""},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, WhatSlidesIntoThePlaceOfAQuoteIsNotExaminedOddity) {
    constexpr WholeRow kRows[] = {
        {R"(c:/""a)", R"(c:\"a)"},          {R"(c:/"""a)", R"(c:\"a)"},
        {R"(c:/"""")", R"(c:\"")"},         {R"(c:/"a b"/c)", R"(c:\a b/c)", true},
        {R"(c:/a"/b)", R"(c:\a/b)"},        {R"(c:/a"//b)", R"(c:\a/\b)"},
        {R"(c:/a"\/b)", R"(c:\a\b)"},       {R"(c:/a"/)", R"(c:\a/)"},
        {R"(c:/a"?b)", R"(c:\a?b)"},        {R"(c:/a"|)", R"(c:\a|)"},
        {R"(c:/a" b)", R"(c:\a b)", false}, {R"(c:/a"  b)", R"(c:\a  b)", true},
        {R"(c:/a/".."/b)", R"(c:\a\../b)"},
    };
    expectAllNormalised(kRows);
}

TEST(PathText, ABlankAnywhereIsNoticed) {
    constexpr WholeRow kRows[] = {
        {R"(c:/a b)", R"(c:\a b)", true}, {R"(c:/a b/c)", R"(c:\a b\c)", true},   {R"(c:/ a)", R"(c:\ a)", true},
        {R"(c:/a )", R"(c:\a )", true},   {R"(c: /a)", R"(c: \a)", true},         {R"(c:/ )", R"(c:\ )", true},
        {R"(c:/a_b)", R"(c:\a_b)"},       {R"(c:/a b/./c)", R"(c:\a b\c)", true},
    };
    expectAllNormalised(kRows);
}

// --- Whole texts that are relative ----------------------------------------------------------------------------------

struct RelativeRow {
    const char* directory;
    const char* text;
    const char* out;
    bool blank = false;
};

std::ostream& operator<<(std::ostream& stream, const RelativeRow& row) {
    return stream << "[" << row.text << "] in [" << row.directory << "] => [" << row.out << "]"
                  << (row.blank ? " blank" : "");
}

template <std::size_t N>
void expectAllMadeAbsolute(const RelativeRow (&rows)[N]) {
    for (const RelativeRow& row : rows) {
        SCOPED_TRACE(testing::Message() << row);
        std::string text = row.text;
        PathFlags flags;
        int questions = 0;
        normalise(text, flags, 0, [&] {
            ++questions;
            return std::string(row.directory);
        });
        EXPECT_EQ(text, row.out);
        EXPECT_EQ(flags.hasSpace, row.blank);
        EXPECT_TRUE(flags.absolute);
        EXPECT_EQ(questions, 1);
    }
}

TEST(PathText, ARelativeTextGetsTheCurrentDirectoryInFront) {
    constexpr RelativeRow kRows[] = {
        {kWork, R"(a)", R"(C:\work\a)"},
        {kWork, R"(a/b)", R"(C:\work\a\b)"},
        {kWork, R"(a/)", R"(C:\work\a)"},
        {kWork, R"(a b)", R"(C:\work\a b)", true},
        {kWork, R"( )", R"(C:\work\ )", true},
        {kWork, R"( c:/a)", R"(C:\work\ c:\a)", true},
        {kWork, R"(.a)", R"(C:\work\.a)"},
        {kWork, R"(...)", R"(C:\work\...)"},
        {kWork, R"(c)", R"(C:\work\c)"},
        // A character that is no letter names no drive.
        {kWork, R"(:)", R"(C:\work\:)"},
        {kWork, R"(:/x)", R"(C:\work\:\x)"},
        {kWork, R"(1:/x)", R"(C:\work\1:\x)"},
        {kWork, R"(@:/x)", R"(C:\work\@:\x)"},
        {kWork, R"([:/x)", R"(C:\work\[:\x)"},
        {kWork, R"(`:/x)", R"(C:\work\`:\x)"},
        {kWork, R"({:/x)", R"(C:\work\{:\x)"},
        {kWork, "\xc4:/x", "C:\\work\\\xc4:\\x"},
        {kWork, R"(cd:/x)", R"(C:\work\cd:\x)"},
    };
    expectAllMadeAbsolute(kRows);
}

TEST(PathText, DotsOfARelativeTextAreTakenOutOfTheJoin) {
    constexpr RelativeRow kRows[] = {
        {kWork, R"(.)", R"(C:\work)"},
        {kWork, R"(./)", R"(C:\work)"},
        {kWork, R"(./a)", R"(C:\work\a)"},
        {kWork, R"(./.)", R"(C:\work)"},
        {kWork, R"(..)", R"(C:)"},
        {kWork, R"(../a)", R"(C:\a)"},
        {kWork, R"(a/../..)", R"(C:)"},
        {kWork, R"(a/..)", R"(C:\work)"},
        {kWork, R"(../..)", ""},
        {kWork, R"(a b/../../..)", ""},
        {kWork, R"(a b/..)", R"(C:\work)", true},
        {R"(C:\)", R"(..)", ""},
        {R"(C:\.hidden)", R"(..)", R"(C:)"},
        {R"(\\server\share)", R"(../a)", R"(\\server\a)"},
        {R"(\\server\share)", R"(../../..)", ""},
    };
    expectAllMadeAbsolute(kRows);
}

TEST(PathText, TheCurrentDirectoryIsNormalisedToo) {
    constexpr RelativeRow kRows[] = {
        {R"(C:\)", R"(a)", R"(C:\a)"},
        {R"(C:\work\)", R"(a)", R"(C:\work\a)"},
        {R"(C:\work\\)", R"(a)", R"(C:\work\a)"},
        {R"(Z:/home/ann)", R"(a)", R"(Z:\home\ann\a)"},
        {R"(\\server\share)", R"(a)", R"(\\server\share\a)"},
        {R"(C:\.hidden)", R"(x)", R"(C:\.hidden\x)"},
        {R"(C:\a\..\b\.)", R"(x)", R"(C:\b\x)"},
        {R"(C:\my work)", R"(a)", R"(C:\my work\a)", true},
        {R"(C:\my work)", R"(../a)", R"(C:\a)", true},
        {R"(C:\my work)", R"(../..)", ""},
        {R"(C:\"w)", R"(a)", R"(C:\w\a)"},
    };
    expectAllMadeAbsolute(kRows);
}

TEST(PathText, WhereTheCurrentDirectoryIsNotKnownOrNoPathARelativeTextIsNone) {
    for (const char* const directory : {"", R"(\)", R"(//)", R"(")", R"(C:\wo?rk)", R"(C:\my wo*rk)", "C:\\wo\nrk"}) {
        for (const char* const relative : {"a", "a b", "a/b", "/a", ".", "..", "./a b", "1:/x"}) {
            SCOPED_TRACE(testing::Message() << "[" << relative << "] in [" << directory << "]");
            std::string text = relative;
            PathFlags flags{true, false};
            normalise(text, flags, 0, [&] { return std::string(directory); });
            EXPECT_EQ(text, "");
            EXPECT_FALSE(flags.hasSpace);
            EXPECT_FALSE(flags.absolute);
        }
    }
}

TEST(PathText, ASingleLeadingSeparatorIsRelativeAndEndsUpDoubledOddity) {
    constexpr RelativeRow kRows[] = {
        {kWork, R"(/a)", R"(C:\work\\a)"}, {kWork, R"(\a)", R"(C:\work\\a)"},
        {R"(C:\)", R"(/a)", R"(C:\\a)"},   {kWork, R"(/c:/a)", R"(C:\work\\c:\a)"},
        {kWork, R"(/.)", R"(C:\work\)"},   {kWork, R"(/a/..)", R"(C:\work\)"},
        {kWork, R"(/..)", R"(C:\work)"},   {kWork, R"(/../a)", R"(C:\work\a)"},
        {kWork, R"(/../../a)", R"(C:\a)"}, {kWork, R"(/"/server)", R"(C:\work\\/server)"},
    };
    expectAllMadeAbsolute(kRows);
}

TEST(PathText, AQuoteMayHideThatATextIsAbsoluteOddity) {
    constexpr RelativeRow kRows[] = {
        {kWork, R"("")", R"(C:\work\")"},          {kWork, R"("//server/share")", R"(C:\work\/\server\share)"},
        {kWork, R"("/)", R"(C:\work\/)"},          {kWork, R"("" c:/a)", R"(C:\work\" c:\a)", true},
        {kWork, R"(" a)", R"(C:\work\ a)", false},
    };
    expectAllMadeAbsolute(kRows);
}

// --- Texts assigned to a path that once was made absolute -----------------------------------------------------------

TEST(PathText, ATextIsLeftRelativeWhenTheFlagIsSetOddity) {
    constexpr WholeRow kRows[] = {
        {R"(a)", R"(a)"},
        {R"(a/b)", R"(a\b)"},
        {R"(a/)", R"(a)"},
        {R"(a b)", R"(a b)", true},
        {R"(/a)", R"(\a)"},
        {R"(c:/a)", R"(c:\a)"},
        {R"(a?)", ""},
        {R"(a/.)", R"(a)"},
        {R"(a/./b)", R"(a\b)"},
        {R"(a/b/..)", R"(a)"},
        // Nothing stands before the first component, so there is nothing to climb to.
        {R"(a/..)", ""},
        {R"(a/../b)", ""},
        {R"(a b/..)", "", false},
        {R"(/.)", ""},
        {R"(/..)", ""},
        {R"(/../a b)", "", false},
        // Dots at the very beginning are seen only where others follow a separator.
        {R"(.)", R"(.)"},
        {R"(..)", R"(..)"},
        {R"(./a)", R"(.\a)"},
        {R"(../a)", R"(..\a)"},
        {R"(./.)", ""},
        {R"(./a/.)", R"(\a)"},
        {R"(./.a)", R"(\.a)"},
        {R"(../.)", ""},
        {R"(../.a)", ""},
    };
    for (const WholeRow& row : kRows) {
        SCOPED_TRACE(testing::Message() << row);
        std::string text = row.text;
        PathFlags flags{false, true};
        normalise(text, flags, 0, unexpectedQuestion);
        EXPECT_EQ(text, row.out);
        EXPECT_EQ(flags.hasSpace, row.blank);
        EXPECT_TRUE(flags.absolute);
    }
}

// --- Appended texts -------------------------------------------------------------------------------------------------

struct AppendRow {
    const char* before;
    const char* appended;
    const char* out;
    PathFlags flagsBefore = {};
    PathFlags flagsAfter = {};
};

constexpr PathFlags kBlank{true, false};
constexpr PathFlags kAbsolute{false, true};
constexpr PathFlags kBlankAndAbsolute{true, true};

std::ostream& operator<<(std::ostream& stream, const PathFlags& flags) {
    return stream << (flags.hasSpace ? " blank" : "") << (flags.absolute ? " absolute" : "");
}

std::ostream& operator<<(std::ostream& stream, const AppendRow& row) {
    return stream << "[" << row.before << "]" << row.flagsBefore << " += [" << row.appended << "] => [" << row.out
                  << "]" << row.flagsAfter;
}

template <std::size_t N>
void expectAllAppended(const AppendRow (&rows)[N], const char* directory = kWork) {
    for (const AppendRow& row : rows) {
        SCOPED_TRACE(testing::Message() << row);
        std::string text = std::string(row.before) + "/" + row.appended;
        PathFlags flags = row.flagsBefore;
        normalise(text, flags, std::string(row.before).size(), [&] { return std::string(directory); });
        EXPECT_EQ(text, row.out);
        EXPECT_EQ(flags.hasSpace, row.flagsAfter.hasSpace);
        EXPECT_EQ(flags.absolute, row.flagsAfter.absolute);
    }
}

TEST(PathTextAppended, ComponentsAreJoined) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a)", R"(b)", R"(c:\a\b)"},
        {R"(c:\a)", R"(b/c)", R"(c:\a\b\c)"},
        {R"(c:\a)", R"(b\c/)", R"(c:\a\b\c)"},
        {R"(c:\a)", R"()", R"(c:\a)"},
        {R"(c:\a)", R"(/)", R"(c:\a)"},
        {R"(c:\a)", R"(/b)", R"(c:\a\b)"},
        {R"(c:\a)", R"(\b)", R"(c:\a\b)"},
        {R"(c:)", R"(a)", R"(c:\a)"},
        {R"(c:)", R"()", R"(c:)"},
        {R"(\\server\share)", R"(a)", R"(\\server\share\a)"},
        {R"(c:\a)", R"("b")", R"(c:\a\b)"},
        // Never taken for an absolute text.
        {R"(c:\a)", R"(d:/b)", R"(c:\a\d:\b)"},
        {R"(C:\work\a)", R"(b)", R"(C:\work\a\b)", kAbsolute, kAbsolute},
        {R"(a)", R"(b)", R"(a\b)", kAbsolute, kAbsolute},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, BlanksAreAddedToTheFlag) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a)", R"(b c)", R"(c:\a\b c)", {}, kBlank},
        {R"(c:\a)", R"( )", R"(c:\a\ )", {}, kBlank},
        {R"(c:\a)", R"("b c")", R"(c:\a\b c)", {}, kBlank},
        {R"(c:\a b)", R"(c)", R"(c:\a b\c)", kBlank, kBlank},
        {R"(c:\a b)", R"(..)", R"(c:)", kBlank, kBlank},
        {R"(C:\work\a)", R"(b c)", R"(C:\work\a\b c)", kAbsolute, kBlankAndAbsolute},
        // The character after a removed one is not seen.
        {R"(c:\a)", R"(/ b)", R"(c:\a\ b)", {}, {}},
        {R"(c:\a)", R"(" b)", R"(c:\a\ b)", {}, {}},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, AnInvalidCharacterEmptiesTheWholeTextAndClearsTheBlankFlag) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a)", R"(b?)", ""},   {R"(c:\a)", R"(?)", ""},
        {R"(c:\a)", "b\nc", ""},    {R"(c:\a b)", R"(c*)", "", kBlank, {}},
        {R"(c:\a)", R"(b c|)", ""}, {R"(C:\work\a b)", R"(<)", "", kBlankAndAbsolute, kAbsolute},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, DotsMayClimbIntoThePartBefore) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a)", R"(.)", R"(c:\a)"},
        {R"(c:\a)", R"(./b)", R"(c:\a\b)"},
        {R"(c:\a)", R"(..)", R"(c:)"},
        {R"(c:\a)", R"(../b)", R"(c:\b)"},
        {R"(c:\a\b)", R"(../../c)", R"(c:\c)"},
        {R"(c:\a)", R"(b/./c/../d)", R"(c:\a\b\d)"},
        {R"(c:\a)", R"(...)", R"(c:\a\...)"},
        {R"(c:)", R"(.)", R"(c:)"},
        {R"(c:)", R"(..)", ""},
        {R"(c:\a)", R"(../..)", ""},
        {R"(c:\a b)", R"(../../c)", "", kBlank, {}},
        {R"(\\server\share)", R"(..)", R"(\\server)"},
        {R"(\\server\share)", R"(../..)", R"(\)"},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, ThePartBeforeIsNotExaminedAgain) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a\/b)", R"(c)", R"(c:\a\/b\c)"}, {R"(c:\"a)", R"(b)", R"(c:\"a\b)"},
        {R"(c:\a\?b)", R"(c)", R"(c:\a\?b\c)"}, {R"(c:\a\ b)", R"(c)", R"(c:\a\ b\c)", {}, {}},
        {R"(c:\\b)", R"(c)", R"(c:\\b\c)"},     {R"(..\a)", R"(b)", R"(..\a\b)", kAbsolute, kAbsolute},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, TheJoiningSlashCountsAsTheFirstSeparatorOfARunOddity) {
    constexpr AppendRow kRows[] = {
        {R"(c:\a)", R"(//b)", R"(c:\a\/b)"},
        {R"(c:\a)", R"(\\b)", R"(c:\a\\b)"},
        {R"(c:\a)", R"(/?b)", R"(c:\a\?b)"},
        {R"(c:\a)", R"("/b)", R"(c:\a\/b)"},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, ToTheEmptyTextAnAppendedNameHasALeadingSeparatorOddity) {
    constexpr AppendRow kRows[] = {
        {"", R"(a)", R"(C:\work\\a)", {}, kAbsolute},
        {"", R"(a)", R"(C:\work\\a)", kBlank, kAbsolute},
        {"", R"(a b)", R"(C:\work\\a b)", {}, kBlankAndAbsolute},
        {"", R"(c:/a)", R"(C:\work\\c:\a)", {}, kAbsolute},
        {"", R"(../a)", R"(C:\work\a)", {}, kAbsolute},
        {"", R"()", ""},
        {"", R"(a?)", ""},
        {"", R"(/server/x)", R"(\\server\x)"},
        {"", R"(a)", R"(\a)", kAbsolute, kAbsolute},
        {"", R"(.)", "", kAbsolute, kAbsolute},
        {"", R"(..)", "", kAbsolute, kAbsolute},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, ATextThatEndsInASeparatorTakesTheAppendedTextUnexaminedOddity) {
    constexpr AppendRow kRows[] = {
        {R"(C:\work\)", R"(a)", R"(C:\work\a)", kAbsolute, kAbsolute},
        {R"(C:\work\)", R"(?)", R"(C:\work\?)", kAbsolute, kAbsolute},
        {R"(C:\work\)", R"(/a)", R"(C:\work\/a)", kAbsolute, kAbsolute},
        {R"(C:\work\)", R"()", R"(C:\work)", kAbsolute, kAbsolute},
        {R"(C:\work\)", R"(.)", R"(C:\work)", kAbsolute, kAbsolute},
        {R"(C:\work\)", R"(..)", R"(C:)", kAbsolute, kAbsolute},
        // This is left of a server that was climbed out of.
        {R"(\)", R"(a)", R"(\\a)"},
        {R"(\)", R"()", ""},
    };
    expectAllAppended(kRows);
}

TEST(PathTextAppended, WhatIsLeftOfANetworkPathIsRelativeOddity) {
    constexpr AppendRow kRows[] = {
        {R"(\x)", R"(y)", R"(C:\work\\x\y)", {}, kAbsolute},
        {R"(\x)", R"(..)", R"(C:\work\)", {}, kAbsolute},
        {R"(\x)", R"(../../../..)", "", {}, kAbsolute},
    };
    expectAllAppended(kRows);
    // The walk begins at the old length, here in the middle of "w."; what is left of it there is no component.
    constexpr AppendRow kInTheMiddle[] = {
        {R"(\xyz)", R"(.b)", R"(C:\w.\v\\xyz\.b)", {}, kAbsolute},
    };
    expectAllAppended(kInTheMiddle, R"(C:\w.\v)");
}

}  // namespace
