#include "facet/facet_groups.h"

#include "json/document.h"

namespace zelutil::facet {
namespace {

FacetType typeOf(json::View element) {
    return element.member("type").text() == "Numerical" ? FacetType::Numerical : FacetType::Other;
}

}  // namespace

void FacetGroups::add(std::string_view text) {
    const json::Document document(text);
    parseJsonFacetSettings(document.root().member("meta"));
}

const FacetType* FacetGroups::find(std::string_view header, std::string_view name) const {
    const std::shared_ptr<const Facets>* const group = groups_.find(header);
    return group == nullptr ? nullptr : (*group)->find(name);
}

// Kept deliberately: of the groups with one header only the first counts, and the facets of the others are dropped, not
// added to it.
void FacetGroups::parseJsonFacetSettings(json::View meta) {
    for (const json::View element : meta.elements()) {
        const std::string_view header = element.member("header").text().value_or("");
        if (!header.empty() && groups_.find(header) == nullptr) {
            groups_.add(header, std::make_shared<const Facets>(parseFacets(element)));
        }
    }
}

FacetGroups::Facets FacetGroups::parseFacets(json::View element) {
    Facets facets;
    for (const json::View facet : element.member("facets").elements()) {
        const std::string_view name = facet.member("name").text().value_or("");
        if (!name.empty()) {
            // The first facet of a name stays.
            facets.add(name, typeOf(facet));
        }
    }
    return facets;
}

}  // namespace zelutil::facet
