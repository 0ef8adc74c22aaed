#ifndef ZELUTIL_PREFS_SAVE_VALUES_H
#define ZELUTIL_PREFS_SAVE_VALUES_H

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "json/document.h"
#include "prefs/catalogue.h"
#include "prefs/save_layout.h"

namespace zelutil::prefs {

/// Holds what a host hands over to a save.
struct SaveRequest {
    const std::map<std::string, std::string>& settings;  ///< Values by name, bare or in full, in any case.
    const SubManagerTexts& subManagerTexts;
};

/// The values and texts that a save is to write: those that the host hands over, and for everything else those that the
/// user had before. All of them are copies, as they were when this was made: until the save goes on, the host may save
/// others.
class SaveValues {
public:
    SaveValues(const Catalogue& catalogue, const SaveRequest& request);
    SaveValues(const SaveValues&) = delete;
    SaveValues& operator=(const SaveValues&) = delete;

    /// Returns the value of the setting that the definition of the layout names in full. Null when it has none to be
    /// saved.
    const std::string* of(std::uint32_t definition) const { return byDefinition_[definition]; }

    /// Returns the numbers of the settings that had a value of the user then, in order.
    const std::vector<std::uint32_t>& usersSettings() const { return usersSettings_; }

    /// Returns whether no value has changed since then.
    bool areOfNow(const Catalogue& catalogue) const { return catalogue.changes() == changesThen_; }

    /// The layout by which they were found. It outlives a change of the catalogue's.
    SaveLayout& layout() const { return *layout_; }

    struct SubManagerText {
        explicit SubManagerText(std::string given) : text(std::move(given)), document(text) {}

        std::string text;
        json::Document document;  ///< The text, parsed.
    };

    /// Returns null when there is no text for the type.
    const SubManagerText* textOf(SubManagerType type) const;

private:
    void findUsersSettings(const Catalogue& catalogue);
    void addUsersValues(const SettingIndex& settings);
    void add(std::uint32_t place, const std::string& value);
    void addValues(const SettingIndex& settings, const std::map<std::string, std::string>& handedOver);
    void addTexts(const SubManagerTexts& handedOver);
    void addUsersTexts(const SubManagerTexts& held);

    std::shared_ptr<SaveLayout> layout_;
    /// A list, because its elements stay where they are.
    std::list<std::string> values_;
    std::vector<const std::string*> byDefinition_;
    std::vector<std::uint32_t> usersSettings_;
    std::uint64_t changesThen_;
    std::map<SubManagerType, SubManagerText> texts_;
};

}  // namespace zelutil::prefs

#endif
