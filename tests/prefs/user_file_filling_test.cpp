// The form of the defaults with its gaps filled is the text that is written from the defaults.
#include "prefs/user_file_filling.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "json/document.h"
#include "prefs/random_preferences.h"
#include "prefs/section_walk.h"

namespace zelutil::test {
namespace {

using prefs::SavedSection;
using prefs::UserFileFilling;
using prefs::UserFileForm;

std::optional<std::string> filled(json::View defaults, const std::vector<SavedSection>& sections) {
    const UserFileForm form = prefs::userFileForm(defaults);
    UserFileFilling filling(form);
    for (const SavedSection& section : sections) {
        if (section.subManagerValue) {
            filling.put(section.subManagerValue);
            continue;
        }
        filling.beginList();
        for (const SavedSection::Value& value : section.values) {
            filling.add(value.name, value.value);
        }
        filling.endList();
    }
    return filling.take();
}

std::size_t sectionCount(json::View defaults) {
    std::size_t count = 0;
    prefs::forEachSection(defaults, [&](const prefs::VisitedSection&) { ++count; });
    return count;
}

// The section around stands before its child in a walk, and its list after the child's in the text.
TEST(UserFileFilling, PutsEachListWhereItsSectionHasIt) {
    const json::Document defaults(R"({"meta":[{"header":"H","attribute":"a","tclCommand":"t","children":[)"
                                  R"({"header":"I","attribute":"b","overriddensettings":"old","x":1}]},7,)"
                                  R"({"header":"J","attribute":"c","defaultsettings":[]}],"z":[]})");
    const json::Document keys(R"([{"k":2}])");
    std::vector<SavedSection> sections(3);
    sections[0].values = {{"p", "1"}, {"q\"", "2\n"}};
    sections[2].subManagerValue = keys.root();
    const std::string expected = R"({
    "meta": [
        {
            "header": "H",
            "attribute": "a",
            "children": [
                {
                    "header": "I",
                    "attribute": "b",
                    "overriddensettings": [],
                    "x": 1
                }
            ],
            "overriddensettings": [
                {
                    "p": "1"
                },
                {
                    "q\"": "2\n"
                }
            ]
        },
        7,
        {
            "header": "J",
            "attribute": "c",
            "overriddensettings": [
                {
                    "k": 2
                }
            ]
        }
    ],
    "z": []
})";
    EXPECT_EQ(filled(defaults.root(), sections), expected);
    EXPECT_EQ(prefs::userFileText(defaults.root(), sections), expected);
}

/// Defaults with one section as deep as can be read back, without a list or with an empty one.
std::string deepSection(unsigned levels, const std::string& more) {
    std::string text = R"({"meta":)";
    std::string end = "}";
    for (unsigned level = 0; level < levels; ++level) {
        text += R"([{"header":"","attribute":"a","children":)";
        end = "}]" + end;
    }
    return text + R"([{"header":"","attribute":"b")" + more + "}]" + end;
}

TEST(UserFileFilling, HasNoTextWhereWhatIsWrittenCouldNotBeReadBack) {
    // The object around, then an array and an object for each level and for the section: 2 * levels + 3.
    constexpr unsigned kLevels = (json::kMaximumDepth - 4) / 2;
    for (const unsigned levels : {kLevels - 1, kLevels}) {
        const json::Document defaults(deepSection(levels, ""));
        ASSERT_TRUE(defaults.valid());
        std::vector<SavedSection> sections(levels + 1);
        EXPECT_TRUE(filled(defaults.root(), sections));
        EXPECT_EQ(filled(defaults.root(), sections), prefs::userFileText(defaults.root(), sections));
        sections.back().values = {{"x", "1"}};
        EXPECT_EQ(filled(defaults.root(), sections).has_value(), levels != kLevels);
        EXPECT_EQ(filled(defaults.root(), sections), prefs::userFileText(defaults.root(), sections));
    }
    const json::Document tooDeep(deepSection(kLevels, R"(,"x":[])"));
    ASSERT_TRUE(tooDeep.valid());
    const json::Document deepest(std::string(json::kMaximumDepth, '[') + std::string(json::kMaximumDepth, ']'));
    std::vector<SavedSection> sections(kLevels + 1);
    sections.front().subManagerValue = deepest.root();
    EXPECT_FALSE(filled(tooDeep.root(), sections));
    EXPECT_FALSE(prefs::userFileText(tooDeep.root(), sections));
}

TEST(UserFileFilling, IsTheTextThatIsWrittenFromRandomDefaults) {
    constexpr unsigned kCases = 150;
    const json::Document value(R"({"a":[1.50,"\u0001",{}],"b":[]})");
    std::size_t entries = 0;
    for (unsigned seed = 0; seed < kCases; ++seed) {
        SCOPED_TRACE(seed);
        RandomPreferences random(seed);
        const json::Document defaults(random.defaultsText());
        std::vector<SavedSection> sections(sectionCount(defaults.root()));
        const auto values = random.settings({"one", "two\\", "\x01", "three"});
        for (SavedSection& section : sections) {
            if (random.oneIn(4)) {
                section.subManagerValue = value.root();
                continue;
            }
            for (const auto& [name, text] : values) {
                if (random.oneIn(2)) {
                    section.values.push_back({name, text});
                    ++entries;
                }
            }
        }
        EXPECT_EQ(filled(defaults.root(), sections), prefs::userFileText(defaults.root(), sections));
    }
    EXPECT_GT(entries, kCases);
}

}  // namespace
}  // namespace zelutil::test
