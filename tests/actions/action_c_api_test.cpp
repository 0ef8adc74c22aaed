#include <zelutil/c_api.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

#include "actions/action_fixture.h"

namespace zelutil::test {
namespace {

/// Holds what the C callback was given last; the two texts as pointers.
struct Call {
    int count = 0;
    int id = 0;
    const char* oldShortcut = nullptr;
    const char* newShortcut = nullptr;
};
Call lastCall;

void remember(int actionId, const char* oldShortcut, const char* newShortcut) {
    lastCall = {lastCall.count + 1, actionId, oldShortcut, newShortcut};
}

int otherCalls = 0;
void count(int, const char*, const char*) { ++otherCalls; }

class ActionCApi : public testing::Test {
protected:
    void SetUp() override {
        manager().load("", "");
        lastCall = Call();
        otherCalls = 0;
    }
};

// --- Reading a shortcut ---------------------------------------------------------------------------------------------

TEST_F(ActionCApi, ShortcutIsCopiedCutAndFilledUp) {
    load({action(1, "board", "save", "Ctrl+S"), action(2, "board", "none")});
    struct Row {
        int id;
        int length;
        std::string buffer;
    };
    const Row rows[] = {
        {1, 8, std::string("Ctrl+S\0\0", 8)},
        {1, 7, std::string("Ctrl+S\0#", 8)},
        // No room for a zero.
        {1, 6, "Ctrl+S##"},
        {1, 4, "Ctrl####"},
        {1, 1, "C#######"},
        // Nothing is written.
        {1, 0, "########"},
        {1, -1, "########"},
        // No shortcut and no action: zeros.
        {2, 3, std::string("\0\0\0#####", 8)},
        {77, 8, std::string(8, '\0')},
        {0, 1, std::string("\0#######", 8)},
        {-1, 1, std::string("\0#######", 8)},
    };
    for (const Row& row : rows) {
        std::string buffer(8, '#');
        ucp_action_manager_get_shortcut(row.id, buffer.data(), row.length);
        EXPECT_EQ(row.buffer, buffer) << row.id << " " << row.length;
    }
}

TEST_F(ActionCApi, ShortcutInForceIsRead) {
    load({action(1, "board", "save", "F1"), child(2, 1, "panel", "keep")}, R"({"id":1,"shortcut":"F2"})");
    char buffer[8];
    for (const int id : {1, 2}) {
        ucp_action_manager_get_shortcut(id, buffer, sizeof buffer);
        EXPECT_STREQ("F2", buffer) << id;
    }
}

TEST_F(ActionCApi, ZeroInsideAShortcutEndsTheCopy) {
    load({R"({"id":1,"context":"board","command":"open","shortcut":"F\u00001"})"});
    char buffer[4] = {'#', '#', '#', '#'};
    ucp_action_manager_get_shortcut(1, buffer, sizeof buffer);
    EXPECT_EQ(0, std::memcmp("F\0\0\0", buffer, sizeof buffer));
}

// --- Observing ------------------------------------------------------------------------------------------------------

TEST_F(ActionCApi, AttachNeedsAnActionThatIsThere) {
    EXPECT_EQ(nullptr, ucp_action_manager_observer_attach(1, remember));
    load({action(1, "board", "open", "F1")});
    EXPECT_EQ(nullptr, ucp_action_manager_observer_attach(0, remember));
    EXPECT_EQ(nullptr, ucp_action_manager_observer_attach(2, remember));
    void* const handle = ucp_action_manager_observer_attach(1, remember);
    EXPECT_NE(nullptr, handle);
    ucp_action_manager_observer_detach(handle);
    EXPECT_EQ(0, lastCall.count);
}

TEST_F(ActionCApi, CallbackIsToldUntilItIsDetached) {
    load({action(1, "board", "open", "F1"), action(2, "board", "close", "F2")});
    void* const handle = ucp_action_manager_observer_attach(1, remember);
    ASSERT_NE(nullptr, handle);
    EXPECT_FALSE(manager().updateShortcut(1, "F2"));
    EXPECT_TRUE(manager().updateShortcut(1, "F1"));
    EXPECT_TRUE(manager().updateShortcut(2, "F9"));
    EXPECT_EQ(0, lastCall.count);

    EXPECT_TRUE(manager().updateShortcut(1, "F3"));
    EXPECT_EQ(1, lastCall.count);
    EXPECT_EQ(1, lastCall.id);
    EXPECT_STREQ("F1", lastCall.oldShortcut);
    EXPECT_STREQ("F3", lastCall.newShortcut);

    // The buffers are the observer's own: the next call writes over them.
    const Call first = lastCall;
    EXPECT_TRUE(manager().updateShortcut(1, ""));
    EXPECT_EQ(2, lastCall.count);
    EXPECT_EQ(first.oldShortcut, lastCall.oldShortcut);
    EXPECT_EQ(first.newShortcut, lastCall.newShortcut);
    EXPECT_STREQ("F3", first.oldShortcut);
    EXPECT_STREQ("", first.newShortcut);

    ucp_action_manager_observer_detach(handle);
    EXPECT_TRUE(manager().updateShortcut(1, "F4"));
    EXPECT_EQ(2, lastCall.count);
}

TEST_F(ActionCApi, LongShortcutIsCutAtTheEndOfTheBufferWithoutAZero) {
    load({action(1, "board", "open", std::string(63, 'a'))});
    void* const handle = ucp_action_manager_observer_attach(1, remember);
    ASSERT_NE(nullptr, handle);
    EXPECT_TRUE(manager().updateShortcut(1, std::string(64, 'b')));
    EXPECT_EQ(std::string(63, 'a'), lastCall.oldShortcut);
    EXPECT_EQ(0, std::memcmp(std::string(64, 'b').data(), lastCall.newShortcut, 64));
    EXPECT_TRUE(manager().updateShortcut(1, std::string(100, 'c')));
    EXPECT_EQ(0, std::memcmp(std::string(64, 'b').data(), lastCall.oldShortcut, 64));
    EXPECT_EQ(0, std::memcmp(std::string(64, 'c').data(), lastCall.newShortcut, 64));
    // A shorter text leaves nothing of the longer one behind.
    EXPECT_TRUE(manager().updateShortcut(1, "F1"));
    std::string filled(64, '\0');
    filled.replace(0, 2, "F1");
    EXPECT_EQ(0, std::memcmp(filled.data(), lastCall.newShortcut, 64));
    ucp_action_manager_observer_detach(handle);
}

TEST_F(ActionCApi, MenuFlagsAreNotToldOddity) {
    load({action(1, "board", "open", "F1")});
    void* const handle = ucp_action_manager_observer_attach(1, remember);
    manager().updateRMBMenu(1, true);
    manager().updateRMBMenu(1, false);
    EXPECT_EQ(0, lastCall.count);
    ucp_action_manager_observer_detach(handle);
}

TEST_F(ActionCApi, NullCallbackIsAcceptedOddity) {
    load({action(1, "board", "open", "F1")});
    void* const handle = ucp_action_manager_observer_attach(1, nullptr);
    EXPECT_NE(nullptr, handle);
    manager().updateRMBMenu(1, true);
    ucp_action_manager_observer_detach(handle);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
}

TEST_F(ActionCApi, NullCallbackIsCalledAtTheFirstChangeOddity) {
    load({action(1, "board", "open", "F1")});
    void* const handle = ucp_action_manager_observer_attach(1, nullptr);
    EXPECT_EXIT(
        {
            std::signal(SIGSEGV, [](int) { std::_Exit(7); });
            manager().updateShortcut(1, "F2");
        },
        testing::ExitedWithCode(7), "");
    ucp_action_manager_observer_detach(handle);
}

TEST_F(ActionCApi, EveryAttachIsAnObserverOfItsOwn) {
    load({action(1, "board", "open", "F1")});
    void* const first = ucp_action_manager_observer_attach(1, remember);
    void* const second = ucp_action_manager_observer_attach(1, remember);
    void* const third = ucp_action_manager_observer_attach(1, count);
    EXPECT_NE(first, second);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ(2, lastCall.count);
    EXPECT_EQ(1, otherCalls);
    ucp_action_manager_observer_detach(first);
    EXPECT_TRUE(manager().updateShortcut(1, "F3"));
    EXPECT_EQ(3, lastCall.count);
    EXPECT_EQ(2, otherCalls);
    ucp_action_manager_observer_detach(second);
    ucp_action_manager_observer_detach(third);
}

TEST_F(ActionCApi, DetachingNullDoesNothing) {
    load({action(1, "board", "open", "F1")});
    void* const handle = ucp_action_manager_observer_attach(1, remember);
    ucp_action_manager_observer_detach(nullptr);
    EXPECT_TRUE(manager().updateShortcut(1, "F2"));
    EXPECT_EQ(1, lastCall.count);
    ucp_action_manager_observer_detach(handle);
}

}  // namespace
}  // namespace zelutil::test
