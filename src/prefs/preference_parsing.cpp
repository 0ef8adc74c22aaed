// How the texts of the two preference files become the model.
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "json/document.h"
#include "json/writer.h"
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

constexpr auto kNoSubManager = UserPreferenceManager::SubManagerType::None;

}  // namespace

/// One walk over the sections of the defaults.
class UserPreferenceManager::Model::DefaultsWalk {
public:
    DefaultsWalk(Model& model, std::string_view parentHeader, std::string_view parentAttribute)
        : model_(model), headers_(parentHeader), attributes_(parentAttribute) {}

    void readArray(View array) {
        for (const View element : array.elements()) {
            readElement(element);
        }
    }

private:
    void readElement(View element) {
        const auto names = prefs::sectionNames(element);
        if (!names) {
            return;
        }
        const JoinedNames::Level header(headers_, names->header);
        const JoinedNames::Level attribute(attributes_, names->attribute);
        const View children = element.member(prefs::kChildren);
        if (auto section = makeSection(element)) {
            section->parentHeader = header.outer();
            section->header = names->header;
            section->hasChildren = children.isArray();
            model_.uiSections_.try_emplace(attributes_.text(), std::move(section));
        }
        readArray(children);
    }

    /// Reads what belongs to the section itself. Null for a section that only groups others.
    std::shared_ptr<UserPreferenceUISection> makeSection(View element) {
        const auto tclCommand = element.member(prefs::kTclCommand).text();
        const View settings = element.member(prefs::kDefaultSettings);
        const View unique = element.member(prefs::kUnique);
        const auto type = SubManagerType{
            element.member(prefs::kSubmanagerId).integer().value_or(static_cast<std::int32_t>(kNoSubManager))};
        const bool hasSubManager = type != kNoSubManager;
        if (!tclCommand || !settings || !(hasSubManager || settings.isArray())) {
            return nullptr;
        }
        auto section = std::make_shared<UserPreferenceUISection>();
        section->attributePath = attributes_.text();
        section->tclCommand = *tclCommand;
        section->unique = !unique || unique.isTrue();
        section->submanagerId = static_cast<std::int32_t>(type);
        if (hasSubManager) {
            model_.defaultSubManagerSettings_.try_emplace(type, convertJsonToString(settings));
        } else {
            readSettings(settings, section->unique);
        }
        return section;
    }

    void readSettings(View array, bool unique) {
        const std::string prefix = attributes_.text() + std::string(kNameSeparator);
        const std::uint64_t prefixKey = keyOf(prefix);
        for (const View element : array.elements()) {
            const auto given = prefs::defaultSetting(element);
            if (!given) {
                continue;
            }
            model_.settingsByHash_.add(prefix, given->name, keyOf(given->name, prefixKey), given->value);
            if (unique) {
                model_.settingsByHash_.addKey(keyOf(given->name));
            }
        }
    }

    Model& model_;
    JoinedNames headers_;
    JoinedNames attributes_;
};

/// One walk over the sections of the user's file.
class UserPreferenceManager::Model::UserSettingsWalk {
public:
    UserSettingsWalk(Model& model, std::string_view parentAttribute) : model_(model), attributes_(parentAttribute) {}

    void readArray(View array) {
        for (const View element : array.elements()) {
            readElement(element);
        }
    }

private:
    void readElement(View element) {
        const auto names = prefs::sectionNames(element);
        if (!names) {
            return;
        }
        const JoinedNames::Level attribute(attributes_, names->attribute);
        if (const View overridden = element.member(prefs::kOverriddenSettings)) {
            readOverridden(overridden);
        }
        readArray(element.member(prefs::kChildren));
    }

    void readOverridden(View overridden) {
        const auto found = model_.uiSections_.find(attributes_.text());
        if (found == model_.uiSections_.end()) {
            return;
        }
        const SubManagerType type{found->second->submanagerId};
        if (type != kNoSubManager) {
            model_.userSubManagerSettings_.try_emplace(type, convertJsonToString(overridden));
            return;
        }
        for (const View object : overridden.elements()) {
            readValues(object);
        }
    }

    void readValues(View object) {
        for (const auto& [name, given] : object.members()) {
            const auto value = given.text();
            if (name.empty() || !value) {
                continue;
            }
            if (MetaSettings* const setting = findNamed(name)) {
                setting->userValue = *value;
                setting->hasUserValue = true;
            }
        }
    }

    // Kept deliberately: a name is tried bare or in full before it is tried within its section, so it may mean a
    // setting of another section, even though a save wrote it. The files that users have are read this way.
    MetaSettings* findNamed(std::string_view name) const {
        if (MetaSettings* const setting = model_.settingsByHash_.find(keyOf(name))) {
            return setting;
        }
        return model_.settingsByHash_.find(keyOf(name, keyOf(kNameSeparator, keyOf(attributes_.text()))));
    }

    Model& model_;
    JoinedNames attributes_;
};

void UserPreferenceManager::Model::takeDefaults(std::string text) {
    defaultText_ = std::move(text);
    {
        const json::Document document(defaultText_);
        parseJsonObject(document.root().member(prefs::kMeta), "", "");
    }
    // After the document is gone: the index takes over its memory, which the system would have to find anew.
    settingsByHash_.build();
}

bool UserPreferenceManager::Model::takeUserSettings(std::string_view text) {
    const json::Document document(text);
    parseUserAreaJsonObject(document.root().member(prefs::kMeta), "");
    return document.valid();
}

void UserPreferenceManager::Model::parseJsonObject(View metaArray, const std::string& parentHeader,
                                                   const std::string& parentAttribute) {
    DefaultsWalk(*this, parentHeader, parentAttribute).readArray(metaArray);
}

void UserPreferenceManager::Model::parseUserAreaJsonObject(View metaArray, const std::string& parentAttribute) {
    UserSettingsWalk(*this, parentAttribute).readArray(metaArray);
}

std::string UserPreferenceManager::Model::convertJsonToString(View value) {
    // What was parsed can be written.
    return json::compactText(value).value_or("");
}
