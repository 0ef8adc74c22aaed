#include "support/prefs_subject.h"

#include "prefs/catalogue_reader.h"
#include "prefs/save_plan.h"
#include "prefs/sub_managers.h"

namespace zelutil::test {

struct PrefsSubject::Implementation {
    prefs::Catalogue catalogue;
};

PrefsSubject::PrefsSubject(const std::string& defaultsText, const std::string& userText)
    : implementation_(std::make_unique<Implementation>()) {
    prefs::readDefaults(defaultsText, implementation_->catalogue);
    prefs::readUserSettings(userText, implementation_->catalogue);
}

PrefsSubject::~PrefsSubject() = default;

const std::string* PrefsSubject::value(const std::string& name) const {
    const prefs::Setting* const setting = implementation_->catalogue.find(name);
    return setting == nullptr ? nullptr : &setting->valueInForce();
}

const std::string* PrefsSubject::defaultValue(const std::string& name) const {
    const prefs::Setting* const setting = implementation_->catalogue.find(name);
    return setting == nullptr ? nullptr : &setting->defaultValue;
}

std::map<std::string, TwinSection> PrefsSubject::sections() const {
    std::map<std::string, TwinSection> sections;
    for (const auto& [path, section] : implementation_->catalogue.sections()) {
        sections[path] = {section->parentHeader, section->header,       section->attributePath, section->tclCommand,
                          section->unique,       section->submanagerId, section->hasChildren};
    }
    return sections;
}

bool PrefsSubject::initializeSubManagers() {
    prefs::SubManagers managers;
    managers.initialize(implementation_->catalogue);
    return managers.find(prefs::SubManagerType::Actions) != nullptr;
}

PrefsSaved PrefsSubject::save(const std::map<std::string, std::string>& settings,
                              const std::map<std::int32_t, std::string>& subManagerTexts) {
    prefs::SubManagerTexts handedOver;
    for (const auto& [type, text] : subManagerTexts) {
        handedOver[prefs::SubManagerType{type}] = text;
    }
    auto plan = prefs::planSave(implementation_->catalogue,
                                prefs::SaveValues(implementation_->catalogue, {settings, handedOver}));
    PrefsSaved saved;
    saved.told = plan.has_value();
    if (!plan) {
        return saved;
    }
    implementation_->catalogue.putInForce(plan->newValues);
    saved.text = plan->fileText;
    saved.changedNames = plan->changedNames;
    for (const auto& [type, changed] : plan->changedTexts) {
        saved.changedTexts[static_cast<std::int32_t>(type)] = changed;
    }
    return saved;
}

}  // namespace zelutil::test
