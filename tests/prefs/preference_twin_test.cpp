// Reading and saving compared with their slow, literal twin on random files and sequences of saves.
//
// The build sets the first seed and the number of cases; the environment variables ZELUTIL_TWIN_SEED and
// ZELUTIL_TWIN_CASES go before. A failure prints its seed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "prefs/random_preferences.h"
#include "support/prefs_pair.h"

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

class Case {
public:
    Case(unsigned seed, Tally& tally) : random_(seed), tally_(tally) {}

    /// Returns a description of the first difference, or the empty string.
    std::string run() {
        const std::string defaults = random_.defaultsText();
        history_ = "defaults:\n" + defaults + "\n";
        std::string text = random_.userText();
        const std::string difference = runWith(defaults, text, 1 + random_.below(3));
        // The text that was written is read by a fresh pair and saved over once more.
        return difference.empty() ? runWith(defaults, text, 1) : difference;
    }

    const std::string& history() const { return history_; }

private:
    /// `user` is then the last text written, if there was one.
    std::string runWith(const std::string& defaults, std::string& user, std::size_t saves) {
        history_ += "user:\n" + user + "\n";
        PrefsPair pair(defaults, user);
        tally_.settings += static_cast<unsigned>(pair.twin().settings().size());
        tally_.actionLoads += static_cast<unsigned>(pair.twin().actionLoads().size());
        const std::vector<std::string> names = namesToAsk(pair.twin());
        std::string difference = pair.compareSections() + pair.compareActions() + pair.compareValues(names);
        for (; saves > 0 && difference.empty(); --saves) {
            difference = save(pair, user) + pair.compareValues(names);
        }
        return difference;
    }

    /// Names that find something, in another case too, and names that may not.
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

    std::string save(PrefsPair& pair, std::string& user) {
        std::vector<std::string> known;
        for (const auto& [hash, setting] : pair.twin().settings()) {
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
        PrefsSaved saved;
        std::string difference = pair.compareSave(settings, texts, saved);
        ++tally_.saves;
        tally_.written += saved.text ? 1U : 0U;
        tally_.changedNames += static_cast<unsigned>(saved.changedNames.size());
        tally_.changedTexts += static_cast<unsigned>(saved.changedTexts.size());
        user = saved.text.value_or(user);
        return difference;
    }

    RandomPreferences random_;
    Tally& tally_;
    std::string history_;
};

Tally compareCases(unsigned first, unsigned count) {
    Tally tally;
    for (unsigned seed = first; seed < first + count; ++seed) {
        Case one(seed, tally);
        const std::string difference = one.run();
        if (!difference.empty()) {
            ADD_FAILURE() << "ZELUTIL_TWIN_SEED=" << seed << ": " << difference << "\n" << one.history();
            break;
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
