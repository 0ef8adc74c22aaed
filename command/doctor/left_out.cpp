#include "command/doctor/left_out.h"

#include <optional>
#include <string_view>

#include "host/settings_plan.h"
#include "host/unread_parts.h"
#include "json/document.h"
#include "prefs/catalogue_reader.h"

namespace zelutil::command {
namespace {

constexpr std::size_t kMostShownOfPart = 40;

std::string beginningOf(const std::string& text) {
    return text.size() <= kMostShownOfPart ? text : text.substr(0, kMostShownOfPart) + "...";
}

std::string nameOfPart(const prefs::UnreadContent& content) {
    const std::string where = content.name.empty()
                                  ? "what it holds"
                                  : "what stands under \"" + content.name + '"' +
                                        (content.section.empty() ? "" : " of the section " + content.section);
    return where + " (" + beginningOf(content.text) + ')';
}

host::UnreadParts unreadPartsIn(std::string_view text) {
    const json::Document document(text, json::Numbers::Exact);
    return host::unreadPartsOf(text, document.root());
}

/// Returns the text of a save that is asked for nothing.
std::optional<std::string> savedText(const std::string& defaults, const std::string& user) {
    prefs::Catalogue catalogue;
    prefs::readDefaults(defaults, catalogue);
    prefs::readUserSettings(user, catalogue);
    host::SettingsPlan plan = host::planSettings(catalogue, host::SettingsRequest(), user);
    const std::optional<std::string> actions = plan.actionsInFile;
    return plan.fileKnown ? host::fileText(plan, actions) : std::nullopt;
}

}  // namespace

std::vector<std::string> leftOutBySave(const std::string& defaults, const std::string& user) {
    const host::UnreadParts now = unreadPartsIn(user);
    const auto saved = now.empty() ? std::nullopt : savedText(defaults, user);
    if (!saved) {
        return {};
    }
    const host::UnreadParts kept = unreadPartsIn(*saved);
    std::vector<std::string> names;
    for (const prefs::UnreadContent& content : now.contents) {
        if (kept.contents.count(content) == 0) {
            names.push_back(nameOfPart(content));
        }
    }
    for (const std::string& number : now.numbers) {
        if (kept.numbers.count(number) == 0) {
            names.push_back("digits of the number " + beginningOf(number));
        }
    }
    return names;
}

}  // namespace zelutil::command
