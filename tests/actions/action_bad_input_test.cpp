#include <gtest/gtest.h>

#include <random>

#include "actions/action_fixture.h"
#include "support/small_stack.h"

namespace zelutil::test {
namespace {

const std::string kShipped =
    object(list({action(1, "board", "open", "F1"), child(2, 1, "panel", "shut"),
                 R"({"id":3,"name":"\u00e9","context":"board","command":"zoom","rmb":true})"}));
const std::string kUser = wrapped(R"({"id":1,"shortcut":"F7"},{"id":3,"shortcut":"","rmb":false})");

std::string repeated(const std::string& text, int count) {
    std::string whole;
    for (int i = 0; i < count; ++i) {
        whole += text;
    }
    return whole;
}

/// Texts that no JSON reader can use.
std::vector<std::string> malformedTexts() {
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte) {
        allBytes += static_cast<char>(byte);
    }
    return {
        "",
        " ",
        std::string(1, '\0'),
        std::string(1000, '\0'),
        std::string(1000, '\xFF'),
        "\xEF\xBB\xBF",
        allBytes,
        "MZ\x90\x01\x03",
        "{",
        "[",
        "{\"actions\"",
        "{\"actions\":",
        "{\"actions\":[",
        "{\"actions\":[{\"id\":",
        "{actions:[]}",
        "{'actions':[]}",
        "{\"actions\":[],}",
        "{\"actions\":[1e309]}",
        "{\"actions\":[1.8e308]}",
        "{\"actions\":[NaN]}",
        kShipped + kShipped,
        // Deeply nested, open and closed.
        repeated("[", 200000),
        repeated("{\"actions\":", 200000),
        repeated("[{\"actions\":", 100000),
        repeated("[", 200000) + repeated("]", 200000),
        "{\"actions\":" + repeated("[", 100000) + repeated("]", 100000) + "}",
    };
}

/// Loads on a stack of 1 MiB; nothing may be printed.
void loadQuietly(const std::string& shipped, const std::string& user) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    runOnSmallStack([&] { manager().load(shipped, user); });
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

std::string beginning(const std::string& text) { return text.substr(0, 80); }

TEST(ActionBadInput, MalformedShippedTextLeavesTheManagerEmpty) {
    Recorder all;
    manager().attachObserver(&all);
    for (const std::string& text : malformedTexts()) {
        load({action(1, "board", "open", "F1")});
        loadQuietly(text, kUser);
        EXPECT_TRUE(manager().getAllActions().empty()) << beginning(text);
        EXPECT_FALSE(manager().isModified()) << beginning(text);
        EXPECT_EQ("", manager().getCommand("board", "F1", true)) << beginning(text);
        EXPECT_EQ(Events{}, all.take()) << beginning(text);
    }
}

TEST(ActionBadInput, MalformedUserTextChangesNothing) {
    for (const std::string& text : malformedTexts()) {
        loadQuietly(object(action(1, "board", "open", "F1")), text);
        EXPECT_EQ("F1", manager().getShortcut(1)) << beginning(text);
        EXPECT_FALSE(manager().isModified()) << beginning(text);
    }
}

TEST(ActionBadInput, TextCutOffAnywhereSaysNothing) {
    for (std::size_t length = 0; length < kShipped.size(); ++length) {
        manager().load(kShipped.substr(0, length), kUser);
        EXPECT_TRUE(manager().getAllActions().empty()) << length;
    }
    for (std::size_t length = 0; length < kUser.size(); ++length) {
        manager().load(object(action(1, "board", "open", "F1")), kUser.substr(0, length));
        EXPECT_EQ("F1", manager().getShortcut(1)) << length;
        EXPECT_TRUE(manager().getRMBMenuItems().empty()) << length;
    }
    manager().load(kShipped, kUser);
    EXPECT_EQ(3U, manager().getAllActions().size());
    EXPECT_EQ("F7", manager().getShortcut(2));
    EXPECT_TRUE(manager().getRMBMenuItems().empty());
}

TEST(ActionBadInput, ValuesOfAnyTypeAnywhereAreSurvived) {
    constexpr const char* kValues[] = {
        "null",        "true",   "0",           "-1",          "1.5",          "1e308", "18446744073709551616",
        "-0",          "\"\"",   "\"text\"",    "[]",          "[[]]",         "{}",    "{\"actions\":[]}",
        "\"\\u0000\"", "[null]", "\"\\ud800\"", "\"\\udc00\"", "[{\"id\":1}]",
    };
    for (const std::string value : kValues) {
        // As the root, the list, an element, each member; in the user's text too.
        std::vector<std::string> texts = {value,
                                          "{\"actions\":" + value + "}",
                                          object(value),
                                          wrapped(value),
                                          "[" + value + "]",
                                          "[{\"actions\":" + value + "}]"};
        for (const char* const member : {"id", "parent_id", "name", "icon", "context", "command", "shortcut", "rmb"}) {
            const std::string element =
                std::string("{\"") + member + "\":" + value + ",\"id\":4,\"context\":\"board\",\"command\":\"turn\"}";
            texts.push_back(object(element));
            texts.push_back(wrapped(element));
        }
        for (const std::string& text : texts) {
            loadQuietly(text, "");
            for (const UCPActionItem& item : manager().getAllActions()) {
                EXPECT_EQ(4, item.id) << text;
                EXPECT_EQ(item.id, manager().getActionIdByCommand(item.context, item.command)) << text;
            }
            loadQuietly(kShipped, text);
            EXPECT_EQ(3U, manager().getAllActions().size()) << text;
        }
    }
}

TEST(ActionBadInput, NestingUpToTheLimitIsRead) {
    struct Row {
        int depth;
        std::size_t actions;
    };
    // The object, the list and the element around it are three levels; the text may have 1,024.
    constexpr Row kRows[] = {{1, 1}, {1021, 1}, {1022, 0}, {50000, 0}};
    for (const Row& row : kRows) {
        const std::string nested = repeated("[", row.depth) + repeated("]", row.depth);
        loadQuietly(object(R"({"id":1,"context":"board","command":"open","more":)" + nested + "}"), "");
        EXPECT_EQ(row.actions, manager().getAllActions().size()) << row.depth;
    }
}

TEST(ActionBadInput, InvalidUtf8IsCarriedAsItStands) {
    load({"{\"id\":1,\"context\":\"board\",\"command\":\"a\xFF\",\"shortcut\":\"\xC3\"}"});
    EXPECT_EQ("a\xFF", manager().getCommand("board", "\xC3", false));
    EXPECT_TRUE(manager().updateShortcut(1, "\xFE"));
    EXPECT_EQ("{\"actions\":[{\"id\":1,\"shortcut\":\"\xFE\"}]}", manager().getAllUserSettings());
}

/// Checks what holds after any load: items and indexes tell the same.
void expectConsistent(const std::string& text) {
    for (const UCPActionItem& item : manager().getAllActions()) {
        if (item.id == 0) {
            continue;
        }
        ASSERT_GE(item.id, 1) << text;
        ASSERT_GE(item.parent_id, 0) << text;
        ASSERT_FALSE(item.context.empty()) << text;
        ASSERT_FALSE(item.command.empty()) << text;
        ASSERT_NE(0, manager().getActionIdByCommand(item.context, item.command)) << text;
        ASSERT_TRUE(manager().getAction(item.parent_id).first || item.parent_id == 0) << text;
    }
}

TEST(ActionBadInput, DamagedTextsLeaveTheManagerConsistent) {
    std::mt19937 random(20240229);
    for (int round = 0; round < 3000; ++round) {
        std::string shipped = kShipped;
        std::string user = kUser;
        for (std::string* const text : {&shipped, &user}) {
            for (unsigned changes = random() % 4; changes > 0; --changes) {
                const std::size_t at = random() % text->size();
                switch (random() % 3) {
                    case 0:
                        (*text)[at] = static_cast<char>(random() % 256);
                        break;
                    case 1:
                        text->erase(at, 1 + random() % 5);
                        break;
                    default:
                        text->insert(at, text->substr(random() % text->size(), random() % 9));
                }
            }
        }
        manager().load(shipped, user);
        expectConsistent(shipped + "\n" + user);
    }
}

}  // namespace
}  // namespace zelutil::test
