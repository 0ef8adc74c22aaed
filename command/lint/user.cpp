// The rules for the user's preferences. What an entry means is asked of the library's own reader.
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "actions/action_text.h"
#include "command/later_entry.h"
#include "command/lint/checks.h"
#include "command/lint/section_forms.h"
#include "command/nearest_names.h"
#include "command/sections.h"
#include "prefs/catalogue_reader.h"
#include "prefs/definition_walk.h"

namespace zelutil::lint {
namespace {

using json::View;
using prefs::EntryFinding;
using prefs::VisitedSection;

const ObjectForm& userSectionForm() {
    static const ObjectForm kForm{"a section",
                                  {{prefs::kHeader, Type::Text, Need::Required},
                                   {prefs::kAttribute, Type::Text, Need::Required},
                                   {prefs::kOverriddenSettings, Type::Any},
                                   {prefs::kUnique, Type::Any},
                                   {prefs::kSubmanagerId, Type::Integer},
                                   {prefs::kChildren, Type::Array}}};
    return kForm;
}

void checkEntries(View entries, Report& report) {
    checkType(entries, prefs::kOverriddenSettings, Type::Array, report);
    for (const View element : entries.elements()) {
        if (!element.isObject()) {
            report.add(Rule::WrongType, element, "Here an object with names and values must stand.");
        }
        for (const json::Member& entry : element.members()) {
            checkType(entry.value, entry.key, Type::Text, report);
        }
    }
}

/// Holds the names of the defaults.
class KnownNames {
public:
    explicit KnownNames(View defaults) {
        prefs::DefinitionCount count;
        prefs::forEachSection(defaults, [&](const VisitedSection& visited) {
            paths_.push_back(visited.attributePath);
            sections_.insert(visited.attributePath);
            count.inSection(visited, [&](std::uint32_t, const prefs::DefaultSetting& setting) {
                fullNames_.push_back(fullNameOf(visited.attributePath, setting.name));
                names_.emplace_back(setting.name);
            });
        });
    }

    bool hasSection(const std::string& path) const { return sections_.count(path) != 0; }
    const std::string& fullName(std::uint32_t number) const { return fullNames_[number]; }

    std::string hintForSection(const std::string& path) { return hintFor(path, paths_); }
    std::string hintForName(const std::string& name) {
        return hintFor(name, name.find(prefs::kNameSeparator) == std::string::npos ? names_ : fullNames_);
    }

private:
    std::string hintFor(const std::string& wanted, const std::vector<std::string>& known) {
        return hints_.take() ? nearestHint(wanted, known) : std::string();
    }

    std::vector<std::string> paths_;
    std::unordered_set<std::string> sections_;
    std::vector<std::string> fullNames_;  ///< By the numbers of their records.
    std::vector<std::string> names_;
    command::HintBudget hints_;
};

/// Checks what sections hold, one after the other.
class SectionContents {
public:
    /// The object with the shipped actions may be absent.
    SectionContents(View shippedActions, Report& report) : shippedActions_(shippedActions), report_(report) {}

    void check(prefs::SubManagerType type, const VisitedSection& visited) {
        const View entries = visited.element.member(prefs::kOverriddenSettings);
        if (!entries) {
            return;
        }
        if (type == prefs::SubManagerType::None) {
            checkEntries(entries, report_);
        } else if (isRead(type, visited) && type == prefs::SubManagerType::Actions) {
            checkUserActions(entries, shippedActions_, report_);
        }
    }

private:
    /// Only the first section of a sub-manager is read, even when it holds nothing.
    bool isRead(prefs::SubManagerType type, const VisitedSection& visited) {
        const auto [first, isNew] = firsts_.try_emplace(type, First{visited.attributePath, visited.element});
        // One of the same path is told as such.
        if (visited.attributePath != first->second.path &&
            prefs::hasEntries(visited.element.member(prefs::kOverriddenSettings))) {
            const View attribute = visited.element.member(prefs::kAttribute);
            report_.add(Rule::RepeatedPath, attribute,
                        "An earlier section belongs to the same sub-manager (" +
                            report_.lineOf(first->second.element.member(prefs::kAttribute)) +
                            "), and only that one is read.");
        }
        return isNew;
    }

    struct First {
        std::string path;
        View element;
    };

    View shippedActions_;
    Report& report_;
    std::map<prefs::SubManagerType, First> firsts_;
};

/// Reads the file as the library does and tells what its reader finds.
class AgainstDefaults {
public:
    AgainstDefaults(View root, View defaults, Report& report)
        : report_(report), names_(defaults), contents_(shippedActions(defaults), report) {
        prefs::readDefaults(defaults, catalogue_);
        prefs::readUserSettings(
            root, catalogue_,
            prefs::EntrySinks{[this](const EntryFinding& finding, View place) { tell(finding, place); },
                              [this](const prefs::AcceptedEntry& accepted) { note(accepted); }});
        checkRepeatedPaths(
            root, [this](const VisitedSection& visited) { return ownerOf(visited); }, report);
        prefs::forEachSection(root, [this](const VisitedSection& visited) { inSection(visited); });
    }

private:
    void tell(const EntryFinding& finding, View place) {
        switch (finding.kind) {
            case EntryFinding::Kind::UnknownSection:
                tellUnknown(finding.section, place.member(prefs::kAttribute));
                return;
            case EntryFinding::Kind::UnknownName:
                report_.addAtKey(Rule::UnknownSetting, place, finding.name,
                                 "No setting has the name " + inQuotes(finding.name) + '.',
                                 names_.hintForName(finding.name));
                return;
            case EntryFinding::Kind::AnotherSection:
                tellMeant(finding, place);
                return;
            // The form tells more of these.
            case EntryFinding::Kind::NoText:
            case EntryFinding::Kind::NoList:
            case EntryFinding::Kind::NotOfTheForm:
                return;
        }
    }

    void tellUnknown(const std::string& section, View attribute) {
        if (names_.hasSection(section)) {
            report_.add(Rule::UnknownSection, attribute,
                        "The section " + inQuotes(section) +
                            " has no settings in the defaults; it groups other sections, so its entries mean nothing.");
            return;
        }
        report_.add(Rule::UnknownSection, attribute,
                    "The defaults have no section " + inQuotes(section) + ", so its entries mean nothing.",
                    names_.hintForSection(section));
    }

    void tellMeant(const EntryFinding& finding, View place) {
        const std::string meant = names_.fullName(catalogue_.findEntry(finding.name, finding.section)->number);
        const std::string own = fullNameOf(finding.section, finding.name);
        const bool isThere = catalogue_.settings().find(prefs::keyOf(own)) != nullptr;
        report_.addAtKey(
            Rule::AnotherSection, place, finding.name,
            "The name " + inQuotes(finding.name) + " means " + meant + ", so this entry sets that and " +
                (isThere ? own + " stays as it is." : "nothing in the section " + inQuotes(finding.section) + '.'),
            "Write the full name of the setting that you mean, " + (isThere ? own + " or " : "") + meant + '.');
    }

    command::SectionOwner ownerOf(const VisitedSection& visited) const {
        const bool isThere = catalogue_.sections().count(visited.attributePath) != 0;
        return isThere ? command::SectionOwner(catalogue_.subManagerOf(visited.attributePath)) : std::nullopt;
    }

    void inSection(const VisitedSection& visited) {
        if (const command::SectionOwner owner = ownerOf(visited)) {
            contents_.check(*owner, visited);
        }
    }

    void note(const prefs::AcceptedEntry& accepted) {
        const std::uint32_t number = accepted.setting.number;
        const json::Member& entry = accepted.entry;
        const auto [before, isNew] = entries_.try_emplace(number, entry);
        if (!isNew) {
            report_.addAtKey(
                Rule::RepeatedEntry, before->second.value, before->second.key,
                command::nameOfLaterEntry(report_.keyPlaceOf(before->second.value), report_.keyPlaceOf(entry.value)) +
                    " sets " + names_.fullName(number) + " too, and the last one counts.");
            before->second = entry;
        }
    }

    Report& report_;
    KnownNames names_;
    SectionContents contents_;
    prefs::Catalogue catalogue_;
    std::unordered_map<std::uint32_t, json::Member> entries_;
};

/// Returns what a section holds as far as that can be told without the defaults: by its own number, or where it has
/// none, by its content.
prefs::SubManagerType typeByItself(const VisitedSection& visited) {
    const View section = visited.element;
    const bool looksLikeActions =
        !section.member(prefs::kSubmanagerId) && actions::userEntriesOf(section.member(prefs::kOverriddenSettings));
    return looksLikeActions ? prefs::SubManagerType::Actions : prefs::SubManagerType{prefs::subManagerNumber(section)};
}

}  // namespace

void checkUser(View root, View defaults, Report& report) {
    SectionForms(report, [&](View section) { checkObject(section, userSectionForm(), report); }).run(root);
    if (defaults) {
        AgainstDefaults(root, defaults, report);
        return;
    }
    checkRepeatedPaths(root, typeByItself, report);
    SectionContents contents(View(), report);
    prefs::forEachSection(root, [&](const VisitedSection& visited) { contents.check(typeByItself(visited), visited); });
}

}  // namespace zelutil::lint
