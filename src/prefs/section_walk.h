#ifndef ZELUTIL_PREFS_SECTION_WALK_H
#define ZELUTIL_PREFS_SECTION_WALK_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "json/view.h"
#include "prefs/section.h"

/// The layout that both preference files share: the keys, and the walk over the sections.
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

/// Stands in "submanagerId" for a section that belongs to nobody.
inline constexpr std::int32_t kNoSubManager = static_cast<std::int32_t>(SubManagerType::None);

struct SectionNames {
    std::string_view header;
    std::string_view attribute;
};

/// Returns nothing for an element that is no section: it is passed over with all it holds.
inline std::optional<SectionNames> sectionNames(json::View element) {
    const auto header = element.member(kHeader).text();
    const auto attribute = element.member(kAttribute).text();
    if (!header || !attribute) {
        return std::nullopt;
    }
    return SectionNames{*header, *attribute};
}

/// Returns the number of the sub-manager to which a section of the defaults says it belongs.
inline std::int32_t subManagerNumber(json::View element) {
    return element.member(kSubmanagerId).integer().value_or(kNoSubManager);
}

/// Returns whether a section of the defaults belongs to a sub-manager.
inline bool hasSubManager(json::View element) {
    return subManagerNumber(element) != kNoSubManager && element.member(kTclCommand).text() &&
           element.member(kDefaultSettings);
}

/// Returns whether a section of the defaults has settings of its own, perhaps none. One that has neither these nor a
/// sub-manager only groups others.
inline bool hasOwnSettings(json::View element) {
    return subManagerNumber(element) == kNoSubManager && element.member(kTclCommand).text() &&
           element.member(kDefaultSettings).isArray();
}

/// Returns whether the user's text has something for a section.
inline bool hasEntries(json::View overridden) {
    return overridden && !(overridden.isArray() && overridden.elements().empty());
}

struct DefaultSetting {
    std::string_view name;
    std::string_view value;
};

/// Returns nothing for an element of "defaultsettings" that is no setting.
inline std::optional<DefaultSetting> defaultSetting(json::View element) {
    const auto name = element.member(kName).text();
    const auto value = element.member(kValue).text();
    if (!name || !value) {
        return std::nullopt;
    }
    return DefaultSetting{*name, *value};
}

/// A section that a walk has come to. The paths are valid until the walk goes on.
struct VisitedSection {
    json::View element;
    std::string_view header;
    std::string_view parentHeader;     ///< Headings of the sections around it.
    const std::string& attributePath;  ///< Attributes of the sections around it and its own.
    unsigned level;                    ///< How many sections are around it.
};

/// Refers to a function of a section, which must stay for as long as the walk lasts. One walk serves all callers: as a
/// template it took a kilobyte of the library for each.
class SectionVisit {
public:
    /// A function, not a constructor, which copies of a SectionVisit would take for their own.
    template <typename Visit>
    static SectionVisit of(Visit& visit) {
        return {&visit, [](void* visitor, const VisitedSection& section) { (*static_cast<Visit*>(visitor))(section); }};
    }

    void operator()(const VisitedSection& section) const { call_(visitor_, section); }

private:
    using Call = void(void* visitor, const VisitedSection& section);

    SectionVisit(void* visitor, Call* call) : visitor_(visitor), call_(call) {}

    void* visitor_;
    Call* call_;
};

/// Calls `visit` with each section of an array and of those inside it: a section before its children, and otherwise in
/// the order of the text.
void walkSections(json::View array, SectionVisit visit);

/// Walks over the sections of a preference file.
template <typename Visit>
void forEachSection(json::View root, Visit visit) {
    walkSections(root.member(kMeta), SectionVisit::of(visit));
}

}  // namespace zelutil::prefs

#endif
