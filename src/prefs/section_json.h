#ifndef ZELUTIL_PREFS_SECTION_JSON_H
#define ZELUTIL_PREFS_SECTION_JSON_H

#include <optional>
#include <string_view>

#include "json/view.h"

/// The layout that both preference files share: keys, and the reading that each walk over the sections begins with.
namespace zelutil::prefs {

inline constexpr std::string_view kMeta = "meta";
inline constexpr std::string_view kHeader = "header";
inline constexpr std::string_view kAttribute = "attribute";
inline constexpr std::string_view kTclCommand = "tclCommand";
inline constexpr std::string_view kDefaultSettings = "defaultsettings";
inline constexpr std::string_view kOverriddenSettings = "overriddensettings";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kValue = "value";
inline constexpr std::string_view kUnique = "unique";
inline constexpr std::string_view kSubmanagerId = "submanagerId";
inline constexpr std::string_view kChildren = "children";

struct SectionNames {
    std::string_view header;
    std::string_view attribute;
};

/// Nothing for an element that is no section: it is passed over with all it holds.
inline std::optional<SectionNames> sectionNames(json::View element) {
    const auto header = element.member(kHeader).text();
    const auto attribute = element.member(kAttribute).text();
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
inline std::optional<DefaultSetting> defaultSetting(json::View element) {
    const auto name = element.member(kName).text();
    const auto value = element.member(kValue).text();
    if (!name || !value) {
        return std::nullopt;
    }
    return DefaultSetting{*name, *value};
}

}  // namespace zelutil::prefs

#endif
