// Facets where memory runs out at every possible place.
#include <gtest/gtest.h>
#include <zelutil/c_api.h>
#include <zelutil/facet/facet_config_manager.h>

#include <string>

#include "facet/facet_groups.h"
#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/scarce_memory.h"
#include "support/text_file.h"
#include "text/flat_map.h"

namespace zelutil::facet {
namespace {

using test::failsWith;
using ZelU::FACET::FacetConfigManager;

constexpr int kFacets = 9;

std::string headerOf(int group) { return "a group with a name that needs memory " + std::to_string(group); }
std::string nameOf(int facet) { return "a facet with a name that needs memory " + std::to_string(facet); }

/// The groups from `begin` up to `end`, each with all facets; every second one is numerical.
std::string textWith(int begin, int end) {
    std::string text = R"({"meta":[)";
    for (int group = begin; group < end; ++group) {
        text += (group == begin ? "" : ",") + (R"({"header":")" + headerOf(group)) + R"(","facets":[)";
        for (int facet = 0; facet < kFacets; ++facet) {
            text += (facet == 0 ? "" : ",") + (R"({"name":")" + nameOf(facet)) + R"(","type":")" +
                    (facet % 2 == 0 ? "Numerical" : "Text") + "\"}";
        }
        text += "]}";
    }
    return text + "]}";
}

/// Asks `typeOf(header, name)` for every facet of the groups up to `known`, and of some that there are not.
template <typename TypeOf>
void expectGroups(int known, TypeOf typeOf) {
    for (int group = 0; group < known + 8; ++group) {
        for (int facet = 0; facet < kFacets + 2; ++facet) {
            const int expected = group < known && facet < kFacets ? 1 - facet % 2 : -1;
            EXPECT_EQ(typeOf(headerOf(group), nameOf(facet)), expected) << group << ' ' << facet;
        }
    }
}

void expectGroupsIn(const FacetGroups& groups, int known) {
    expectGroups(known, [&groups](const std::string& header, const std::string& name) {
        const FacetType* const type = groups.find(header, name);
        return type == nullptr ? -1 : static_cast<int>(*type);
    });
}

TEST(FacetsOutOfMemory, ATextThatCannotBeAddedAddsNothing) {
    // Numbers of groups on both sides of each growth of a table.
    for (const int known : {0, 1, 2, 3, 4, 5, 8}) {
        FacetGroups groups;
        groups.add(textWith(0, known));
        const std::string text = textWith(known, known + 3);
        int allowed = 0;
        while (failsWith(allowed, [&] { groups.add(text); })) {
            expectGroupsIn(groups, known);
            ++allowed;
        }
        EXPECT_GT(allowed, 0);
        expectGroupsIn(groups, known + 3);
    }
}

TEST(FacetsOutOfMemory, AKeyThatCannotBeAddedLeavesTheTableAsItWas) {
    // More keys than the table takes without growing several times.
    constexpr int kKeys = 40;
    text::FlatMap<std::string, int> table;
    int failures = 0;
    for (int next = 0; next < kKeys; ++next) {
        int allowed = 0;
        while (failsWith(allowed, [&] { table.try_emplace(nameOf(next), next); })) {
            for (int key = 0; key < kKeys; ++key) {
                const int* const value = table.find(nameOf(key));
                EXPECT_EQ(value == nullptr ? -1 : *value, key < next ? key : -1) << next;
            }
            ++allowed;
        }
        failures += allowed;
    }
    EXPECT_GT(failures, 0);
    for (int key = 0; key < kKeys; ++key) {
        const int* const value = table.find(nameOf(key));
        EXPECT_EQ(value == nullptr ? -1 : *value, key);
    }
}

class FacetFileOutOfMemory : public testing::Test {
protected:
    FacetFileOutOfMemory() {
        test::clearProductVariables();
        test::setVariable("PATH", "");
        product_.nameInEnvironment();
    }

    void write(const std::string& text) const {
        test::writeTextFile(product_ / "share/qtxsetup/canvas/resources/tessel/facet_settings.cfg", text);
    }

private:
    test::InstallationTree product_;
};

int typeOfFacet(const std::string& header, const std::string& name) {
    return ZelUGetFacetType(header.c_str(), name.c_str());
}

TEST_F(FacetFileOutOfMemory, ThatCannotBeReadAgainChangesNothing) {
    write(textWith(0, 2));
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    write(textWith(2, 5));
    int allowed = 0;
    while (failsWith(allowed, [&manager] { manager.readfacetSettings(); })) {
        expectGroups(2, typeOfFacet);
        ++allowed;
    }
    EXPECT_GT(allowed, 0);
    expectGroups(5, typeOfFacet);
}

TEST_F(FacetFileOutOfMemory, ThatCannotBeReadAtTheFirstUseIsReadAtTheNext) {
    write(textWith(0, 2));
    int allowed = 0;
    while (failsWith(allowed, [] { FacetConfigManager::GetInstance(); })) {
        ++allowed;
    }
    EXPECT_GT(allowed, 0);
    expectGroups(2, typeOfFacet);
}

TEST_F(FacetFileOutOfMemory, AnAssignmentThatFailsLeavesTheCopyAsItWas) {
    write(textWith(0, 2));
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    FacetConfigManager copy(manager);
    // No more than the copy has room for, so that an assignment group by group would begin to change it.
    write(textWith(2, 4));
    manager.readfacetSettings();
    const auto typeInCopy = [&copy](const std::string& header, const std::string& name) {
        return copy.facetType(header.c_str(), name.c_str());
    };
    int allowed = 0;
    while (failsWith(allowed, [&] { copy = manager; })) {
        expectGroups(2, typeInCopy);
        ++allowed;
    }
    EXPECT_GT(allowed, 0);
    expectGroups(4, typeInCopy);
}

}  // namespace
}  // namespace zelutil::facet
