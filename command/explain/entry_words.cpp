// The words for what an entry of the user's file does.
#include "command/explain/setting_account.h"
#include "command/later_entry.h"

namespace zelutil::command {
namespace {

std::string reasonOfEffect(const UserEntry& entry) {
    using Effect = UserEntry::Effect;
    switch (entry.effect) {
        case Effect::InForce:
        case Effect::SetsAnother:
            return {};
        case Effect::Overruled:
            return nameOfLaterEntry(entry.place.name, entry.overruledBy.value_or(json::Position())) +
                   " sets the same setting, and the last one counts.";
        case Effect::NoText:
            return "Its value is no string.";
        case Effect::NoList:
            return "The entries of the section \"" + entry.section + "\" do not stand in an array.";
        case Effect::UnknownSection:
            return "The defaults have no section \"" + entry.section + "\".";
        case Effect::GroupingSection:
            return "The section \"" + entry.section + "\" has no settings in the defaults; it groups other sections.";
        case Effect::OfSubManager:
            return "The section \"" + entry.section + "\" belongs to a sub-manager and has no settings.";
        case Effect::UnknownName:
            return "No setting has the name \"" + entry.name + "\".";
        case Effect::NotRead:
            break;
    }
    return "No entry is read at this place.";
}

}  // namespace

const char* nameOf(UserEntry::Effect effect) {
    using Effect = UserEntry::Effect;
    switch (effect) {
        case Effect::InForce:
            return "in-force";
        case Effect::Overruled:
            return "overruled";
        case Effect::SetsAnother:
            return "sets-another";
        case Effect::NoText:
            return "no-text";
        case Effect::NoList:
            return "no-list";
        case Effect::UnknownSection:
            return "unknown-section";
        case Effect::GroupingSection:
            return "grouping-section";
        case Effect::OfSubManager:
            return "of-sub-manager";
        case Effect::UnknownName:
            return "unknown-name";
        case Effect::NotRead:
            break;
    }
    return "not-read";
}

std::string reasonOf(const UserEntry& entry) {
    std::string reason = reasonOfEffect(entry);
    if (entry.meansOther) {
        reason += reason.empty() ? "" : " ";
        reason += "The name \"" + entry.name + "\" means " + entry.other + " first.";
    }
    return reason;
}

const char* outcomeOf(const UserEntry& entry) {
    return entry.effect == UserEntry::Effect::SetsAnother ? "sets another setting" : "has no effect";
}

}  // namespace zelutil::command
