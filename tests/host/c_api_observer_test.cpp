#include <stdexcept>
#include <string>
#include <vector>

#include "host/c_api_fixture.h"

namespace zelutil::test {
namespace {

/// Writes down what its functions are told.
struct Heard {
    static void names(const zelutil_names* fullNames, void* heard) {
        std::string line = "names";
        for (const std::string& name : textsOf(*fullNames)) {
            line += " " + name;
        }
        lines(heard).push_back(line);
    }
    static void value(const char* value, void* heard) { lines(heard).push_back(std::string("value ") + value); }
    static void shortcut(int id, const char* before, const char* now, void* heard) {
        lines(heard).push_back(std::to_string(id) + " " + before + " " + now);
    }
    static void menu(int id, bool inMenu, void* heard) {
        lines(heard).push_back(std::to_string(id) + (inMenu ? " in" : " out"));
    }
    static void application(int id, bool editorSwitch, void* heard) {
        lines(heard).push_back("application " + std::to_string(id) + (editorSwitch ? " switch" : ""));
    }

    static std::vector<std::string>& lines(void* heard) { return *static_cast<std::vector<std::string>*>(heard); }
};

class CApiObserver : public CApi {
protected:
    template <typename Call>
    void subscribe(Call call) {
        subscriptions.push_back(handedOut<zelutil_subscription>(call));
    }

    std::vector<std::string> heard;
    std::vector<Held<zelutil_subscription>> subscriptions;
};

zelutil_status saveOne(const char* name, const char* text) {
    const zelutil_value value = {name, text};
    return zelutil_save(&value, 1, nullptr);
}

TEST_F(CApiObserver, EachIsToldWhatItIsFor) {
    subscribe([&](auto** out) { return zelutil_on_settings_changed(Heard::names, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_setting_changed("UNITS", Heard::value, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_section_changed("display::colors", Heard::names, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_shortcut_changed(Heard::shortcut, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_menu_changed(Heard::menu, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_active_application_changed(Heard::application, &heard, out); });

    saveOne("units", "mil");
    EXPECT_EQ(heard, (std::vector<std::string>{"names display::units", "value mil"}));
    heard.clear();
    saveOne("display::colors::grid", "blue");
    EXPECT_EQ(heard, (std::vector<std::string>{"names display::colors::grid", "names display::colors::grid"}));
    heard.clear();
    zelutil_set_shortcut(2, "F3", nullptr);
    zelutil_set_in_menu(2, false);
    SetActiveAppId(7, 1);
    EXPECT_EQ(heard, (std::vector<std::string>{"2 Ctrl+O F3", "2 out", "application 7 switch"}));
}

TEST_F(CApiObserver, NobodyIsToldAnyMoreOnceItIsCancelled) {
    subscribe([&](auto** out) { return zelutil_on_settings_changed(Heard::names, &heard, out); });
    subscribe([&](auto** out) { return zelutil_on_shortcut_changed(Heard::shortcut, &heard, out); });
    subscriptions.clear();
    saveOne("units", "mil");
    zelutil_set_shortcut(2, "F3", nullptr);
    EXPECT_EQ(heard, std::vector<std::string>());
}

TEST_F(CApiObserver, AnUnknownSettingHasNoSubscription) {
    handedOut<zelutil_subscription>(
        ZELUTIL_UNKNOWN, [&](auto** out) { return zelutil_on_setting_changed("none", Heard::value, &heard, out); });
}

/// Ends its own registration when it is told.
struct SelfEnding {
    zelutil_subscription* subscription = nullptr;
    int calls = 0;

    static void names(const zelutil_names* fullNames, void* object) {
        auto& self = *static_cast<SelfEnding*>(object);
        zelutil_cancel(self.subscription);
        self.subscription = nullptr;
        self.calls += fullNames->count;
    }
};

TEST_F(CApiObserver, AFunctionMayEndItsOwnRegistration) {
    SelfEnding ending;
    ASSERT_EQ(zelutil_on_settings_changed(SelfEnding::names, &ending, &ending.subscription), ZELUTIL_OK);
    subscribe([&](auto** out) { return zelutil_on_settings_changed(Heard::names, &heard, out); });
    saveOne("units", "mil");
    saveOne("units", "inch");
    EXPECT_EQ(ending.calls, 1);
    EXPECT_EQ(heard.size(), 2u);
}

void throwing(const zelutil_names*, void*) { throw std::runtime_error("a host's"); }

TEST_F(CApiObserver, AnExceptionOfAHostsFunctionDoesNotLeaveTheSave) {
    subscribe([&](auto** out) { return zelutil_on_settings_changed(throwing, nullptr, out); });
    EXPECT_EQ(saveOne("units", "mil"), ZELUTIL_FAILED);
    EXPECT_STREQ(get_user_setting("units"), "mil");
}

void throwingTruth(const zelutil_names*, void*) { throw true; }

TEST_F(CApiObserver, ATruthValueThatAHostsFunctionThrowsIsNotTakenForTheEndOfTheProcess) {
    subscribe([&](auto** out) { return zelutil_on_settings_changed(throwingTruth, nullptr, out); });
    EXPECT_EQ(saveOne("units", "mil"), ZELUTIL_FAILED);
}

/// Saves again when it is told, another value each time, and writes down what becomes of it.
struct Saving {
    int saves = 0;
    std::vector<zelutil_status> statuses;

    static void names(const zelutil_names*, void* object) {
        auto& self = *static_cast<Saving*>(object);
        self.statuses.push_back(saveOne("layers", std::to_string(++self.saves).c_str()));
    }
};

TEST_F(CApiObserver, ASaveWithoutEndInItsOwnNotificationIsStopped) {
    Saving saving;
    subscribe([&](auto** out) { return zelutil_on_settings_changed(Saving::names, &saving, out); });
    EXPECT_EQ(saveOne("units", "mil"), ZELUTIL_OK);
    // Eight saves are in progress when the ninth is refused; the first of them is not the observer's.
    std::vector<zelutil_status> expected(8, ZELUTIL_OK);
    expected.front() = ZELUTIL_TOO_DEEP;
    EXPECT_EQ(saving.statuses, expected);
    EXPECT_STREQ(get_user_setting("layers"), "7");
}

}  // namespace
}  // namespace zelutil::test
