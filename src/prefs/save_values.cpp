#include "prefs/save_values.h"

#include "json/writer.h"
#include "prefs/setting_name.h"

namespace zelutil::prefs {

SaveValues::SaveValues(const Catalogue& catalogue, const SaveRequest& request)
    : layout_(SaveLayout::of(catalogue)), byDefinition_(layout_->definitionCount()), changesThen_(catalogue.changes()) {
    findUsersSettings(catalogue);
    addUsersValues(catalogue.settings());
    addValues(catalogue.settings(), request.settings);
    addTexts(request.subManagerTexts);
    addUsersTexts(catalogue.userSubManagerTexts());
}

const SaveValues::SubManagerText* SaveValues::textOf(SubManagerType type) const {
    const auto found = texts_.find(type);
    return found == texts_.end() ? nullptr : &found->second;
}

void SaveValues::findUsersSettings(const Catalogue& catalogue) {
    const Catalogue::KeptForSaves& kept = catalogue.keptForSaves();
    if (kept.changesThen == changesThen_) {
        usersSettings_ = kept.usersSettings;
        return;
    }
    for (std::uint32_t number = 0; number < catalogue.settings().recordCount(); ++number) {
        if (catalogue.settings().record(number).hasUserValue) {
            usersSettings_.push_back(number);
        }
    }
}

/// Adds what the user had set before.
void SaveValues::addUsersValues(const SettingIndex& settings) {
    for (const std::uint32_t number : usersSettings_) {
        add(layout_->placeOfRecord(number), settings.record(number).userValue);
    }
    for (const std::uint32_t place : layout_->sharedPlaces()) {
        const Setting& setting = settings.at(place);
        if (setting.hasUserValue) {
            add(layout_->placeOfRecord(setting.number), setting.userValue);
        }
    }
}

/// Adds what the host hands over, which goes before.
void SaveValues::addValues(const SettingIndex& settings, const std::map<std::string, std::string>& handedOver) {
    for (const auto& [name, value] : handedOver) {
        if (const Setting* const setting = settings.find(keyOf(name))) {
            add(layout_->placeOfRecord(setting->number), value);
        }
    }
}

/// Gives the value to all definitions of the full name that has this place, in the stead of an earlier one.
void SaveValues::add(std::uint32_t place, const std::string& value) {
    const std::uint32_t first = place == SaveLayout::kNone ? SaveLayout::kNone : layout_->firstAt(place);
    if (first == SaveLayout::kNone) {
        return;
    }
    const std::string& copy = values_.emplace_back(value);
    for (std::uint32_t definition = first; definition != SaveLayout::kNone;
         definition = layout_->nextAfter(definition)) {
        byDefinition_[definition] = &copy;
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
            if (auto compact = json::compactText(document.root())) {
                texts_.try_emplace(type, *std::move(compact));
            }
        }
    }
}

}  // namespace zelutil::prefs
