#include "facet/facet_groups.h"

#include <utility>

#include "json/document.h"

namespace zelutil::facet {
namespace {

FacetType typeOf(json::View element) {
    return element.member("type").text() == kNumericalType ? FacetType::Numerical : FacetType::Other;
}

}  // namespace

void FacetGroups::add(std::string_view text) {
    const json::Document document(text);
    // A copy takes the new ones, and then the place of the old: a group or two must not be all that is known when
    // memory runs out half-way.
    Groups groups = groups_;
    parseJsonFacetSettings(document.root().member("meta"), groups);
    groups_ = std::move(groups);
}

const FacetType* FacetGroups::find(std::string_view header, std::string_view name) const {
    const std::shared_ptr<const Facets>* const group = groups_.find(header);
    return group == nullptr ? nullptr : (*group)->find(name);
}

// Kept deliberately: of the groups with one header only the first counts, and the facets of the others are dropped, not
// added to it.
void FacetGroups::parseJsonFacetSettings(json::View meta, Groups& groups) {
    for (const json::View element : meta.elements()) {
        const std::string_view header = element.member("header").text().value_or("");
        if (!header.empty() && groups.find(header) == nullptr) {
            groups.try_emplace(header, std::make_shared<const Facets>(parseFacets(element)));
        }
    }
}

FacetGroups::Facets FacetGroups::parseFacets(json::View element) {
    Facets facets;
    for (const json::View facet : element.member("facets").elements()) {
        const std::string_view name = facet.member("name").text().value_or("");
        if (!name.empty()) {
            // The first facet of a name stays.
            facets.try_emplace(name, typeOf(facet));
        }
    }
    return facets;
}

}  // namespace zelutil::facet
