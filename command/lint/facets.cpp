// The rules for facet files.
#include <map>
#include <string_view>

#include "command/lint/checks.h"
#include "command/lint/object_form.h"
#include "command/nearest_names.h"
#include "facet/facet_groups.h"

namespace zelutil::lint {
namespace {

using json::View;
using Places = std::map<std::string_view, View>;

constexpr std::size_t kNear = 2;

/// Reports a text that stood before. An empty one is reported by its type.
void checkRepeated(View name, Places& places, Rule rule, const std::string& what, Report& report) {
    const std::string_view text = name.text().value_or(std::string_view());
    if (text.empty()) {
        return;
    }
    const auto [first, isNew] = places.try_emplace(text, name);
    if (!isNew) {
        report.add(
            rule, name,
            what + inQuotes(text) + " stands twice, and only the first counts (" + report.lineOf(first->second) + ").");
    }
}

void checkFacetType(View type, Report& report) {
    const auto text = type.text();
    if (text && *text != facet::kNumericalType && command::editDistance(*text, facet::kNumericalType) <= kNear) {
        report.add(Rule::FacetType, type, "A facet is numerical only when its type is exactly \"Numerical\".",
                   "Did you mean Numerical?");
    }
}

void checkGroup(View group, Report& report) {
    static const ObjectForm kGroup{"a group",
                                   {{"header", Type::TextNotEmpty, Need::Required}, {"facets", Type::Array}}};
    static const ObjectForm kFacet{
        "a facet", {{"name", Type::TextNotEmpty, Need::Required}, {"type", Type::Text, Need::Required}}};
    checkObject(group, kGroup, report);
    Places names;
    for (const View facet : group.member("facets").elements()) {
        if (checkObject(facet, kFacet, report)) {
            checkRepeated(facet.member("name"), names, Rule::RepeatedFacet, "The facet ", report);
            checkFacetType(facet.member("type"), report);
        }
    }
}

}  // namespace

void checkFacets(View root, Report& report) {
    static const ObjectForm kFile{"the file", {{"meta", Type::Array, Need::Required}, {"version", Type::Any}}};
    checkObject(root, kFile, report);
    Places headers;
    for (const View group : root.member("meta").elements()) {
        checkGroup(group, report);
        checkRepeated(group.member("header"), headers, Rule::RepeatedGroup, "The group ", report);
    }
}

}  // namespace zelutil::lint
