// The doctor's look at an installation with 10000 settings against the library's own start: both find and read both
// preference files. The aim is 1.5 times the start.
#include <string>

#include "command/doctor/diagnosis.h"
#include "prefs/preferences.h"
#include "settings_corpus.h"
#include "support/comparison.h"

namespace {

using zelutil::command::Diagnosis;
using zelutil::command::FileState;

bool isFine(const Diagnosis& diagnosis, const char* step) {
    return diagnosis.step(step).file->kind == FileState::Kind::Fine;
}

}  // namespace

void zelutil::bench::addComparisons() {
    constexpr std::size_t kCount = 10'000;
    static const SettingsCorpus corpus(kCount);
    static const PreferenceDirectory files(corpus);
    // The user changed every tenth setting, the first one among them.
    static const CorpusSetting& changed = corpus.settings().front();

    Comparison("doctor on 10000 settings", 1)
        .zelutil([] {
            const Diagnosis diagnosis = command::diagnose();
            const bool areFine =
                isFine(diagnosis, command::kDefaultsStep) && isFine(diagnosis, command::kUserFileReadStep);
            return std::uint64_t{areFine ? 1U : 0U};
        })
        .peer("the library's own start", [] {
            prefs::UserSettingsFile userFile;
            const auto catalogue = prefs::readPreferenceFiles(prefs::defaultsFilePath(), userFile);
            return std::uint64_t{catalogue.find(changed.fullName)->valueInForce() == changed.userValue ? 1U : 0U};
        });
}
