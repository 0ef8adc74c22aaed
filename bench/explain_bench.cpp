// The account of one setting among 10000, with the places of all that concerns it, against the library's own start:
// both find and read both preference files and build the catalogue from them. The aim is 1.5 times the start.
#include <string>

#include "command/explain/setting_account.h"
#include "prefs/preferences.h"
#include "settings_corpus.h"
#include "support/comparison.h"

void zelutil::bench::addComparisons() {
    constexpr std::size_t kCount = 10'000;
    static const SettingsCorpus corpus(kCount);
    static const PreferenceDirectory files(corpus);
    // The user changed every tenth setting, the first one among them.
    static const std::string& name = corpus.settings().front().fullName;

    Comparison("explain one of 10000 settings", 1)
        .zelutil([] {
            const command::SettingAccounts accounts;
            const command::SettingAccount account = accounts.account(*accounts.find(name));
            return std::uint64_t{account.entryInForce()->value->size()};
        })
        .peer("the library's own start", [] {
            prefs::UserSettingsFile userFile;
            return std::uint64_t{
                prefs::readPreferenceFiles(prefs::defaultsFilePath(), userFile).find(name)->valueInForce().size()};
        });
}
