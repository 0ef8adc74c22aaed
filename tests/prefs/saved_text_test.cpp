// A save makes its text of a catalogue, without files: these are invariants on random preferences.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <string>

#include "prefs/catalogue_of.h"
#include "prefs/save_plan.h"

namespace zelutil::test {
namespace {

/// Sections, names and values from small alphabets, so that they collide.
class RandomSections {
public:
    RandomSections(unsigned seed, bool unique) : random_(seed), unique_(unique) {}

    std::string defaults() { return withMeta(sections(3, "defaultsettings")); }
    std::string user() { return withMeta(sections(3, "overriddensettings")); }

    std::map<std::string, std::string> edits() {
        std::map<std::string, std::string> settings;
        for (unsigned i = below(6); i > 0; --i) {
            std::string fullName;
            for (unsigned level = below(3); level > 0; --level) {
                fullName += attribute() + "::";
            }
            settings[fullName + name()] = value();
        }
        return settings;
    }

private:
    unsigned below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }
    std::string pick(const char* alphabet) { return std::string(1, alphabet[below(3)]); }
    std::string attribute() { return pick("abA"); }
    std::string name() { return pick("xyX"); }
    std::string value() { return pick("012"); }

    std::string settings(const std::string& kind) {
        std::string text;
        for (unsigned i = below(4); i > 0; --i) {
            text += text.empty() ? "" : ",";
            text += kind == "defaultsettings" ? R"({"name":")" + name() + R"(","value":")" + value() + R"("})"
                                              : R"({")" + name() + R"(":")" + value() + R"("})";
        }
        return "[" + text + "]";
    }

    std::string sections(unsigned depth, const std::string& kind) {
        std::string text;
        for (unsigned i = below(4); i > 0; --i) {
            text += text.empty() ? "" : ",";
            text += R"({"header":"H","attribute":")" + attribute() + "\"";
            text += unique_ && below(2) == 0 ? "" : R"(,"unique":false)";
            text += below(4) == 0 ? "" : R"(,"tclCommand":"t")";
            text += below(4) == 0 ? "" : ",\"" + kind + "\":" + settings(kind);
            text += depth > 0 && below(2) == 0 ? ",\"children\":" + sections(depth - 1, kind) : "";
            text += "}";
        }
        return "[" + text + "]";
    }

    std::mt19937 random_;
    bool unique_;
};

/// Saves as far as it needs no files: returns the text, and puts the values in force.
std::optional<std::string> savedText(Catalogue& catalogue, const std::map<std::string, std::string>& settings) {
    auto plan = prefs::planSave(catalogue, prefs::SaveValues(catalogue, {settings, {}}));
    if (!plan) {
        return std::nullopt;
    }
    catalogue.putInForce(plan->newValues);
    return plan->fileText;
}

/// Values in force of what the sections may hold.
std::map<std::string, std::string> valuesInForce(const Catalogue& catalogue) {
    std::map<std::string, std::string> values;
    for (const auto& [path, section] : catalogue.sections()) {
        for (const char* const name : {"x", "y"}) {
            values[path + "::" + name] = valueOf(catalogue, path + "::" + name);
        }
    }
    return values;
}

TEST(SavedText, IsThereWhenAValueChangesAndTheSameSaveOnceMoreChangesNothing) {
    int saves = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomSections preferences(seed, true);
        const std::string defaults = preferences.defaults();
        Catalogue catalogue = catalogueOfTexts(defaults, preferences.user());
        const auto edits = preferences.edits();
        const auto before = valuesInForce(catalogue);
        const auto text = savedText(catalogue, edits);
        EXPECT_EQ(text.has_value(), valuesInForce(catalogue) != before);
        if (!text) {
            continue;
        }
        ++saves;
        EXPECT_EQ(text->find("tclCommand"), std::string::npos);
        EXPECT_EQ(text->find("defaultsettings"), std::string::npos);
        EXPECT_FALSE(savedText(catalogue, edits).has_value());
    }
    EXPECT_GT(saves, 500);
}

TEST(SavedText, ReadBackGivesTheValuesInForceWhereNoBareNamesAreLent) {
    int saves = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomSections preferences(seed, false);
        const std::string defaults = preferences.defaults();
        Catalogue catalogue = catalogueOfTexts(defaults, preferences.user());
        const auto text = savedText(catalogue, preferences.edits());
        if (!text) {
            continue;
        }
        ++saves;
        const Catalogue readBack = catalogueOfTexts(defaults, *text);
        EXPECT_EQ(valuesInForce(readBack), valuesInForce(catalogue)) << defaults << *text;
    }
    EXPECT_GT(saves, 300);
}

// The file names a value by its short name, and a short name is tried as a bare one first.
TEST(SavedText, AValueWhoseBareNameAnotherSectionLendsComesBackAsThatSectionsOddity) {
    const std::string defaults = withMeta(
        R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x","value":"1"}]},
            {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"x","value":"2"}]}])");
    Catalogue catalogue = catalogueOfTexts(defaults, "");
    const auto text = savedText(catalogue, {{"b::x", "20"}});
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(valueOf(catalogue, "a::x"), "1");
    EXPECT_EQ(valueOf(catalogue, "b::x"), "20");
    const Catalogue readBack = catalogueOfTexts(defaults, *text);
    EXPECT_EQ(valueOf(readBack, "a::x"), "20");
    EXPECT_EQ(valueOf(readBack, "b::x"), "2");
}

}  // namespace
}  // namespace zelutil::test
