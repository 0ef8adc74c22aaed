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

/// One planning of a save.
class Planning {
public:
    Planning(const Catalogue& catalogue, const SaveValues& values)
        : catalogue_(catalogue), values_(values), inFile_(catalogue.settings().recordCount()) {}

    std::optional<SavePlan> plan() {
        const json::Document defaults(catalogue_.defaultsText());
        forEachSection(defaults.root(), [this](const VisitedSection& visited) { planSection(visited); });
        if (plan_.newValues.empty() && plan_.changedTexts.empty()) {
            return std::nullopt;
        }
        plan_.fileText = userFileText(defaults.root(), sections_);
        planJournal();
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
        sectionIsRead_ = catalogue_.sections().count(visited.attributePath) != 0;
        const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(visited.attributePath));
        for (const View element : visited.element.member(kDefaultSettings).elements()) {
            if (const auto setting = defaultSetting(element)) {
                planSetting(visited.attributePath, setting->name, keyOf(setting->name, prefixKey), saved);
            }
        }
    }

    void planSubManagerText(SubManagerType type, SavedSection& saved) {
        if (const SaveValues::SubManagerText* const found = values_.textOf(type)) {
            saved.subManagerValue = found->document.root();
            plan_.changedTexts.try_emplace(type, found->text);
            if (type == SubManagerType::Actions) {
                plan_.actionsText = json::compactText(found->document.root()).value_or("");
            }
        }
    }

    void planSetting(const std::string& attributePath, std::string_view name, std::uint64_t key, SavedSection& saved) {
        const SettingIndex& settings = catalogue_.settings();
        const std::size_t place = settings.placeOf(key);
        const std::string* const wanted = place == settings.size() ? nullptr : values_.at(place);
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
        // Entries of a section without a record are not read.
        const Setting* const meant = sectionIsRead_ ? catalogue_.findEntry(name, attributePath) : nullptr;
        if (meant != nullptr) {
            inFile_[meant->number] = wanted;
        }
        if (*wanted != current) {
            changed_[&setting] = wanted;
            plan_.newValues.push_back({key, *wanted});
            plan_.changedNames.insert(attributePath + std::string(kNameSeparator) + std::string(name));
        }
    }

    void planJournal() {
        for (std::uint32_t number = 0; number < inFile_.size(); ++number) {
            const std::string* const inForce = userValueAfter(catalogue_.settings().record(number));
            const std::string* const inFile = inFile_[number];
            const bool same = inForce == nullptr || inFile == nullptr ? inForce == inFile : *inForce == *inFile;
            if (!same) {
                plan_.journal[number] = {inFile == nullptr ? std::nullopt : std::optional<std::string>(*inFile), true};
            }
        }
    }

    /// Returns the user's value of a setting once the plan is in force; null where there is none.
    const std::string* userValueAfter(const Setting& setting) const {
        const auto changed = changed_.find(&setting);
        if (changed != changed_.end()) {
            return changed->second;
        }
        return setting.hasUserValue ? &setting.userValue : nullptr;
    }

    const Catalogue& catalogue_;
    const SaveValues& values_;
    /// The values that this plan has given so far: the current ones for what it meets later.
    std::unordered_map<const Setting*, const std::string*> changed_;
    /// The settings that a reader of the new file will take for the user's values, by the numbers of the records.
    std::vector<const std::string*> inFile_;
    bool sectionIsRead_ = false;
    std::vector<SavedSection> sections_;
    SavePlan plan_;
};

}  // namespace

std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveValues& values) {
    return Planning(catalogue, values).plan();
}

}  // namespace zelutil::prefs
