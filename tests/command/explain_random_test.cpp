// Whatever two preference files hold, what is explained of them is what the library takes from them, each place leads
// to the text that it is the place of, and a cut takes away the entries and nothing else.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "command/explain/entry_cut.h"
#include "command/explain/setting_account.h"
#include "prefs/catalogue_of.h"
#include "prefs/random_preferences.h"
#include "support/letter_case.h"
#include "support/sanitized.h"
#include "support/twin_json.h"

namespace {

using zelutil::command::PairPlace;
using zelutil::command::SettingAccount;
using zelutil::command::SettingAccounts;
using zelutil::command::UserEntry;
using zelutil::json::Position;
using zelutil::prefs::Catalogue;
using zelutil::test::RandomPreferences;

constexpr unsigned kCases = zelutil::test::casesInTime(800U, 300U);
/// Few of the random files have entries that a cut can take.
constexpr unsigned kCutCases = 3000;

/// Returns the string that begins at an offset, as another parser reads it; nothing where none does.
std::optional<std::string> stringAt(const std::string& text, std::size_t offset) {
    std::size_t end = offset + 1;
    while (end < text.size() && text[end] != '"') {
        end += text[end] == '\\' ? 2 : 1;
    }
    const auto value = zelutil::test::readTwinJson("[" + text.substr(offset, end + 1 - offset) + "]");
    return value && value->values.size() == 1 ? std::optional(value->values.front().text) : std::nullopt;
}

/// Counts from the beginning: a line after each LF, a column for each byte that begins a character.
bool isCountedRight(const std::string& text, const Position& position) {
    const std::size_t begin = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    std::size_t line = 1;
    std::size_t column = 1;
    for (std::size_t at = begin; at < position.offset; ++at) {
        const bool continues = (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
        column = text[at] == '\n' ? 1 : column + (continues ? 0 : 1);
        line += text[at] == '\n' ? 1 : 0;
    }
    return position.line == line && position.column == column;
}

void expectPlace(const std::string& text, const PairPlace& place, const std::string& name,
                 const std::optional<std::string>& value) {
    EXPECT_EQ(stringAt(text, place.name.offset), name);
    EXPECT_TRUE(isCountedRight(text, place.name));
    EXPECT_TRUE(isCountedRight(text, place.value));
    if (value) {
        EXPECT_EQ(stringAt(text, place.value.offset), *value);
    }
}

class RandomFiles {
public:
    explicit RandomFiles(unsigned seed) : random_(seed), defaults_(random_.defaultsText()), user_(random_.userText()) {}

    void expectAccounts() {
        const Catalogue catalogue = zelutil::test::catalogueOfTexts(defaults_, user_);
        const SettingAccounts accounts(defaults_, user_);
        for (std::size_t place = 0; place < catalogue.settings().size(); ++place) {
            const auto& setting = catalogue.settings().at(place);
            const auto& numbers = accounts.numbers();
            EXPECT_EQ(std::count(numbers.begin(), numbers.end(), setting.number), 1);
        }
        for (const std::uint32_t number : accounts.numbers()) {
            expectAccount(catalogue, accounts, number);
        }
        for (const UserEntry& entry : accounts.entriesWithoutSetting()) {
            expectPlace(user_, entry.place, entry.name, entry.value);
            EXPECT_EQ(catalogue.findEntry(entry.name, entry.section), nullptr);
        }
    }

    /// Returns how many settings lost their entries.
    std::size_t expectCut() {
        const SettingAccounts before(defaults_, user_);
        std::vector<std::uint32_t> chosen;
        for (const std::uint32_t number : before.numbers()) {
            if (before.info(number).setByUser && random_.oneIn(2)) {
                chosen.push_back(number);
            }
        }
        const auto cut = before.entriesThatSet(chosen);
        const std::string text = zelutil::command::withoutEntries(before.userDocument(), cut);
        const SettingAccounts after(defaults_, text);
        EXPECT_EQ(after.userFile().isRead, before.userFile().isRead);
        for (const std::uint32_t number : before.numbers()) {
            const bool isChosen = std::count(chosen.begin(), chosen.end(), number) != 0;
            EXPECT_EQ(after.info(number).setByUser, before.info(number).setByUser && !isChosen);
            EXPECT_EQ(after.info(number).value,
                      isChosen ? before.info(number).defaultValue : before.info(number).value);
        }
        EXPECT_TRUE(after.entriesThatSet(chosen).empty());
        EXPECT_EQ(zelutil::test::catalogueOfTexts(defaults_, text).userSubManagerTexts(),
                  zelutil::test::catalogueOfTexts(defaults_, user_).userSubManagerTexts());
        EXPECT_EQ(after.entriesWithoutSetting().size(), before.entriesWithoutSetting().size());
        EXPECT_TRUE(isRest(text, before, cut)) << text;
        return chosen.size();
    }

    const std::string& user() const { return user_; }
    const std::string& defaults() const { return defaults_; }

private:
    void expectAccount(const Catalogue& catalogue, const SettingAccounts& accounts, std::uint32_t number) {
        const SettingAccount account = accounts.account(number);
        const auto& setting = catalogue.settings().record(number);
        EXPECT_EQ(account.info.defaultValue, setting.defaultValue);
        EXPECT_EQ(account.info.value, setting.valueInForce());
        EXPECT_EQ(account.info.setByUser, setting.hasUserValue);
        EXPECT_EQ(catalogue.find(account.info.fullName) == &setting, account.info.foundByFullName);
        for (const std::string& bare : account.info.bareNames) {
            EXPECT_EQ(catalogue.find(bare), &setting);
            EXPECT_EQ(accounts.find(random_.inAnotherCase(bare)), number);
        }
        const std::string name = account.info.fullName.substr(account.info.section.size() + 2);
        expectPlace(defaults_, account.definition, name, setting.defaultValue);
        for (const auto& lender : accounts.lenders(number)) {
            EXPECT_EQ(expectNameAt(lender.place), zelutil::test::lowered(name));
        }
        for (const auto& repetition : account.repetitions) {
            // Another section may have the beginning of the full name.
            const std::string end = "::" + expectNameAt(repetition.place);
            const std::string whole = zelutil::test::lowered(account.info.fullName);
            EXPECT_EQ(whole.substr(whole.size() - std::min(whole.size(), end.size())), end);
        }
        const UserEntry* const inForce = account.entryInForce();
        ASSERT_EQ(inForce != nullptr, setting.hasUserValue);
        if (inForce != nullptr) {
            EXPECT_EQ(inForce->value, setting.userValue);
        }
        for (const UserEntry& entry : account.entries) {
            expectPlace(user_, entry.place, entry.name, entry.value);
        }
    }

    /// Expects a name there, and returns it in lower case.
    std::string expectNameAt(const PairPlace& place) const {
        const std::string name = stringAt(defaults_, place.name.offset).value();
        expectPlace(defaults_, place, name, std::nullopt);
        return zelutil::test::lowered(name);
    }

    /// Returns whether the text is the user's without the entries and some of the commas, braces and blanks.
    bool isRest(const std::string& text, const SettingAccounts& before, const std::vector<zelutil::json::View>& cut) {
        std::size_t next = 0;
        for (std::size_t at = 0; at < user_.size(); ++at) {
            const auto entry = std::find_if(cut.begin(), cut.end(), [&](zelutil::json::View value) {
                return before.userDocument().keyPositionOf(value)->offset == at;
            });
            if (entry != cut.end()) {
                at = before.userDocument().endOf(*entry)->offset - 1;
            } else if (next < text.size() && text[next] == user_[at]) {
                ++next;
            } else if (std::string(" \r\n\t,{}").find(user_[at]) == std::string::npos) {
                return false;
            }
        }
        return next == text.size();
    }

    RandomPreferences random_;
    std::string defaults_;
    std::string user_;
};

TEST(ExplainRandomFiles, AccountsAreWhatTheLibraryTakes) {
    for (unsigned seed = 0; seed < kCases && !testing::Test::HasFailure(); ++seed) {
        RandomFiles files(seed);
        SCOPED_TRACE(files.defaults() + "\n" + files.user());
        files.expectAccounts();
    }
}

TEST(ExplainRandomFiles, ACutTakesTheEntriesAndLeavesTheRest) {
    std::size_t settings = 0;
    for (unsigned seed = 0; seed < kCutCases && !testing::Test::HasFailure(); ++seed) {
        RandomFiles files(seed);
        SCOPED_TRACE(files.defaults() + "\n" + files.user());
        settings += files.expectCut();
    }
    std::printf("%u settings lost their entries\n", static_cast<unsigned>(settings));
    EXPECT_GT(settings, 40U);
}

}  // namespace
