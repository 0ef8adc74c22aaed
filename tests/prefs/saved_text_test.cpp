// What a save makes of a model, without files: invariants on random preferences.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <map>
#include <random>
#include <string>

#include "prefs/model_of.h"

namespace zelutil::test {
namespace {

using Type = UserPreferenceManager::SubManagerType;

/// Sections, names and values from small alphabets, so that they collide.
class RandomPreferences {
public:
    RandomPreferences(unsigned seed, bool unique) : random_(seed), unique_(unique) {}

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

/// Values in force of what the sections may hold.
std::map<std::string, std::string> valuesInForce(const Model& model) {
    std::map<std::string, std::string> values;
    for (const auto& [path, section] : model.sections()) {
        for (const char* const name : {"x", "y"}) {
            values[path + "::" + name] = valueOf(model, path + "::" + name);
        }
    }
    return values;
}

TEST(SavedText, IsThereWhenAValueChangesAndTheSameSaveOnceMoreChangesNothing) {
    int saves = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomPreferences preferences(seed, true);
        const std::string defaults = preferences.defaults();
        Model model = modelOfTexts(defaults, preferences.user());
        const auto edits = preferences.edits();
        const auto before = valuesInForce(model);
        const auto text = model.overrideUserSettings(model.valuesToSave(edits), {});
        EXPECT_EQ(text.has_value(), valuesInForce(model) != before);
        if (!text) {
            continue;
        }
        ++saves;
        EXPECT_EQ(text->find("tclCommand"), std::string::npos);
        EXPECT_EQ(text->find("defaultsettings"), std::string::npos);
        EXPECT_FALSE(model.overrideUserSettings(model.valuesToSave(edits), {}).has_value());
    }
    EXPECT_GT(saves, 500);
}

TEST(SavedText, ReadBackGivesTheValuesInForceWhereNoBareNamesAreLent) {
    int saves = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomPreferences preferences(seed, false);
        const std::string defaults = preferences.defaults();
        Model model = modelOfTexts(defaults, preferences.user());
        const auto text = model.overrideUserSettings(model.valuesToSave(preferences.edits()), {});
        if (!text) {
            continue;
        }
        ++saves;
        const Model readBack = modelOfTexts(defaults, *text);
        EXPECT_EQ(valuesInForce(readBack), valuesInForce(model)) << defaults << *text;
    }
    EXPECT_GT(saves, 300);
}

// The file names a value by its short name, and a short name is tried as a bare one first.
TEST(SavedText, OddityAValueWhoseBareNameAnotherSectionLendsComesBackAsThatSections) {
    const std::string defaults = withMeta(
        R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x","value":"1"}]},
            {"header":"B","attribute":"b","tclCommand":"t","defaultsettings":[{"name":"x","value":"2"}]}])");
    Model model = modelOfTexts(defaults, "");
    const auto text = model.overrideUserSettings(model.valuesToSave({{"b::x", "20"}}), {});
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(valueOf(model, "a::x"), "1");
    EXPECT_EQ(valueOf(model, "b::x"), "20");
    const Model readBack = modelOfTexts(defaults, *text);
    EXPECT_EQ(valueOf(readBack, "a::x"), "20");
    EXPECT_EQ(valueOf(readBack, "b::x"), "2");
}

TEST(SavedText, WhatChangedIsThatOfTheLastSaveOnly) {
    Model model = modelOf(
        R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x","value":"1"}]},
            {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}}])");
    model.overrideUserSettings(model.valuesToSave({{"x", "2"}}), {{Type::Actions, "[]"}});
    EXPECT_EQ(model.changedSettingNames(), std::set<std::string>{"a::x"});
    EXPECT_EQ(model.changedSubManagerSettings(), (Model::SubManagerTexts{{Type::Actions, "[]"}}));
    model.overrideUserSettings(model.valuesToSave({{"x", "2"}}), {});
    EXPECT_TRUE(model.changedSettingNames().empty());
    EXPECT_TRUE(model.changedSubManagerSettings().empty());
}

TEST(SavedText, ASectionsSubManagerIsTheRegisteredOne) {
    Model model = modelOf(
        R"([{"header":"A","attribute":"a","tclCommand":"t","defaultsettings":[]},
            {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}},
            {"header":"L","attribute":"l","submanagerId":102,"tclCommand":"t","defaultsettings":{}}])");
    model.initializeSubManagers();
    struct Row {
        const char* attributePath;
        bool has;
        Type type;
        bool registered;
    };
    constexpr Row kRows[] = {
        {"a", false, Type::None, false},  {"none", false, Type::None, false}, {"K", false, Type::None, false},
        {"k", true, Type::Actions, true}, {"l", true, Type{102}, false},
    };
    for (const Row& row : kRows) {
        IUserSettingsManager* manager = nullptr;
        Type type = Type{7};
        EXPECT_EQ(model.doesClientHaveSubmanager(row.attributePath, &manager, type), row.has) << row.attributePath;
        EXPECT_EQ(type, row.type) << row.attributePath;
        EXPECT_EQ(manager, row.registered ? &UCPActionManager::instance() : nullptr) << row.attributePath;
    }
}

}  // namespace
}  // namespace zelutil::test
