// The type of a facet, against the usual table of tables.
#include "run_directory.h"
#include "settings_corpus.h"
#include "support/comparison.h"

#include <zelutil/facet/facet_config_manager.h>

#include <cstdlib>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using ZelU::FACET::FacetConfigManager;
using zelutil::bench::Comparison;
using zelutil::bench::RunDirectory;

constexpr std::size_t kGroups = 50;
constexpr std::size_t kFacetsPerGroup = 40;
constexpr int kUnknown = -1;

struct Facet {
    std::string header;
    std::string name;
    bool isNumerical;
};

using Facets = std::vector<Facet>;

/// Names of usual lengths: some fit into the string object itself, others do not.
std::string facetName(std::size_t number) {
    static constexpr const char* kStems[] = {"Length", "Manhattan length", "Layer", "Relative propagation delay",
                                             "Via count"};
    return kStems[number % std::size(kStems)] + (" " + std::to_string(number));
}

Facets makeFacets() {
    static constexpr const char* kStems[] = {"Net", "Differential pair", "Pin", "Region"};
    Facets facets;
    for (std::size_t group = 0; group < kGroups; ++group) {
        const std::string header = kStems[group % std::size(kStems)] + (" " + std::to_string(group));
        for (std::size_t facet = 0; facet < kFacetsPerGroup; ++facet) {
            facets.push_back({header, facetName(facet), facet % 3 == 0});
        }
    }
    return facets;
}

/// The file's text, laid out as the shipped one is.
std::string textOf(const Facets& facets) {
    std::string text = "{\n    \"meta\": [";
    for (std::size_t i = 0; i < facets.size(); ++i) {
        const Facet& facet = facets[i];
        if (i % kFacetsPerGroup == 0) {
            text += i == 0 ? "\n" : "\n            ]\n        },\n";
            text += "        {\n            \"header\": \"" + facet.header + "\",\n            \"facets\": [\n";
        } else {
            text += ",\n";
        }
        text += R"(                {"name": ")" + facet.name + R"(", "type": ")" +
                (facet.isNumerical ? "Numerical" : "Text") + "\"}";
    }
    return text + "\n            ]\n        }\n    ]\n}\n";
}

/// Has the library find an installation tree with the facets in it.
void install(const RunDirectory& directory, const Facets& facets) {
    directory.write(std::string("tools/bin/") + ZELUTIL_BENCH_LIBRARY, "");
    directory.write("share/pcb/zelmgr/zeldict.l", "");
    directory.write("share/qtxsetup/canvas/resources/tessel/facet_settings.cfg", textOf(facets));
    setenv("QTXROOT", directory.path().c_str(), 1);
}

class NestedMaps {
public:
    explicit NestedMaps(const Facets& facets) {
        for (const Facet& facet : facets) {
            groups_[facet.header].emplace(facet.name, facet.isNumerical ? 1 : 0);
        }
    }

    int facetType(const std::string& header, const std::string& name) const {
        const auto group = groups_.find(header);
        if (group == groups_.end()) {
            return kUnknown;
        }
        const auto facet = group->second.find(name);
        return facet == group->second.end() ? kUnknown : facet->second;
    }

private:
    std::unordered_map<std::string, std::unordered_map<std::string, int>> groups_;
};

template <typename TypeOf>
auto askingFor(const Facets& facets, TypeOf typeOf) {
    return [&facets, typeOf] {
        std::uint64_t digest = 0;
        for (const Facet& facet : facets) {
            digest = digest * 31 + static_cast<std::uint64_t>(typeOf(facet) + 1);
        }
        return digest;
    };
}

/// Facets are mostly asked for by C strings, from which the peer has to make its keys; where the strings are there
/// already, it need not.
void compare(const std::string& task, const Facets& facets, const NestedMaps& peer) {
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    Comparison(task, facets.size())
        .zelutil(askingFor(
            facets,
            [&manager](const Facet& facet) { return manager.facetType(facet.header.c_str(), facet.name.c_str()); }))
        .peer(
            "nested unordered_map, of C strings",
            askingFor(facets,
                      [&peer](const Facet& facet) { return peer.facetType(facet.header.c_str(), facet.name.c_str()); }))
        .peer("nested unordered_map, of strings",
              askingFor(facets, [&peer](const Facet& facet) { return peer.facetType(facet.header, facet.name); }));
}

Facets inRandomOrder(const Facets& facets) {
    Facets result;
    for (const std::size_t i : zelutil::bench::randomOrder(facets.size())) {
        result.push_back(facets[i]);
    }
    return result;
}

/// The facets of one group again and again, as a panel asks for them.
Facets ofOneGroup(const Facets& facets) {
    return Facets(facets.begin() + 20 * kFacetsPerGroup, facets.begin() + 21 * kFacetsPerGroup);
}

Facets withoutSuchName(Facets facets) {
    for (Facet& facet : facets) {
        facet.name.back() = '?';
    }
    return facets;
}

Facets withoutSuchHeader(Facets facets) {
    for (Facet& facet : facets) {
        facet.header.back() = '?';
    }
    return facets;
}

}  // namespace

void zelutil::bench::addComparisons() {
    static const Facets facets = makeFacets();
    static const RunDirectory directory;
    install(directory, facets);
    static const NestedMaps peer(facets);
    static const Facets shuffled = inRandomOrder(facets);
    static const Facets group = ofOneGroup(facets);
    static const Facets noName = withoutSuchName(shuffled);
    static const Facets noHeader = withoutSuchHeader(shuffled);
    compare("2000 facets, found", shuffled, peer);
    compare("40 facets of one group, found", group, peer);
    compare("no such name", noName, peer);
    compare("no such group", noHeader, peer);
}
