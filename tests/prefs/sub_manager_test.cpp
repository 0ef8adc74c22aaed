// Sub-managers: which are initialised, with what, and what becomes of their changes.
#include <gtest/gtest.h>
#include <zelutil/actions/action_manager.h>

#include <string>
#include <vector>

#include "prefs/catalogue_of.h"
#include "prefs/preference_world.h"
#include "prefs/preferences.h"
#include "prefs/sub_managers.h"

namespace zelutil::test {
namespace {

using prefs::SubManagers;
using prefs::SubManagerTexts;
using Type = prefs::SubManagerType;

constexpr char kActions[] = R"({"actions":[{"id":1,"context":"c","command":"new","shortcut":"N"}]})";

TEST(SubManagers, TheActionManagerIsLoadedAndRegistered) {
    SubManagers managers;
    EXPECT_EQ(managers.find(Type::Actions), nullptr);
    managers.initialize(Type::Actions, kActions, R"([{"actions":[{"id":1,"shortcut":"M"}]}])");
    EXPECT_EQ(managers.find(Type::Actions), &UCPActionManager::instance());
    EXPECT_EQ(UCPActionManager::instance().getShortcut(1), "M");
}

TEST(SubManagers, AnotherTypeIsNeitherLoadedNorRegistered) {
    SubManagers managers;
    for (const Type type : {Type::None, Type{102}, Type{0}, Type{-1}, Type{99}}) {
        managers.initialize(type, kActions, "{}");
        EXPECT_EQ(managers.find(type), nullptr);
    }
    EXPECT_EQ(managers.find(Type::Actions), nullptr);
    EXPECT_TRUE(UCPActionManager::instance().getAllActions().empty());
}

TEST(SubManagers, TheFirstRegisteredStaysButTheActionsAreLoadedAnew) {
    struct Other : IUserSettingsManager {
        void load(const std::string&, const std::string&) override { FAIL(); }
        const std::string getAllUserSettings() const override { return {}; }
        bool isModified() const override { return false; }
    } other;
    SubManagers managers;
    managers.add(Type::Actions, &other);
    managers.initialize(Type::Actions, kActions, "{}");
    EXPECT_EQ(managers.find(Type::Actions), &other);
    EXPECT_EQ(UCPActionManager::instance().getAllActions().size(), 1U);
}

TEST(SubManagers, OnlyThoseOfSectionsAreInitialised) {
    struct Row {
        const char* sections;
        bool registered;
    };
    constexpr Row kRows[] = {
        {"[]", false},
        {R"([{"header":"K","attribute":"k","tclCommand":"t","defaultsettings":[]}])", false},
        {R"([{"header":"K","attribute":"k","submanagerId":102,"tclCommand":"t","defaultsettings":{}}])", false},
        {R"([{"header":"K","attribute":"k","submanagerId":100,"defaultsettings":{}}])", false},
        {R"([{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t"}])", false},
        {R"([{"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}}])", true},
        {R"([{"header":"A","attribute":"a","children":[
              {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":null}]}])",
         true},
        // The section of that path is the first one, and it belongs to nobody.
        {R"([{"header":"K","attribute":"k","tclCommand":"t","defaultsettings":[]},
             {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t","defaultsettings":{}}])",
         false},
    };
    for (const Row& row : kRows) {
        SubManagers managers;
        managers.initialize(catalogueOf(row.sections));
        EXPECT_EQ(managers.find(Type::Actions) != nullptr, row.registered) << row.sections;
        EXPECT_EQ(managers.find(Type{102}), nullptr) << row.sections;
    }
}

/// Whatever the sections hold is handed on without white space; the first section of a type counts, in either file.
TEST(SubManagers, TextsAreThoseOfTheFirstSectionOfEachType) {
    const PreferenceWorld world;
    world.writeDefaults(R"({"meta": [
        {"header":"P","attribute":"p","tclCommand":"t","defaultsettings": [ {"name":"g","value":"1"} ]},
        {"header":"K","attribute":"k","submanagerId":100,"tclCommand":"t",
         "defaultsettings": { "actions" : [ 1, 1.50, "a b", null ] },
         "children": [{"header":"L","attribute":"l","submanagerId":100,"tclCommand":"t","defaultsettings": "later"}]},
        {"header":"X","attribute":"x","submanagerId":102,"tclCommand":"t","defaultsettings": "x"}]})");
    world.writeUser(R"({"meta": [
        {"header":"P","attribute":"p","overriddensettings": [ {"g":"2"} ]},
        {"header":"N","attribute":"nowhere","submanagerId":100,"overriddensettings": "of no section"},
        {"header":"K","attribute":"k","children": [
            {"header":"L","attribute":"l","overriddensettings": [ "inner" , {} ]}]},
        {"header":"K","attribute":"k","overriddensettings": "later"},
        {"header":"X","attribute":"x","overriddensettings": { "x" : false }}]})");
    prefs::UserSettingsFile userFile;
    const Catalogue catalogue = prefs::readPreferenceFiles(prefs::defaultsFilePath(), userFile);
    EXPECT_EQ(catalogue.defaultSubManagerTexts(),
              (SubManagerTexts{{Type::Actions, R"({"actions":[1,1.5,"a b",null]})"}, {Type{102}, R"("x")"}}));
    EXPECT_EQ(catalogue.userSubManagerTexts(),
              (SubManagerTexts{{Type::Actions, R"(["inner",{}])"}, {Type{102}, R"({"x":false})"}}));
}

void expectNoTexts(const char* files) {
    prefs::UserSettingsFile userFile;
    const Catalogue catalogue = prefs::readPreferenceFiles(prefs::defaultsFilePath(), userFile);
    EXPECT_TRUE(catalogue.defaultSubManagerTexts().empty()) << files;
    EXPECT_TRUE(catalogue.userSubManagerTexts().empty()) << files;
}

TEST(SubManagers, HaveNoTextsWithoutMetaOrFiles) {
    const PreferenceWorld world;
    for (const char* const text : {"", "{}", R"({"Meta":[]})", R"([{"submanagerId":100}])"}) {
        world.writeDefaults(text);
        world.writeUser(text);
        expectNoTexts(text);
    }
    std::filesystem::remove(world.defaultsFile());
    std::filesystem::remove(world.userFile());
    expectNoTexts("none");
}

/// Notes what it is asked.
class Recorder : public IUserSettingsManager {
public:
    Recorder(std::vector<std::string>& log, const char* name, bool modified)
        : log_(log), name_(name), modified_(modified) {}

    void load(const std::string&, const std::string&) override { log_.push_back(name_ + " loaded"); }
    const std::string getAllUserSettings() const override {
        log_.push_back(name_ + " asked");
        return "{}";
    }
    bool isModified() const override { return modified_; }

private:
    std::vector<std::string>& log_;
    std::string name_;
    bool modified_;
};

TEST(SubManagers, OnApplyModifiedOnesAreAskedByTypeAndTheirTextsDroppedOddity) {
    std::vector<std::string> log;
    Recorder first(log, "first", true);
    Recorder untouched(log, "untouched", false);
    Recorder last(log, "last", true);
    SubManagers managers;
    managers.add(Type{200}, &last);
    managers.add(Type::Actions, &untouched);
    managers.add(Type{150}, nullptr);
    managers.add(Type{50}, &first);
    managers.applyChanges();
    EXPECT_EQ(log, (std::vector<std::string>{"first asked", "last asked"}));
}

}  // namespace
}  // namespace zelutil::test
