#include "prefs/save_plan.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "json/writer.h"
#include "prefs/save_layout.h"
#include "prefs/setting_name.h"
#include "prefs/user_file_filling.h"

namespace zelutil::prefs {
namespace {

/// One planning of a save.
class Planning {
public:
    Planning(const Catalogue& catalogue, const SaveValues& values)
        : catalogue_(catalogue),
          values_(values),
          changed_(catalogue.settings().recordCount()),
          inFile_(catalogue.settings().recordCount()),
          filling_(values.layout().form()) {}

    std::optional<SavePlan> plan() {
        for (const SaveLayout::Section& section : values_.layout().sections()) {
            planSection(section);
        }
        if (plan_.newValues.empty() && plan_.changedTexts.empty()) {
            return std::nullopt;
        }
        plan_.fileText = filling_.take();
        planJournal();
        return std::move(plan_);
    }

private:
    void planSection(const SaveLayout::Section& section) {
        const SaveValues::SubManagerText* const text =
            section.owner == SubManagerType::None ? nullptr : values_.textOf(section.owner);
        if (text != nullptr) {
            planSubManagerText(section.owner, *text);
            return;
        }
        filling_.beginList();
        for (std::uint32_t definition = section.begin; definition < section.end; ++definition) {
            if (const std::string* const wanted = values_.of(definition)) {
                planSetting(section, definition, *wanted);
            }
        }
        filling_.endList();
    }

    void planSubManagerText(SubManagerType type, const SaveValues::SubManagerText& text) {
        filling_.put(text.document.root());
        plan_.changedTexts.try_emplace(type, text.text);
        if (type == SubManagerType::Actions) {
            plan_.actionsText = json::compactText(text.document.root()).value_or("");
        }
    }

    /// A definition with a value has a place.
    void planSetting(const SaveLayout::Section& section, std::uint32_t definition, const std::string& wanted) {
        SaveLayout& layout = values_.layout();
        const std::uint32_t place = layout.placeOf(definition);
        const Setting& setting = catalogue_.settings().at(place);
        const std::string* const users = userValueAfter(setting);
        const std::string& current = users == nullptr ? setting.defaultValue : *users;
        if (wanted == current && users == nullptr) {
            return;
        }
        filling_.add(layout.nameOf(definition), wanted);
        const std::uint32_t record = layout.recordRead(catalogue_, section, definition);
        if (record != SaveLayout::kNone) {
            inFile_[record] = &wanted;
            if (record != setting.number) {
                othersRead_.push_back(record);
            }
        }
        if (wanted != current) {
            planChange(setting, catalogue_.settings().keyAt(place), wanted);
            plan_.changedNames.insert(section.attributePath + std::string(kNameSeparator) +
                                      std::string(layout.nameOf(definition)));
        }
    }

    void planChange(const Setting& setting, std::uint64_t key, const std::string& wanted) {
        changed_[setting.number] = &wanted;
        plan_.newValues.push_back({key, wanted});
    }

    /// Looks at the settings that a value of the user concerns, before or afterwards.
    void planJournal() {
        if (!values_.areOfNow(catalogue_)) {
            // The host has saved during the search for the file.
            for (std::uint32_t number = 0; number < inFile_.size(); ++number) {
                planEntry(number);
            }
            return;
        }
        std::vector<std::uint32_t> users = usersSettingsAfter();
        for (const std::vector<std::uint32_t>* const numbers : {&users, &othersRead_}) {
            for (const std::uint32_t number : *numbers) {
                planEntry(number);
            }
        }
        plan_.usersSettings = std::move(users);
    }

    /// Returns the numbers of the settings that have a value of the user once the plan is in force, in order.
    std::vector<std::uint32_t> usersSettingsAfter() const {
        std::vector<std::uint32_t> changed;
        for (const Catalogue::NewValue& newValue : plan_.newValues) {
            changed.push_back(catalogue_.settings().find(newValue.key)->number);
        }
        std::sort(changed.begin(), changed.end());
        changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
        std::vector<std::uint32_t> users;
        std::set_union(values_.usersSettings().begin(), values_.usersSettings().end(), changed.begin(), changed.end(),
                       std::back_inserter(users));
        return users;
    }

    void planEntry(std::uint32_t number) {
        const std::string* const inForce = userValueAfter(catalogue_.settings().record(number));
        const std::string* const inFile = inFile_[number];
        const bool same = inForce == nullptr || inFile == nullptr ? inForce == inFile : *inForce == *inFile;
        if (!same) {
            plan_.journal[number] = {inFile == nullptr ? std::nullopt : std::optional<std::string>(*inFile), true};
        }
    }

    /// Returns the user's value of a setting once the plan, as far as it goes, is in force; null where there is none.
    const std::string* userValueAfter(const Setting& setting) const {
        if (changed_[setting.number] != nullptr) {
            return changed_[setting.number];
        }
        return setting.hasUserValue ? &setting.userValue : nullptr;
    }

    const Catalogue& catalogue_;
    const SaveValues& values_;
    /// The values that this plan has given so far: the current ones for what it meets later. By the numbers of the
    /// records, as the next one.
    std::vector<const std::string*> changed_;
    /// The values that a reader of the new file will take for the user's.
    std::vector<const std::string*> inFile_;
    /// The numbers of the records that have one because a name means them that is to mean another.
    std::vector<std::uint32_t> othersRead_;
    UserFileFilling filling_;
    SavePlan plan_;
};

}  // namespace

std::optional<SavePlan> planSave(const Catalogue& catalogue, const SaveValues& values) {
    return Planning(catalogue, values).plan();
}

}  // namespace zelutil::prefs
