#include "support/prefs_subject.h"

#include "prefs/preference_model.h"

namespace zelutil::test {
namespace {

using Model = UserPreferenceManager::Model;
using Type = UserPreferenceManager::SubManagerType;

}  // namespace

struct PrefsSubject::Implementation {
    Model model;
};

PrefsSubject::PrefsSubject(const std::string& defaultsText, const std::string& userText)
    : implementation_(std::make_unique<Implementation>()) {
    implementation_->model.takeDefaults(defaultsText);
    implementation_->model.takeUserSettings(userText);
}

PrefsSubject::~PrefsSubject() = default;

const std::string* PrefsSubject::value(const std::string& name) const {
    const auto* const setting = implementation_->model.findSetting(name);
    return setting == nullptr ? nullptr : &Model::getMergedValueForSetting(setting);
}

const std::string* PrefsSubject::defaultValue(const std::string& name) const {
    const auto* const setting = implementation_->model.findSetting(name);
    return setting == nullptr ? nullptr : &Model::getDefaultValueForSetting(setting);
}

std::map<std::string, TwinSection> PrefsSubject::sections() const {
    std::map<std::string, TwinSection> sections;
    for (const auto& [path, section] : implementation_->model.sections()) {
        sections[path] = {section->parentHeader, section->header,       section->attributePath, section->tclCommand,
                          section->unique,       section->submanagerId, section->hasChildren};
    }
    return sections;
}

bool PrefsSubject::initializeSubManagers() {
    implementation_->model.initializeSubManagers();
    return implementation_->model.subManager(Type::Actions) != nullptr;
}

PrefsSaved PrefsSubject::save(const std::map<std::string, std::string>& settings,
                              const std::map<std::int32_t, std::string>& subManagerTexts) {
    std::map<Type, std::string> handedOver;
    for (const auto& [type, text] : subManagerTexts) {
        handedOver[Type{type}] = text;
    }
    Model& model = implementation_->model;
    const auto text = model.overrideUserSettings(model.valuesToSave(settings), model.subManagerTextsToSave(handedOver));
    PrefsSaved saved;
    saved.told = text.has_value();
    // A text that could not be read back is not written.
    if (text && !text->empty()) {
        saved.text = text;
    }
    saved.changedNames = model.changedSettingNames();
    for (const auto& [type, changed] : model.changedSubManagerSettings()) {
        saved.changedTexts[static_cast<std::int32_t>(type)] = changed;
    }
    return saved;
}

}  // namespace zelutil::test
