#include "support/typed_shortcut.h"
#include "util/registry_pvt.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace zelutil::test {
namespace {

namespace Pvt = ZelU::Registry::Pvt;
using ZelU::Registry::Exceptions::Misuse;

const ToolShortcut router("router");
const ToolShortcut drill("drill");

TEST(RegistryNames, AreNumberedInTheOrderOfTheirDeclaration) {
    Pvt::Registry& registry = *Pvt::Registry::instance();
    EXPECT_EQ(registry.indexOf("router"), 0);
    EXPECT_EQ(registry.indexOf("drill"), 1);
    EXPECT_EQ(registry.indexOf("plotter"), 2);
    EXPECT_EQ(registry.indexOf("drill"), 1);
    EXPECT_EQ(registry.indexOf("Drill"), 3);
}

TEST(RegistrySlots, AreMadeOnceForTheNamesKnownThen) {
    Pvt::Registry& registry = *Pvt::Registry::instance();
    Pvt::Slot* const first = &registry.slot(0);
    EXPECT_EQ(&registry.slot(1), first + 1);
    EXPECT_THROW(registry.slot(registry.indexOf("later")), Misuse);
    EXPECT_THROW(registry.slot(-1), Misuse);
    EXPECT_EQ(&registry.slot(0), first);
}

TEST(RegistrySlots, AnEmptyPointerOnTopIsAnUninitialisedAccess) {
    Pvt::Slot& slot = Pvt::Registry::instance()->slot(0);
    slot.emplace_back();
    EXPECT_THROW(router.find(), Smart::PointerExceptions::UninitializedAccess);
    EXPECT_THROW(router.demand(), Smart::PointerExceptions::UninitializedAccess);
    slot.pop_back();
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryContainer, OfNoValueIsAMisuse) { EXPECT_THROW(Pvt::PermanentCtnr(nullptr), Misuse); }

TEST(RegistryContainer, KnowsWhetherItOwnsItsValue) {
    bool deleted = false;
    {
        const Pvt::PermanentCtnr permanent(std::make_unique<Tool>("tool", [&deleted] { deleted = true; }));
        EXPECT_TRUE(permanent.IsPermanent());
    }
    EXPECT_TRUE(deleted);

    Tool tool("tool");
    Pvt::Slot slot;
    const Pvt::TempCtnr temporary(tool, slot);
    EXPECT_FALSE(temporary.IsPermanent());
    EXPECT_EQ(temporary.value(), &tool);
    EXPECT_FALSE(temporary.onTop());
}

TEST(RegistryContainer, ThatOwnsItsValueKeepsItFromBeingWithdrawn) {
    const ToolFactory factory([] { return new Tool("permanent"); });
    Tool& installed = drill.install(factory);
    EXPECT_TRUE(Pvt::Registry::instance()->withdraw(installed));
    EXPECT_EQ(drill.find(), &installed);
}

TEST(RegistryContainer, ThatWasNeverPutInASlotIsForgotten) {
    auto tool = std::make_unique<Tool>("tool");
    { const Pvt::TempCtnr temporary(*tool, Pvt::Registry::instance()->slot(0)); }
    // Otherwise this would look at a container that is gone.
    EXPECT_NO_THROW(router.lend(*tool));
    tool.reset();
    EXPECT_EQ(router.find(), nullptr);
}

}  // namespace
}  // namespace zelutil::test
