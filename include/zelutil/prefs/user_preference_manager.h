#ifndef ZELUTIL_PREFS_USER_PREFERENCE_MANAGER_H
#define ZELUTIL_PREFS_USER_PREFERENCE_MANAGER_H

#include <zelutil/export.h>
#include <zelutil/prefs/user_settings_manager.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace zelutil {
namespace prefs {

struct ManagerAccess;  ///< Is opaque to hosts, as is the next one.
struct Preferences;    ///< Holds everything that a manager has.

}  // namespace prefs
}  // namespace zelutil

/// Every preference setting of the product: the default that is shipped with it and the value the user gave it.
///
/// A setting belongs to a section, and sections nest. Its full name is the attributes of the sections around it and its
/// own name, joined by "::" ("display::grid"). A setting of a "unique" section is also found by its name alone
/// ("grid"); where two sections could lend the same bare name, it finds the setting that was read first. Names are
/// looked up without regard to ASCII case.
///
/// There is one manager in a process. Both preference files are read when it is made and never again. Look-ups may run
/// on several threads at once, but not while one saves.
class ZELUTIL_API UserPreferenceManager {
public:
    /// Tells who owns the settings of a section. The files hold the underlying number; others than these may occur.
    enum class SubManagerType : std::int32_t {
        Actions = 100,  ///< The action manager.
        None = 101,     ///< Nobody: the section has settings of its own.
    };

    /// A section of the shipped defaults that has settings or belongs to a sub-manager.
    struct UserPreferenceUISection {
        std::string parentHeader;   ///< Headings of the sections around it, joined by "::"; empty at the top.
        std::string header;         ///< Its own heading.
        std::string attributePath;  ///< Attributes of the sections around it and its own, joined by "::".
        std::string tclCommand;     ///< The text that the defaults have for it, carried only.
        bool unique = true;         ///< Whether its settings are also found by their bare names.
        /// A `SubManagerType`, or another number that the defaults have.
        std::int32_t submanagerId = static_cast<std::int32_t>(SubManagerType::None);
        bool hasChildren = false;  ///< Whether it may hold further sections.
    };

    /// The manager of this process. The first call makes it and reads the preference files; calls that come meanwhile
    /// on other threads wait. Throws `true` (a `bool`) once the manager's destruction, at exit or unload, has begun.
    /// Exit functions that were registered after that first call run before it, and may still ask and save.
    /// Must not be called from inside the search for the user's file that the first call makes.
    static UserPreferenceManager& GetInstance();

    /// Copies the maps; the records of settings and sections are shared with the original, so that a value which either
    /// puts in force is in force in both. An assignment leaves references that this manager gave out as valid as they
    /// were; without memory for it, nothing changes.
    UserPreferenceManager(const UserPreferenceManager& other);
    /// Assigns as the constructor copies.
    UserPreferenceManager& operator=(const UserPreferenceManager& other);
    ~UserPreferenceManager();

    /// The value in force for the setting: the user's when there is one, even an empty one, or else the default. The
    /// empty string for an unknown name. The reference stays valid until a save changes the setting or the last manager
    /// that shares it is destroyed.
    const std::string& getUserPrefSetting(std::string name) const;

    /// The shipped default of the setting, under the same rules; no save changes it.
    const std::string& getDefaultPrefSetting(std::string name) const;

    /// Sections by attribute path, case significant. The reference lives as long as the manager.
    const std::map<std::string, std::shared_ptr<UserPreferenceUISection>>& getAllUserPrefUISettings();

    /// The sub-manager of that type, or null where no section of the defaults belongs to it. Not the caller's to
    /// delete.
    IUserSettingsManager* GetSubManager(SubManagerType type);

    /// Asks every sub-manager that is modified for its text, and drops it. To save one, hand its text to
    /// `updateUserPrefSettings`.
    void ApplySubManagersChanges() const;

    /// Saves settings and sub-managers' texts to the user's file. `zelutil::host::save` saves more: so that a new
    /// process has everything as it is now, and without undoing what another process has saved since this one read the
    /// file. This function writes the whole file from what this process holds: the last to save wins.
    ///
    /// `settings` holds values by setting name, bare or in full, in any case; unknown names are ignored.
    /// `subManagerSettings` holds a JSON text for each sub-manager whose section is to be saved; one that is no JSON
    /// counts as not handed over, but a scalar such as 0 or null is JSON and takes the place of what the user had. For
    /// what is not handed over, the user's values stay, and a section keeps what the user's file held when it was read:
    /// an earlier save's text is not remembered, so hand the current one over each time. For the action manager that is
    /// its text as the one element of an array, and none while its text is empty, which would take the place of what
    /// the user's file holds:
    ///
    ///     std::map<UserPreferenceManager::SubManagerType, std::string> texts;
    ///     const std::string edits = UCPActionManager::instance().getAllUserSettings();
    ///     if (!edits.empty()) {
    ///         texts[UserPreferenceManager::SubManagerType::Actions] = "[" + edits + "]";
    ///     }
    ///     manager.updateUserPrefSettings({{"display::grid", "0.5"}}, texts);
    ///
    /// The file has the shape of the installed defaults: what they no longer define is dropped. A value becomes the
    /// user's when it differs from the one in force, and stays so even when it is the default again. Where no value
    /// changes and there is no sub-manager's text, nothing is written and nobody is told. Otherwise the new values are
    /// in force, the file is replaced whole, and the observers of `ZelU::Marl::UserPreferenceServer` are told, even
    /// when the file could not be written.
    ///
    /// No file is lost that could not be read: one that is no JSON, or that was there when the manager was made and
    /// could not be read then, is copied to "tessel_settings.cfg.bad" beside it before it is replaced, or to
    /// "tessel_settings.cfg.bad.2", ".bad.3" and so on where there is such a file. Where that cannot be done, nothing
    /// is written. After a start with a file that could not be read, the first one that is replaced at each path counts
    /// as that file, since one file may have several paths.
    ///
    /// With the variable "regression_testing" set when the process first saves, the file is written to the current
    /// directory instead. Not to be called at the same time as a look-up or another save.
    void updateUserPrefSettings(const std::map<std::string, std::string>& settings,
                                const std::map<SubManagerType, std::string>& subManagerSettings);

    /// Lower-cases the 26 letters of ASCII in place; every other byte stays.
    static void convertSettingToLowercase(std::string& name);

    /// The hash under which a setting is kept, of the bytes as they stand: 64-bit FNV-1a by G. Fowler, L. C. Noll and
    /// K.-P. Vo (http://www.isthe.com/chongo/tech/comp/fnv/). Names are lower-cased before they are hashed.
    ///
    ///     "" => 0xcbf29ce484222325        "a" => 0xaf63dc4c8601ec8c        "foobar" => 0x85944171f73967e8
    std::size_t computeHash(const std::string& name) const;

private:
    friend struct zelutil::prefs::ManagerAccess;

    UserPreferenceManager();

    std::unique_ptr<zelutil::prefs::Preferences> preferences_;

    /// Set when the destruction of this process's manager begins, and never cleared.
    static std::atomic<bool> s_bKilled;
};

#endif
