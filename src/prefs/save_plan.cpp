#include "prefs/save_plan.h"

#include <string_view>
#include <unordered_map>
#include <utility>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/section_walk.h"
#include "prefs/setting_name.h"
#include "prefs/user_file_text.h"

namespace zelutil::prefs {
namespace {

using json::View;

/// The values to be saved, each at the place of its setting's full name in the index; null where there is none.
using ValuesByPlace = std::vector<const std::string*>;

/// Returns what the user had set before, under what the host hands over.
ValuesByPlace valuesToSave(const SettingIndex& settings, const std::map<std::string, std::string>& handedOver) {
    ValuesByPlace values(settings.size());
    for (std::size_t place = 0; place < settings.size(); ++place) {
        const Setting& setting = settings.at(place);
        if (setting.hasUserValue) {
            const bool isFullName = settings.keyAt(place) == setting.key;
            values[isFullName ? place : settings.placeOf(setting.key)] = &setting.userValue;
        }
    }
    for (const auto& [name, value] : handedOver) {
        if (const Setting* const setting = settings.find(keyOf(name))) {
            values[settings.placeOf(setting->key)] = &value;
        }
    }
    return values;
}

/// A sub-manager's text and what it says.
struct SubManagerText {
    explicit SubManagerText(std::string given) : text(std::move(given)), document(text) {}

    std::string text;
    json::Document document;
};

using SubManagerTextsToSave = std::map<SubManagerType, SubManagerText>;

/// Returns what the host hands over, where it is JSON, and otherwise what the user's file held, where it can be used.
// Kept deliberately: what an earlier save was handed is not among it. Hosts hand the current text over each time.
SubManagerTextsToSave subManagerTextsToSave(const Catalogue& catalogue, const SubManagerTexts& handedOver) {
    SubManagerTextsToSave texts;
    for (const auto& [type, text] : handedOver) {
        const auto added = texts.try_emplace(type, text).first;
        if (!added->second.document.valid()) {
            texts.erase(added);
        }
    }
    for (const auto& [type, text] : catalogue.userSubManagerTexts()) {
        if (texts.count(type) != 0) {
            continue;
        }
        const json::Document held(text);
        if (!held.root().elements().empty()) {
            texts.try_emplace(type, json::compactText(held.root()).value_or(""));
        }
    }
    return texts;
}

/// One planning of a save.
class Planning {
public:
    Planning(const Catalogue& catalogue, const SaveRequest& request)
        : catalogue_(catalogue),
          wanted_(valuesToSave(catalogue.settings(), request.settings)),
          subManagerTexts_(subManagerTextsToSave(catalogue, request.subManagerTexts)) {}

    std::optional<SavePlan> plan() {
        const json::Document defaults(catalogue_.defaultsText());
        forEachSection(defaults.root(), [this](const VisitedSection& visited) { planSection(visited); });
        if (plan_.newValues.empty() && plan_.changedTexts.empty()) {
            return std::nullopt;
        }
        plan_.fileText = userFileText(defaults.root(), sections_);
        return std::move(plan_);
    }

private:
    void planSection(const VisitedSection& visited) {
        SavedSection& saved = sections_.emplace_back();
        const SubManagerType type = catalogue_.subManagerOf(visited.attributePath);
        if (type != SubManagerType::None) {
            planSubManagerText(type, saved);
            return;
        }
        const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(visited.attributePath));
        for (const View element : visited.element.member(kDefaultSettings).elements()) {
            if (const auto setting = defaultSetting(element)) {
                planSetting(visited.attributePath, setting->name, keyOf(setting->name, prefixKey), saved);
            }
        }
    }

    void planSubManagerText(SubManagerType type, SavedSection& saved) {
        const auto found = subManagerTexts_.find(type);
        if (found != subManagerTexts_.end()) {
            saved.subManagerValue = found->second.document.root();
            plan_.changedTexts.try_emplace(type, found->second.text);
        }
    }

    void planSetting(const std::string& attributePath, std::string_view name, std::uint64_t key, SavedSection& saved) {
        const SettingIndex& settings = catalogue_.settings();
        const std::size_t place = settings.placeOf(key);
        const std::string* const wanted = place == settings.size() ? nullptr : wanted_[place];
        if (wanted == nullptr) {
            return;
        }
        const Setting& setting = settings.at(place);
        const auto changed = changed_.find(&setting);
        const bool isUsers = setting.hasUserValue || changed != changed_.end();
        const std::string& current = changed != changed_.end() ? *changed->second : setting.valueInForce();
        if (*wanted == current && !isUsers) {
            return;
        }
        saved.values.push_back({name, *wanted});
        if (*wanted != current) {
            changed_[&setting] = wanted;
            plan_.newValues.push_back({key, *wanted});
            plan_.changedNames.insert(attributePath + std::string(kNameSeparator) + std::string(name));
        }
    }

    const Catalogue& catalogue_;
    const ValuesByPlace wanted_;
    const SubManagerTextsToSave subManagerTexts_;
    /// The values that this plan has given so far: the current ones for what it meets later.
    std::unordered_map<const Setting*, const std::string*> changed_;
    std::vector<SavedSection> sections_;
    SavePlan plan_;
};

}  // namespace

std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveRequest& request) {
    return Planning(catalogue, request).plan();
}

}  // namespace zelutil::prefs
