#include "host/start_warnings.h"

#include <iterator>

#include "host/action_warnings.h"
#include "host/current_preferences.h"
#include "prefs/section_walk.h"

namespace zelutil::host {
namespace {

using Kind = StartWarning::Kind;
using prefs::EntryFinding;

StartWarning aboutFile(const std::string& path) {
    StartWarning warning;
    warning.kind = Kind::FileNotRead;
    warning.text = "The file " + path +
                   " could not be read or is no JSON, so the shipped defaults are in force. A copy of it is kept "
                   "before it is first overwritten.";
    return warning;
}

StartWarning aboutDirectory(const std::string& path) {
    StartWarning warning;
    warning.kind = Kind::FileNotRead;
    warning.text = "The file " + path +
                   " could not be read, because there is a directory of that name, so the shipped defaults are in "
                   "force. Nothing can be saved in its place as long as it is there.";
    return warning;
}

std::string textOfUnread(const EntryFinding& finding) {
    if (finding.name.empty()) {
        return "The file has no effect, because it holds no object.";
    }
    const std::string section = finding.section.empty() ? "" : " of the section " + finding.section;
    const bool isRepeated = finding.name == prefs::kOverriddenSettings;
    return "Something under \"" + finding.name + "\"" + section + " has no effect, because " +
           (isRepeated ? "only the first is read." : "it is not in the form that is read.");
}

std::string textOf(const EntryFinding& finding) {
    const std::string entry = "The entry " + finding.name + " of the section " + finding.section;
    switch (finding.kind) {
        case EntryFinding::Kind::UnknownSection:
            return "The section " + finding.section + " has no effect, because there is no such section.";
        case EntryFinding::Kind::UnknownName:
            return entry + " has no effect, because there is no such setting.";
        case EntryFinding::Kind::NoList:
            return "The entries of the section " + finding.section +
                   " have no effect, because \"overriddensettings\" is not the list that is read.";
        case EntryFinding::Kind::NotOfTheForm:
            return textOfUnread(finding);
        case EntryFinding::Kind::AnotherSection:
            return entry + " sets a setting of another section, which that name means.";
        case EntryFinding::Kind::NoText:
            break;
    }
    return finding.name.empty() ? "An entry of the section " + finding.section + " has no effect, because it is none."
                                : entry + " has no effect, because its value is no text.";
}

/// The host may have loaded other actions since.
std::vector<StartWarning> warningsOfActions(const prefs::Catalogue& catalogue) {
    const auto defaults = catalogue.defaultSubManagerTexts().find(prefs::SubManagerType::Actions);
    const auto user = catalogue.userSubManagerTexts().find(prefs::SubManagerType::Actions);
    if (defaults == catalogue.defaultSubManagerTexts().end() || user == catalogue.userSubManagerTexts().end()) {
        return {};
    }
    return actionWarnings(defaults->second, user->second);
}

}  // namespace

StartWarning aboutEntry(const EntryFinding& finding) {
    StartWarning warning;
    warning.kind =
        finding.kind == EntryFinding::Kind::AnotherSection ? Kind::EntryForAnotherSection : Kind::EntryWithoutEffect;
    warning.name = finding.name.empty() ? finding.section : finding.name;
    warning.text = textOf(finding);
    return warning;
}

std::vector<StartWarning> startWarnings() {
    std::vector<StartWarning> warnings;
    const prefs::Preferences* const preferences = currentPreferences();
    if (preferences == nullptr) {
        return warnings;
    }
    if (const auto& unread = preferences->userFile->unreadAtStart()) {
        warnings.push_back(aboutFile(*unread));
    }
    if (preferences->userFile->wasDirectoryAtStart()) {
        warnings.push_back(aboutDirectory(preferences->userFile->pathAtStart()));
    }
    for (const EntryFinding& finding : preferences->catalogue.findings()) {
        warnings.push_back(aboutEntry(finding));
    }
    auto ofActions = warningsOfActions(preferences->catalogue);
    warnings.insert(warnings.end(), std::make_move_iterator(ofActions.begin()),
                    std::make_move_iterator(ofActions.end()));
    return warnings;
}

}  // namespace zelutil::host
