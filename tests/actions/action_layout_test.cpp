// Pins the order of virtual functions and of fields, on which programs compiled earlier rely.
#include <zelutil/actions/action_manager.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>

#include "actions/action_fixture.h"
#include "support/virtual_function.h"

namespace zelutil::test {
namespace {

/// The offset of a field.
template <typename Record, typename Field>
std::size_t offsetIn(const Record& record, const Field& field) {
    return static_cast<std::size_t>(reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&record));
}

/// The next place for a `T` from `offset` on.
template <typename T>
constexpr std::size_t alignedFor(std::size_t offset) {
    return (offset + alignof(T) - 1) / alignof(T) * alignof(T);
}

TEST(ActionLayout, ObserverHasTwoFunctionsAndNothingElse) {
    static_assert(sizeof(IUCPActionObserver) == sizeof(void*));
    static_assert(!std::has_virtual_destructor_v<IUCPActionObserver>);
    Recorder recorder;
    IUCPActionObserver* const observer = &recorder;
    using ShortcutFunction = void (*)(IUCPActionObserver*, int, const std::string&, const std::string&);
    using MenuFunction = void (*)(IUCPActionObserver*, int, bool);
    virtualFunction<ShortcutFunction>(observer, 0)(observer, 7, "F1", "F2");
    virtualFunction<MenuFunction>(observer, 1)(observer, 8, true);
    virtualFunction<MenuFunction>(observer, 1)(observer, 9, false);
    EXPECT_EQ((Events{"7: 'F1' -> 'F2'", "8: in menu", "9: out of menu"}), recorder.take());
}

/// Writes down which of its functions is called.
class SubManager final : public IUserSettingsManager {
public:
    void load(const std::string& defaultSettings, const std::string& userSettings) override {
        loaded = defaultSettings + "," + userSettings;
    }
    // NOLINTNEXTLINE(readability-const-return-type): the type is part of the interface.
    const std::string getAllUserSettings() const override { return "all of the user's settings"; }
    bool isModified() const override { return modified; }

    std::string loaded;
    bool modified = false;
};

using LoadFunction = void (*)(IUserSettingsManager*, const std::string&, const std::string&);
using TextFunction = std::string (*)(const IUserSettingsManager*);
using FlagFunction = bool (*)(const IUserSettingsManager*);

TEST(ActionLayout, SubManagerHasThreeFunctionsAndNothingElse) {
    static_assert(sizeof(IUserSettingsManager) == sizeof(void*));
    static_assert(!std::has_virtual_destructor_v<IUserSettingsManager>);
    SubManager own;
    IUserSettingsManager* const manager = &own;
    virtualFunction<LoadFunction>(manager, 0)(manager, "defaults", "user");
    EXPECT_EQ("defaults,user", own.loaded);
    EXPECT_EQ("all of the user's settings", virtualFunction<TextFunction>(manager, 1)(manager));
    EXPECT_FALSE(virtualFunction<FlagFunction>(manager, 2)(manager));
    own.modified = true;
    EXPECT_TRUE(virtualFunction<FlagFunction>(manager, 2)(manager));
}

TEST(ActionLayout, ActionManagerIsASubManagerFirst) {
    UCPActionManager& actions = UCPActionManager::instance();
    IUserSettingsManager* const manager = &actions;
    EXPECT_EQ(static_cast<void*>(manager), static_cast<void*>(&actions));
    const std::string shipped = object(action(1, "board", "open", "F1"));
    virtualFunction<LoadFunction>(&actions, 0)(manager, shipped, wrapped(R"({"id":1,"shortcut":"F2"})"));
    EXPECT_EQ("F2", actions.getShortcut(1));
    EXPECT_EQ(R"({"actions":[{"id":1,"shortcut":"F2"}]})", virtualFunction<TextFunction>(&actions, 1)(manager));
    EXPECT_TRUE(virtualFunction<FlagFunction>(&actions, 2)(manager));
    virtualFunction<LoadFunction>(&actions, 0)(manager, shipped, "");
    EXPECT_FALSE(virtualFunction<FlagFunction>(&actions, 2)(manager));
}

template <typename T>
void expectOrderOfFields() {
    using Property = OverwritableValue<T>;
    const Property property;
    EXPECT_EQ(0U, offsetIn(property, property.defaultValue));
    EXPECT_EQ(sizeof(T), offsetIn(property, property.userValue));
    EXPECT_EQ(2 * sizeof(T), offsetIn(property, property.resetValue));
    EXPECT_EQ(3 * sizeof(T), offsetIn(property, property.overwritten));
    EXPECT_EQ(alignedFor<T>(3 * sizeof(T) + sizeof(bool)), sizeof(Property));
}

TEST(ActionLayout, PropertyHasItsThreeValuesAndTheFlag) {
    expectOrderOfFields<std::string>();
    expectOrderOfFields<bool>();
    EXPECT_EQ(4U, sizeof(OverwritableValue<bool>));
}

TEST(ActionLayout, ItemHasItsFieldsInOrder) {
    const UCPActionItem item;
    constexpr std::size_t kText = sizeof(std::string);
    const std::size_t texts = alignedFor<std::string>(2 * sizeof(int));
    EXPECT_EQ(0U, offsetIn(item, item.id));
    EXPECT_EQ(sizeof(int), offsetIn(item, item.parent_id));
    EXPECT_EQ(texts, offsetIn(item, item.name));
    EXPECT_EQ(texts + kText, offsetIn(item, item.icon));
    EXPECT_EQ(texts + 2 * kText, offsetIn(item, item.context));
    EXPECT_EQ(texts + 3 * kText, offsetIn(item, item.command));
    EXPECT_EQ(texts + 4 * kText, offsetIn(item, item.shortcut));
    EXPECT_EQ(texts + 4 * kText + sizeof(item.shortcut), offsetIn(item, item.rmb));
    EXPECT_EQ(alignedFor<std::string>(texts + 4 * kText + sizeof(item.shortcut) + sizeof(item.rmb)),
              sizeof(UCPActionItem));
}

}  // namespace
}  // namespace zelutil::test
