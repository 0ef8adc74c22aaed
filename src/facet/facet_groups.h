#ifndef ZELUTIL_FACET_FACET_GROUPS_H
#define ZELUTIL_FACET_FACET_GROUPS_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "json/view.h"
#include "text/flat_map.h"

namespace zelutil::facet {

/// The name of the shipped file with the facets.
inline constexpr char kFacetFileName[] = "facet_settings.cfg";

/// The type in the text of a facet that is numerical; any other is not.
inline constexpr std::string_view kNumericalType = "Numerical";

enum class FacetType : std::int32_t { Other = 0, Numerical = 1 };

/// The facets of each group, from the texts of facet files. A group does not change once it is there, and copies of
/// this object share it.
class FacetGroups {
public:
    /// Adds the groups of a text that are not known yet. A malformed text adds nothing; what is of the wrong type is
    /// passed over. Where memory runs out, nothing has changed.
    void add(std::string_view text);

    /// The facet's type, or null where there is no such group or facet.
    const FacetType* find(std::string_view header, std::string_view name) const;

private:
    using Facets = text::FlatMap<std::string, FacetType>;
    using Groups = text::FlatMap<std::string, std::shared_ptr<const Facets>>;

    static void parseJsonFacetSettings(json::View meta, Groups& groups);
    static Facets parseFacets(json::View element);

    Groups groups_;
};

}  // namespace zelutil::facet

#endif
