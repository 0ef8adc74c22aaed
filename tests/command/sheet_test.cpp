// The forms of the sheet, and the pictures of the keyboard.
#include <gtest/gtest.h>

#include <set>

#include "command/html/html_text.h"
#include "command/sheet/keyboard.h"
#include "command/sheet/keyboard_picture.h"
#include "command/sheet/sheet.h"
#include "command/shortcut_keys.h"

namespace {

using namespace zelutil::command;
using sheet::Context;
using sheet::Entry;
using sheet::Layers;
using sheet::Sheet;
using Lines = std::vector<std::string>;

Entry entry(const std::string& shortcut, const std::string& name = "N", const std::string& command = "c") {
    Entry made;
    made.id = 7;
    made.name = name;
    made.command = command;
    made.shortcut = shortcut;
    made.shipped = shortcut;
    return made;
}

Entry changed(Entry made, const std::string& shipped) {
    made.changed = true;
    made.shipped = shipped;
    return made;
}

Entry held(Entry made, const std::string& by) {
    made.runs = false;
    made.heldBy = by;
    return made;
}

Sheet sheetWith(const std::vector<Entry>& entries) { return {{"board", entries}}; }

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

struct RemarkRow {
    Entry entry;
    const char* remark;
};

TEST(Sheet, RemarksOnChangesAndHolders) {
    const RemarkRow rows[] = {
        {entry("M"), ""},
        {changed(entry("M"), "Ctrl+M"), "changed, was Ctrl+M"},
        {changed(entry("M"), ""), "changed, had none"},
        {changed(entry(""), "F1"), "changed, was F1"},
        {held(entry("M"), "Move"), "runs Move instead"},
        {held(entry("M"), ""), "runs nothing"},
        {held(changed(entry("M"), "F1"), "Move"), "changed, was F1; runs Move instead"},
        // There is nothing that no shortcut could run.
        {held(entry(""), ""), ""},
    };
    for (const RemarkRow& row : rows) {
        EXPECT_EQ(remarkOf(row.entry), row.remark);
    }
}

TEST(Sheet, IsATableOfMarkdownForEachContext) {
    const Sheet sheet = {{"board", {entry("Ctrl+S", "Save", "design save_all")}},
                         {"3d", {changed(entry("", "Turn", "turn"), "T")}}};
    EXPECT_EQ(markdownOf(sheet),
              "# Keyboard shortcuts\n"
              "\n## board\n\n"
              "| Shortcut | Action | Command | Remark |\n|---|---|---|---|\n"
              "| Ctrl+S | Save | design save_all |  |\n"
              "\n## 3d\n\n"
              "| Shortcut | Action | Command | Remark |\n|---|---|---|---|\n"
              "|  | Turn | turn | changed, was T |\n");
}

struct TextRow {
    const char* text;
    const char* written;
};

TEST(Sheet, TakesTheMeaningFromSignsOfMarkdown) {
    const TextRow rows[] = {
        {"a|b", "a\\|b"},         {"`", "\\`"},
        {"\\", "\\\\"},           {"*x*", "\\*x\\*"},
        {"_x_", "\\_x\\_"},       {"a_b", "a_b"},
        {"a_", "a\\_"},           {"<b>", "\\<b\\>"},
        {"[x](y)", "\\[x\\](y)"}, {"a\nb", "a\\\\nb"},
        {"&lt;", "\\&lt;"},       {"\x1b[0m", "\\\\x1b\\[0m"},
        {"\xC3\xB6", "\xC3\xB6"}, {"\xFF", "\xEF\xBF\xBD"},
    };
    for (const TextRow& row : rows) {
        EXPECT_TRUE(contains(markdownOf(sheetWith({entry("M", row.text)})), std::string("| ") + row.written + " |"))
            << row.text << ": " << markdownOf(sheetWith({entry("M", row.text)}));
    }
}

TEST(Sheet, IsOneTableOfValues) {
    const Sheet sheet = {{"board", {entry("Ctrl+S", "Save", "save")}},
                         {"3d", {held(changed(entry("F1", "Turn", "turn"), "T"), "Help")}}};
    EXPECT_EQ(csvOf(sheet),
              "context,shortcut,action,command,id,shipped,changed,remark\r\n"
              "board,Ctrl+S,Save,save,7,Ctrl+S,no,\r\n"
              "3d,F1,Turn,turn,7,T,yes,\"changed, was T; runs Help instead\"\r\n");
}

TEST(Sheet, QuotesValuesAndSpoilsFormulas) {
    const TextRow rows[] = {
        {"a,b", "\"a,b\""},
        {"\"", "\"\"\"\""},
        {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"a\nb", "\"a\nb\""},
        {"a\rb", "\"a\rb\""},
        {"=1+1", "'=1+1"},
        {"@SUM(A1)", "'@SUM(A1)"},
        {"-2", "'-2"},
        {"+2", "'+2"},
        {"\tx", "'\tx"},
        {"\rx", "\"'\rx\""},
        // A spreadsheet may pass over these, and may begin a cell behind other signs than a comma.
        {"\x01\x02=1+1", "'\x01\x02=1+1"},
        {" \x7F@x", "' \x7F@x"},
        {"\n=1", "\"'\n'=1\""},
        {"a;=1+1", "a;'=1+1"},
        {"a; -2;+3", "a;' -2;'+3"},
        {"a\t=1", "a\t'=1"},
        {"a\r\n@x", "\"a\r'\n'@x\""},
        {"Ctrl+;", "Ctrl+;"},
        {"a;b", "a;b"},
        {"=HYPERLINK(\"x\",\"y\")", "\"'=HYPERLINK(\"\"x\"\",\"\"y\"\")\""},
        // A single sign is no formula but a key.
        {"+", "+"},
        {"-", "-"},
        {"a=b", "a=b"},
        {"", ""},
        {"\xFF", "\xEF\xBF\xBD"},
    };
    for (const TextRow& row : rows) {
        const std::string text = csvOf(sheetWith({entry("M", row.text)}));
        EXPECT_TRUE(contains(text, std::string("\r\nboard,M,") + row.written + ",c,7,M,no,\r\n")) << text;
    }
}

TEST(HtmlText, ReplacesWhatMeansSomething) {
    EXPECT_EQ(html::escaped("</script><b a='x' c=\"y\">&amp;"),
              "&lt;/script&gt;&lt;b a=&#39;x&#39; c=&quot;y&quot;&gt;&amp;amp;");
    EXPECT_EQ(html::escaped("a\n\x1b\xFF\xC3\xB6"), "a\\n\\x1b\xEF\xBF\xBD\xC3\xB6");
    EXPECT_EQ(html::escaped(""), "");
}

TEST(HtmlText, LeavesNothingInDataThatEndsAScript) {
    EXPECT_EQ(html::asScriptData("{\"a\":\"</script><!--&\"}"), "{\"a\":\"\\u003C/script\\u003E\\u003C!--\\u0026\"}");
    EXPECT_EQ(html::asScriptData("\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80"), "\xE2\x80\xA7\\u2028\\u2029\xE2\x80");
}

TEST(Sheet, WritesNoTextIntoThePageAsItStands) {
    const std::string hostile = "</script><img src=x onerror=\"y\">'&";
    const std::string shown = "&lt;/script&gt;&lt;img src=x onerror=&quot;y&quot;&gt;&#39;&amp;";
    const Sheet sheet = {{hostile, {entry("Ctrl+" + hostile, hostile, hostile), entry("A", hostile)}}};
    const std::string page = htmlOf(sheet);
    EXPECT_FALSE(contains(page, "<img"));
    EXPECT_FALSE(contains(page, "</script"));
    EXPECT_TRUE(contains(page, "<h2 id=\"context-0\">" + shown + "</h2>"));
    EXPECT_TRUE(contains(page, "<tr><th scope=\"row\"><kbd>Ctrl+" + shown + "</kbd></th><td>" + shown + "</td><td>" +
                                   shown + "</td><td></td></tr>"));
    EXPECT_TRUE(contains(page, "<title id=\"keys-0-0-title\">Keyboard of " + shown + ": No modifier</title>"));
    EXPECT_TRUE(contains(page, "<desc id=\"keys-0-0-text\">A: " + shown + ".</desc>"));
    EXPECT_TRUE(contains(page, "lacks a key of theirs: <kbd>Ctrl+" + shown + "</kbd>.</p>"));
}

TEST(Sheet, MarksChangesInThePageByMoreThanColour) {
    const std::string page = htmlOf(sheetWith({changed(entry("F1", "Help"), "F2"), changed(entry("", "Gone"), "G")}));
    EXPECT_TRUE(contains(page,
                         "<rect class=\"key bound changed\" x=\"200\" y=\"0\" width=\"94\" height=\"79\" rx=\"9\"/>"
                         "<path class=\"mark\" d=\"M291 3h-20l20 20z\"/>"
                         "<text class=\"label \" x=\"207\" y=\"18\">F1</text>"
                         "<text class=\"what\" x=\"207\" y=\"36\">Help</text>"));
    EXPECT_TRUE(contains(page, "F1: Help (changed).</desc>"));
    EXPECT_TRUE(contains(page,
                         "<tr class=\"changed\"><th scope=\"row\"><kbd>F1</kbd></th><td>Help</td><td>c</td>"
                         "<td>changed, was F2</td></tr>"));
    EXPECT_TRUE(contains(page, "<th scope=\"row\">none</th><td>Gone</td><td>c</td><td>changed, was G</td>"));
}

/// Returns the titles of the layers with the numbers of their keys.
Lines titlesOf(const Layers& layers) {
    Lines titles;
    for (const sheet::Layer& layer : layers.layers) {
        std::string title = titleOf(layer) + ":";
        for (const auto& [key, entries] : layer.keys) {
            title += ' ' + std::string(sheet::keyboard()[static_cast<std::size_t>(key)].label) +
                     (entries.size() > 1 ? "*" + std::to_string(entries.size()) : "");
        }
        titles.push_back(title);
    }
    return titles;
}

TEST(Layers, HoldTheKeysOfOneCombination) {
    const Context context{
        "board",
        {entry("Shift+Ctrl+S"), entry("Control + shift+a"), entry("s"), entry("S"), entry("PgDown"), entry("Ctrl++"),
         entry("?"), entry("Win+Return"), entry("AltGr+Del"), entry("Option+Esc"), entry("")}};
    EXPECT_EQ(titlesOf(layersOf(context)), (Lines{"No modifier: S*2 / PgDn", "Ctrl: =", "Alt: Esc", "AltGr: Del",
                                                  "Meta: Enter", "Ctrl+Shift: A S"}));
}

TEST(Layers, LeaveOutWhatNoKeyboardHas) {
    const Context context{"board",
                          {entry("Crtl+S"), entry("Ctrl+Hyper+S"), entry("F13"), entry("Ctrl+"), entry("XF86Back"),
                           held(entry("A"), "Move"), entry("B")}};
    const Layers layers = layersOf(context);
    EXPECT_EQ(titlesOf(layers), Lines{"No modifier: B"});
    Lines elsewhere;
    for (const Entry* const other : layers.elsewhere) {
        elsewhere.push_back(other->shortcut);
    }
    EXPECT_EQ(elsewhere, (Lines{"Crtl+S", "Ctrl+Hyper+S", "F13", "Ctrl+", "XF86Back"}));
}

struct TokenRow {
    const char* shortcut;
    std::vector<std::string_view> tokens;
};

TEST(ShortcutKeys, AreWhatPlusSignsStandBetween) {
    const TokenRow rows[] = {
        {"", {""}},
        {"S", {"S"}},
        {" Ctrl + S ", {"Ctrl", "S"}},
        {"Ctrl++", {"Ctrl", "+"}},
        {"+", {"+"}},
        // After a plus sign, another one begins the key.
        {"Ctrl++S", {"Ctrl", "+S"}},
        {"Ctrl+Shift+F1", {"Ctrl", "Shift", "F1"}},
    };
    for (const TokenRow& row : rows) {
        EXPECT_EQ(tokensOf(row.shortcut), row.tokens) << row.shortcut;
    }
}

TEST(Keyboard, HasEveryKeyOnceAndNoneOnAnother) {
    std::set<std::string_view> names;
    const auto& keys = sheet::keyboard();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const bool isPair = keys[i].name == "shift" || keys[i].name == "ctrl" || keys[i].name == "meta";
        EXPECT_TRUE(names.insert(keys[i].name).second || isPair) << keys[i].label;
        EXPECT_LE(keys[i].x + keys[i].width, sheet::kKeyboardWidth) << keys[i].label;
        EXPECT_LE(keys[i].y + 1, sheet::kKeyboardHeight) << keys[i].label;
        for (std::size_t j = 0; j < i; ++j) {
            const bool apart = keys[i].y >= keys[j].y + 1 || keys[j].y >= keys[i].y + 1 ||
                               keys[i].x >= keys[j].x + keys[j].width || keys[j].x >= keys[i].x + keys[i].width;
            EXPECT_TRUE(apart) << keys[i].label << " and " << keys[j].label;
        }
    }
    // 16 in the first row, 14 + 14 + 13 + 12 + 8 in the others, 10 beside them.
    EXPECT_EQ(keys.size(), 87U);
}

TEST(Keyboard, FindsKeysByAllTheirNames) {
    for (const char* const name :
         {"Esc",  "ESCAPE", "Return", "Enter", "PgUp", "Prior", "Ins", "Del", "Backspace", "Space",
          "Left", "F12",    "+",      "_",     "?",    "~",     "\"",  "a",   "Z",         "0"}) {
        EXPECT_GE(sheet::keyNumber(keyNamed(name)), 0) << name;
    }
    EXPECT_EQ(sheet::keyNumber("+"), sheet::keyNumber("="));
    EXPECT_EQ(sheet::keyNumber(""), -1);
    EXPECT_EQ(sheet::keyNumber("f13"), -1);
}

struct WrapRow {
    const char* text;
    std::size_t width;
    Lines lines;
};

TEST(KeyboardPicture, WrapsNames) {
    const WrapRow rows[] = {
        {"", 11, {}},
        {"Save", 11, {"Save"}},
        {"Save design", 11, {"Save design"}},
        {"Save designs", 11, {"Save", "designs"}},
        {"Route differential pair", 11, {"Route", "differential", "pair"}},
        {"one two three four", 5, {"one", "two", "three\xE2\x80\xA6"}},
        {"  a   b  ", 3, {"a b"}},
        // A character of two bytes is one.
        {"\xC3\xA4\xC3\xB6 \xC3\xBC", 4, {"\xC3\xA4\xC3\xB6 \xC3\xBC"}},
    };
    for (const WrapRow& row : rows) {
        EXPECT_EQ(sheet::wrapped(row.text, row.width, 3), row.lines) << row.text;
    }
}

TEST(KeyboardPicture, WritesLongLinesInSmallLettersAndShowsHeldKeys) {
    const Context context{"board", {entry("Ctrl+A", "Extraordinarily")}};
    const Layers layers = layersOf(context);
    const std::string picture = pictureOf(layers.layers.at(0), "p", "board");
    EXPECT_EQ(picture.find("<svg role=\"img\" aria-labelledby=\"p-title p-text\" viewBox=\"-3 -3 1853 538.5\">"
                           "<title id=\"p-title\">Keyboard of board: Ctrl</title>"
                           "<desc id=\"p-text\">Ctrl+A: Extraordinarily.</desc>"),
              0U)
        << picture;
    // The key A is 1.75 from the left in the row that is 3.3 down. It has 80 for 15 letters of 8.6: 14.5 * 80 / 129.
    EXPECT_TRUE(contains(
        picture, "<text class=\"what\" x=\"182\" y=\"316.5\" style=\"font-size:9.0px\">Extraordinarily</text>"));
    EXPECT_TRUE(contains(picture, "class=\"label held\" x=\"7\" y=\"468.5\">Ctrl</text>"));
    EXPECT_TRUE(contains(picture, "class=\"label free\" x=\"7\" y=\"383.5\">Shift</text>"));
}

}  // namespace
