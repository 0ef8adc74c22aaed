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

/// The values to be saved, by the keys of the settings' full names.
using ValuesByKey = std::unordered_map<std::uint64_t, std::string_view>;

/// Returns what the user had set before, under what the host hands over.
ValuesByKey valuesToSave(const Catalogue& catalogue, const std::map<std::string, std::string>& settings) {
    ValuesByKey values;
    for (const Setting* const setting : catalogue.settings().inKeyOrder()) {
        if (setting->hasUserValue) {
            values[setting->key] = setting->userValue;
        }
    }
    for (const auto& [name, value] : settings) {
        if (const Setting* const setting = catalogue.find(name)) {
            values[setting->key] = value;
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
          wanted_(valuesToSave(catalogue, request.settings)),
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
        const auto wanted = wanted_.find(key);
        const Setting* const setting = catalogue_.settings().find(key);
        if (wanted == wanted_.end() || setting == nullptr) {
            return;
        }
        const auto changed = changed_.find(setting);
        const bool isUsers = setting->hasUserValue || changed != changed_.end();
        const std::string_view current = changed != changed_.end() ? changed->second : setting->valueInForce();
        if (wanted->second == current && !isUsers) {
            return;
        }
        saved.values.push_back({name, wanted->second});
        if (wanted->second != current) {
            changed_[setting] = wanted->second;
            plan_.newValues.push_back({key, std::string(wanted->second)});
            plan_.changedNames.insert(attributePath + std::string(kNameSeparator) + std::string(name));
        }
    }

    const Catalogue& catalogue_;
    const ValuesByKey wanted_;
    const SubManagerTextsToSave subManagerTexts_;
    /// The values that this plan has given so far: the current ones for what it meets later.
    std::unordered_map<const Setting*, std::string_view> changed_;
    std::vector<SavedSection> sections_;
    SavePlan plan_;
};

}  // namespace

std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveRequest& request) {
    return Planning(catalogue, request).plan();
}

}  // namespace zelutil::prefs
