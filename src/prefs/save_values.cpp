#include "prefs/save_values.h"

#include "json/writer.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {

SaveValues::SaveValues(const Catalogue& catalogue, const SaveRequest& request)
    : layout_(SaveLayout::of(catalogue)), byPlace_(catalogue.settings().size()) {
    addUsersValues(catalogue.settings());
    addValues(catalogue.settings(), request.settings);
    addTexts(request.subManagerTexts);
    addUsersTexts(catalogue.userSubManagerTexts());
}

const SaveValues::SubManagerText* SaveValues::textOf(SubManagerType type) const {
    const auto found = texts_.find(type);
    return found == texts_.end() ? nullptr : &found->second;
}

/// Adds what the user had set before.
void SaveValues::addUsersValues(const SettingIndex& settings) {
    for (std::uint32_t number = 0; number < settings.recordCount(); ++number) {
        const Setting& setting = settings.record(number);
        const std::uint32_t place = layout_->placeOfRecord(number);
        if (setting.hasUserValue && place != SaveLayout::kNone) {
            byPlace_[place] = &values_.emplace_back(setting.userValue);
        }
    }
    for (const std::uint32_t place : layout_->sharedPlaces()) {
        const Setting& setting = settings.at(place);
        if (setting.hasUserValue) {
            byPlace_[layout_->placeOfRecord(setting.number)] = &values_.emplace_back(setting.userValue);
        }
    }
}

/// Adds what the host hands over, which goes before.
void SaveValues::addValues(const SettingIndex& settings, const std::map<std::string, std::string>& handedOver) {
    for (const auto& [name, value] : handedOver) {
        if (const Setting* const setting = settings.find(keyOf(name))) {
            byPlace_[layout_->placeOfRecord(setting->number)] = &values_.emplace_back(value);
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
