// How the user's file is made anew from the defaults and what the user set.
#include <zelutil/prefs/user_preference_server.h>

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "prefs/preference_files.h"
#include "prefs/preference_model.h"
#include "prefs/section_json.h"
#include "prefs/setting_name.h"
#include "prefs/user_settings_file.h"

using zelutil::json::Value;
using zelutil::prefs::JoinedNames;
using zelutil::prefs::keyOf;
using zelutil::prefs::kNameSeparator;
namespace json = zelutil::json;
namespace prefs = zelutil::prefs;

namespace {

using Allocator = json::Document::AllocatorType;

/// A section that has the member keeps it where it stands.
void setMember(Value& object, const char* name, Value&& value, Allocator& allocator) {
    if (Value* const present = json::member(object, name)) {
        *present = std::move(value);
        return;
    }
    object.AddMember(rapidjson::StringRef(name), std::move(value), allocator);
}

}  // namespace

/// One walk over the sections of the defaults that turns them into the user's. What it puts into the document may point
/// into the walk.
class UserPreferenceManager::Model::SavingWalk {
public:
    SavingWalk(Model& model, Allocator& allocator, ValuesByHash& valuesByHash, const SubManagerTexts& subManagerTexts)
        : model_(model), allocator_(allocator), valuesByHash_(valuesByHash), subManagerTexts_(subManagerTexts) {
        for (const auto& [type, text] : subManagerTexts) {
            subManagerValues_.try_emplace(type, text);
        }
    }

    /// True when anything changed.
    bool overrideArray(Value& array) {
        bool changed = false;
        for (Value& element : array.GetArray()) {
            changed = overrideElement(element) || changed;
        }
        return changed;
    }

private:
    bool overrideElement(Value& element) {
        const auto names = prefs::sectionNames(element);
        if (!names) {
            return false;
        }
        const JoinedNames::Level attribute(attributes_, names->attribute);
        element.EraseMember(prefs::kTclCommand);
        Value overridden(rapidjson::kArrayType);
        bool changed = fillOverridden(element, overridden);
        element.EraseMember(prefs::kDefaultSettings);
        setMember(element, prefs::kOverriddenSettings, std::move(overridden), allocator_);
        if (Value* const children = json::arrayMember(element, prefs::kChildren)) {
            changed = overrideArray(*children) || changed;
        }
        return changed;
    }

    bool fillOverridden(const Value& section, Value& overridden) {
        IUserSettingsManager* manager = nullptr;
        SubManagerType type = SubManagerType::None;
        if (model_.doesClientHaveSubmanager(attributes_.text(), &manager, type)) {
            return takeSubManagerText(type, overridden);
        }
        const Value* const settings = json::arrayMember(section, prefs::kDefaultSettings);
        return settings != nullptr && overrideSettings(*settings, overridden);
    }

    bool takeSubManagerText(SubManagerType type, Value& overridden) {
        const auto text = subManagerTexts_.find(type);
        if (text == subManagerTexts_.end()) {
            return false;
        }
        overridden = Value(subManagerValues_.at(type).root(), allocator_);
        model_.changedSubManagerSettings_.insert(*text);
        return true;
    }

    bool overrideSettings(const Value& defaultSettings, Value& overridden) {
        const std::uint64_t prefixKey = keyOf(kNameSeparator, keyOf(attributes_.text()));
        bool changed = false;
        // Told of the members one by one, a document makes objects of just their size; AddMember makes room for 16.
        json::Document list(&allocator_);
        auto tell = [&](json::Document& events) {
            rapidjson::SizeType count = 0;
            events.StartArray();
            for (const Value& element : defaultSettings.GetArray()) {
                if (const auto setting = prefs::defaultSetting(element)) {
                    count += overrideSetting(setting->name, keyOf(setting->name, prefixKey), events, changed) ? 1 : 0;
                }
            }
            return events.EndArray(count);
        };
        list.Populate(tell);
        overridden = static_cast<Value&>(list);
        return changed;
    }

    /// Tells `events` what is to be written of the setting, and whether it is anything. Sets `changed` when it changes.
    bool overrideSetting(std::string_view name, std::uint64_t key, json::Document& events, bool& changed) {
        const std::string* const wanted = valuesByHash_.find(key);
        // What is wanted has the key of a setting; a section that only groups may still hold something of that name.
        MetaSettings* const setting = model_.settingsByHash_.find(key);
        if (wanted == nullptr || setting == nullptr) {
            return false;
        }
        const bool differs = *wanted != getMergedValueForSetting(setting);
        if (!differs && !setting->hasUserValue) {
            return false;
        }
        events.StartObject();
        // The name is the document's own; the value may change before the document is written.
        events.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()), false);
        events.String(wanted->data(), static_cast<rapidjson::SizeType>(wanted->size()), true);
        events.EndObject(1);
        if (differs) {
            keepForItsOwnName(*setting, key);
            setting->userValue = *wanted;
            setting->hasUserValue = true;
            model_.changedSettingNames_.insert(attributes_.text() + std::string(kNameSeparator) + std::string(name));
            changed = true;
        }
        return true;
    }

    /// The bare name of one setting may be the full name of another and lead to the first. What the first one is to be
    /// saved with under its own name does not change with that.
    void keepForItsOwnName(const MetaSettings& setting, std::uint64_t key) {
        if (setting.key != key && valuesByHash_.find(setting.key) == &setting.userValue) {
            valuesByHash_.set(setting.key, keptValues_.emplace_back(setting.userValue));
        }
    }

    Model& model_;
    Allocator& allocator_;
    ValuesByHash& valuesByHash_;
    const SubManagerTexts& subManagerTexts_;
    std::deque<std::string> keptValues_;
    std::map<SubManagerType, json::Text> subManagerValues_;
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
        const json::Text parsed(text);
        if (parsed.root().IsArray() && !parsed.root().Empty()) {
            texts.try_emplace(type, convertJsonToString(parsed.root()));
        }
    }
    for (const auto& [type, text] : subManagerSettings) {
        if (json::Text(text).valid()) {
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
        prefs::writeUserSettingsFile(path, std::move(*text));
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
    json::Text document(defaultText_);
    Value* const meta = json::arrayMember(document.root(), prefs::kMeta);
    SavingWalk walk(*this, document.allocator(), valuesByHash, subManagerTexts);
    if (meta == nullptr || !walk.overrideArray(*meta)) {
        return std::nullopt;
    }
    return json::prettyText(document.root()).value_or("");
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
