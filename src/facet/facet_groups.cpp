#include "facet/facet_groups.h"

namespace zelutil::facet {
namespace {

FacetType typeOf(const json::Value& element) {
    return json::stringMember(element, "type") == "Numerical" ? FacetType::Numerical : FacetType::Other;
}

}  // namespace

void FacetGroups::add(std::string_view text) {
    const json::Text document(text);
    if (const json::Value* const meta = json::arrayMember(document.root(), "meta")) {
        parseJsonFacetSettings(*meta);
    }
}

const FacetType* FacetGroups::find(std::string_view header, std::string_view name) const {
    const std::shared_ptr<const Facets>* const group = groups_.find(header);
    return group == nullptr ? nullptr : (*group)->find(name);
}

// Kept deliberately: of the groups with one header only the first counts, and the facets of the others are dropped, not
// added to it.
void FacetGroups::parseJsonFacetSettings(const json::Value& meta) {
    for (const json::Value& element : meta.GetArray()) {
        const std::string_view header = json::stringMember(element, "header").value_or("");
        if (!header.empty() && groups_.find(header) == nullptr) {
            groups_.add(header, std::make_shared<const Facets>(parseFacets(element)));
        }
    }
}

FacetGroups::Facets FacetGroups::parseFacets(const json::Value& element) {
    Facets facets;
    const json::Value* const list = json::arrayMember(element, "facets");
    if (list == nullptr) {
        return facets;
    }
    for (const json::Value& facet : list->GetArray()) {
        const std::string_view name = json::stringMember(facet, "name").value_or("");
        if (!name.empty()) {
            // The first facet of a name stays.
            facets.add(name, typeOf(facet));
        }
    }
    return facets;
}

}  // namespace zelutil::facet
