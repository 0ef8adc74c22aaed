#include "command/doctor/left_out.h"

#include <map>
#include <string_view>

#include "actions/action_catalogue.h"
#include "actions/observer_registry.h"
#include "command/text.h"
#include "host/save_plan.h"
#include "host/unread_parts.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"

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

std::vector<std::string> leftOutBySave(const std::string& defaults, const std::string& user) {
    prefs::Catalogue settings;
    prefs::readDefaults(defaults, settings);
    prefs::readUserSettings(user, settings);
    const host::UnreadParts now = unreadPartsIn(user);
    if (now.empty() && actionsIn(settings.userSubManagerTexts()).empty()) {
        return {};
    }
    const host::SavePlan plan = planOfSave(settings, user);
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
    if (plan.losesActions) {
        names.emplace_back("parts of the list of changed actions");
    }
    return names;
}

}  // namespace zelutil::command
