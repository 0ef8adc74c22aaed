// Reading and saving through real files, compared byte for byte with what the twin would write.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "prefs/preference_world.h"
#include "prefs/preferences.h"
#include "prefs/random_preferences.h"
#include "prefs/save.h"
#include "support/prefs_twin.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kCases = 300;

struct Tally {
    int written = 0;
    int notWritten = 0;
    int kept = 0;
};

class FilesTwin : public testing::Test {
protected:
    fs::path kept() const { return world_.userFile().string() + ".bad"; }

    void compareCase(unsigned seed) {
        RandomPreferences random(seed);
        const std::string defaults = random.defaultsText();
        std::string user = random.userText();
        world_.writeDefaults(defaults);
        world_.writeUser(user);
        // A fresh pair reads the written file and saves over it.
        for (int starts = 0; starts < 2 && !HasFailure(); ++starts) {
            compareSaves(random, defaults, user);
        }
    }

private:
    /// `user` is the text of the user's file, before and afterwards.
    void compareSaves(RandomPreferences& random, const std::string& defaults, std::string& user) {
        prefs::Preferences real;
        PrefsTwin twin(defaults, user);
        for (std::size_t saves = 1 + random.below(3); saves > 0 && !HasFailure(); --saves) {
            compareSave(random, real, twin, user);
        }
    }

    void compareSave(RandomPreferences& random, prefs::Preferences& real, PrefsTwin& twin, std::string& user) {
        std::vector<std::string> known;
        for (const auto& [hash, setting] : twin.settings()) {
            known.push_back(setting->fullName);
        }
        const auto settings = random.settings(known);
        const auto texts = random.subManagerTexts();
        prefs::SubManagerTexts handedOver;
        for (const auto& [type, text] : texts) {
            handedOver[prefs::SubManagerType{type}] = text;
        }
        prefs::save(real.catalogue, *real.userFile, {settings, handedOver});
        const PrefsSaved expected = twin.save(settings, texts);
        ++(expected.text ? tally_.written : tally_.notWritten);
        EXPECT_EQ(readTextFile(world_.userFile()), expected.text.value_or(user));
        if (fs::exists(kept())) {
            EXPECT_EQ(readTextFile(kept()), user);
            fs::remove(kept());
            ++tally_.kept;
        }
        user = expected.text.value_or(user);
        for (const auto& [hash, setting] : twin.settings()) {
            EXPECT_EQ(real.catalogue.find(setting->fullName)->valueInForce(), twin.find(setting->fullName)->value());
        }
    }

protected:
    PreferenceWorld world_;
    Tally tally_;
};

TEST_F(FilesTwin, AgreesWithTheLibrary) {
    for (unsigned seed = 0; seed < kCases && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        compareCase(seed);
    }
    EXPECT_GT(tally_.written, 100);
    EXPECT_GT(tally_.notWritten, 100);
    EXPECT_GT(tally_.kept, 0);
}

}  // namespace
}  // namespace zelutil::test
