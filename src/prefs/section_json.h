#ifndef ZELUTIL_PREFS_SECTION_JSON_H
#define ZELUTIL_PREFS_SECTION_JSON_H

#include <optional>
#include <string_view>

#include "json/json.h"

/// The layout that both preference files share: keys, and the reading that each walk over the sections begins with.
namespace zelutil::prefs {

inline constexpr char kMeta[] = "meta";
inline constexpr char kHeader[] = "header";
inline constexpr char kAttribute[] = "attribute";
inline constexpr char kTclCommand[] = "tclCommand";
inline constexpr char kDefaultSettings[] = "defaultsettings";
inline constexpr char kOverriddenSettings[] = "overriddensettings";
inline constexpr char kName[] = "name";
inline constexpr char kValue[] = "value";
inline constexpr char kUnique[] = "unique";
inline constexpr char kSubmanagerId[] = "submanagerId";
inline constexpr char kChildren[] = "children";

struct SectionNames {
    std::string_view header;
    std::string_view attribute;
};

/// Nothing for an element that is no section: it is passed over with all it holds.
inline std::optional<SectionNames> sectionNames(const json::Value& element) {
    const auto header = json::stringMember(element, kHeader);
    const auto attribute = json::stringMember(element, kAttribute);
    if (!header || !attribute) {
        return std::nullopt;
    }
    return SectionNames{*header, *attribute};
}

struct DefaultSetting {
    std::string_view name;
    std::string_view value;
};

/// Nothing for an element of "defaultsettings" that is no setting.
inline std::optional<DefaultSetting> defaultSetting(const json::Value& element) {
    const auto name = json::stringMember(element, kName);
    const auto value = json::stringMember(element, kValue);
    if (!name || !value) {
        return std::nullopt;
    }
    return DefaultSetting{*name, *value};
}

}  // namespace zelutil::prefs

#endif
