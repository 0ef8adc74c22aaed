// How the user's file is made anew from the defaults and what the user set.
#include <zelutil/prefs/user_preference_server.h>

#include <algorithm>
#include <deque>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "json/document.h"
#include "json/writer.h"
#include "prefs/preference_files.h"
#include "prefs/preference_model.h"
#include "prefs/section_json.h"
#include "prefs/setting_name.h"

using zelutil::json::View;
using zelutil::prefs::JoinedNames;
using zelutil::prefs::keyOf;
using zelutil::prefs::kNameSeparator;
namespace json = zelutil::json;
namespace prefs = zelutil::prefs;

namespace {

/// The "overriddensettings" of one section, in the file that is being made.
struct SavedSection {
    struct Value {
        std::string_view name;
        std::string value;
    };

    /// The values, or, when it is not absent, what a sub-manager has there.
    std::vector<Value> values;
    View subManagerValue;
};

/// Writes the defaults with each section made the user's. The sections come in the order of the walk: a section before
/// its children.
class SavedTextWriter {
public:
    explicit SavedTextWriter(const std::vector<SavedSection>& sections) : next_(sections.begin()) {}

    std::string written(View root) {
        writeObject(root, prefs::kMeta, {});
        return writer_.take().value_or("");
    }

private:
    /// Writes an object. The first member `arrayName` is an array of sections where it is an array at all; of each name
    /// in `left` the first member is left out; `overridden`, where there is any, goes in the place of the first member
    /// of its name, or last.
    void writeObject(View object, std::string_view arrayName, std::initializer_list<std::string_view> left,
                     const SavedSection* overridden = nullptr) {
        std::vector<std::string_view> special(left);
        special.push_back(arrayName);
        if (overridden != nullptr) {
            special.push_back(prefs::kOverriddenSettings);
        }
        writer_.beginObject();
        for (const auto& [key, value] : object.members()) {
            const auto found = std::find(special.begin(), special.end(), key);
            const bool isSpecial = found != special.end();
            if (isSpecial) {
                special.erase(found);
            }
            const bool isArray = isSpecial && key == arrayName && value.isArray();
            if (isSpecial && key == prefs::kOverriddenSettings) {
                writeOverridden(*overridden);
                overridden = nullptr;
            } else if (isArray) {
                writer_.key(key);
                writeArray(value);
            } else if (!isSpecial || key == arrayName) {
                writer_.key(key);
                writer_.copy(value);
            }
        }
        if (overridden != nullptr) {
            writeOverridden(*overridden);
        }
        writer_.endObject();
    }

    void writeArray(View array) {
        writer_.beginArray();
        for (const View element : array.elements()) {
            if (prefs::sectionNames(element)) {
                const SavedSection& section = *next_++;
                writeObject(element, prefs::kChildren, {prefs::kTclCommand, prefs::kDefaultSettings}, &section);
            } else {
                writer_.copy(element);
            }
        }
        writer_.endArray();
    }

    void writeOverridden(const SavedSection& section) {
        writer_.key(prefs::kOverriddenSettings);
        if (section.subManagerValue) {
            writer_.copy(section.subManagerValue);
            return;
        }
        writer_.beginArray();
        for (const SavedSection::Value& value : section.values) {
            writer_.beginObject();
            writer_.key(value.name);
            writer_.text(value.value);
            writer_.endObject();
        }
        writer_.endArray();
    }

    std::vector<SavedSection>::const_iterator next_;
    json::PrettyWriter writer_;
};

}  // namespace

/// One walk over the sections of the defaults that finds what the user's have instead.
class UserPreferenceManager::Model::SavingWalk {
public:
    SavingWalk(Model& model, ValuesByHash& valuesByHash, const SubManagerTexts& subManagerTexts)
        : model_(model), valuesByHash_(valuesByHash), subManagerTexts_(subManagerTexts) {
        for (const auto& [type, text] : subManagerTexts) {
            subManagerValues_.try_emplace(type, text);
        }
    }

    /// True when anything changed.
    bool overrideArray(View array) {
        bool changed = false;
        for (const View element : array.elements()) {
            changed = overrideElement(element) || changed;
        }
        return changed;
    }

    /// A section before its children.
    const std::vector<SavedSection>& sections() const { return sections_; }

private:
    bool overrideElement(View element) {
        const auto names = prefs::sectionNames(element);
        if (!names) {
            return false;
        }
        const JoinedNames::Level attribute(attributes_, names->attribute);
        const bool changed = fillOverridden(element, sections_.emplace_back());
        return overrideArray(element.member(prefs::kChildren)) || changed;
    }

    bool fillOverridden(View section, SavedSection& overridden) {
        IUserSettingsManager* manager = nullptr;
        SubManagerType type = SubManagerType::None;
        if (model_.doesClientHaveSubmanager(attributes_.text(), &manager, type)) {
            return takeSubManagerText(type, overridden);
        }
        return overrideSettings(section.member(prefs::kDefaultSettings), overridden);
    }

    bool takeSubManagerText(SubManagerType type, SavedSection& overridden) {
        const auto text = subManagerTexts_.find(type);
        if (text == subManagerTexts_.end()) {
            return false;
        }
        overridden.subManagerValue = subManagerValues_.at(type).root();
        model_.changedSubManagerSettings_.insert(*text);
        return true;
    }

    bool overrideSettings(View defaultSettings, SavedSection& overridden) {
        const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(attributes_.text()));
        bool changed = false;
        for (const View element : defaultSettings.elements()) {
            if (const auto setting = prefs::defaultSetting(element)) {
                overrideSetting(setting->name, keyOf(setting->name, prefixKey), overridden, changed);
            }
        }
        return changed;
    }

    /// Sets `changed` when it changes.
    void overrideSetting(std::string_view name, std::uint64_t key, SavedSection& overridden, bool& changed) {
        const std::string* const wanted = valuesByHash_.find(key);
        // What is wanted has the key of a setting; a section that only groups may still hold something of that name.
        MetaSettings* const setting = model_.settingsByHash_.find(key);
        if (wanted == nullptr || setting == nullptr) {
            return;
        }
        const bool differs = *wanted != getMergedValueForSetting(setting);
        if (!differs && !setting->hasUserValue) {
            return;
        }
        // The value may change before the text is written.
        overridden.values.push_back({name, *wanted});
        if (differs) {
            keepForItsOwnName(*setting, key);
            setting->userValue = *wanted;
            setting->hasUserValue = true;
            model_.changedSettingNames_.insert(attributes_.text() + std::string(kNameSeparator) + std::string(name));
            changed = true;
        }
    }

    /// The bare name of one setting may be the full name of another and lead to the first. What the first one is to be
    /// saved with under its own name does not change with that.
    void keepForItsOwnName(const MetaSettings& setting, std::uint64_t key) {
        if (setting.key != key && valuesByHash_.find(setting.key) == &setting.userValue) {
            valuesByHash_.set(setting.key, keptValues_.emplace_back(setting.userValue));
        }
    }

    Model& model_;
    ValuesByHash& valuesByHash_;
    const SubManagerTexts& subManagerTexts_;
    std::deque<std::string> keptValues_;
    std::map<SubManagerType, json::Document> subManagerValues_;
    std::vector<SavedSection> sections_;
    JoinedNames attributes_{""};
};

void UserPreferenceManager::Model::updateUserPrefSettings(const std::map<std::string, std::string>& settings,
                                                          const SubManagerTexts& subManagerSettings) {
    updatePreferenceManager(valuesToSave(settings), subManagerTextsToSave(subManagerSettings));
}

/// What the user had set before, under what the host hands over, all by full name.
UserPreferenceManager::Model::ValuesByHash UserPreferenceManager::Model::valuesToSave(
    const std::map<std::string, std::string>& settings) const {
    const std::vector<MetaSettings*> present = settingsByHash_.inKeyOrder();
    ValuesByHash values(present.size() + settings.size());
    for (const MetaSettings* const setting : present) {
        if (setting->hasUserValue) {
            values.set(setting->key, setting->userValue);
        }
    }
    for (const auto& [name, value] : settings) {
        if (const MetaSettings* const setting = findSetting(name)) {
            values.set(setting->key, value);
        }
    }
    return values;
}

/// What the user's file held, where it can be used, under what the host hands over.
// Kept deliberately: what an earlier save was handed is not among it. Hosts hand the current text over each time.
UserPreferenceManager::Model::SubManagerTexts UserPreferenceManager::Model::subManagerTextsToSave(
    const SubManagerTexts& subManagerSettings) const {
    SubManagerTexts texts;
    for (const auto& [type, text] : userSubManagerSettings_) {
        const json::Document document(text);
        if (!document.root().elements().empty()) {
            texts.try_emplace(type, convertJsonToString(document.root()));
        }
    }
    for (const auto& [type, text] : subManagerSettings) {
        if (json::Document(text).valid()) {
            texts[type] = text;
        }
    }
    return texts;
}

void UserPreferenceManager::Model::updatePreferenceManager(ValuesByHash valuesByHash,
                                                           const SubManagerTexts& subManagerTexts) {
    const std::string path = prefs::getWrittenUserFileName();
    auto text = overrideUserSettings(std::move(valuesByHash), subManagerTexts);
    if (!text) {
        return;
    }
    if (!text->empty()) {
        userFile_.write(path, *text);
    }
    // Copies: an observer may save in its turn.
    const std::set<std::string> names = changedSettingNames_;
    const SubManagerTexts texts = changedSubManagerSettings_;
    ZelU::Marl::UserPreferenceServer::getInstance().notifyUserSettingsChanged(names, texts);
}

std::optional<std::string> UserPreferenceManager::Model::overrideUserSettings(ValuesByHash valuesByHash,
                                                                              const SubManagerTexts& subManagerTexts) {
    changedSubManagerSettings_.clear();
    changedSettingNames_.clear();
    const json::Document document(defaultText_);
    SavingWalk walk(*this, valuesByHash, subManagerTexts);
    if (!walk.overrideArray(document.root().member(prefs::kMeta))) {
        return std::nullopt;
    }
    return SavedTextWriter(walk.sections()).written(document.root());
}

bool UserPreferenceManager::Model::doesClientHaveSubmanager(const std::string& attributePath,
                                                            IUserSettingsManager** manager,
                                                            SubManagerType& type) const {
    type = SubManagerType::None;
    const auto section = uiSections_.find(attributePath);
    if (section == uiSections_.end() || SubManagerType{section->second->submanagerId} == SubManagerType::None) {
        return false;
    }
    type = SubManagerType{section->second->submanagerId};
    if (IUserSettingsManager* const registered = subManager(type)) {
        *manager = registered;
    }
    return true;
}
