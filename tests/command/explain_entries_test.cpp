// Every entry of a user's text, with the settings that it concerns and the reason for which it has no effect.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "command/explain/setting_account.h"

namespace {

using zelutil::command::nameOf;
using zelutil::command::PairPlace;
using zelutil::command::SettingAccount;
using zelutil::command::SettingAccounts;
using zelutil::command::UserEntry;

/// The bare name "width" means a::width, for it is read first; b::c::width is found in full only, and so is the second
/// section's "only", which lends no bare names. The definition of a::width is repeated.
constexpr char kDefaults[] = R"({"version":"7","meta":[
{"header":"A","attribute":"a","tclCommand":"t","note":"x","defaultsettings":[
  {"name":"width","value":"1"},{"name":"version","value":"2"},{"value":"3"},{"name":"Width","value":"4"}],"children":[
    {"header":"N","attribute":"n","tclCommand":"t","unique":false,"defaultsettings":[{"name":"only","value":"5"}]}]},
{"header":"B","attribute":"b","children":[
    {"header":"C","attribute":"c","tclCommand":"t","defaultsettings":[
      {"name":"width","value":"6"},{"name":"b::c::height","value":"7"}]}]},
{"header":"K","attribute":"keys","tclCommand":"t","submanagerId":100,"defaultsettings":[]}
]})";

/// Returns the line and the column of the sign with that offset, counted by hand for texts of ASCII.
std::pair<std::size_t, std::size_t> counted(const std::string& text, std::size_t offset) {
    std::size_t line = 1;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < offset; ++at) {
        if (text[at] == '\n') {
            ++line;
            begin = at + 1;
        }
    }
    return {line, offset - begin + 1};
}

/// Expects that both places lead to these texts.
void expectThere(const std::string& text, const PairPlace& place, const std::string& name, const std::string& value) {
    for (const auto& [position, expected] : {std::pair(place.name, name), std::pair(place.value, value)}) {
        EXPECT_EQ(text.substr(position.offset, expected.size()), expected);
        EXPECT_EQ(std::pair(position.line, position.column), counted(text, position.offset));
    }
}

/// Returns "effect section/name=value other" of each entry.
std::vector<std::string> told(const std::vector<UserEntry>& entries) {
    std::vector<std::string> texts;
    for (const UserEntry& entry : entries) {
        texts.push_back(std::string(nameOf(entry.effect)) + ' ' + entry.section + '/' + entry.name + '=' +
                        entry.value.value_or("?") + (entry.other.empty() ? "" : " " + entry.other));
    }
    return texts;
}

struct EntryRow {
    const char* user;
    const char* setting;
    std::vector<std::string> entries;
};

#define B_C_SECTION R"({"header":"B","attribute":"b","children":[{"header":"C","attribute":"c",)"
#define A_SECTION R"({"header":"A","attribute":"a",)"

const EntryRow kEntryRows[] = {
    // Entries that are read.
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[{"width":"9"}]}]})", "a::width", {"in-force a/width=9"}},
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[{"A::WIDTH":"9"}]}]})", "width", {"in-force a/A::WIDTH=9"}},
    // In a section that groups others, a part of the full name of a setting further below.
    {R"({"meta":[{"header":"B","attribute":"b","overriddensettings":[{"Height":"9","eight":"8","c::height":"7"}]}]})",
     "b::c::b::c::height",
     {"grouping-section b/Height=9", "grouping-section b/c::height=7"}},
    {R"({"meta":[{"header":"B","attribute":"b","overriddensettings":[{"c::b::height":"9","height":5}]}]})",
     "b::c::b::c::height",
     {}},
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[{"width":"8","Width":"9"},{"width":"7"}]}]})",
     "a::width",
     {"overruled a/width=8", "overruled a/Width=9", "in-force a/width=7"}},
    // A section is read before its children, also where these stand in front of its entries.
    {R"({"meta":[)" A_SECTION R"("children":[{"header":"N","attribute":"n","overriddensettings":[{"a::width":"8"}]}],)"
     R"("overriddensettings":[{"width":"9"}]}]})",
     "a::width",
     {"in-force a::n/a::width=8", "overruled a/width=9"}},
    {R"({"meta":[)" A_SECTION R"("children":[{"header":"N","attribute":"n","overriddensettings":[{"only":"8"}]}]}]})",
     "a::n::only",
     {"in-force a::n/only=8"}},
    // A name that is tried bare first.
    {R"({"meta":[{"header":"B","attribute":"b","children":[{"header":"C","attribute":"c","overriddensettings":[)"
     R"({"width":"9"}]}]}]})",
     "a::width",
     {"in-force b::c/width=9 b::c::width"}},
    {R"({"meta":[{"header":"B","attribute":"b","children":[{"header":"C","attribute":"c","overriddensettings":[)"
     R"({"width":"9"}]}]}]})",
     "b::c::width",
     {"sets-another b::c/width=9 a::width"}},
    {R"({"meta":[{"header":"B","attribute":"b","children":[{"header":"C","attribute":"c","overriddensettings":[)"
     R"({"b::c::width":"9"}]}]}]})",
     "b::c::width",
     {"in-force b::c/b::c::width=9"}},
    // Such an entry is the section's own to look at, also where it has no effect at all.
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":[{"width":9}]}]}]})",
     "b::c::width",
     {"no-text b::c/width=? a::width"}},
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":[{"width":9}]}]}]})",
     "a::width",
     {"no-text b::c/width=? b::c::width"}},
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":{"width":"9"}}]}]})",
     "b::c::width",
     {"no-list b::c/width=9 a::width"}},
    {R"({"meta":[)" B_C_SECTION R"("overridensettings":[{"width":"9"}]}]}]})",
     "b::c::width",
     {"not-read b::c/width=9 a::width"}},
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":[],"overriddensettings":[{"width":"9"}]}]}]})",
     "b::c::width",
     {"not-read b::c/width=9 a::width"}},
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":[{"width":"8"},{"a::width":"9"}]}]}]})",
     "b::c::width",
     {"sets-another b::c/width=8 a::width"}},
    // A full name means its setting in every section, whatever the name of a setting there is.
    {R"({"meta":[)" B_C_SECTION R"("overriddensettings":[{"B::C::height":"9"}]}]}]})",
     "b::c::b::c::height",
     {"in-force b::c/B::C::height=9"}},
    // Values that are no texts, and entries that stand in no array.
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[{"width":9},{"width":["8"]}]}]})",
     "a::width",
     {"no-text a/width=?", "no-text a/width=?"}},
    {R"({"meta":[)" A_SECTION R"("overriddensettings":{"width":"9"}}]})", "a::width", {"no-list a/width=9"}},
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[["x",{"width":"9"}]]}]})", "a::width", {"not-read a/width=9"}},
    // Sections that are none, and one that has no settings.
    {R"({"meta":[{"header":"X","attribute":"x","overriddensettings":[{"width":"9"}]}]})",
     "a::width",
     {"unknown-section x/width=9"}},
    {R"({"meta":[{"header":"B","attribute":"b","overriddensettings":[{"b::c::width":"9"}]}]})",
     "b::c::width",
     {"grouping-section b/b::c::width=9"}},
    {R"({"meta":[{"header":"K","attribute":"keys","overriddensettings":[{"width":"9"},{"actions":[{"width":"8"}]}]}]})",
     "a::width",
     {"of-sub-manager keys/width=9"}},
    {R"({"meta":[{"attribute":"a","overriddensettings":[{"width":"9"}]}]})", "a::width", {"not-read /width=9"}},
    // Places where nothing is read.
    {R"({"meta":[)" A_SECTION R"("overridensettings":[{"width":"9"}],"width":"8"}],"width":"7"})",
     "a::width",
     {"not-read a/width=9", "not-read a/width=8", "not-read /width=7"}},
    {R"({"meta":[],"meta":[)" A_SECTION R"("overriddensettings":[{"width":"9"}]}]})",
     "a::width",
     {"not-read a/width=9"}},
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[],"overriddensettings":[{"width":"9"}]}]})",
     "a::width",
     {"not-read a/width=9"}},
    {R"([)" A_SECTION R"("overriddensettings":[{"width":"9"}]}])", "a::width", {"not-read a/width=9"}},
    // A save copies members of the defaults, which are no entries.
    {R"({"version":"7","meta":[)" A_SECTION R"("note":{"width":"1"},"unique":"width","overriddensettings":[]}]})",
     "a::width",
     {}},
    {R"({"version":"7","meta":[]})", "a::version", {}},
    // Another setting's entries.
    {R"({"meta":[)" A_SECTION R"("overriddensettings":[{"width":"9"}]}]})", "b::c::width", {}},
    {"no JSON", "a::width", {}},
};

TEST(ExplainEntries, AreToldWithTheirEffects) {
    for (const EntryRow& row : kEntryRows) {
        SCOPED_TRACE(row.user);
        const SettingAccounts accounts(kDefaults, row.user);
        const auto number = accounts.find(row.setting);
        ASSERT_TRUE(number);
        const SettingAccount account = accounts.account(*number);
        EXPECT_EQ(told(account.entries), row.entries);
        for (const UserEntry& entry : account.entries) {
            expectThere(row.user, entry.place, '"' + entry.name + '"', entry.value ? '"' + *entry.value + '"' : "");
            EXPECT_EQ(zelutil::command::reasonOf(entry).empty(), entry.effect == UserEntry::Effect::InForce);
        }
        const UserEntry* const inForce = account.entryInForce();
        EXPECT_EQ(inForce != nullptr, account.info.setByUser);
        EXPECT_EQ(inForce != nullptr ? *inForce->value : account.info.defaultValue, account.info.value);
    }
}

/// Returns the reasons for which the entries of a text have no effect on the setting.
std::vector<std::string> reasons(const char* user, const char* setting) {
    const SettingAccounts accounts(kDefaults, user);
    std::vector<std::string> texts;
    for (const UserEntry& entry : accounts.account(accounts.find(setting).value()).entries) {
        texts.push_back(zelutil::command::reasonOf(entry));
    }
    return texts;
}

TEST(ExplainEntries, HaveEveryReasonForWhichTheyHaveNoEffect) {
    EXPECT_EQ(reasons(R"({"meta":[)" B_C_SECTION R"("overriddensettings":{"width":"9"}}]}]})", "b::c::width"),
              std::vector<std::string>{"The entries of the section \"b::c\" do not stand in an array. "
                                       "The name \"width\" means a::width first."});
    EXPECT_EQ(reasons(R"({"meta":[)" B_C_SECTION R"("overriddensettings":{"width":"9"}}]}]})", "a::width"),
              std::vector<std::string>{"The entries of the section \"b::c\" do not stand in an array."});
    EXPECT_EQ(reasons(R"({"meta":[)" B_C_SECTION R"("overriddensettings":[{"width":"9"}]}]}]})", "b::c::width"),
              std::vector<std::string>{"The name \"width\" means a::width first."});
    EXPECT_EQ(reasons(R"({"meta":[{"header":"B","attribute":"b","overriddensettings":[{"width":"9"}]}]})", "a::width"),
              std::vector<std::string>{"The section \"b\" has no settings in the defaults; it groups other sections."});
}

TEST(ExplainEntries, WithoutASettingAreToldApart) {
    const SettingAccounts accounts(kDefaults, R"({"meta":[)" A_SECTION R"("overriddensettings":[{"widht":"9","b":1}]},)"
                                              R"({"header":"X","attribute":"x","overriddensettings":[{"y":"8"}]}]})");
    EXPECT_EQ(told(accounts.entriesWithoutSetting()),
              (std::vector<std::string>{"unknown-name a/widht=9", "no-text a/b=?", "unknown-section x/y=8"}));
}

std::vector<std::string> namesOf(const std::vector<SettingAccount::Namesake>& namesakes) {
    std::vector<std::string> names;
    for (const SettingAccount::Namesake& one : namesakes) {
        names.push_back(one.fullName);
    }
    return names;
}

TEST(ExplainNames, AreResolvedAndLent) {
    const SettingAccounts accounts(kDefaults, "");
    const auto width = accounts.find("WIDTH");
    ASSERT_TRUE(width);
    EXPECT_FALSE(accounts.isFullName("width", *width));
    EXPECT_TRUE(accounts.isFullName("a::Width", *width));
    const SettingAccount account = accounts.account(*width);
    EXPECT_EQ(account.info.fullName, "a::width");
    EXPECT_EQ(account.info.bareNames, std::vector<std::string>{"width"});
    EXPECT_EQ(namesOf(accounts.lenders(*width)), (std::vector<std::string>{"a::width", "a::Width", "b::c::width"}));
    EXPECT_EQ(namesOf(account.repetitions), std::vector<std::string>{"a::Width"});
    expectThere(kDefaults, account.definition, "\"width\"", "\"1\"");
    expectThere(kDefaults, account.repetitions.front().place, "\"Width\"", "\"4\"");

    const auto only = accounts.find("a::n::only");
    EXPECT_TRUE(accounts.account(only.value()).info.bareNames.empty());
    EXPECT_TRUE(accounts.lenders(only.value()).empty());
    EXPECT_FALSE(accounts.find("only"));
    // Its own name has the form of a full one.
    EXPECT_FALSE(accounts.isFullName("b::c::height", accounts.find("b::c::height").value()));
    EXPECT_EQ(accounts.names(), (std::vector<std::string>{"a::width", "width", "a::version", "version", "a::n::only",
                                                          "b::c::width", "b::c::b::c::height", "b::c::height"}));
}

/// Returns defaults of so many sections with a setting each.
std::string manyDefaults(std::size_t count, bool haveOneName) {
    std::string text = R"({"meta":[)";
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += (i == 0 ? "" : ",") + (R"({"header":"","attribute":"s)" + number) +
                R"(","tclCommand":"t","defaultsettings":[{"name":"n)" + (haveOneName ? "" : number) +
                R"(","value":""}]})";
    }
    return text + "]}";
}

/// Returns how many seconds the accounts of all settings take.
double secondsOfAccounts(const std::string& defaults, std::size_t count) {
    const SettingAccounts accounts(defaults, "");
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(accounts.numbers().size(), count);
    for (const std::uint32_t number : accounts.numbers()) {
        EXPECT_TRUE(accounts.account(number).repetitions.empty());
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST(ExplainNames, OfManySettingsMayBeOne) {
    constexpr std::size_t kCount = 400;
    const double ofOneName = secondsOfAccounts(manyDefaults(kCount, true), kCount);
    EXPECT_LT(ofOneName, 5 * secondsOfAccounts(manyDefaults(kCount, false), kCount));
}

TEST(ExplainNames, AreNoneWithoutDefaults) {
    const SettingAccounts accounts("", R"({"meta":[)" A_SECTION R"("overriddensettings":[{"width":"9"}]}]})");
    EXPECT_TRUE(accounts.numbers().empty());
    EXPECT_TRUE(accounts.names().empty());
    EXPECT_FALSE(accounts.find("width"));
    EXPECT_FALSE(accounts.defaultsFile().isRead);
    EXPECT_TRUE(accounts.userFile().isRead);
}

}  // namespace
