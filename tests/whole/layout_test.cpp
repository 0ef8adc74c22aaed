// Pins the sizes of public classes and the places of public fields, on which programs compiled earlier rely. The orders
// of virtual functions that are not here stand in the tests of their subsystems.
#include <zelutil/host/c_api.h>
#include <zelutil/zelutil.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/virtual_function.h"

namespace zelutil::test {
namespace {

constexpr std::size_t kPointer = 8;
constexpr std::size_t kText = sizeof(std::string);
constexpr std::size_t kList = sizeof(std::vector<int>);
constexpr std::size_t kSet = sizeof(std::set<int>);
constexpr std::size_t kMap = sizeof(std::map<int, int>);

static_assert(sizeof(void*) == kPointer && sizeof(int) == 4 && sizeof(std::size_t) == 8);

// --- Classes --------------------------------------------------------------------------------------------------------

static_assert(sizeof(ZelU::File::Path) == kText + 8);
static_assert(sizeof(ZelU::DbgChk) == kPointer + 8);
static_assert(sizeof(ZelU::Thrd::Thread) == kPointer + 8);
static_assert(sizeof(ZelU::Thrd::Mutex) == kPointer + 8);
static_assert(sizeof(ZelU::Thrd::Lock) == kPointer);
static_assert(sizeof(Smart::Pointer<int>) == 2 * kPointer);
static_assert(sizeof(ZelU::Hash::Hash<const char*>) == kPointer);
static_assert(sizeof(ZelU::Hash::Hash<const char*>::IEntry) == kPointer);
static_assert(sizeof(ZelU::Hash::Hash<const char*>::IEntry::IFactory) == kPointer);
static_assert(sizeof(ZelU::Registry::IValue) == kPointer);
static_assert(sizeof(ZelU::Registry::IValueFactory) == kPointer);
static_assert(sizeof(ZelU::Registry::ShortcutBase) == 8 + kPointer);
static_assert(sizeof(Smart::Enum::IRawMap) == kPointer);
static_assert(sizeof(UCPActionManager) == 2 * kPointer);
static_assert(sizeof(UserPreferenceManager) == kPointer);
static_assert(sizeof(IUserPreferenceSettings) == kPointer);
static_assert(sizeof(ZelU::Marl::UserPreferenceServer) == 2 * kSet);
static_assert(sizeof(ZelU::Marl::IUserPreferenceObserver) == kPointer);
static_assert(sizeof(ZelU::Marl::IUserPreferenceSubManagerObserver) == kPointer);
static_assert(sizeof(ZelU::Marl::Server) == kPointer + kSet + kMap + 8);
static_assert(sizeof(ZelU::Marl::IServerObserver) == kPointer);
static_assert(sizeof(ZelU::FACET::FacetConfigManager) == kPointer);

// An exception has nothing but its table of virtual functions, one for each base.
static_assert(sizeof(ZelU::File::Exceptions::HierarchyNotFound) == kPointer);
static_assert(sizeof(Smart::AssociationExceptions::InitializationFailure) == kPointer);
static_assert(sizeof(Smart::Exceptions::Misuse) == kPointer);
static_assert(sizeof(Smart::PointerExceptions::UninitializedAccess) == kPointer);
static_assert(sizeof(ZelU::Registry::Exceptions::EmptyValueAccess) == kPointer);
static_assert(sizeof(ZelU::Registry::Exceptions::SlotAlreadyOccupied) == kPointer);
static_assert(sizeof(ZelU::Registry::Exceptions::Misuse) == 2 * kPointer);

// --- zelutil::host --------------------------------------------------------------------------------------------------

static_assert(sizeof(host::Callback<void()>) == kPointer);
static_assert(sizeof(host::Subscription) == kPointer);
static_assert(sizeof(host::NativePath) == sizeof(std::basic_string<ZELUTIL_NATIVE_CHARACTER>));
static_assert(sizeof(host::Options) == 1);
static_assert(sizeof(host::SettingInfo) == 4 * kText + kList + 8);
static_assert(sizeof(host::ActionInfo) == 8 + sizeof(UCPActionItem) + 2 * kText + 16);
static_assert(sizeof(host::StartWarning) == 8 + kText + 8 + kText);
static_assert(sizeof(host::NotRestored) == kText + 16 + 2 * kText);
static_assert(sizeof(host::Conflict) == kText + 8 + 2 * kText);
static_assert(sizeof(host::SaveResult) == 8 + 3 * kText + kSet + 6 * kList);
static_assert(sizeof(host::RestorableText) == kText + kList);

// --- Records in C: a field may be added at an end, and none moves
// -----------------------------------------------------

static_assert(sizeof(zelutil_text) == 8);
static_assert(sizeof(zelutil_names) == 16 && offsetof(zelutil_names, items) == 8);
static_assert(sizeof(zelutil_ids) == 16 && offsetof(zelutil_ids, items) == 8);
static_assert(sizeof(zelutil_value) == 16 && offsetof(zelutil_value, value) == 8);

static_assert(sizeof(zelutil_warning) == 32);
static_assert(offsetof(zelutil_warning, name) == 8);
static_assert(offsetof(zelutil_warning, action) == 16);
static_assert(offsetof(zelutil_warning, holder) == 20);
static_assert(offsetof(zelutil_warning, text) == 24);
static_assert(sizeof(zelutil_warning_list) == 16 && offsetof(zelutil_warning_list, items) == 8);

static_assert(sizeof(zelutil_setting) == 56);
static_assert(offsetof(zelutil_setting, bareNames) == 8);
static_assert(offsetof(zelutil_setting, section) == 24);
static_assert(offsetof(zelutil_setting, defaultValue) == 32);
static_assert(offsetof(zelutil_setting, value) == 40);
static_assert(offsetof(zelutil_setting, setByUser) == 48);
static_assert(offsetof(zelutil_setting, foundByFullName) == 49);
static_assert(sizeof(zelutil_setting_list) == 16 && offsetof(zelutil_setting_list, items) == 8);

static_assert(sizeof(zelutil_action) == 72);
static_assert(offsetof(zelutil_action, parentId) == 4);
static_assert(offsetof(zelutil_action, name) == 8);
static_assert(offsetof(zelutil_action, icon) == 16);
static_assert(offsetof(zelutil_action, context) == 24);
static_assert(offsetof(zelutil_action, command) == 32);
static_assert(offsetof(zelutil_action, shortcut) == 40);
static_assert(offsetof(zelutil_action, shippedShortcut) == 48);
static_assert(offsetof(zelutil_action, inMenu) == 56);
static_assert(offsetof(zelutil_action, shippedInMenu) == 57);
static_assert(offsetof(zelutil_action, shortcutSource) == 60);
static_assert(offsetof(zelutil_action, runs) == 64);
static_assert(offsetof(zelutil_action, heldBy) == 68);
static_assert(sizeof(zelutil_action_list) == 16 && offsetof(zelutil_action_list, items) == 8);

static_assert(sizeof(zelutil_not_restored) == 40);
static_assert(offsetof(zelutil_not_restored, action) == 8);
static_assert(offsetof(zelutil_not_restored, obstacle) == 12);
static_assert(offsetof(zelutil_not_restored, otherAction) == 16);
static_assert(offsetof(zelutil_not_restored, otherSetting) == 24);
static_assert(offsetof(zelutil_not_restored, text) == 32);
static_assert(sizeof(zelutil_not_restored_list) == 16 && offsetof(zelutil_not_restored_list, items) == 8);

static_assert(sizeof(zelutil_conflict) == 32);
static_assert(offsetof(zelutil_conflict, action) == 8);
static_assert(offsetof(zelutil_conflict, ours) == 16);
static_assert(offsetof(zelutil_conflict, theirs) == 24);
static_assert(sizeof(zelutil_conflict_list) == 16 && offsetof(zelutil_conflict_list, items) == 8);

static_assert(sizeof(zelutil_save_result) == 144);
static_assert(offsetof(zelutil_save_result, written) == 4);
static_assert(offsetof(zelutil_save_result, text) == 8);
static_assert(offsetof(zelutil_save_result, path) == 16);
static_assert(offsetof(zelutil_save_result, keptCopy) == 24);
static_assert(offsetof(zelutil_save_result, changedSettings) == 32);
static_assert(offsetof(zelutil_save_result, unknownSettings) == 48);
static_assert(offsetof(zelutil_save_result, savedActions) == 64);
static_assert(offsetof(zelutil_save_result, notRestored) == 80);
static_assert(offsetof(zelutil_save_result, conflicts) == 96);
static_assert(offsetof(zelutil_save_result, settingsOfOthers) == 112);
static_assert(offsetof(zelutil_save_result, actionsOfOthers) == 128);
static_assert(sizeof(zelutil_restorable_text) == 24 && offsetof(zelutil_restorable_text, notRestored) == 8);

// --- Virtual functions
// ------------------------------------------------------------------------------------------------

class Settings final : public IUserPreferenceSettings {
public:
    const std::string& getUserPrefSetting(std::string name) const override { return answer("user's ", name); }
    const std::string& getDefaultPrefSetting(std::string name) const override { return answer("default ", name); }

private:
    const std::string& answer(const char* kind, const std::string& name) const { return answer_ = kind + name; }

    mutable std::string answer_;
};

TEST(Layout, SettingsHaveTwoFunctions) {
    using Function = const std::string& (*)(const IUserPreferenceSettings*, std::string);
    const Settings own;
    const IUserPreferenceSettings* const settings = &own;
    EXPECT_EQ(virtualFunction<Function>(settings, 0)(settings, "grid"), "user's grid");
    EXPECT_EQ(virtualFunction<Function>(settings, 1)(settings, "grid"), "default grid");
}

class Observer final : public ZelU::Marl::IUserPreferenceObserver,
                       public ZelU::Marl::IUserPreferenceSubManagerObserver {
public:
    void onUserSettingsChanged(const std::set<std::string>& changedNames) override { names = changedNames; }
    void onSubManagerSettingsChanged(
        const std::map<UserPreferenceManager::SubManagerType, std::string>& changedTexts) override {
        texts = changedTexts;
    }

    std::set<std::string> names;
    std::map<UserPreferenceManager::SubManagerType, std::string> texts;
};

TEST(Layout, ObserversOfPreferencesHaveOneFunctionEach) {
    Observer observer;
    ZelU::Marl::IUserPreferenceObserver* const ofNames = &observer;
    const std::set<std::string> names = {"grid"};
    virtualFunction<void (*)(void*, const std::set<std::string>&)>(ofNames, 0)(ofNames, names);
    EXPECT_EQ(observer.names, names);

    ZelU::Marl::IUserPreferenceSubManagerObserver* const ofTexts = &observer;
    using Texts = std::map<UserPreferenceManager::SubManagerType, std::string>;
    const Texts texts = {{UserPreferenceManager::SubManagerType{100}, "actions"}};
    virtualFunction<void (*)(void*, const Texts&)>(ofTexts, 0)(ofTexts, texts);
    EXPECT_EQ(observer.texts, texts);
}

}  // namespace
}  // namespace zelutil::test
