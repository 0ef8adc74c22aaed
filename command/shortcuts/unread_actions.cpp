#include "command/shortcuts/unread_actions.h"

#include <optional>

#include "host/current_preferences.h"
#include "host/start_warnings.h"
#include "json/document.h"
#include "json/writer.h"
#include "platform/files.h"
#include "prefs/section_walk.h"

namespace zelutil::shortcuts {
namespace {

bool isOfActions(const prefs::Catalogue& catalogue, const std::string& attributePath) {
    return catalogue.subManagerOf(attributePath) == prefs::SubManagerType::Actions;
}

/// Returns the values of all sections of the actions but the first.
std::vector<std::string> laterValuesIn(const prefs::Catalogue& catalogue, json::View user) {
    std::vector<std::string> values;
    bool isFirst = true;
    prefs::forEachSection(user, [&](const prefs::VisitedSection& visited) {
        if (!isOfActions(catalogue, visited.attributePath)) {
            return;
        }
        for (const auto& [key, value] : visited.element.members()) {
            if (key == prefs::kOverriddenSettings && !isFirst) {
                values.push_back(json::compactText(value).value_or(""));
            }
            isFirst = isFirst && key != prefs::kOverriddenSettings;
        }
    });
    return values;
}

}  // namespace

UnreadActions unreadActions() {
    UnreadActions unread;
    const prefs::Preferences* const preferences = host::currentPreferences();
    if (preferences == nullptr) {
        return unread;
    }
    for (const prefs::EntryFinding& finding : preferences->catalogue.findings()) {
        if (isOfActions(preferences->catalogue, finding.section)) {
            unread.warnings.push_back(host::aboutEntry(finding));
        }
    }
    if (!unread.warnings.empty()) {
        const std::optional<std::string> text =
            platform::readFile(preferences->userFile->pathAtStart().c_str(), json::kMaximumTextSize);
        const json::Document user(text.value_or(""));
        unread.values = laterValuesIn(preferences->catalogue, user.root());
    }
    return unread;
}

}  // namespace zelutil::shortcuts
