#include "command/doctor/left_out.h"

#include <map>
#include <string_view>

#include "actions/action_catalogue.h"
#include "actions/observer_registry.h"
#include "command/section_owners.h"
#include "command/text.h"
#include "host/save_plan.h"
#include "host/unread_parts.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"
#include "prefs/section_walk.h"

namespace zelutil::command {
namespace {

constexpr std::size_t kMostShownOfPart = 40;

std::string beginningOfPart(const std::string& text) {
    return text.size() <= kMostShownOfPart ? text : beginningOf(text, kMostShownOfPart) + "...";
}

std::string nameOfPart(const prefs::UnreadContent& content) {
    const std::string where = content.name.empty()
                                  ? "what it holds"
                                  : "what stands under \"" + content.name + '"' +
                                        (content.section.empty() ? "" : " of the section " + content.section);
    return where + " (" + beginningOfPart(content.text) + ')';
}

host::UnreadParts unreadPartsIn(std::string_view text) {
    const json::Document document(text, json::Numbers::Exact);
    return host::unreadPartsOf(text, document.root());
}

std::string actionsIn(const std::map<prefs::SubManagerType, std::string>& texts) {
    const auto text = texts.find(prefs::SubManagerType::Actions);
    return text == texts.end() ? std::string() : text->second;
}

/// Returns whether the user's file has something for a sub-manager, such as changed actions.
bool mayHoldTexts(json::View defaults, json::View user) {
    const SectionOwners owners(defaults);
    bool mayHold = false;
    prefs::forEachSection(user, [&](const prefs::VisitedSection& visited) {
        const SectionOwner owner = owners.ownerOf(visited.attributePath);
        mayHold = mayHold || (owner && *owner != prefs::SubManagerType::None &&
                              visited.element.member(prefs::kOverriddenSettings));
    });
    return mayHold;
}

/// Returns whether the user's file holds anything that a save may leave out. Most files hold nothing of the kind, and
/// the plan of a save, for which a start has to be made, takes more time than all else that the doctor does: see
/// "doctor on 10,000 settings" of bench/doctor_bench.cpp.
bool mayLeaveOut(const ReadFile& defaults, const ReadFile& user) {
    const json::View root = user.document.root();
    return !host::unreadPartsOf(user.text, root).empty() || mayHoldTexts(defaults.document.root(), root);
}

/// Returns the settings as a start with these files has them.
prefs::Catalogue settingsOf(const ReadFile& defaults, const ReadFile& user) {
    prefs::Catalogue settings;
    prefs::readDefaults(defaults.document.root(), settings);
    settings.setDefaultsText(defaults.text);
    prefs::readUserSettings(user.text, settings);
    return settings;
}

/// Plans the save that a start with these settings makes when it is asked for nothing.
host::SavePlan planOfSave(const prefs::Catalogue& settings, const std::string& user) {
    const std::string usersActions = actionsIn(settings.userSubManagerTexts());
    const actions::ObserverRegistry nobody;
    actions::ActionCatalogue actions(nobody);
    actions.load(actionsIn(settings.defaultSubManagerTexts()), usersActions);
    host::SaveState state;
    state.actions = host::baseOfFile(usersActions);
    return host::planSave(settings, actions, state, host::SettingsRequest(), user);
}

}  // namespace

std::vector<std::string> leftOutBySave(const ReadFile& defaults, const ReadFile& user) {
    if (!mayLeaveOut(defaults, user)) {
        return {};
    }
    const host::UnreadParts now = unreadPartsIn(user.text);
    const host::SavePlan plan = planOfSave(settingsOf(defaults, user), user.text);
    if (!plan.text || !plan.losesContent) {
        return {};
    }
    const host::UnreadParts kept = unreadPartsIn(*plan.text);
    std::vector<std::string> names;
    for (const prefs::UnreadContent& content : now.contents) {
        if (kept.contents.count(content) == 0) {
            names.push_back(nameOfPart(content));
        }
    }
    for (const std::string& number : now.numbers) {
        if (kept.numbers.count(number) == 0) {
            names.push_back("digits of the number " + beginningOfPart(number));
        }
    }
    if (kept.behindEnd != now.behindEnd) {
        names.push_back("what stands behind a null character (" + beginningOfPart(now.behindEnd) + ')');
    }
    for (const prefs::UnreadContent& content : plan.settings.secondValues) {
        names.push_back(nameOfPart(content) + ", because only the first is read");
    }
    if (plan.losesActions) {
        names.emplace_back("parts of the list of changed actions");
    }
    if (names.empty()) {
        names.emplace_back("what would make the file too long or nest it too deeply to be read");
    }
    return names;
}

}  // namespace zelutil::command
