// The rules for the preference defaults. Which definition counts is asked of the library's own catalogue.
#include <map>
#include <string>

#include "command/lint/checks.h"
#include "command/lint/section_forms.h"
#include "prefs/catalogue_reader.h"
#include "prefs/definition_walk.h"

namespace zelutil::lint {
namespace {

using json::View;
using prefs::VisitedSection;

const ObjectForm& definedSectionForm() {
    static const ObjectForm kForm{"a section",
                                  {{prefs::kHeader, Type::Text, Need::Required},
                                   {prefs::kAttribute, Type::Text, Need::Required},
                                   {prefs::kTclCommand, Type::Text},
                                   {prefs::kDefaultSettings, Type::Any},
                                   {prefs::kUnique, Type::Truth},
                                   {prefs::kSubmanagerId, Type::Integer},
                                   {prefs::kChildren, Type::Array}}};
    return kForm;
}

const ObjectForm& settingForm() {
    static const ObjectForm kForm{
        "a setting", {{prefs::kName, Type::TextNotEmpty, Need::Required}, {prefs::kValue, Type::Text, Need::Required}}};
    return kForm;
}

void checkSettings(View settings, Report& report) {
    checkType(settings, prefs::kDefaultSettings, Type::Array, report);
    for (const View setting : settings.elements()) {
        checkObject(setting, settingForm(), report);
    }
}

/// The settings of a section count only when both members are there.
void checkPair(View section, std::string_view missing, std::string_view there, Report& report) {
    if (!section.member(missing) && section.member(there)) {
        report.addAtKey(
            Rule::MissingMember, section.member(there), there,
            "The member " + inQuotes(missing) + " is missing, without which " + inQuotes(there) + " is not read.");
    }
}

void checkSection(View section, Report& report) {
    if (!checkObject(section, definedSectionForm(), report)) {
        return;
    }
    checkPair(section, prefs::kTclCommand, prefs::kDefaultSettings, report);
    checkPair(section, prefs::kDefaultSettings, prefs::kTclCommand, report);
    const View settings = section.member(prefs::kDefaultSettings);
    const prefs::SubManagerType type{prefs::subManagerNumber(section)};
    if (type == prefs::SubManagerType::None) {
        checkSettings(settings, report);
    } else if (type == prefs::SubManagerType::Actions) {
        if (settings) {
            checkActions(settings, report);
        }
    } else {
        report.add(Rule::SubManager, section.member(prefs::kSubmanagerId),
                   "The library has a sub-manager " +
                       std::to_string(static_cast<std::int32_t>(prefs::SubManagerType::Actions)) +
                       ", for the actions, and no other.");
    }
}

/// Looks which definitions the catalogue does not take.
class RepeatedDefinitions {
public:
    RepeatedDefinitions(View root, Report& report) : report_(report) { prefs::readDefaults(root, catalogue_); }

    void run(View root) {
        prefs::forEachSection(root, [this](const VisitedSection& visited) { inSection(visited); });
    }

private:
    struct Definition {
        View name;
        std::string fullName;
    };

    void inSection(const VisitedSection& visited) {
        checkPath(visited);
        if (!prefs::hasOwnSettings(visited.element)) {
            checkSubManager(visited);
            return;
        }
        const View unique = visited.element.member(prefs::kUnique);
        const bool lendsBareNames = !unique || unique.isTrue();
        for (const View element : visited.element.member(prefs::kDefaultSettings).elements()) {
            if (const auto setting = prefs::defaultSetting(element)) {
                const std::string fullName =
                    visited.attributePath + std::string(prefs::kNameSeparator) + std::string(setting->name);
                definitions_.push_back({element.member(prefs::kName), fullName});
                checkDefinition(*setting, lendsBareNames);
            }
        }
    }

    void checkPath(const VisitedSection& visited) {
        const View attribute = visited.element.member(prefs::kAttribute);
        const auto [first, isNew] = paths_.try_emplace(visited.attributePath, attribute);
        if (!isNew) {
            report_.add(Rule::RepeatedPath, attribute,
                        "The attribute path " + inQuotes(visited.attributePath) + " is that of another section (" +
                            report_.lineOf(first->second) + ").");
        }
    }

    void checkSubManager(const VisitedSection& visited) {
        if (!prefs::hasSubManager(visited.element)) {
            return;
        }
        const View number = visited.element.member(prefs::kSubmanagerId);
        const auto [first, isNew] = subManagers_.try_emplace(prefs::subManagerNumber(visited.element), number);
        if (!isNew) {
            report_.add(Rule::SubManager, number,
                        "An earlier section belongs to this sub-manager (" + report_.lineOf(first->second) +
                            "), and only that one is read.");
        }
    }

    void checkDefinition(const prefs::DefaultSetting& setting, bool lendsBareNames) {
        const Definition& definition = definitions_.back();
        const std::size_t number = definitions_.size() - 1;
        const std::size_t holder = catalogue_.find(definition.fullName)->number;
        if (holder != number) {
            report_.add(Rule::RepeatedSetting, definition.name,
                        "The setting " + inQuotes(definition.fullName) + " is defined earlier (" + lineOf(holder) +
                            "), and the first definition counts.");
            return;
        }
        const std::size_t bareHolder = lendsBareNames ? catalogue_.find(setting.name)->number : number;
        if (bareHolder != number) {
            report_.add(Rule::BareNameTwice, definition.name,
                        "The bare name " + inQuotes(setting.name) + " means another section's setting (" +
                            lineOf(bareHolder) + ").",
                        "Give the section \"unique\": false, or the setting another name.");
        }
    }

    std::string lineOf(std::size_t number) const { return report_.lineOf(definitions_[number].name); }

    Report& report_;
    prefs::Catalogue catalogue_;
    /// By the numbers of their records.
    std::vector<Definition> definitions_;
    std::map<std::string, View> paths_;
    std::map<std::int32_t, View> subManagers_;
};

}  // namespace

void checkDefaults(View root, Report& report) {
    SectionForms(report, [&](View section) { checkSection(section, report); }).run(root);
    RepeatedDefinitions(root, report).run(root);
}

}  // namespace zelutil::lint
