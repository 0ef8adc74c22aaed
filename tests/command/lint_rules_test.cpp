// Cases of single rules that the examples of docs/lint.md do not show.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "command/lint/shortcut_spelling.h"
#include "command/lint_findings.h"

namespace zelutil::lint {
namespace {

/// Returns "ZU014 at 2:3" and so on, blanks between them.
std::string placesOf(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        text += (text.empty() ? "" : ", ") + std::string(infoOf(finding.rule).number) + " at " +
                std::to_string(finding.begin.line) + ':' + std::to_string(finding.begin.column);
    }
    return text;
}

/// Returns a list of actions, a line each.
std::string actionsOf(const std::vector<std::string>& elements) {
    std::string list = "{\"actions\": [";
    for (const std::string& element : elements) {
        list += (list.back() == '[' ? "\n" : ",\n") + element;
    }
    return list + "]}";
}

// --- Parents
// ----------------------------------------------------------------------------------------------------------

constexpr char kTail[] = R"({"id": 3, "parent_id": 1, "context": "c", "command": "x"})";
constexpr char kOne[] = R"({"id": 1, "parent_id": 2, "context": "d", "command": "x"})";
constexpr char kTwo[] = R"({"id": 2, "parent_id": 1, "context": "e", "command": "x"})";

TEST(LintParents, ACircleIsToldOnceWhereverTheListBegins) {
    // The number behind "parent_id" stands in column 24, in the line of the action to which the way up comes back.
    EXPECT_EQ(placesOf(lint(actionsOf({kOne, kTwo}))), "ZU014 at 2:24");
    EXPECT_EQ(placesOf(lint(actionsOf({kTail, kOne, kTwo}))), "ZU014 at 3:24");
    EXPECT_EQ(placesOf(lint(actionsOf({kTwo, kTail, kOne}))), "ZU014 at 2:24");
    EXPECT_EQ(placesOf(lint(actionsOf({R"({"id": 4, "parent_id": 4, "context": "c", "command": "y"})"}))),
              "ZU014 at 2:24");
}

TEST(LintParents, TwoCirclesAreTwo) {
    const std::string three = R"({"id": 5, "parent_id": 6, "context": "f", "command": "x"})";
    const std::string four = R"({"id": 6, "parent_id": 5, "context": "g", "command": "x"})";
    EXPECT_EQ(placesOf(lint(actionsOf({kTail, kOne, kTwo, three, four}))), "ZU014 at 3:24, ZU014 at 5:24");
}

constexpr char kParent[] = R"({"id": 1, "context": "board", "command": "a", "shortcut": "F1"})";
constexpr char kChild[] = R"({"id": 2, "parent_id": 1, "context": "panel", "command": "a"})";
constexpr char kRival[] = R"({"id": 3, "context": "panel", "command": "b", "shortcut": "F1"})";

TEST(LintParents, AShortcutThatIsTakenOverAndRefusedIsTold) {
    EXPECT_EQ(placesOf(lint(actionsOf({kParent, kChild}))), "");
    EXPECT_EQ(placesOf(lint(actionsOf({kParent, kChild, kRival}))), "ZU030 at 3:24");
    EXPECT_EQ(placesOf(lint(actionsOf({kRival, kChild, kParent}))), "ZU030 at 3:24");
    EXPECT_EQ(told(lint(actionsOf({kParent, kChild, kRival}))),
              "ZU030 at 3:24: Action 2 takes over the shortcut \"F1\" of its parent, action 1, and does not get it, "
              "because it is that of action 3. \n");
}

TEST(LintParents, TwoChildrenInOneContextCannotBothHaveIt) {
    const std::string second = R"({"id": 4, "parent_id": 1, "context": "panel", "command": "c"})";
    EXPECT_EQ(placesOf(lint(actionsOf({kParent, kChild, second}))), "ZU030 at 4:24");
}

TEST(LintParents, AGrandchildIsRefusedWhatItsGrandparentHas) {
    const std::string grandchild = R"({"id": 4, "parent_id": 2, "context": "board", "command": "c"})";
    // For the child's own sake it could have it, but the child of the child could not.
    EXPECT_EQ(placesOf(lint(actionsOf({kParent, kChild, grandchild}))), "ZU030 at 3:24, ZU030 at 4:24");
}

// --- What counts
// ------------------------------------------------------------------------------------------------------

TEST(LintActions, OfTwoEqualIdsTheFirstOneThatALoadTakesCounts) {
    const std::string invalid = R"({"id": 1, "context": "board", "shortcut": "F1"})";
    const std::string valid = R"({"id": 1, "context": "board", "command": "a", "shortcut": "F1"})";
    const std::string other = R"({"id": 2, "context": "board", "command": "b", "shortcut": "F1"})";
    EXPECT_EQ(placesOf(lint(actionsOf({invalid, valid}))), "ZU005 at 2:1");
    EXPECT_EQ(placesOf(lint(actionsOf({valid, invalid}))), "ZU005 at 3:1");
    EXPECT_EQ(placesOf(lint(actionsOf({valid, valid}))), "ZU010 at 3:8");
    // The clash is that with the action that is there, in line 3.
    const std::vector<Finding> clash = lint(actionsOf({invalid, valid, other}));
    ASSERT_EQ(placesOf(clash), "ZU005 at 2:1, ZU012 at 4:59");
    EXPECT_NE(clash[1].message.find("(line 3)"), std::string::npos) << clash[1].message;
}

// --- Sections
// ---------------------------------------------------------------------------------------------------------

constexpr char kSectionDefaults[] = R"({"meta": [
{"header": "D", "attribute": "d", "tclCommand": "t", "defaultsettings": [{"name": "x", "value": "1"}]},
{"header": "K", "attribute": "k", "submanagerId": 100, "tclCommand": "t", "defaultsettings":
 {"actions": [{"id": 1, "context": "c", "command": "a", "shortcut": "F1"}]}}]})";

std::string sectionsOf(const std::vector<std::string>& elements) {
    std::string list = "{\"meta\": [";
    for (const std::string& element : elements) {
        list += (list.back() == '[' ? "\n" : ",\n") + element;
    }
    return list + "]}";
}

TEST(LintTypes, WhatDoesNotCountAsMissingIsSaid) {
    const std::string user =
        R"({"header": "K", "attribute": "k", "submanagerId": 100, "overriddensettings": [{"actions": [
{"id": 1, "shortcut": 5},
{"id": 1, "rmb": "true"}]}]})";
    EXPECT_EQ(
        told(check(sectionsOf({user}), kSectionDefaults)),
        "ZU004 at 3:23: \"shortcut\" must be a string. This one counts as \"\", so it takes the action's shortcut "
        "away. \n"
        "ZU004 at 4:18: \"rmb\" must be true or false. This one counts as false, so it takes the action out of the "
        "menu. \n");
    const std::string section =
        R"({"header": "U", "attribute": "u", "unique": 1, "tclCommand": "t", "defaultsettings": [{"name": "x", "value": "1"}]})";
    EXPECT_EQ(
        told(lint(sectionsOf({section}))),
        "ZU004 at 2:45: \"unique\" must be true or false. This one counts as false, so that the section lends no bare "
        "names. \n");
}

TEST(LintSections, ANameThatMeansAnotherSectionsSettingNamesBoth) {
    const std::string other =
        R"({"header": "E", "attribute": "e", "tclCommand": "t", "defaultsettings": [{"name": "y", "value": "1"},{"name": "x", "value": "1"}]})";
    std::string defaults = kSectionDefaults;
    defaults.insert(defaults.rfind("]}"), ",\n" + other);
    const std::string user = R"({"header": "E", "attribute": "e", "overriddensettings": [{"x": "2"}]})";
    EXPECT_NE(
        told(check(sectionsOf({user}), defaults))
            .find("The name \"x\" means d::x, so this entry sets that and e::x stays as it is. Write the full name "
                  "of the setting that you mean, e::x or d::x.\n"),
        std::string::npos)
        << told(check(sectionsOf({user}), defaults));
    const std::string without = R"({"header": "K", "attribute": "d", "overriddensettings": [{"x": "2"}]})";
    EXPECT_EQ(told(check(sectionsOf({without}), defaults)), "");
}

TEST(LintSections, OfTwoEntriesForASettingTheNameOfTheOneThatCountsIsTold) {
    const std::string both = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": "2"}, {"d::x": "3"}]})";
    EXPECT_EQ(told(check(sectionsOf({both}), kSectionDefaults)),
              "ZU020 at 2:59: A later entry (line 2, column 71) sets d::x too, and the last one counts. \n");
    const std::string inLines = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": "2"}, {
  "d::x":
  "3"}]})";
    EXPECT_EQ(told(check(sectionsOf({inLines}), kSectionDefaults)),
              "ZU020 at 2:59: A later entry (line 3, column 3) sets d::x too, and the last one counts. \n");
}

TEST(LintSections, AChildBeforeTheEntriesOfItsParentIsReadAfterThem) {
    const std::string defaults = sectionsOf({R"({"header": "G", "attribute": "g", "tclCommand": "t",)"
                                             R"( "defaultsettings": [{"name": "y", "value": "1"}], "children": [)"
                                             R"({"header": "D", "attribute": "d", "tclCommand": "t",)"
                                             R"( "defaultsettings": [{"name": "x", "value": "1"}]}]})"});
    const std::string user = R"({"header": "G", "attribute": "g", "children": [
{"header": "D", "attribute": "d", "overriddensettings": [{"x": "2"}]}],
"overriddensettings": [{"g::d::x": "3"}]})";
    EXPECT_EQ(told(check(sectionsOf({user}), defaults)),
              "ZU020 at 4:25: An entry before it (line 3, column 59), which is read later because a section is read "
              "before its children, sets g::d::x too, and the last one counts. \n");
}

TEST(LintSections, OneThatOnlyGroupsOthersMayBeThereTwice) {
    const std::string groups = R"({"header": "G", "attribute": "g", "children": []})";
    const std::string holds =
        R"({"header": "G", "attribute": "g", "tclCommand": "t", "defaultsettings": [{"name": "y", "value": "1"}]})";
    const std::string more =
        R"({"header": "G", "attribute": "g", "tclCommand": "t", "defaultsettings": [{"name": "z", "value": "1"}]})";
    EXPECT_EQ(placesOf(lint(sectionsOf({groups, holds, groups}))), "");
    EXPECT_EQ(placesOf(lint(sectionsOf({groups, holds, more}))), "ZU007 at 4:30");
    const std::string ofUser = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": "2"}]})";
    const std::string empty = R"({"header": "D", "attribute": "d", "overriddensettings": []})";
    const std::string bare = R"({"header": "D", "attribute": "d", "children": []})";
    EXPECT_EQ(placesOf(check(sectionsOf({bare, ofUser, empty}), kSectionDefaults)), "");
}

TEST(LintSections, ASecondOneOfTheUsersActionsIsToldOnceAndNotLookedInto) {
    const std::string first =
        R"({"header": "K", "attribute": "k", "submanagerId": 100, "overriddensettings": [{"actions": [{"id": 1, "shortcut": "F2"}]}]})";
    const std::string second =
        R"({"header": "K", "attribute": "k", "submanagerId": 100, "overriddensettings": [{"actions": [{"id": 7, "shrtcut": "F2"}]}]})";
    const std::string empty = R"({"header": "K", "attribute": "k", "submanagerId": 100, "overriddensettings": []})";
    const std::string elsewhere =
        R"({"header": "L", "attribute": "l", "submanagerId": 100, "overriddensettings": [{"actions": []}]})";
    for (const char* const defaults : {kSectionDefaults, ""}) {
        EXPECT_EQ(placesOf(check(sectionsOf({first, empty}), defaults)), "") << defaults;
        EXPECT_EQ(placesOf(check(sectionsOf({first, second}), defaults)), "ZU007 at 3:30") << defaults;
        // Only the first is read, even when it holds nothing.
        EXPECT_EQ(placesOf(check(sectionsOf({empty, second}), defaults)), "ZU007 at 3:30") << defaults;
    }
    EXPECT_EQ(placesOf(check(sectionsOf({first, elsewhere}), "")), "ZU007 at 3:30");
}

TEST(LintSections, ASecondOneOfTheUserThatSetsNothingIsNoRepetition) {
    const std::string sets = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": "2"}]})";
    const std::string list = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": 2}, 5]})";
    const std::string object = R"({"header": "D", "attribute": "d", "overriddensettings": {"x": "2"}})";
    const std::string groups = R"({"header": "G", "attribute": "g"})";
    for (const char* const defaults : {kSectionDefaults, ""}) {
        for (const std::string& second : {list, object}) {
            const std::string alone = placesOf(check(sectionsOf({groups, second}), defaults));
            EXPECT_EQ(alone.find("ZU004 at 3:"), 0U) << alone;
            EXPECT_EQ(placesOf(check(sectionsOf({sets, second}), defaults)), alone);
        }
        EXPECT_NE(placesOf(check(sectionsOf({sets, sets}), defaults)).find("ZU007 at 3:30"), std::string::npos);
    }
}

TEST(LintSections, OneOfTheDefaultsThatOnlyGroupsOthersIsNotUnknown) {
    const std::string defaults = sectionsOf({R"({"header": "G", "attribute": "g", "children": [{"header": "D",)"
                                             R"( "attribute": "d", "tclCommand": "t", "defaultsettings": []}]})"});
    const auto user = [](const std::string& attribute) {
        return sectionsOf(
            {R"({"header": "G", "attribute": ")" + attribute + R"(", "overriddensettings": [{"x": "2"}]})"});
    };
    EXPECT_EQ(told(check(user("g"), defaults)),
              "ZU017 at 2:30: The section \"g\" has no settings in the defaults; it groups other sections, so its "
              "entries mean nothing. \n");
    EXPECT_EQ(told(check(user("gg"), defaults)),
              "ZU017 at 2:30: The defaults have no section \"gg\", so its entries mean nothing. Did you mean g?\n");
}

TEST(LintSections, OfAnotherSubManagerMayHoldAnything) {
    const std::string other =
        R"({"header": "H", "attribute": "h", "submanagerId": 7, "overriddensettings": {"x": [1, null]}})";
    const std::string numbers = R"({"header": "D", "attribute": "d", "overriddensettings": [{"x": 2}]})";
    const std::string actions =
        R"({"header": "K", "attribute": "k", "overriddensettings": [{"actions": [{"id": 1, "shrtcut": "F2"}]}]})";
    EXPECT_EQ(placesOf(lint(sectionsOf({other}))), "");
    // Without a number the content tells.
    EXPECT_EQ(placesOf(lint(sectionsOf({other, numbers}))), "ZU004 at 3:64");
    EXPECT_EQ(placesOf(lint(sectionsOf({actions}))), "ZU025 at 2:71, ZU003 at 2:81");
}

// --- The user's actions
// -----------------------------------------------------------------------------------------------

std::string userActionsOf(const std::vector<std::string>& elements) { return '[' + actionsOf(elements) + ']'; }

constexpr char kTwoActions[] = R"({"actions": [{"id": 1, "context": "c", "command": "a", "shortcut": "F1"},
 {"id": 2, "context": "c", "command": "b", "shortcut": "F2"}]})";

TEST(LintUserActions, OfWhatAnActionIsGivenTwiceTheFirstIsTold) {
    const std::string f3 = R"({"id": 1, "shortcut": "F3"})";
    const std::string f4 = R"({"id": 1, "shortcut": "F4"})";
    const std::string none = R"({"id": 1, "shortcut": ""})";
    const std::string inMenu = R"({"id": 1, "rmb": true})";
    const std::string notInMenu = R"({"id": 1, "rmb": false})";
    for (const char* const defaults : {kTwoActions, ""}) {
        EXPECT_EQ(told(check(userActionsOf({f3, f4}), defaults)),
                  "ZU020 at 2:11: A later entry (line 3, column 11) gives action 1 another shortcut, and the last one "
                  "counts. \n");
        EXPECT_EQ(placesOf(check(userActionsOf({f3, inMenu, none}), defaults)), "ZU020 at 2:11");
        EXPECT_EQ(told(check(userActionsOf({inMenu, notInMenu}), defaults)),
                  "ZU020 at 2:11: A later entry (line 3, column 11) gives action 1 another menu flag, and the last one "
                  "counts. \n");
        // A shortcut may be taken away first, and the same may be given again.
        EXPECT_EQ(placesOf(check(userActionsOf({none, f3, inMenu, f3, inMenu}), defaults)), "");
    }
    EXPECT_EQ(told(check("[{\"actions\": [" + f3 + ", " + f4 + "]}]", kTwoActions)),
              "ZU020 at 1:25: A later entry (line 1, column 54) gives action 1 another shortcut, and the last one "
              "counts. \n");
    // Action 2 has F2 by then, so F3 counts.
    const std::string f2 = R"({"id": 1, "shortcut": "F2"})";
    EXPECT_EQ(placesOf(check(userActionsOf({f3, f2}), kTwoActions)), "ZU024 at 3:23");
}

TEST(LintUserActions, AChildIsSentToItsParentAlsoWhereAnotherActionHasTheShortcut) {
    const std::string shipped = actionsOf({kParent, kChild});
    const std::string said =
        "ZU015 at 2:8: Action 2 is a child and takes over the shortcut and the menu flag of its parent. "
        "Write the entry for the parent.\n";
    const std::string rival =
        actionsOf({kParent, kChild, R"({"id": 3, "context": "panel", "command": "b", "shortcut": "F2"})"});
    EXPECT_EQ(told(check(userActionsOf({R"({"id": 2, "shortcut": "F2"})"}), shipped)), said);
    EXPECT_EQ(told(check(userActionsOf({R"({"id": 2, "shortcut": "F2"})"}), rival)), said);
}

// --- Bytes
// ------------------------------------------------------------------------------------------------------------

TEST(LintBytes, ThoseThatAreNotUtf8AreToldAtTheFirstOfThem) {
    const auto headed = [](const std::string& header) {
        return "{\"meta\": [\n{\"header\": \"" + header + "\", \"attribute\": \"a\", \"overriddensettings\": []}]}";
    };
    EXPECT_EQ(told(lint(headed("\xC3\xA4\xE2\x82\xAC"))), "");
    const std::string hint = " Save the file in UTF-8.\n";
    EXPECT_EQ(told(lint(headed("H\xF6he"))), "ZU031 at 2:14: The byte 0xF6 is no part of UTF-8." + hint);
    // The second of these begins a character that the quotation mark cuts off.
    EXPECT_EQ(told(lint(headed("\xC3\xA4 \x80 \xC3"))),
              "ZU031 at 2:15: The byte 0x80 is no part of UTF-8, as 2 bytes of the file are none." + hint);
}

TEST(LintBytes, ANullCharacterIsToldInTextsAndNames) {
    const std::string user =
        R"({"meta": [{"header": "A", "attribute": "a", "overriddensettings": [{"x": "1\u0000", "\u0000": "2"}]}]})";
    EXPECT_EQ(placesOf(lint(user)), "ZU032 at 1:74, ZU032 at 1:85");
    EXPECT_EQ(placesOf(lint(R"({"meta": [{"header": "A\\u0000", "attribute": "a", "overriddensettings": []}]})")), "");
}

TEST(LintBytes, ANullCharacterThatEndsTheFileIsTold) {
    const std::string user = "{\"meta\": [{\"header\": \"A\", \"attribute\": \"a\", \"overriddensettings\": []}]}\n";
    const std::string hint = " Take it out, with what stands behind it.\n";
    EXPECT_EQ(
        told(lint(user + std::string("\0 lost", 6))),
        "ZU032 at 2:1: The file has a null character. Nothing behind it is read, and a save leaves that out." + hint);
}

// --- Commas
// -----------------------------------------------------------------------------------------------------------

TEST(LintCommas, OneTooManyIsNamed) {
    EXPECT_EQ(told(lint("{\"meta\": [1,\n ]}")), "ZU001 at 2:2: A comma stands behind the last element. \n");
    EXPECT_EQ(told(lint("{\"meta\": [],}")), "ZU001 at 1:13: A comma stands behind the last member. \n");
    EXPECT_EQ(told(lint("{\"meta\": [,]}")).find("comma stands"), std::string::npos);
}

// --- Shortcuts
// --------------------------------------------------------------------------------------------------------

TEST(LintShortcuts, OneThatDiffersInTwoWaysIsToldOnce) {
    const std::string action = R"({"id": 1, "context": "c", "command": "a", "shortcut": "Ctrl+A"})";
    const std::string second = R"({"id": 2, "context": "c", "command": "b", "shortcut": "Ctrl+B"})";
    const std::string other = R"({"id": 3, "context": "c", "command": "d", "shortcut": "ctrl+d"})";
    EXPECT_EQ(told(lint(actionsOf({action, second, other}))),
              "ZU016 at 4:55: The other shortcuts spell the modifier ctrl \"Ctrl\" and letters capitals, this one "
              "\"ctrl\" and lower case, so it is another key for the library. \n");
}

/// Returns what lint tells of the last of these shortcuts, without the place and the end that all such findings have.
std::string toldOfLast(const std::vector<std::string>& shortcuts) {
    std::vector<std::string> actions;
    for (const std::string& shortcut : shortcuts) {
        const std::string id = std::to_string(actions.size() + 1);
        actions.push_back(R"({"id": )" + id + R"(, "context": "c", "command": "x)" + id + R"(", "shortcut": ")" +
                          shortcut + "\"}");
    }
    const std::string all = told(lint(actionsOf(actions)));
    const std::string ending = ", so it is another key for the library. \n";
    const std::size_t begin = all.find(": ");
    const std::size_t end = all.find(ending);
    return end == std::string::npos || end + ending.size() != all.size() ? all : all.substr(begin + 2, end - begin - 2);
}

TEST(LintShortcuts, TheCaseOfNamesIsComparedAmongAllOfThem) {
    EXPECT_EQ(toldOfLast({"F3", "F4", "f2"}),
              "The other shortcuts spell function keys in capitals, this one in lower case");
    EXPECT_EQ(toldOfLast({"Home", "End", "PGUP"}),
              "The other shortcuts spell named keys with some capitals, this one in capitals");
    EXPECT_EQ(toldOfLast({"Ctrl+F3", "Ctrl+F4", "ALT+F5"}),
              "The other shortcuts spell modifiers with some capitals, this one in capitals");
}

TEST(LintShortcuts, ANameThatIsSpelledOtherwiseIsToldOnce) {
    EXPECT_EQ(toldOfLast({"Ctrl+Home", "Alt+Home", "HOME"}),
              "The other shortcuts spell the key home \"Home\", this one \"HOME\"");
}

TEST(LintShortcuts, FunctionKeysAndNamedKeysAreNotCompared) { EXPECT_EQ(toldOfLast({"F3", "F4", "Home"}), ""); }

TEST(LintShortcuts, AHyphenIsAnotherSign) {
    EXPECT_EQ(toldOfLast({"Ctrl+E", "Ctrl+G", "Ctrl-D"}),
              "The other shortcuts spell the sign between keys \"+\", this one \"-\"");
    // Here the hyphen is the key.
    EXPECT_EQ(toldOfLast({"Ctrl+E", "Ctrl+G", "Ctrl+-"}), "");
    EXPECT_EQ(toldOfLast({"Ctrl+E", "Ctrl+G", "-"}), "");
}

TEST(LintShortcuts, ATextOfVeryManyPartsNamesNoKeysAndTakesNoTime) {
    EXPECT_FALSE(choicesOf("Ctrl+Alt+Shift+Meta+F1").empty());
    std::string parts;
    for (int part = 0; part < 20'000; ++part) {
        parts += "Ctrl+";
    }
    EXPECT_TRUE(choicesOf(parts + "A").empty());
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(
        placesOf(lint(actionsOf({R"({"id": 1, "context": "c", "command": "a", "shortcut": ")" + parts + "A\"}"}))), "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

// --- Places
// -----------------------------------------------------------------------------------------------------------

TEST(LintPlaces, ColumnsOfOneLongLineCountCharactersAndTakeNoTime) {
    constexpr std::size_t kSettings = 20'000;
    const std::string setting = "{\"name\": \"\xC3\xA4\", \"value\": \"1\"}";
    std::string text = R"({"meta": [{"header": "A", "attribute": "a", "tclCommand": "t", "defaultsettings": [)";
    const std::size_t columnOfFirst = text.size() + std::string("{\"name\": ").size() + 1;
    for (std::size_t number = 0; number < kSettings; ++number) {
        text += (number == 0 ? "" : ",") + setting;
    }
    const auto start = std::chrono::steady_clock::now();
    const std::vector<Finding> findings = lint(text + "]}]}");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    ASSERT_EQ(findings.size(), kSettings - 1);
    for (std::size_t number = 1; number < kSettings; ++number) {
        // With its comma an element has one byte more than it has characters.
        ASSERT_EQ(findings[number - 1].begin.column, columnOfFirst + number * setting.size()) << number;
    }
}

}  // namespace
}  // namespace zelutil::lint
