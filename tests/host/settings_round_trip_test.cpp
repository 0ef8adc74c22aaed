// On random defaults, files and edits: after a save, a new process has every setting as it was, but for those that the
// plan names; and the plan names none without a reason.
//
// The build sets the first seed and the number of states; the environment variables ZELUTIL_TWIN_SEED and
// ZELUTIL_TWIN_CASES go before. A failure prints its seed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "host/dense_preferences.h"
#include "host/settings_process.h"
#include "host/share_of_cases.h"
#include "prefs/random_preferences.h"

namespace zelutil::test {
namespace {

using prefs::Catalogue;
using prefs::Setting;

/// Over all states, to show that they are worth looking at.
struct Tally {
    unsigned states = 0;
    unsigned settings = 0;
    unsigned usersSettings = 0;
    unsigned namedInFull = 0;
    unsigned notRestored = 0;
    unsigned ofOthers = 0;
    unsigned conflicts = 0;
    unsigned kept = 0;
};

/// Whether an entry under some name, in some section that is read, sets the setting. All full names are tried, and all
/// that they end with.
bool someEntrySets(const Catalogue& catalogue, const Setting& setting, std::set<std::string> names) {
    for (const std::string& fullName : std::set<std::string>(names)) {
        for (std::size_t at = fullName.find("::"); at != std::string::npos; at = fullName.find("::", at + 1)) {
            names.insert(fullName.substr(at + 2));
        }
    }
    for (const auto& [path, section] : catalogue.sections()) {
        for (const std::string& name : names) {
            if (section->submanagerId == 101 && catalogue.findEntry(name, path) == &setting) {
                return true;
            }
        }
    }
    return false;
}

class Case {
public:
    /// Every third case has files with mistakes in them.
    Case(unsigned seed, Tally& tally) : random_(seed), dense_(random_), isDense_(seed % 3 != 0), tally_(tally) {}

    /// Returns a description of what is wrong, or the empty string.
    std::string run() {
        const std::string defaults = isDense_ ? dense_.defaultsText() : random_.defaultsText();
        names_ = fullNames(catalogueOfTexts(defaults, ""));
        FileText file = random_.oneIn(6) ? FileText() : someFile();
        history_ = "defaults:\n" + defaults + "\nfile:\n" + file.value_or("(none)") + "\n";
        SettingsProcess process(defaults, file);
        std::string wrong;
        for (std::size_t saves = 1 + random_.below(3); saves > 0 && wrong.empty(); --saves) {
            wrong = saveOnce(defaults, process, file);
        }
        return wrong;
    }

    const std::string& history() const { return history_; }

private:
    std::string saveOnce(const std::string& defaults, SettingsProcess& process, FileText& file) {
        disturb(process, file);
        const FileText fileBefore = file;
        const Values values = random_.settings(names_);
        const Names resets = namesToReset();
        describe(values, resets);
        const auto plan = process.save(file, values, resets);
        if (!plan.hasSections) {
            return {};
        }
        history_ += "written:\n" + file.value_or("(none)") + "\n";
        ++tally_.states;
        if (!othersWrote_ && !onlyKnownOthers(plan)) {
            return "others are named who did nothing";
        }
        othersWrote_ = false;
        ofOthers_ = {plan.settingsOfOthers.begin(), plan.settingsOfOthers.end()};
        tally_.kept += static_cast<unsigned>(plan.content.kept.size());
        tally_.conflicts += static_cast<unsigned>(plan.conflicts.size());
        tally_.ofOthers += static_cast<unsigned>(plan.settingsOfOthers.size());
        tally_.notRestored += static_cast<unsigned>(plan.notRestored.size());
        if (file == fileBefore && json::Document(file.value_or("")).valid() == false) {
            return "no text was made";
        }
        FileText again = file;
        process.save(again, {});
        if (again != file) {
            return "a second save wrote something else";
        }
        return compare(process.catalogue(), catalogueOfTexts(defaults, *file), plan) +
               compareNamed(defaults, process.catalogue(), fileBefore, plan);
    }

    /// Other things happen to the file and the process between saves.
    void disturb(SettingsProcess& process, FileText& file) {
        if (random_.oneIn(4)) {
            const Values values = random_.settings(names_);
            history_ += "old door:\n";
            describe(values, {});
            if (process.saveThroughOldDoor(file, values)) {
                othersWrote_ = false;
                ofOthers_.clear();
            }
        }
        if (random_.oneIn(3)) {
            file = random_.oneIn(5) ? FileText() : someFile();
            othersWrote_ = true;
            history_ += "file of another:\n" + file.value_or("(none)") + "\n";
        }
    }

    /// Whether the plan names only such settings of others as the last one.
    bool onlyKnownOthers(const host::SettingsPlan& plan) const {
        const std::vector<std::string>& now = plan.settingsOfOthers;
        return plan.conflicts.empty() && std::all_of(now.begin(), now.end(), [this](const std::string& name) {
                   return ofOthers_.count(name) != 0;
               });
    }

    Names namesToReset() {
        Names resets;
        for (std::size_t i = random_.oneIn(2) ? random_.below(4) : 0; i > 0 && !names_.empty(); --i) {
            resets.push_back(random_.inAnotherCase(names_[random_.below(names_.size())]));
        }
        return resets;
    }

    void describe(const Values& values, const Names& resets) {
        for (const auto& [name, value] : values) {
            history_ += "  " + name + " = " + value + "\n";
        }
        for (const std::string& name : resets) {
            history_ += "  reset " + name + "\n";
        }
    }

    /// Every value has come back as it was, or is named. Of a setting that was not changed here, another process may
    /// have made the shipped value the user's, or taken that back: it is the same.
    std::string compare(const Catalogue& before, const Catalogue& after, const host::SettingsPlan& plan) {
        std::set<std::string> named(plan.settingsOfOthers.begin(), plan.settingsOfOthers.end());
        for (const host::NotRestored& one : plan.notRestored) {
            named.insert(one.setting);
        }
        const auto valuesBefore = userValuesOf(before);
        const auto valuesAfter = userValuesOf(after);
        tally_.settings += static_cast<unsigned>(valuesBefore.size());
        for (std::size_t number = 0; number < valuesBefore.size(); ++number) {
            tally_.usersSettings += valuesBefore[number] ? 1U : 0U;
            const std::string& shipped = before.settings().record(number).defaultValue;
            if (valuesBefore[number].value_or(shipped) != valuesAfter[number].value_or(shipped) &&
                named.count(names_[number]) == 0) {
                return names_[number] + " was " + valuesBefore[number].value_or("(default)") + " and came back as " +
                       valuesAfter[number].value_or("(default)");
            }
        }
        return {};
    }

    /// A setting that is named could not come back, or another process had put something else into the file.
    std::string compareNamed(const std::string& defaults, const Catalogue& catalogue, const FileText& fileBefore,
                             const host::SettingsPlan& plan) {
        const auto ours = userValuesOf(catalogue);
        const auto theirs = userValuesOf(catalogueOfTexts(defaults, fileBefore.value_or("")));
        const std::set<std::string> allNames(names_.begin(), names_.end());
        std::multiset<std::string> different;
        std::multiset<std::string> unwritable;
        for (std::size_t number = 0; number < names_.size(); ++number) {
            const Setting& setting = catalogue.settings().record(number);
            if (ours[number].value_or(setting.defaultValue) != theirs[number].value_or(setting.defaultValue)) {
                different.insert(names_[number]);
            }
            if (ours[number] && !someEntrySets(catalogue, setting, allNames)) {
                unwritable.insert(names_[number]);
            }
        }
        for (const std::string& name : plan.settingsOfOthers) {
            if (different.count(name) == 0) {
                return name + " is said to be others'";
            }
        }
        std::multiset<std::string> notRestored;
        for (const host::NotRestored& one : plan.notRestored) {
            notRestored.insert(one.setting);
        }
        return notRestored == unwritable ? "" : "other settings are named as not restored than cannot be";
    }

    std::string someFile() { return isDense_ ? dense_.userText(names_) : random_.userText(); }

    RandomPreferences random_;
    DensePreferences dense_;
    bool isDense_;
    Tally& tally_;
    std::vector<std::string> names_;
    std::string history_;
    /// Whether the file was written by others since the process read or wrote it.
    bool othersWrote_ = false;
    /// The values that the last save left to others.
    std::set<std::string> ofOthers_;
};

Tally tryCases(unsigned first, unsigned states) {
    Tally tally;
    for (unsigned seed = first; tally.states < states; ++seed) {
        Case one(seed, tally);
        const std::string wrong = one.run();
        if (!wrong.empty()) {
            ADD_FAILURE() << "ZELUTIL_TWIN_SEED=" << seed << ": " << wrong << "\n" << one.history();
            break;
        }
    }
    std::printf("%u states, %u settings, %u of the user's, %u not restored, %u of others, %u conflicts, %u kept\n",
                tally.states, tally.settings, tally.usersSettings, tally.notRestored, tally.ofOthers, tally.conflicts,
                tally.kept);
    return tally;
}

class SettingsRoundTrip : public testing::TestWithParam<unsigned> {};

TEST_P(SettingsRoundTrip, BringsBackWhatTheSaveDoesNotName) {
    const ShareOfCases share(GetParam(), ZELUTIL_TWIN_SEED, ZELUTIL_TWIN_CASES);
    const unsigned states = share.count;
    const Tally tally = tryCases(share.first, states);
    EXPECT_GT(tally.usersSettings, states / 2);
    EXPECT_GT(tally.ofOthers, states / 20);
    EXPECT_GT(tally.conflicts, states / 100);
    EXPECT_GT(tally.kept, states / 20);
}

INSTANTIATE_TEST_SUITE_P(Quarter, SettingsRoundTrip, testing::Range(0U, ShareOfCases::kShares));

}  // namespace
}  // namespace zelutil::test
