// Several processes of the user save in turn, in random order: the file has for every setting what was changed last,
// whoever did it, and nobody undoes what he did not touch.
//
// The build sets the first seed and the number of runs; the environment variables ZELUTIL_TWIN_SEED and
// ZELUTIL_TWIN_CASES go before. A failure prints its seed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>

#include "host/dense_preferences.h"
#include "host/settings_process.h"
#include "host/share_of_cases.h"

namespace zelutil::test {
namespace {

struct TurnTally {
    unsigned saves = 0;
    unsigned changes = 0;
    unsigned conflicts = 0;
    unsigned ofOthers = 0;
};

/// A process, and what a literal reading of the rules expects of it. Everything is by the numbers of the records.
struct Participant {
    Participant(const std::string& defaults, const FileText& file)
        : process(defaults, file), inForce(process.userValues()), lastShared(inForce) {}

    SettingsProcess process;
    std::vector<UserValue> inForce;
    /// The values that the file held when this process last read or wrote it.
    std::vector<UserValue> lastShared;
    std::set<std::size_t> touched;
};

class Turns {
public:
    Turns(unsigned seed, TurnTally& tally) : random_(seed), tally_(tally) {}

    /// Returns a description of what is wrong, or the empty string.
    std::string run() {
        DensePreferences dense(random_);
        defaults_ = dense.defaultsText();
        names_ = fullNames(catalogueOfTexts(defaults_, ""));
        file_ = random_.oneIn(4) ? FileText() : dense.userText(names_);
        history_ = "defaults:\n" + defaults_ + "\nfile:\n" + file_.value_or("(none)") + "\n";
        inFile_ = userValuesOf(catalogueOfTexts(defaults_, file_.value_or("")));
        for (std::size_t i = 0; i < kProcesses; ++i) {
            participants_.push_back(std::make_unique<Participant>(defaults_, file_));
        }
        std::string wrong;
        for (std::size_t steps = 3 + random_.below(8); steps > 0 && wrong.empty(); --steps) {
            wrong = step();
        }
        return wrong;
    }

    const std::string& history() const { return history_; }

private:
    static constexpr std::size_t kProcesses = 3;

    std::string step() {
        const std::size_t who = random_.below(kProcesses);
        history_ += "process " + std::to_string(who) + ":\n";
        if (random_.oneIn(10)) {
            participants_[who] = std::make_unique<Participant>(defaults_, file_);
            return {};
        }
        Participant& one = *participants_[who];
        return random_.oneIn(8) ? saveThroughOldDoor(one) : save(one);
    }

    std::string save(Participant& one) {
        const Values values = random_.settings(names_);
        Names resets;
        if (!names_.empty() && random_.oneIn(3)) {
            resets.push_back(names_[random_.below(names_.size())]);
        }
        const bool succeeds = !random_.oneIn(8);
        describe(values, resets, succeeds);
        const bool known = file_.has_value();
        apply(one, values, resets);
        const std::set<std::string> conflicts = known ? expectedConflicts(one) : std::set<std::string>();
        const auto plan = one.process.save(file_, values, resets, succeeds);
        if (!plan.hasSections) {
            return {};
        }
        if (userValuesOf(one.process.catalogue()) != one.inForce) {
            return "other values are in force than expected";
        }
        std::set<std::string> named;
        for (const host::Conflict& conflict : plan.conflicts) {
            named.insert(conflict.setting);
        }
        if (named != conflicts) {
            return "other conflicts are named than expected";
        }
        ++tally_.saves;
        tally_.conflicts += static_cast<unsigned>(plan.conflicts.size());
        tally_.ofOthers += static_cast<unsigned>(plan.settingsOfOthers.size());
        return succeeds ? share(one, known) : "";
    }

    void describe(const Values& values, const Names& resets, bool succeeds) {
        for (const auto& [name, value] : values) {
            history_ += "  " + name + " = " + value + "\n";
        }
        for (const std::string& name : resets) {
            history_ += "  reset " + name + "\n";
        }
        history_ += succeeds ? "" : "  cannot write\n";
    }

    void apply(Participant& one, const Values& values, const Names& resets) {
        const Catalogue& catalogue = one.process.catalogue();
        std::map<std::size_t, UserValue> wishes;
        for (const auto& [name, value] : values) {
            if (const prefs::Setting* const setting = catalogue.find(name)) {
                wishes[setting->number] = value;
            }
        }
        for (const std::string& name : resets) {
            if (const prefs::Setting* const setting = catalogue.find(name)) {
                wishes[setting->number] = std::nullopt;
            }
        }
        for (const auto& [number, wish] : wishes) {
            const std::string& shipped = catalogue.settings().record(number).defaultValue;
            const bool isReset = !wish && (one.inForce[number] || inFile_[number] || one.lastShared[number]);
            if (isReset || (wish && *wish != one.inForce[number].value_or(shipped))) {
                one.inForce[number] = wish;
                one.touched.insert(number);
                ++tally_.changes;
            }
        }
    }

    std::set<std::string> expectedConflicts(const Participant& one) const {
        std::set<std::string> names;
        for (const std::size_t number : one.touched) {
            const std::string& shipped = one.process.catalogue().settings().record(number).defaultValue;
            if (isWritable(one, number) && inFile_[number] != one.lastShared[number] &&
                inFile_[number].value_or(shipped) != one.inForce[number].value_or(shipped)) {
                names.insert(names_[number]);
            }
        }
        return names;
    }

    /// Whether a file can have a value of the setting: its full name or another that is not empty finds it, and there
    /// is a section whose entries are read.
    static bool isWritable(const Participant& one, std::size_t number) {
        const Catalogue& catalogue = one.process.catalogue();
        const prefs::Setting& setting = catalogue.settings().record(number);
        const bool isFound = catalogue.settings().find(setting.key) == &setting || catalogue.find("") != &setting;
        const auto& sections = catalogue.sections();
        return isFound && std::any_of(sections.begin(), sections.end(),
                                      [](const auto& section) { return section.second->submanagerId == 101; });
    }

    /// The file was written: only what this process touched may be different in it, unless there was none.
    std::string share(Participant& one, bool known) {
        for (std::size_t number = 0; number < inFile_.size(); ++number) {
            if (!known || one.touched.count(number) != 0) {
                inFile_[number] = isWritable(one, number) ? one.inForce[number] : std::nullopt;
            }
        }
        one.touched.clear();
        one.lastShared = inFile_;
        const auto read = userValuesOf(catalogueOfTexts(defaults_, file_.value()));
        for (std::size_t number = 0; number < inFile_.size(); ++number) {
            if (read[number] != inFile_[number]) {
                return names_[number] + " is " + read[number].value_or("(default)") + " in the file and not " +
                       inFile_[number].value_or("(default)");
            }
        }
        return {};
    }

    std::string saveThroughOldDoor(Participant& one) {
        const Values values = random_.settings(names_);
        describe(values, {}, true);
        if (one.process.saveThroughOldDoor(file_, values)) {
            inFile_ = userValuesOf(catalogueOfTexts(defaults_, file_.value()));
            one.lastShared = inFile_;
            one.inForce = one.process.userValues();
            one.touched.clear();
            for (std::size_t number = 0; number < inFile_.size(); ++number) {
                if (inFile_[number] != one.inForce[number]) {
                    one.touched.insert(number);
                }
            }
        }
        return {};
    }

    RandomPreferences random_;
    TurnTally& tally_;
    std::string defaults_;
    std::vector<std::string> names_;
    FileText file_;
    /// The values that the file has to hold.
    std::vector<UserValue> inFile_;
    std::vector<std::unique_ptr<Participant>> participants_;
    std::string history_;
};

class SettingsOfSeveralProcesses : public testing::TestWithParam<unsigned> {};

TEST_P(SettingsOfSeveralProcesses, AreInTheFileAsTheyWereChangedLast) {
    const ShareOfCases share(GetParam(), ZELUTIL_TWIN_SEED, ZELUTIL_TWIN_CASES / 10);
    TurnTally tally;
    for (unsigned seed = share.first; seed < share.first + share.count && !HasFailure(); ++seed) {
        Turns one(seed, tally);
        const std::string wrong = one.run();
        if (!wrong.empty()) {
            ADD_FAILURE() << "ZELUTIL_TWIN_SEED=" << seed << ": " << wrong << "\n" << one.history();
        }
    }
    std::printf("%u runs, %u saves, %u changes, %u conflicts, %u settings left to others\n", share.count, tally.saves,
                tally.changes, tally.conflicts, tally.ofOthers);
    EXPECT_GT(tally.saves, share.count * 2);
    EXPECT_GT(tally.conflicts, share.count / 10);
    EXPECT_GT(tally.ofOthers, share.count / 2);
}

INSTANTIATE_TEST_SUITE_P(Quarter, SettingsOfSeveralProcesses, testing::Range(0U, ShareOfCases::kShares));

}  // namespace
}  // namespace zelutil::test
