#ifndef ZELUTIL_PREFS_SECTION_WALK_H
#define ZELUTIL_PREFS_SECTION_WALK_H

#include <optional>
#include <string>
#include <string_view>

#include "json/view.h"
#include "prefs/joined_names.h"

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
};

/// Calls `visit` with each section of an array and of those inside it: a section before its children, and otherwise in
/// the order of the text.
template <typename Visit>
class SectionWalk {
public:
    explicit SectionWalk(Visit& visit) : visit_(visit) {}

    void walk(json::View array) {
        for (const json::View element : array.elements()) {
            if (const auto names = sectionNames(element)) {
                walkSection(element, *names);
            }
        }
    }

private:
    void walkSection(json::View element, const SectionNames& names) {
        const JoinedNames::Level headers(headers_, names.header);
        const JoinedNames::Level attributes(attributes_, names.attribute);
        visit_(VisitedSection{element, names.header, headers.outer(), attributes_.text()});
        walk(element.member(kChildren));
    }

    Visit& visit_;
    JoinedNames headers_;
    JoinedNames attributes_;
};

/// Walks over the sections of a preference file.
template <typename Visit>
void forEachSection(json::View root, Visit visit) {
    SectionWalk<Visit>(visit).walk(root.member(kMeta));
}

}  // namespace zelutil::prefs

#endif
