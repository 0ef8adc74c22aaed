#include "host/c_api_records.h"

#include <utility>

namespace zelutil::host::c {
namespace {

// The enumerations of C have the order of those of C++.
static_assert(static_cast<int>(ShortcutSource::Shipped) == ZELUTIL_SHORTCUT_SHIPPED);
static_assert(static_cast<int>(ShortcutSource::User) == ZELUTIL_SHORTCUT_OF_USER);
static_assert(static_cast<int>(ShortcutSource::Parent) == ZELUTIL_SHORTCUT_OF_PARENT);
static_assert(static_cast<int>(ShortcutSource::StandIn) == ZELUTIL_SHORTCUT_OF_STAND_IN);
static_assert(static_cast<int>(StartWarning::Kind::FileNotRead) == ZELUTIL_FILE_NOT_READ);
static_assert(static_cast<int>(StartWarning::Kind::EntryWithoutEffect) == ZELUTIL_ENTRY_WITHOUT_EFFECT);
static_assert(static_cast<int>(StartWarning::Kind::EntryForAnotherSection) == ZELUTIL_ENTRY_FOR_ANOTHER_SECTION);
static_assert(static_cast<int>(StartWarning::Kind::ShortcutRefused) == ZELUTIL_SHORTCUT_REFUSED);
static_assert(static_cast<int>(Obstacle::NameBelongsToAnother) == ZELUTIL_NAME_BELONGS_TO_ANOTHER);
static_assert(static_cast<int>(Obstacle::ShippedTwice) == ZELUTIL_SHIPPED_TWICE);
static_assert(static_cast<int>(Obstacle::TakenByAnother) == ZELUTIL_TAKEN_BY_ANOTHER);
static_assert(static_cast<int>(Obstacle::ChildRefuses) == ZELUTIL_CHILD_REFUSES);
static_assert(static_cast<int>(Obstacle::FollowsParent) == ZELUTIL_FOLLOWS_PARENT);
static_assert(static_cast<int>(Obstacle::NoPlaceInFile) == ZELUTIL_NO_PLACE_IN_FILE);

}  // namespace

SettingEntry::SettingEntry(SettingInfo source)
    : zelutil_setting(), source_(std::move(source)), bareNames_(source_.bareNames) {
    fullName = source_.fullName.c_str();
    bareNames = bareNames_.view();
    section = source_.section.c_str();
    defaultValue = source_.defaultValue.c_str();
    value = source_.value.c_str();
    setByUser = source_.setByUser;
    foundByFullName = source_.foundByFullName;
}

void fill(zelutil_action& record, const ActionInfo& source) {
    record.id = source.id;
    record.parentId = source.item.parent_id;
    record.name = source.item.name.c_str();
    record.icon = source.item.icon.c_str();
    record.context = source.item.context.c_str();
    record.command = source.item.command.c_str();
    record.shortcut = source.shortcut.c_str();
    record.shippedShortcut = source.shippedShortcut.c_str();
    record.inMenu = source.inMenu;
    record.shippedInMenu = source.shippedInMenu;
    record.shortcutSource = static_cast<zelutil_shortcut_source>(source.source);
    record.runs = source.runs;
    record.heldBy = source.heldBy;
}

void fill(zelutil_warning& record, const StartWarning& source) {
    record.kind = static_cast<zelutil_warning_kind>(source.kind);
    record.name = source.name.c_str();
    record.action = source.action;
    record.holder = source.holder;
    record.text = source.text.c_str();
}

void fill(zelutil_not_restored& record, const NotRestored& source) {
    record.setting = source.setting.c_str();
    record.action = source.action;
    record.obstacle = static_cast<zelutil_obstacle>(source.obstacle);
    record.otherAction = source.otherAction;
    record.otherSetting = source.otherSetting.c_str();
    record.text = source.text.c_str();
}

void fill(zelutil_conflict& record, const Conflict& source) {
    record.setting = source.setting.c_str();
    record.action = source.action;
    record.ours = source.ours.c_str();
    record.theirs = source.theirs.c_str();
}

}  // namespace zelutil::host::c
