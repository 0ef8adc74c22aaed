#include <zelutil/c_api.h>
#include <zelutil/prefs/user_preference_manager.h>
#include <zelutil/prefs/user_preference_server.h>

#include <algorithm>

#include "prefs/preference_files.h"
#include "prefs/preference_model.h"
#include "prefs/setting_name.h"

namespace {

using Model = UserPreferenceManager::Model;

const char* charactersOrNull(const std::string& value) { return value.empty() ? nullptr : value.c_str(); }

}  // namespace

std::atomic<bool> UserPreferenceManager::s_bKilled{false};

UserPreferenceManager& UserPreferenceManager::GetInstance() {
    // Copies come and go; only the end of this object is the teardown.
    struct Singleton {
        // A save ends by telling the server's observers. So the server is there before the manager and goes after it.
        ZelU::Marl::UserPreferenceServer& server = ZelU::Marl::UserPreferenceServer::getInstance();
        UserPreferenceManager manager;
        ~Singleton() { s_bKilled = true; }
    };
    static Singleton singleton;
    if (s_bKilled) {
        throw true;
    }
    return singleton.manager;
}

UserPreferenceManager::UserPreferenceManager() : model_(std::make_unique<Model>()) {
    model_->readDefaultJson();
    model_->readOverriddenCfg();
    model_->initializeSubManagers();
}

UserPreferenceManager::UserPreferenceManager(const UserPreferenceManager& other)
    : model_(std::make_unique<Model>(*other.model_)) {}

UserPreferenceManager& UserPreferenceManager::operator=(const UserPreferenceManager& other) {
    model_ = std::make_unique<Model>(*other.model_);
    return *this;
}

UserPreferenceManager::~UserPreferenceManager() = default;

// NOLINTBEGIN(performance-unnecessary-value-param): the types are part of the interface.
const std::string& UserPreferenceManager::getUserPrefSetting(std::string name) const {
    return Model::getMergedValueForSetting(model_->findSetting(name));
}

const std::string& UserPreferenceManager::getDefaultPrefSetting(std::string name) const {
    return Model::getDefaultValueForSetting(model_->findSetting(name));
}
// NOLINTEND(performance-unnecessary-value-param)

const std::map<std::string, std::shared_ptr<UserPreferenceManager::UserPreferenceUISection>>&
UserPreferenceManager::getAllUserPrefUISettings() {
    return model_->sections();
}

IUserSettingsManager* UserPreferenceManager::GetSubManager(SubManagerType type) { return model_->subManager(type); }

void UserPreferenceManager::ApplySubManagersChanges() const { model_->applySubManagersChanges(); }

void UserPreferenceManager::updateUserPrefSettings(const std::map<std::string, std::string>& settings,
                                                   const std::map<SubManagerType, std::string>& subManagerSettings) {
    model_->updateUserPrefSettings(settings, subManagerSettings);
}

void UserPreferenceManager::convertSettingToLowercase(std::string& name) {
    std::transform(name.begin(), name.end(), name.begin(), zelutil::ascii::lowerCase);
}

std::size_t UserPreferenceManager::computeHash(const std::string& name) const { return zelutil::prefs::hashOf(name); }

const char* get_user_setting(const char* name) {
    if (zelutil::prefs::isUserFileSearchInProgress()) {
        return nullptr;
    }
    try {
        const Model& model = Model::of(UserPreferenceManager::GetInstance());
        return charactersOrNull(Model::getMergedValueForSetting(model.findSetting(name)));
    } catch (bool) {
        return nullptr;
    }
}

// Kept deliberately: unlike its sibling, this function neither looks whether the user's file is being searched for nor
// catches the exception of the teardown: hosts are written against either.
const char* get_default_user_setting(const char* name) {
    const Model& model = Model::of(UserPreferenceManager::GetInstance());
    return charactersOrNull(Model::getDefaultValueForSetting(model.findSetting(name)));
}
