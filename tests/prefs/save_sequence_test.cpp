// Random sequences of saves, of both doors, with files that another process writes in between, with settings that are
// reset and with files that are read anew. What earlier saves have kept makes no difference to a later one: the file
// holds the bytes that a catalogue would write which never saved before and has the same values.
#include <gtest/gtest.h>
#include <zelutil/host/save.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/current_preferences.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"
#include "prefs/preference_world.h"
#include "prefs/random_preferences.h"
#include "prefs/save_plan.h"

namespace zelutil::test {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kSequences = 40;
constexpr unsigned kSteps = 12;

/// Returns a catalogue with the same values that nobody has saved.
prefs::Catalogue unsaved(const prefs::Catalogue& catalogue) {
    prefs::Catalogue fresh;
    prefs::readDefaults(catalogue.defaultsText(), fresh);
    for (std::size_t number = 0; number < catalogue.settings().recordCount(); ++number) {
        const prefs::Setting& setting = catalogue.settings().record(number);
        if (setting.hasUserValue) {
            fresh.settings().record(number).setUserValue(setting.userValue);
        }
    }
    for (const auto& [type, text] : catalogue.userSubManagerTexts()) {
        fresh.addUserSubManagerText(type, text);
    }
    return fresh;
}

bool areEqual(const prefs::SettingJournal& one, const prefs::SettingJournal& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& a, const auto& b) {
        return a.first == b.first && a.second.inFile == b.second.inFile && a.second.touched == b.second.touched;
    });
}

class SaveSequence : public testing::Test {
protected:
    void runCase(unsigned seed) {
        RandomPreferences random(seed);
        world_.writeDefaults(random.defaultsText());
        writeForeign(random);
        readAnew();
        for (unsigned step = 0; step < kSteps && !HasFailure(); ++step) {
            SCOPED_TRACE(step);
            doStep(random);
        }
    }

    PreferenceWorld world_;
    int written_ = 0;
    int notWritten_ = 0;

private:
    static prefs::Catalogue& catalogue() { return host::currentPreferences()->catalogue; }

    static void readAnew() { *host::currentPreferences() = prefs::Preferences(); }

    /// No copies that the saves before have kept are left.
    void writeForeign(RandomPreferences& random) const {
        fs::remove_all(world_.userFile().parent_path());
        world_.writeUser(random.userText());
    }

    void doStep(RandomPreferences& random) {
        switch (random.below(8)) {
            case 0:
                writeForeign(random);
                break;
            case 1:
                readAnew();
                break;
            case 2:
                host::save(random.settings(knownNames()));
                break;
            case 3:
                host::reset(knownNames(random.below(4)));
                break;
            case 4: {
                // A copy shares what is kept, as it shares the values.
                const UserPreferenceManager copy = UserPreferenceManager::GetInstance();
                UserPreferenceManager::GetInstance() = copy;
                break;
            }
            default:
                saveByTheOldCall(random);
        }
    }

    static std::vector<std::string> knownNames(std::size_t atMost = SIZE_MAX) {
        std::vector<std::string> names;
        const json::Document defaults(catalogue().defaultsText());
        prefs::Catalogue scratch;
        prefs::readDefaults(defaults.root(), scratch, [&](const prefs::Definition& definition) {
            if (names.size() < atMost) {
                names.push_back(definition.attributePath + "::" + std::string(definition.name));
            }
        });
        return names;
    }

    void saveByTheOldCall(RandomPreferences& random) {
        const auto values = random.settings(knownNames());
        prefs::SubManagerTexts texts;
        for (const auto& [type, text] : random.subManagerTexts()) {
            texts[prefs::SubManagerType{type}] = text;
        }
        const prefs::Catalogue fresh = unsaved(catalogue());
        const auto plan = prefs::planSave(fresh, prefs::SaveValues(fresh, {values, texts}));
        const auto textBefore = textOfFile();
        UserPreferenceManager::GetInstance().updateUserPrefSettings(values, texts);
        const bool isWritten = plan && plan->fileText;
        EXPECT_EQ(textOfFile(), isWritten ? plan->fileText : textBefore);
        if (isWritten) {
            EXPECT_TRUE(areEqual(catalogue().journal(), plan->journal));
        }
        ++(isWritten ? written_ : notWritten_);
    }

    std::optional<std::string> textOfFile() const {
        return fs::exists(world_.userFile()) ? std::optional<std::string>(readTextFile(world_.userFile()))
                                             : std::nullopt;
    }
};

TEST_F(SaveSequence, WritesWhatACatalogueWithoutAPastWrites) {
    world_.writeDefaults("{}");
    UserPreferenceManager::GetInstance();
    for (unsigned seed = 0; seed < kSequences && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        runCase(seed);
    }
    EXPECT_GT(written_, 20);
    EXPECT_GT(notWritten_, 20);
}

}  // namespace
}  // namespace zelutil::test
