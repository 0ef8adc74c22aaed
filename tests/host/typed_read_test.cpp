// Typed reads of settings, as a host makes them.
#include <gtest/gtest.h>
#include <zelutil/host/settings.h>
#include <zelutil/prefs/user_preference_manager.h>

#include <string>
#include <type_traits>

#include "prefs/preference_world.h"

namespace zelutil::test {
namespace {

using host::get;
using host::read;

constexpr char kDefaults[] = R"({"meta":[
    {"header":"Display","attribute":"display","tclCommand":"","defaultsettings":[
        {"name":"grid","value":" 0.5 "},{"name":"dark","value":"Yes"},{"name":"layers","value":"12"},
        {"name":"title","value":" two words "},{"name":"nothing","value":""}]}]})";

class TypedRead : public ::testing::Test {
protected:
    TypedRead() { world_.writeDefaults(kDefaults); }

private:
    PreferenceWorld world_;
};

static_assert(std::is_same_v<decltype(get("x", true)), bool>);
static_assert(std::is_same_v<decltype(get("x", 1)), int>);
static_assert(std::is_same_v<decltype(get("x", 1.0)), double>);
static_assert(std::is_same_v<decltype(get("x", std::string())), std::string>);
static_assert(std::is_same_v<decltype(get("x", "y")), std::string>);

TEST_F(TypedRead, ReadsByBareAndFullNameInAnyCase) {
    EXPECT_EQ(read<double>("grid"), 0.5);
    EXPECT_EQ(read<double>("Display::GRID"), 0.5);
    EXPECT_EQ(read<bool>("display::dark"), true);
    EXPECT_EQ(read<int>("LAYERS"), 12);
    EXPECT_EQ(read<std::string>("title"), " two words ");
}

TEST_F(TypedRead, AStringIsTheValueAsItStands) {
    EXPECT_EQ(read<std::string>("grid"), " 0.5 ");
    EXPECT_EQ(read<std::string>("dark"), "Yes");
    EXPECT_EQ(read<std::string>("nothing"), "");
}

TEST_F(TypedRead, IsNothingForAValueOfAnotherType) {
    EXPECT_EQ(read<int>("grid"), std::nullopt);
    EXPECT_EQ(read<int>("dark"), std::nullopt);
    EXPECT_EQ(read<bool>("layers"), std::nullopt);
    EXPECT_EQ(read<double>("title"), std::nullopt);
    EXPECT_EQ(read<bool>("nothing"), std::nullopt);
    EXPECT_EQ(read<int>("nothing"), std::nullopt);
    EXPECT_EQ(read<double>("nothing"), std::nullopt);
}

TEST_F(TypedRead, IsNothingForAnUnknownName) {
    for (const char* const name : {"", "unknown", "display", "display::", "other::grid"}) {
        EXPECT_EQ(read<std::string>(name), std::nullopt) << name;
        EXPECT_EQ(read<bool>(name), std::nullopt) << name;
        EXPECT_EQ(read<int>(name), std::nullopt) << name;
        EXPECT_EQ(read<double>(name), std::nullopt) << name;
    }
}

TEST_F(TypedRead, ANameMayBeAPieceOfALongerText) {
    const std::string text = "display::gridlines";
    EXPECT_EQ(read<double>(std::string_view(text).substr(0, 13)), 0.5);
}

TEST_F(TypedRead, ReadsWhatTheUserSet) {
    UserPreferenceManager::GetInstance().updateUserPrefSettings(
        {{"grid", host::textOf(0.1)}, {"dark", host::textOf(false)}, {"layers", host::textOf(-3)}, {"nothing", "?"}},
        {});
    EXPECT_EQ(read<double>("grid"), 0.1);
    EXPECT_EQ(read<bool>("dark"), false);
    EXPECT_EQ(read<int>("layers"), -3);
    EXPECT_EQ(read<std::string>("nothing"), "?");
}

TEST_F(TypedRead, TheFallbackStandsInForWhatIsNot) {
    EXPECT_EQ(get("grid", 7.0), 0.5);
    EXPECT_EQ(get("title", 7.0), 7.0);
    EXPECT_EQ(get<int>("layers", 7), 12);
    EXPECT_EQ(get<int>("unknown", 7), 7);
    EXPECT_TRUE(get("dark", false));
    EXPECT_TRUE(get("unknown", true));
    EXPECT_EQ(get<std::string>("unknown", "y"), "y");
    EXPECT_EQ(get<std::string>("title", "y"), " two words ");
    EXPECT_EQ(get("unknown", "y"), "y");
    EXPECT_EQ(get("nothing", "y"), "");
    EXPECT_EQ(get("unknown", static_cast<const char*>(nullptr)), "");
}

TEST(TypedReadWithoutDefaults, IsNothing) {
    const PreferenceWorld world;
    EXPECT_EQ(read<std::string>("grid"), std::nullopt);
    EXPECT_EQ(get("grid", 7.0), 7.0);
}

}  // namespace
}  // namespace zelutil::test
