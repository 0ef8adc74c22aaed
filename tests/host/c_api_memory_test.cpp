// Memory runs out at each request of a call in turn. The call then says so, and the next one does its work.
#include <string>

#include "host/c_api_fixture.h"
#include "support/scarce_memory.h"

namespace zelutil::test {
namespace {

/// Makes the call with ever more memory until it has enough. Returns how often it had not.
template <typename Call>
int timesWithoutMemory(Call call) {
    for (int allowed = 0;; ++allowed) {
        zelutil_status status = ZELUTIL_FAILED;
        bool enough = false;
        {
            const ScarceMemory scarce(allowed);
            status = call();
            enough = !scarce.ranOut();
        }
        if (enough) {
            EXPECT_EQ(status, ZELUTIL_OK) << allowed;
            return allowed;
        }
        EXPECT_EQ(status, ZELUTIL_NO_MEMORY) << allowed;
        if (::testing::Test::HasFailure()) {
            return -1;
        }
    }
}

/// The same for a call that hands something out, which is null as long as memory was short.
template <typename Handle, typename Call>
int timesWithoutMemoryFor(Call call) {
    return timesWithoutMemory([&] {
        Handle* handle = nullptr;
        const zelutil_status status = call(&handle);
        EXPECT_EQ(handle != nullptr, status == ZELUTIL_OK);
        const Held<Handle> held(handle);
        return status;
    });
}

class CApiMemory : public CApi {
protected:
    CApiMemory() {
        world.writeUser(R"({"meta": [
            {"header": "Display", "attribute": "display", "overriddensettings": [{"an entry that means nothing": "1"}]}
        ]})");
        get_user_setting("grid");  // the first use
    }
};

TEST_F(CApiMemory, EnumeratingSaysSo) {
    EXPECT_GT(timesWithoutMemoryFor<const zelutil_setting_list>([](auto** out) { return zelutil_get_settings(out); }),
              5);
    EXPECT_GT(timesWithoutMemoryFor<const zelutil_names>([](auto** out) { return zelutil_get_sections(out); }), 3);
    EXPECT_GT(timesWithoutMemoryFor<const zelutil_action_list>([](auto** out) { return zelutil_get_actions(out); }), 3);
    EXPECT_GT(
        timesWithoutMemoryFor<const zelutil_warning_list>([](auto** out) { return zelutil_get_start_warnings(out); }),
        3);
}

TEST_F(CApiMemory, TextsAndSubscriptionsSaySo) {
    EXPECT_GT(timesWithoutMemoryFor<const zelutil_text>([](auto** out) { return zelutil_read_text("grid", out); }), 0);
    EXPECT_GT(timesWithoutMemoryFor<const zelutil_restorable_text>(
                  [](auto** out) { return zelutil_get_restorable_actions_text(out); }),
              3);
    const auto ignore = [](const zelutil_names*, void*) {};
    EXPECT_GT(timesWithoutMemoryFor<zelutil_subscription>(
                  [&](auto** out) { return zelutil_on_settings_changed(ignore, nullptr, out); }),
              1);
}

TEST_F(CApiMemory, AnEditSaysSo) {
    EXPECT_GT(timesWithoutMemory([] { return zelutil_set_shortcut(2, "a key of more than fifteen bytes", nullptr); }),
              1);
    char shortcut[64];
    ucp_action_manager_get_shortcut(2, shortcut, sizeof shortcut);
    EXPECT_STREQ(shortcut, "a key of more than fifteen bytes");
}

TEST_F(CApiMemory, ASaveSaysSoAndTheLastOneHasSavedAll) {
    const zelutil_value value = {"grid", "a value of more than fifteen bytes"};
    EXPECT_GT(
        timesWithoutMemoryFor<const zelutil_save_result>([&](auto** out) { return zelutil_save(&value, 1, out); }), 20);
    EXPECT_STREQ(get_user_setting("grid"), value.value);
    const std::string file = readTextFile(world.userFile());
    EXPECT_NE(file.find(value.value), std::string::npos) << file;
    EXPECT_NE(file.find("an entry that means nothing"), std::string::npos) << file;
}

}  // namespace
}  // namespace zelutil::test
