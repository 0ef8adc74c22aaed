#include "prefs/catalogue.h"

#include <utility>

namespace zelutil::prefs {

SubManagerType Catalogue::subManagerOf(const std::string& attributePath) const {
    const auto section = sections_.find(attributePath);
    return section == sections_.end() ? SubManagerType::None : SubManagerType{section->second->submanagerId};
}

void Catalogue::putInForce(std::vector<NewValue> newValues) noexcept {
    for (NewValue& newValue : newValues) {
        if (Setting* const setting = settings_->find(newValue.key)) {
            setting->setUserValue(std::move(newValue.value));
        }
    }
}

// NOLINTBEGIN(performance-unnecessary-value-param): try_emplace moves them, which the check does not see.
void Catalogue::addSection(std::shared_ptr<Section> section) {
    const std::string& path = section->attributePath;
    sections_.try_emplace(path, std::move(section));
}

void Catalogue::addDefaultSubManagerText(SubManagerType type, std::string text) {
    defaultSubManagerTexts_.try_emplace(type, std::move(text));
}

void Catalogue::addUserSubManagerText(SubManagerType type, std::string text) {
    userSubManagerTexts_.try_emplace(type, std::move(text));
}
// NOLINTEND(performance-unnecessary-value-param)

void Catalogue::setSettings(SettingIndex settings) { settings_ = std::make_shared<SettingIndex>(std::move(settings)); }

void Catalogue::setDefaultsText(std::string text) { defaultsText_ = std::move(text); }

}  // namespace zelutil::prefs
