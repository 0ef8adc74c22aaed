// Reading and saving compared with their slow, literal twin on random files and sequences of saves.
//
// The build sets the first seed and the number of cases; the environment variables ZELUTIL_TWIN_SEED and
// ZELUTIL_TWIN_CASES go before. A failure prints its seed.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "prefs/random_preferences.h"
#include "support/prefs_subject.h"
#include "support/prefs_twin.h"

namespace zelutil::test {
namespace {

/// Each has a process of its own.
constexpr unsigned kShares = 4;

unsigned numberFrom(const char* variable, unsigned otherwise) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

/// Over all cases, to show that they are worth comparing.
struct Tally {
    unsigned settings = 0;
    unsigned saves = 0;
    unsigned written = 0;
    unsigned changedNames = 0;
    unsigned changedTexts = 0;
    unsigned actionLoads = 0;
};

/// What the action manager holds.
std::string actionsText() {
    std::string text;
    for (const UCPActionItem& item : UCPActionManager::instance().getAllActions()) {
        text += std::to_string(item.id) + " " + item.context + " " + item.command + " " + item.shortcut.defaultValue +
                " " + item.shortcut.userValue + "\n";
    }
    return text + UCPActionManager::instance().getAllUserSettings();
}

void loadMarkedActions() {
    UCPActionManager::instance().load(R"({"actions":[{"id":99,"context":"mark","command":"m","shortcut":"M"}]})", "{}");
}

class Case {
public:
    Case(unsigned seed, Tally& tally) : random_(seed), tally_(tally) {}

    void run() {
        const std::string defaults = random_.defaultsText();
        history_ = "defaults:\n" + defaults + "\n";
        const std::string written = runWith(defaults, random_.userText(), 1 + random_.below(3));
        // The text that was written is read by a fresh pair and saved over once more.
        runWith(defaults, written, 1);
    }

private:
    /// The last text written, or the user's text when none was.
    std::string runWith(const std::string& defaults, std::string user, std::size_t saves) {
        history_ += "user:\n" + user + "\n";
        PrefsSubject subject(defaults, user);
        PrefsTwin twin(defaults, user);
        tally_.settings += static_cast<unsigned>(twin.settings().size());
        compareSections(subject, twin);
        compareActions(subject, twin);
        const std::vector<std::string> names = namesToAsk(twin);
        compareValues(subject, twin, names);
        for (; saves > 0 && !testing::Test::HasFailure(); --saves) {
            if (const auto written = save(subject, twin)) {
                user = *written;
            }
            compareValues(subject, twin, names);
        }
        return user;
    }

    static void compareSections(const PrefsSubject& subject, const PrefsTwin& twin) {
        const auto real = subject.sections();
        EXPECT_EQ(real.size(), twin.sections().size());
        for (const auto& [path, section] : twin.sections()) {
            const auto found = real.find(path);
            ASSERT_NE(found, real.end()) << path;
            EXPECT_EQ(found->second, section) << path;
        }
    }

    void compareActions(PrefsSubject& subject, const PrefsTwin& twin) {
        loadMarkedActions();
        const bool registered = subject.initializeSubManagers();
        const std::string real = actionsText();
        loadMarkedActions();
        const auto loads = twin.actionLoads();
        for (const TwinActionTexts& texts : loads) {
            UCPActionManager::instance().load(texts.defaults, texts.user);
        }
        tally_.actionLoads += static_cast<unsigned>(loads.size());
        EXPECT_EQ(registered, !loads.empty());
        EXPECT_EQ(real, actionsText());
    }

    /// Names that find something, in full and bare, in another case too, and names that may not.
    std::vector<std::string> namesToAsk(const PrefsTwin& twin) {
        std::set<std::string> names(kRandomNames.begin(), kRandomNames.end());
        for (const auto& [hash, setting] : twin.settings()) {
            names.insert({setting->name, setting->fullName, setting->fullName + "::x", "a::" + setting->fullName});
        }
        for (const auto& [path, section] : twin.sections()) {
            names.insert({path, path + "::", path + "::y"});
        }
        std::vector<std::string> asked;
        for (const std::string& name : names) {
            asked.push_back(name);
            asked.push_back(random_.inAnotherCase(name));
        }
        return asked;
    }

    static bool same(const std::string* real, const std::string* expected) {
        return real == nullptr || expected == nullptr ? real == expected : *real == *expected;
    }

    static void compareValues(const PrefsSubject& subject, const PrefsTwin& twin,
                              const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            const TwinSetting* const setting = twin.find(name);
            if (!same(subject.value(name), setting == nullptr ? nullptr : &setting->value()) ||
                !same(subject.defaultValue(name), setting == nullptr ? nullptr : &setting->defaultValue)) {
                ADD_FAILURE() << "look-up of " << name;
            }
        }
    }

    std::optional<std::string> save(PrefsSubject& subject, PrefsTwin& twin) {
        std::vector<std::string> known;
        for (const auto& [hash, setting] : twin.settings()) {
            known.push_back(random_.oneIn(2) ? setting->name : setting->fullName);
        }
        const auto settings = random_.settings(known);
        const auto texts = random_.subManagerTexts();
        history_ += "save:\n";
        for (const auto& [name, value] : settings) {
            history_ += "  " + name + " = " + value + "\n";
        }
        for (const auto& [type, text] : texts) {
            history_ += "  " + std::to_string(type) + ": " + text + "\n";
        }
        const PrefsSaved real = subject.save(settings, texts);
        const PrefsSaved expected = twin.save(settings, texts);
        EXPECT_EQ(real.told, expected.told);
        EXPECT_EQ(real.text, expected.text);
        EXPECT_EQ(real.changedNames, expected.changedNames);
        EXPECT_EQ(real.changedTexts, expected.changedTexts);
        ++tally_.saves;
        tally_.written += expected.text ? 1U : 0U;
        tally_.changedNames += static_cast<unsigned>(expected.changedNames.size());
        tally_.changedTexts += static_cast<unsigned>(expected.changedTexts.size());
        return expected.text;
    }

public:
    const std::string& history() const { return history_; }

private:
    RandomPreferences random_;
    Tally& tally_;
    std::string history_;
};

Tally compareCases(unsigned first, unsigned count) {
    Tally tally;
    for (unsigned seed = first; seed < first + count && !testing::Test::HasFailure(); ++seed) {
        Case one(seed, tally);
        one.run();
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "ZELUTIL_TWIN_SEED=" << seed << "\n" << one.history();
        }
    }
    std::printf("%u cases, %u settings, %u saves, %u written, %u names and %u texts changed, %u loadings of actions\n",
                count, tally.settings, tally.saves, tally.written, tally.changedNames, tally.changedTexts,
                tally.actionLoads);
    return tally;
}

class PreferenceTwin : public testing::TestWithParam<unsigned> {};

TEST_P(PreferenceTwin, AgreesWithTheLibrary) {
    const unsigned cases = std::max(numberFrom("ZELUTIL_TWIN_CASES", ZELUTIL_TWIN_CASES) / kShares, 1U);
    const Tally tally = compareCases(numberFrom("ZELUTIL_TWIN_SEED", ZELUTIL_TWIN_SEED) + GetParam() * cases, cases);
    constexpr unsigned kFewCases = 100;
    if (cases < kFewCases) {
        return;
    }
    // The cases must not be so wrong that hardly anything happens in them.
    EXPECT_GT(tally.settings, cases * 2);
    EXPECT_GT(tally.written, tally.saves / 5);
    EXPECT_LT(tally.written, tally.saves);
    EXPECT_GT(tally.changedNames, tally.saves / 5);
    EXPECT_GT(tally.changedTexts, tally.saves / 100);
    EXPECT_GT(tally.actionLoads, cases / 20);
}

INSTANTIATE_TEST_SUITE_P(Quarter, PreferenceTwin, testing::Range(0U, kShares));

}  // namespace
}  // namespace zelutil::test
