#include "host/settings_wishes.h"

namespace zelutil::host {

SettingsWishes::SettingsWishes(const prefs::Catalogue& catalogue, const SettingsRequest& request) {
    if (request.values != nullptr) {
        for (const auto& [name, value] : *request.values) {
            add(catalogue, name, value);
        }
    }
    if (request.resets != nullptr) {
        for (const std::string& name : *request.resets) {
            add(catalogue, name, std::nullopt);
        }
    }
}

const SettingsWishes::Wish* SettingsWishes::find(const prefs::Setting& setting) const {
    const auto found = wishes_.find(setting.number);
    return found == wishes_.end() ? nullptr : &found->second;
}

void SettingsWishes::add(const prefs::Catalogue& catalogue, const std::string& name, Wish wish) {
    if (const prefs::Setting* const setting = catalogue.find(name)) {
        wishes_.insert_or_assign(setting->number, wish);
    } else {
        unknownNames_.push_back(name);
    }
}

}  // namespace zelutil::host
