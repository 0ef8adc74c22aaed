// Parts of the command that decide on values alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string_view>

#include "command/doctor/candidate_text.h"
#include "command/nearest_names.h"
#include "command/pattern.h"
#include "command/saved_settings.h"
#include "command/shortcuts/columns.h"
#include "command/text.h"
#include "support/text_file.h"

namespace {

using namespace zelutil::command;
using zelutil::host::SaveResult;

/// Returns what a terminal of that width shows of a table.
std::string tableOn(std::optional<std::size_t> width) {
    using zelutil::shortcuts::Cell;
    Output output("who", FindingsAre::TheResult, {false, ColorChoice::Never, width});
    zelutil::shortcuts::showColumns(
        {"ID", "WHY", "KEY"},
        {{{"1", Role::Value}, {"because the f\xC3\xBCnfth one is shipped so", Role::Faint}, {"F1"}},
         {{"22", Role::Value}, {"shipped", Role::Faint}, {"F2"}}},
        output);
    return output.text();
}

TEST(Columns, ExplanationsAreShortenedToTheTerminal) {
    const std::string whole =
        "ID  WHY                                   KEY\n"
        "1   because the f\xC3\xBCnfth one is shipped so  F1\n"
        "22  shipped                               F2\n";
    EXPECT_EQ(tableOn(std::nullopt), whole);
    EXPECT_EQ(tableOn(45), whole);
    EXPECT_EQ(tableOn(25),
              "ID  WHY               KEY\n"
              "1   because the f\xC3\xBCn\xE2\x80\xA6  F1\n"
              "22  shipped           F2\n");
    // Narrower than that it would say nothing.
    EXPECT_EQ(tableOn(5),
              "ID  WHY           KEY\n"
              "1   because the\xE2\x80\xA6  F1\n"
              "22  shipped       F2\n");
}

struct Distance {
    const char* a;
    const char* b;
    std::size_t distance;
};

TEST(NearestNames, CountsChanges) {
    const Distance rows[] = {
        {"", "", 0},        {"", "abc", 3},      {"grid", "GRID", 0},      {"grid", "gird", 1}, {"grid", "grids", 1},
        {"grid", "gri", 1}, {"grid", "gxid", 1}, {"kitten", "sitting", 3}, {"abc", "cab", 2},   {"a", "xyz", 3},
    };
    for (const Distance& row : rows) {
        EXPECT_EQ(editDistance(row.a, row.b), row.distance) << row.a << ' ' << row.b;
        EXPECT_EQ(editDistance(row.b, row.a), row.distance) << row.b << ' ' << row.a;
    }
}

/// The definition of the distance, by recursion over the last characters.
std::size_t literalDistance(std::string_view a, std::string_view b) {
    if (a.empty() || b.empty()) {
        return a.size() + b.size();
    }
    const std::string_view shorterA = a.substr(0, a.size() - 1);
    const std::string_view shorterB = b.substr(0, b.size() - 1);
    std::size_t least = std::min({literalDistance(shorterA, b) + 1, literalDistance(a, shorterB) + 1,
                                  literalDistance(shorterA, shorterB) + (a.back() == b.back() ? 0 : 1)});
    if (a.size() > 1 && b.size() > 1 && a.back() == shorterB.back() && shorterA.back() == b.back()) {
        least = std::min(least, literalDistance(a.substr(0, a.size() - 2), b.substr(0, b.size() - 2)) + 1);
    }
    return least;
}

TEST(NearestNames, CountChangesAsFarAsAskedFor) {
    std::mt19937 random(5);
    const auto text = [&random] {
        std::string made(random() % 7, 'a');
        std::for_each(made.begin(), made.end(), [&](char& c) { c = static_cast<char>('a' + random() % 3); });
        return made;
    };
    for (int i = 0; i < 500; ++i) {
        const std::string a = text();
        const std::string b = text();
        const std::size_t distance = literalDistance(a, b);
        EXPECT_EQ(editDistance(a, b), distance) << a << ' ' << b;
        for (std::size_t most = 0; most < 8; ++most) {
            EXPECT_EQ(editDistance(a, b, most) <= most, distance <= most) << a << ' ' << b << ' ' << most;
            EXPECT_EQ(std::min(editDistance(a, b, most), most + 1), std::min(distance, most + 1)) << a << ' ' << b;
        }
    }
}

using Names = std::vector<std::string>;

TEST(NearestNames, AreTheFewThatSomebodyMayMean) {
    EXPECT_EQ(nearestNames("visibel", {"units", "visibles", "visible", "visible"}), (Names{"visible", "visibles"}));
    EXPECT_EQ(nearestNames("gird", {"grids", "grid"}), Names{"grid"});
    EXPECT_EQ(nearestNames("ab", {"abc", "abd", "abe", "abf"}), (Names{"abc", "abd", "abe"}));
    EXPECT_EQ(nearestNames("entirely", {"different"}), Names());
    EXPECT_EQ(nearestNames("x", {}), Names());
    EXPECT_EQ(nearestNames("", {"x", "y"}), Names());
    EXPECT_EQ(nearestFullNames("", {"x", "a::y"}), Names());
    EXPECT_EQ(questionAbout({}), "");
    EXPECT_EQ(questionAbout({"a"}), "Did you mean a?");
    EXPECT_EQ(questionAbout({"a", "b", "c"}), "Did you mean a, b or c?");
}

TEST(NearestNames, OfFullNamesThoseThatEndSoAreTakenBeforeOthers) {
    const Names known = {"display::units", "units", "display::zoom", "zoom", "display::grids::grid", "grid"};
    EXPECT_EQ(nearestFullNames("display::grid", known), Names{"display::grids::grid"});
    EXPECT_EQ(nearestFullNames("view::ZOOM", known), Names{"display::zoom"});
    // One is near and ends so.
    EXPECT_EQ(nearestFullNames("dsplay::units", known), Names{"display::units"});
    EXPECT_EQ(nearestFullNames("unit", known), Names{"units"});
    EXPECT_EQ(nearestFullNames("elsewhere::zom", known), Names{"display::zoom"});
    EXPECT_EQ(nearestFullNames("elsewhere::thing", known), Names());
}

struct Match {
    const char* pattern;
    const char* text;
    bool matches;
};

TEST(Pattern, DescribesTexts) {
    const Match rows[] = {
        {"", "any", true},         {"RID", "grid", true},   {"grid", "gri", false},    {"*", "", true},
        {"g*d", "GRID", true},     {"g*d", "grids", false}, {"g??d", "grid", true},    {"g?d", "grid", false},
        {"*a*b", "xaxxaxb", true}, {"*ab", "aab", true},    {"*a*b", "ba", false},     {"**?", "a", true},
        {"?", "", false},          {"a*", "a", true},       {"a*b*c", "abbcbc", true}, {"a*b*c", "acb", false},
    };
    for (const Match& row : rows) {
        EXPECT_EQ(matches(row.pattern, row.text), row.matches) << row.pattern << ' ' << row.text;
    }
}

struct Text {
    const char* in;
    const char* out;
};

TEST(Text, IsUtf8Always) {
    const Text rows[] = {
        {"plain", "plain"},
        {"\xC3\xB6 \xE2\x82\xAC \xF0\x9F\x98\x80", "\xC3\xB6 \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {"\x80", "\xEF\xBF\xBD"},
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                                  // A longer form of the slash.
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                  // Half of a surrogate pair.
        {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},  // Beyond U+10FFFF.
        {"\xE2\x82", "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {"\xE2\x82x", "\xEF\xBF\xBD\xEF\xBF\xBDx"},
    };
    for (const Text& row : rows) {
        EXPECT_EQ(validUtf8(row.in), row.out);
    }
}

TEST(Text, ShowsControlCharacters) {
    EXPECT_EQ(printable("a\tb\r\n"), "a\\tb\\r\\n");
    EXPECT_EQ(printable("\x1b[31m\x7f"), "\\x1b[31m\\x7f");
    EXPECT_EQ(printable("\xC2\x9B \xC3\x9B \xC2\xA0"), "\\x9b \xC3\x9B \xC2\xA0");
    EXPECT_EQ(printable(std::string_view("\0", 1)), "\\x00");
}

/// Another process is as good as never quick enough for this to happen to the built command.
TEST(SavedSettings, TellAConflict) {
    SaveResult result;
    result.status = SaveResult::Status::Saved;
    result.conflicts.push_back({"display::grid", 0, "1", "2"});
    result.settingsOfOthers = {"display::zoom"};
    Output output("set", FindingsAre::BesideResult, {false, ColorChoice::Never});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    tellSaved({}, {}, result, output);
    EXPECT_EQ(output.finish(), ExitCode::Found);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "warning: display::grid was changed by another process meanwhile, to \"2\"; the file has \"1\" now.\n"
              "    \"zelutil set\" brings the other value back.\n"
              "note: display::zoom: the file has what another process saved meanwhile.\n");
}

struct Outcome {
    SaveResult::Status status;
    const char* name;
    ExitCode exitCode;
};

TEST(SavedSettings, FailWhereTheFileHasNotWhatIsToBeKept) {
    using Status = SaveResult::Status;
    const Outcome rows[] = {
        {Status::Saved, "saved", ExitCode::Fine},
        {Status::Unchanged, "unchanged", ExitCode::Fine},
        {Status::NoDefaults, "noDefaults", ExitCode::Failed},
        {Status::NoPath, "noPath", ExitCode::Failed},
        {Status::NotKept, "notKept", ExitCode::Failed},
        {Status::NotWritten, "notWritten", ExitCode::Failed},
        {Status::Torn, "torn", ExitCode::Failed},
        {Status::TooDeep, "tooDeep", ExitCode::Failed},
        {Status::Starting, "starting", ExitCode::Failed},
    };
    for (const Outcome& row : rows) {
        SCOPED_TRACE(row.name);
        SaveResult result;
        result.status = row.status;
        EXPECT_EQ(nameOf(row.status), row.name);
        Output output("set", FindingsAre::BesideResult, {true, ColorChoice::Never});
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        tellSaved({}, {}, result, output);
        EXPECT_EQ(output.finish(), row.exitCode);
        EXPECT_NE(testing::internal::GetCapturedStdout().find(std::string("\"status\": \"") + row.name + '"'),
                  std::string::npos);
        EXPECT_EQ(testing::internal::GetCapturedStderr().empty(), row.exitCode == ExitCode::Fine);
    }
}

TEST(Output, WritesAPlaceAsCompilersDo) {
    Output output("lint", FindingsAre::TheResult, {false, ColorChoice::Never});
    output.add({Severity::Error, "No JSON.", "Mend it.", Place{"/a b/c.cfg", 3, 14}});
    output.add({Severity::Note, "As a whole.", "", Place{"/a", std::nullopt, std::nullopt}});
    testing::internal::CaptureStdout();
    EXPECT_EQ(output.finish(), ExitCode::Found);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "/a b/c.cfg:3:14: error: No JSON.\n    Mend it.\n/a: note: As a whole.\n");
}

/// Expects that the page of the doctor has the names of all values of an enumeration up to the last.
template <typename Enum>
void expectOnPage(Enum last) {
    const std::string page = zelutil::test::readTextFile(ZELUTIL_TEST_PROJECT "/docs/doctor.md");
    for (int value = 0; value <= static_cast<int>(last); ++value) {
        const std::string name = std::string("`") + nameOf(static_cast<Enum>(value)) + '`';
        EXPECT_NE(page.find(name), std::string::npos) << name;
    }
}

TEST(DoctorPage, HasAllNamesThatProgramsRead) {
    expectOnPage(zelutil::text::Candidate::Source::Loader);
    expectOnPage(zelutil::text::Candidate::Verdict::NoMarker);
    expectOnPage(FileState::Kind::Fine);
}

}  // namespace
