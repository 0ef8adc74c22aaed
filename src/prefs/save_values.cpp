#include "prefs/save_values.h"

#include "json/writer.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {

SaveValues::SaveValues(const Catalogue& catalogue, const SaveRequest& request) : byPlace_(catalogue.settings().size()) {
    findValues(catalogue.settings(), request.settings);
    for (const std::string*& value : byPlace_) {
        if (value != nullptr) {
            value = &values_.emplace_back(*value);
        }
    }
    addTexts(request.subManagerTexts);
    addUsersTexts(catalogue.userSubManagerTexts());
}

const SaveValues::SubManagerText* SaveValues::textOf(SubManagerType type) const {
    const auto found = texts_.find(type);
    return found == texts_.end() ? nullptr : &found->second;
}

/// Finds what the user had set before, and over that what the host hands over.
void SaveValues::findValues(const SettingIndex& settings, const std::map<std::string, std::string>& handedOver) {
    for (std::size_t place = 0; place < settings.size(); ++place) {
        const Setting& setting = settings.at(place);
        if (setting.hasUserValue) {
            const bool isFullName = settings.keyAt(place) == setting.key;
            byPlace_[isFullName ? place : settings.placeOf(setting.key)] = &setting.userValue;
        }
    }
    for (const auto& [name, value] : handedOver) {
        if (const Setting* const setting = settings.find(keyOf(name))) {
            byPlace_[settings.placeOf(setting->key)] = &value;
        }
    }
}

void SaveValues::addTexts(const SubManagerTexts& handedOver) {
    for (const auto& [type, text] : handedOver) {
        const auto added = texts_.try_emplace(type, text).first;
        if (!added->second.document.valid()) {
            texts_.erase(added);
        }
    }
}

// Kept deliberately: what an earlier save was handed is not among the texts held. Part of the published behaviour;
// hosts may depend on it.
void SaveValues::addUsersTexts(const SubManagerTexts& held) {
    for (const auto& [type, text] : held) {
        if (texts_.count(type) != 0) {
            continue;
        }
        const json::Document document(text);
        if (!document.root().elements().empty()) {
            texts_.try_emplace(type, json::compactText(document.root()).value_or(""));
        }
    }
}

}  // namespace zelutil::prefs
