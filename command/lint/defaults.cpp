// The rules for the preference defaults. Which definition counts is asked of the library's own catalogue.
#include <map>
#include <string>

#include "command/lint/checks.h"
#include "command/lint/section_forms.h"
#include "prefs/catalogue_reader.h"

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
                                   {prefs::kUnique, Type::Truth, Need::Optional,
                                    "This one counts as false, so that the section lends no bare names."},
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
    explicit RepeatedDefinitions(Report& report) : report_(report) {}

    void run(View root) {
        prefs::readDefaults(root, catalogue_, [this](const prefs::Definition& made) { note(made); });
        if (catalogue_.settings().size() != names_) {
            findRepeated();
        }
        prefs::forEachSection(root, [this](const VisitedSection& visited) { checkSubManager(visited); });
    }

private:
    struct Defined {
        View element;
        std::size_t path = 0;  ///< Its place among the paths.
        bool lendsBareName = false;

        View name() const { return element.member(prefs::kName); }
    };

    void findRepeated() {
        for (std::uint32_t number = 0; number < definitions_.size(); ++number) {
            if (!isRepeated(number) && definitions_[number].lendsBareName) {
                checkBareName(number);
            }
        }
    }

    void note(const prefs::Definition& made) {
        names_ += made.lendsBareName ? 2U : 1U;
        if (paths_.empty() || paths_.back() != made.attributePath) {
            paths_.push_back(made.attributePath);
        }
        definitions_.push_back({made.element, paths_.size() - 1, made.lendsBareName});
    }

    bool isRepeated(std::uint32_t number) {
        const std::uint32_t holder = catalogue_.settings().find(catalogue_.settings().record(number).key)->number;
        if (holder == number) {
            return false;
        }
        const View name = definitions_[number].name();
        report_.add(Rule::RepeatedSetting, name,
                    "The setting " + inQuotes(fullNameOf(paths_[definitions_[number].path], *name.text())) +
                        " is defined earlier (" + lineOf(holder) + "), and the first definition counts.");
        return true;
    }

    void checkBareName(std::uint32_t number) {
        const View name = definitions_[number].name();
        const std::uint32_t holder = catalogue_.find(*name.text())->number;
        if (holder != number) {
            report_.add(Rule::BareNameTwice, name,
                        "The bare name " + inQuotes(*name.text()) + " means another section's setting (" +
                            lineOf(holder) + ").",
                        "Give the section \"unique\": false, or the setting another name.");
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

    std::string lineOf(std::uint32_t number) const { return report_.lineOf(definitions_[number].name()); }

    Report& report_;
    prefs::Catalogue catalogue_;
    /// By the numbers of their records.
    std::vector<Defined> definitions_;
    std::vector<std::string> paths_;
    /// Counts the full and the bare names. The catalogue has as many where no name is there twice.
    std::size_t names_ = 0;
    std::map<std::int32_t, View> subManagers_;
};

}  // namespace

void checkDefaults(View root, Report& report) {
    SectionForms(report, [&](View section) { checkSection(section, report); }).run(root);
    checkRepeatedPaths(
        root, [](const prefs::VisitedSection&) { return command::SectionOwner(); }, report);
    RepeatedDefinitions(report).run(root);
}

}  // namespace zelutil::lint
