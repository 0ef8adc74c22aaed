#ifndef ZELUTIL_TESTS_SUPPORT_PREFS_TWIN_H
#define ZELUTIL_TESTS_SUPPORT_PREFS_TWIN_H

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "support/twin_json.h"

namespace zelutil::test {

struct TwinSection {
    std::string parentHeader;
    std::string header;
    std::string attributePath;
    std::string tclCommand;
    bool unique = true;
    std::int32_t submanagerId = 101;
    bool hasChildren = false;

    bool operator==(const TwinSection& other) const;
};

struct TwinSetting {
    std::string name;
    std::string fullName;
    std::string defaultValue;
    std::string userValue;
    bool hasUserValue = false;

    const std::string& value() const { return hasUserValue ? userValue : defaultValue; }
};

/// A setting as one place of the defaults defines it, whether that counts or not.
struct TwinSettingDefinition {
    std::string name;
    std::string fullName;
    bool lendsBareName = false;
};

/// Both texts of one loading of the action manager.
struct TwinActionTexts {
    std::string defaults;
    std::string user;
};

/// Tells what became of a save. Without a change nobody is told and nothing is written.
struct PrefsSaved {
    bool told = false;
    /// The text of the user's file; nothing when none is written.
    std::optional<std::string> text;
    std::set<std::string> changedNames;
    std::map<std::int32_t, std::string> changedTexts;
};

/// The reading and the saving of preferences, written for being read: ordered maps, every step spelled out, recursion,
/// a JSON reader and writer of its own.
class PrefsTwin {
public:
    PrefsTwin(const std::string& defaultsText, const std::string& userText);

    /// Null for an unknown name.
    const TwinSetting* find(const std::string& name) const;
    const std::map<std::string, TwinSection>& sections() const { return sections_; }
    const std::map<std::uint64_t, std::shared_ptr<TwinSetting>>& settings() const { return settings_; }
    /// Returns all definitions in the order of the reading.
    const std::vector<TwinSettingDefinition>& definitions() const { return definitions_; }
    const std::map<std::int32_t, std::string>& defaultTexts() const { return defaultTexts_; }
    const std::map<std::int32_t, std::string>& userTexts() const { return userTexts_; }

    /// Returns what the action manager is loaded with, one loading after the other.
    std::vector<TwinActionTexts> actionLoads() const;

    PrefsSaved save(const std::map<std::string, std::string>& settings,
                    const std::map<std::int32_t, std::string>& subManagerTexts);

private:
    using ValuesByHash = std::map<std::uint64_t, std::string>;
    using Texts = std::map<std::int32_t, std::string>;

    void parseDefaults(const TwinJson* array, const std::string& parentHeader, const std::string& parentAttribute);
    void parseSettings(const TwinJson& settings, const TwinSection& section);
    void parseUser(const TwinJson* array, const std::string& parentAttribute);
    void parseUserValues(const TwinJson& overridden, const std::string& attributePath);
    void setUserValue(const std::string& attributePath, const std::string& key, const std::string& value);

    ValuesByHash valuesToSave(const std::map<std::string, std::string>& settings) const;
    Texts textsToSave(const Texts& subManagerTexts) const;
    bool overrideSections(TwinJson* array, const std::string& parentAttribute, const ValuesByHash& values,
                          const Texts& texts, PrefsSaved& saved);
    bool overrideSettings(const TwinJson& settings, const std::string& attributePath, const ValuesByHash& values,
                          TwinJson& overridden, PrefsSaved& saved);

    std::map<std::string, TwinSection> sections_;
    std::map<std::uint64_t, std::shared_ptr<TwinSetting>> settings_;
    std::vector<TwinSettingDefinition> definitions_;
    Texts defaultTexts_;
    Texts userTexts_;
    std::string defaultsText_;
};

}  // namespace zelutil::test

#endif
