// Facets from real files in a real installation tree. Each case is a process of its own.
#include <gtest/gtest.h>
#include <zelutil/c_api.h>
#include <zelutil/facet/facet_config_manager.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "support/environment.h"
#include "support/installation_tree.h"
#include "support/silence.h"
#include "support/text_file.h"

namespace ZelU::FACET {
namespace {

using zelutil::test::expectSilence;

constexpr char kFile[] = "share/qtxsetup/canvas/resources/tessel/facet_settings.cfg";

constexpr char kNet[] = R"({"meta": [
    {"header": "Net", "facets": [{"name": "Length", "type": "Numerical"}, {"name": "Layer", "type": "Text"}]}]})";

/// A text with one group, whose one facet "a" is of the type.
std::string groupText(const std::string& header, const std::string& type) {
    return R"({"meta":[{"header":")" + header + R"(","facets":[{"name":"a","type":")" + type + R"("}]}]})";
}

void expectUnknown(const char* header, const char* name) {
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    EXPECT_EQ(manager.facetType(header, name), -1) << header << ' ' << name;
    EXPECT_FALSE(manager.facetDefined(header, name)) << header << ' ' << name;
    EXPECT_EQ(ZelUGetFacetType(header, name), -1) << header << ' ' << name;
    EXPECT_FALSE(ZelUIsFacetDefined(header, name)) << header << ' ' << name;
}

void expectType(const char* header, const char* name, int type) {
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    EXPECT_EQ(manager.facetType(header, name), type) << header << ' ' << name;
    EXPECT_TRUE(manager.facetDefined(header, name)) << header << ' ' << name;
    EXPECT_EQ(ZelUGetFacetType(header, name), type) << header << ' ' << name;
    EXPECT_TRUE(ZelUIsFacetDefined(header, name)) << header << ' ' << name;
}

class FacetFile : public testing::Test {
protected:
    FacetFile() {
        zelutil::test::clearProductVariables();
        zelutil::test::setVariable("PATH", "");
        product_.nameInEnvironment();
    }

    std::filesystem::path file() const { return product_ / kFile; }
    void write(const std::string& text) const { zelutil::test::writeTextFile(file(), text); }
    const zelutil::test::InstallationTree& product() const { return product_; }

private:
    zelutil::test::InstallationTree product_;
};

// Hosts that were compiled against other signatures would not find these operations.
static_assert(std::is_same_v<decltype(&FacetConfigManager::facetDefined),
                             bool (FacetConfigManager::*)(const char* header, const char* name)>);
static_assert(std::is_same_v<decltype(&FacetConfigManager::facetType),
                             int (FacetConfigManager::*)(const char* header, const char* name)>);

TEST_F(FacetFile, TellsFacetsAndWhetherTheyAreNumerical) {
    write(kNet);
    expectSilence([] {
        expectType("Net", "Length", 1);
        expectType("Net", "Layer", 0);
        expectUnknown("net", "Length");
        expectUnknown("Net", "length");
        expectUnknown("Net", "Delay");
        expectUnknown("Pin", "Length");
        expectUnknown("", "");
    });
}

TEST_F(FacetFile, FunctionsWithCLinkageMakeTheManagerToo) {
    write(kNet);
    EXPECT_EQ(ZelUGetFacetType("Net", "Length"), 1);
}

TEST_F(FacetFile, NullNamesNothing) {
    write(kNet);
    FacetConfigManager& manager = FacetConfigManager::GetInstance();
    EXPECT_EQ(manager.facetType(nullptr, "Length"), -1);
    EXPECT_EQ(manager.facetType("Net", nullptr), -1);
    EXPECT_FALSE(manager.facetDefined(nullptr, "Length"));
    EXPECT_FALSE(manager.facetDefined("Net", nullptr));
}

TEST_F(FacetFile, ShippedExampleIsRead) {
    write(zelutil::test::readTextFile(std::filesystem::path(ZELUTIL_TEST_DATA) / "../../examples/product" / kFile));
    expectType("Net", "Length", 1);
    expectType("Net", "Topology", 0);
    expectType("Differential pair", "Phase tolerance", 1);
    expectUnknown("Region", "Length");
}

TEST_F(FacetFile, FacetsOfASecondEntryWithTheSameHeaderAreUnknownOddity) {
    write(R"({"meta":[{"header":"g","facets":[{"name":"a","type":"Text"}]},
                      {"header":"g","facets":[{"name":"a","type":"Numerical"},{"name":"b","type":"Text"}]}]})");
    expectType("g", "a", 0);
    expectUnknown("g", "b");
}

TEST_F(FacetFile, EntriesWithAnEmptyHeaderOrNameAreSkipped) {
    write(R"({"meta":[{"header":"","facets":[{"name":"a","type":"Text"}]},
                      {"header":"g","facets":[{"name":"","type":"Text"},{"name":"b","type":"Text"}]}]})");
    expectUnknown("", "a");
    expectUnknown("g", "");
    expectType("g", "b", 0);
}

TEST_F(FacetFile, WhoseListIsNoListDefinesNothing) {
    for (const char* const meta : {R"({"header":"Net","facets":[{"name":"Length","type":"Numerical"}]})", R"("Net")"}) {
        write(R"({"meta":)" + std::string(meta) + "}");
        expectSilence([] {
            FacetConfigManager::GetInstance().readfacetSettings();
            expectUnknown("Net", "Length");
        });
    }
}

TEST_F(FacetFile, MalformedDefinesNothingQuietly) {
    write(R"({"meta":[{"header":"Net","facets":[{"name":"Length","type":"Numerical"}]})");
    expectSilence([] { expectUnknown("Net", "Length"); });
}

TEST_F(FacetFile, MissingDefinesNothingQuietly) {
    expectSilence([] { expectUnknown("Net", "Length"); });
}

TEST_F(FacetFile, DirectoryInItsPlaceDefinesNothingQuietly) {
    std::filesystem::create_directories(file());
    expectSilence([] { expectUnknown("Net", "Length"); });
}

TEST_F(FacetFile, AboveTheLargestTextIsNotRead) {
    write(std::string(kNet) + " ");
    std::filesystem::resize_file(file(), (std::uintmax_t{64} << 20) + 1);
    expectSilence([] { expectUnknown("Net", "Length"); });
}

TEST_F(FacetFile, OpenElsewhereForWritingIsRead) {
    write(kNet);
    std::ofstream writer(file(), std::ios::binary | std::ios::app);
    ASSERT_TRUE(writer);
    expectType("Net", "Length", 1);
}

TEST_F(FacetFile, OfTheSiteIsNotLookedFor) {
    const zelutil::test::TempDirectory site;
    zelutil::test::writeTextFile(site / "facet_settings.cfg", kNet);
    zelutil::test::writeTextFile(site.path() / kFile, kNet);
    zelutil::test::setVariable("QTX_SITE", zelutil::test::systemText(site.path()));
    expectUnknown("Net", "Length");
}

TEST_F(FacetFile, BelowARootWithABlankIsNotReadOddity) {
    const auto root = product() / "with blank";
    zelutil::test::makeInstallation(root);
    zelutil::test::writeTextFile(root / kFile, kNet);
    zelutil::test::setVariable("QTXROOT", zelutil::test::systemText(root));
    expectSilence([] { expectUnknown("Net", "Length"); });
}

TEST_F(FacetFile, WithoutAnInstallationNothingIsDefinedAndNothingIsThrown) {
    zelutil::test::unsetVariable("QTXROOT");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(expectUnknown("Net", "Length"));
    constexpr char kMessage[] =
        "ERROR: Vorn Marl hierarchy root could not be located.\n"
        "Make sure <qtxroot>/tools/bin is included in the $PATH\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), kMessage);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), kMessage);
    EXPECT_NO_THROW(FacetConfigManager::GetInstance().readfacetSettings());
    expectUnknown("Net", "Length");
}

// --- Reading again --------------------------------------------------------------------------------------------------

TEST_F(FacetFile, IsReadOnlyAtTheFirstUse) {
    write(groupText("first", "Numerical"));
    expectType("first", "a", 1);
    write(groupText("second", "Numerical"));
    expectUnknown("second", "a");
    std::filesystem::remove(file());
    expectType("first", "a", 1);
}

TEST_F(FacetFile, ReadAgainAddsWhatIsNewAndChangesNothing) {
    write(groupText("first", "Numerical"));
    expectType("first", "a", 1);
    write(R"({"meta":[{"header":"second","facets":[{"name":"a","type":"Text"}]},
                      {"header":"first","facets":[{"name":"a","type":"Text"},{"name":"b","type":"Text"}]}]})");
    FacetConfigManager::GetInstance().readfacetSettings();
    expectType("first", "a", 1);
    expectUnknown("first", "b");
    expectType("second", "a", 0);
}

TEST_F(FacetFile, ReadAgainWithoutAUsableFileChangesNothing) {
    write(groupText("first", "Numerical"));
    expectType("first", "a", 1);
    for (const char* const text : {"", "{", "[]", R"({"meta":5})"}) {
        write(text);
        FacetConfigManager::GetInstance().readfacetSettings();
        expectType("first", "a", 1);
    }
    std::filesystem::remove(file());
    FacetConfigManager::GetInstance().readfacetSettings();
    expectType("first", "a", 1);
}

TEST_F(FacetFile, ThatAppearsLaterIsReadOnRequest) {
    expectUnknown("first", "a");
    write(groupText("first", "Text"));
    expectUnknown("first", "a");
    FacetConfigManager::GetInstance().readfacetSettings();
    expectType("first", "a", 0);
}

TEST_F(FacetFile, StaysAsItIs) {
    write(kNet);
    expectType("Net", "Length", 1);
    FacetConfigManager::GetInstance().readfacetSettings();
    EXPECT_EQ(zelutil::test::readTextFile(file()), kNet);
}

// --- Copies ---------------------------------------------------------------------------------------------------------

TEST_F(FacetFile, CopyKnowsWhatTheOriginalKnowsAndReadsForItself) {
    write(groupText("first", "Numerical"));
    FacetConfigManager copy(FacetConfigManager::GetInstance());
    EXPECT_EQ(copy.facetType("first", "a"), 1);
    write(groupText("second", "Numerical"));
    copy.readfacetSettings();
    EXPECT_EQ(copy.facetType("second", "a"), 1);
    expectUnknown("second", "a");

    copy = FacetConfigManager::GetInstance();
    EXPECT_EQ(copy.facetType("first", "a"), 1);
    EXPECT_FALSE(copy.facetDefined("second", "a"));
    FacetConfigManager& self = copy;
    copy = self;
    EXPECT_EQ(copy.facetType("first", "a"), 1);
}

TEST_F(FacetFile, OriginalOutlivesItsCopy) {
    write(groupText("first", "Numerical"));
    { const FacetConfigManager copy(FacetConfigManager::GetInstance()); }
    expectType("first", "a", 1);
}

// --- Threads --------------------------------------------------------------------------------------------------------

TEST_F(FacetFile, FirstQueriesOfManyThreadsMakeOneManager) {
    write(kNet);
    std::atomic<int> numerical{0};
    std::vector<const FacetConfigManager*> seen(8);
    std::vector<std::thread> threads;
    for (auto& one : seen) {
        threads.emplace_back([&numerical, &one] {
            numerical += ZelUGetFacetType("Net", "Length");
            one = &FacetConfigManager::GetInstance();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(numerical, 8);
    EXPECT_EQ(seen, std::vector<const FacetConfigManager*>(8, &FacetConfigManager::GetInstance()));
}

}  // namespace
}  // namespace ZelU::FACET
