// If a save of the old kind writes a file that brings everything back, a save for hosts writes the same, but names each
// setting once and in full.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <set>

#include "host/dense_preferences.h"
#include "host/settings_process.h"
#include "json/writer.h"

namespace zelutil::test {
namespace {

constexpr char kPlainBytesDefaults[] = R"({"version":2,"meta":[
    {"header":"View","attribute":"view","tclCommand":"v","unique":true,"defaultsettings":[
        {"name":"grid","value":"on"},{"name":"zoom","value":"1"}],"more":[1.50],
     "children":[{"header":"Colors","attribute":"colors","unique":false,"tclCommand":"","defaultsettings":[
        {"name":"pad","value":"red"},{"name":"pad","value":"blue"}]}, 7]},
    {"header":"Keys","attribute":"keys","submanagerId":100,"tclCommand":"","defaultsettings":[]},
    {"header":"Group","attribute":"group"}]})";

// Worked out by hand: the defaults without "tclCommand" and "defaultsettings", and with the saved values in full.
constexpr char kSavedText[] = R"({
    "version": 2,
    "meta": [
        {
            "header": "View",
            "attribute": "view",
            "unique": true,
            "more": [
                1.5
            ],
            "children": [
                {
                    "header": "Colors",
                    "attribute": "colors",
                    "unique": false,
                    "overriddensettings": [
                        {
                            "view::colors::pad": "green"
                        }
                    ]
                },
                7
            ],
            "overriddensettings": [
                {
                    "view::grid": "off"
                }
            ]
        },
        {
            "header": "Keys",
            "attribute": "keys",
            "submanagerId": 100,
            "overriddensettings": [
                {
                    "actions": []
                }
            ]
        },
        {
            "header": "Group",
            "attribute": "group",
            "overriddensettings": []
        }
    ]
})";

TEST(SettingsPlainBytes, AreThoseOfTheDefaultsWithTheSavedValues) {
    const Values values = {{"grid", "off"}, {"view::colors::PAD", "green"}, {"zoom", "1"}};
    SettingsProcess process(kPlainBytesDefaults, std::nullopt);
    auto plan = host::planSettings(process.catalogue(), {&values, nullptr}, std::nullopt);
    EXPECT_EQ(host::fileText(plan, R"([{"actions":[]}])"), kSavedText);
}

/// Whether each entry of the text sets the setting of its own section, and was written for a definition that made one.
bool isPlain(const std::string& text, const prefs::Catalogue& catalogue) {
    const json::Document document(text);
    bool plain = true;
    prefs::forEachSection(document.root(), [&](const prefs::VisitedSection& visited) {
        if (catalogue.subManagerOf(visited.attributePath) != prefs::SubManagerType::None) {
            return;
        }
        for (const json::View element : visited.element.member(prefs::kOverriddenSettings).elements()) {
            for (const auto& [name, value] : element.members()) {
                const prefs::Setting* const ofSection =
                    catalogue.find(visited.attributePath + "::" + std::string(name));
                plain = plain && ofSection != nullptr && catalogue.findEntry(name, visited.attributePath) == ofSection;
            }
        }
    });
    return plain;
}

/// The entries of each section, in order, under their full names and without repetitions.
std::vector<std::string> entriesInFull(const std::string& text, const prefs::Catalogue& catalogue) {
    const json::Document document(text);
    std::vector<std::string> lines;
    std::set<const prefs::Setting*> seen;
    prefs::forEachSection(document.root(), [&](const prefs::VisitedSection& visited) {
        lines.push_back(visited.attributePath);
        const json::View overridden = visited.element.member(prefs::kOverriddenSettings);
        if (catalogue.subManagerOf(visited.attributePath) != prefs::SubManagerType::None) {
            lines.push_back(json::compactText(overridden).value());
            return;
        }
        const std::string prefix = visited.attributePath + "::";
        for (const json::View element : overridden.elements()) {
            for (const auto& [key, value] : element.members()) {
                const std::string name(key);
                const prefs::Setting* const setting = catalogue.findEntry(name, visited.attributePath);
                const bool isFull = catalogue.find(prefix + name) != setting;
                if (seen.insert(setting).second) {
                    lines.push_back((isFull ? name : prefix + name) + "=" + std::string(value.text().value()));
                }
            }
        }
    });
    return lines;
}

std::map<std::uint64_t, std::string> byKey(const std::vector<prefs::Catalogue::NewValue>& newValues) {
    std::map<std::uint64_t, std::string> values;
    for (const auto& [key, value] : newValues) {
        values[key] = value;
    }
    return values;
}

/// Whether there are definitions that made no settings: those of a section that only groups others, or that says it
/// belongs to a sub-manager though the first of its path does not. The old door writes values for them too.
bool hasDefinitionsWithoutSettings(const prefs::Catalogue& catalogue) {
    const json::Document document(catalogue.defaultsText());
    bool found = false;
    prefs::forEachSection(document.root(), [&](const prefs::VisitedSection& visited) {
        found = found || (!prefs::hasOwnSettings(visited.element) &&
                          !visited.element.member(prefs::kDefaultSettings).elements().empty());
    });
    return found;
}

TEST(SettingsPlainBytes, HaveTheEntriesOfTheOldDoorOnRandomDefaults) {
    unsigned compared = 0;
    for (unsigned seed = 0; seed < 1500 && !HasFailure(); ++seed) {
        RandomPreferences random(seed);
        const std::string defaults = DensePreferences(random).defaultsText();
        SettingsProcess process(defaults, std::nullopt);
        const Values values = random.settings(fullNames(process.catalogue()));
        const auto old = prefs::planSave(process.catalogue(), prefs::SaveValues(process.catalogue(), {values, {}}));
        auto plan = host::planSettings(process.catalogue(), {&values, nullptr}, std::nullopt);
        // The old door passes over settings of a section whose path belongs to a sub-manager, and of two settings with
        // one full name it takes the first for either.
        if (!old || byKey(old->newValues) != byKey(plan.newValues) || !isPlain(*old->fileText, process.catalogue()) ||
            hasDefinitionsWithoutSettings(process.catalogue())) {
            continue;
        }
        ++compared;
        EXPECT_EQ(entriesInFull(host::fileText(plan, std::nullopt).value(), process.catalogue()),
                  entriesInFull(*old->fileText, process.catalogue()))
            << defaults;
    }
    std::printf("%u compared\n", compared);
    EXPECT_GT(compared, 300U);
}

}  // namespace
}  // namespace zelutil::test
