#include "support/printed.h"
#include "support/typed_shortcut.h"
#include "support/virtual_function.h"

#include <zelutil/util/registry.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace zelutil::test {
namespace {

using ZelU::Registry::IValue;
using ZelU::Registry::IValueFactory;
using ZelU::Registry::ShortcutBase;
namespace Exceptions = ZelU::Registry::Exceptions;

/// Deletes its value at the end of the process. Made before the first shortcut, and so before the registry: where the
/// library's objects and the program's go in one order, it goes after the registry.
struct Survivor {
    ~Survivor() { delete tool; }
    Tool* tool = nullptr;
};
Survivor survivor;

// All names of this program, before any use. The test cases leave slots behind that they have lent to empty, but what
// is permanent stays: each has a slot of its own for that.
const ToolShortcut router("router");
const ToolShortcut otherRouter("router");
const ToolShortcut capitalRouter("Router");
const ToolShortcut drill("drill");
const ToolShortcut plotter("plotter");
const ToolShortcut nameless("");
const ToolShortcut permanentA("permanent a");
const ToolShortcut permanentB("permanent b");
const ToolShortcut permanentC("permanent c");
const ToolShortcut permanentD("permanent d");
const ToolShortcut permanentE("permanent e");

// --- Empty slots and names ------------------------------------------------------------------------------------------

TEST(Registry, AnEmptySlotHasNoValueAndThrowsWhenOneIsDemanded) {
    EXPECT_EQ(router.find(), nullptr);
    EXPECT_THROW(router.demand(), Exceptions::EmptyValueAccess);
    EXPECT_EQ(router.find(), nullptr);
}

TEST(Registry, ShortcutsOfOneNameShareASlot) {
    Tool tool("lent");
    EXPECT_EQ(&router.lend(tool), &tool);
    EXPECT_EQ(router.find(), &tool);
    EXPECT_EQ(otherRouter.find(), &tool);
    EXPECT_EQ(&otherRouter.demand(), &tool);
    EXPECT_EQ(drill.find(), nullptr);
}

TEST(Registry, NamesThatDifferInCaseAreDifferentSlots) {
    Tool tool("lent");
    router.lend(tool);
    EXPECT_EQ(capitalRouter.find(), nullptr);
}

TEST(Registry, NamesAreComparedByTheirTextNotByTheirAddress) {
    const std::string copy("router");
    const ToolShortcut shortcut(copy.c_str());
    Tool tool("lent");
    shortcut.lend(tool);
    EXPECT_EQ(router.find(), &tool);
}

TEST(Registry, ANullNameCountsAsTheEmptyOne) {
    const ToolShortcut null(nullptr);
    Tool tool("lent");
    nameless.lend(tool);
    EXPECT_EQ(null.find(), &tool);
}

TEST(Registry, AnAssignedShortcutReachesTheSlotOfTheOther) {
    Tool tool("lent");
    drill.lend(tool);
    ToolShortcut shortcut("router");
    EXPECT_EQ(shortcut.find(), nullptr);
    shortcut = drill;
    EXPECT_EQ(shortcut.find(), &tool);
    shortcut = ToolShortcut("plotter");
    EXPECT_EQ(shortcut.find(), nullptr);
    const ToolShortcut copy(drill);
    EXPECT_EQ(copy.find(), &tool);
}

// --- Lent values ----------------------------------------------------------------------------------------------------

TEST(RegistryLending, TheNewestValueHidesTheOlderUntilItIsDestroyed) {
    Tool a("a");
    router.lend(a);
    {
        Tool b("b");
        router.lend(b);
        EXPECT_EQ(router.find(), &b);
        {
            Tool c("c");
            EXPECT_EQ(&router.lend(c), &c);
            EXPECT_EQ(router.find(), &c);
        }
        EXPECT_EQ(router.find(), &b);
    }
    EXPECT_EQ(router.find(), &a);
}

TEST(RegistryLending, TheLastValueLeavesTheSlotEmpty) {
    { router.lend(*std::make_unique<Tool>("a")); }
    EXPECT_EQ(router.find(), nullptr);
    EXPECT_THROW(router.demand(), Exceptions::EmptyValueAccess);
}

TEST(RegistryLending, SlotsAreStacksOfTheirOwn) {
    auto a = std::make_unique<Tool>("a");
    auto b = std::make_unique<Tool>("b");
    router.lend(*a);
    drill.lend(*b);
    a.reset();
    EXPECT_EQ(router.find(), nullptr);
    EXPECT_EQ(drill.find(), b.get());
}

TEST(RegistryLending, AValueThatWasNeverInstalledLeavesTheSlotsAlone) {
    Tool a("a");
    router.lend(a);
    {
        const Tool copy(a);
        EXPECT_EQ(copy.name, "a");
        Tool assigned("b");
        assigned = a;
    }
    EXPECT_EQ(router.find(), &a);
}

TEST(RegistryLending, AValueCanBeLentAgainWhereAnOlderOneLived) {
    for (int round = 0; round < 100; ++round) {
        Tool tool("same place on the stack");
        router.lend(tool);
        EXPECT_EQ(&router.demand(), &tool);
    }
    EXPECT_EQ(router.find(), nullptr);
}

// --- Permanent values -----------------------------------------------------------------------------------------------

TEST(RegistryPermanent, AFactorysValueStays) {
    const ToolFactory factory([] { return new Tool("permanent"); });
    Tool& installed = permanentA.install(factory);
    EXPECT_EQ(installed.name, "permanent");
    EXPECT_EQ(permanentA.find(), &installed);
    EXPECT_EQ(factory.calls, 1);
}

TEST(RegistryPermanent, TheSlotMustBeEmpty) {
    const ToolFactory first([] { return new Tool("first"); });
    Tool& installed = permanentB.install(first);
    const ToolFactory second([] { return new Tool("second"); });
    EXPECT_THROW(permanentB.install(second), Exceptions::SlotAlreadyOccupied);
    EXPECT_EQ(second.calls, 0);
    EXPECT_EQ(permanentB.find(), &installed);

    Tool lent("lent");
    router.lend(lent);
    EXPECT_THROW(router.install(second), Exceptions::SlotAlreadyOccupied);
    EXPECT_EQ(second.calls, 0);
    EXPECT_EQ(router.find(), &lent);
}

TEST(RegistryPermanent, ValuesCanBeLentOverIt) {
    const ToolFactory factory([] { return new Tool("permanent"); });
    Tool& installed = permanentC.install(factory);
    {
        Tool lent("lent");
        permanentC.lend(lent);
        EXPECT_EQ(permanentC.find(), &lent);
    }
    EXPECT_EQ(permanentC.find(), &installed);
    EXPECT_EQ(installed.name, "permanent");
}

TEST(RegistryPermanent, AFactoryThatAnswersNullIsAMisuse) {
    const ToolFactory emptyHanded([]() -> Tool* { return nullptr; });
    EXPECT_THROW(permanentD.install(emptyHanded), Exceptions::Misuse);
    EXPECT_EQ(emptyHanded.calls, 1);
    EXPECT_EQ(permanentD.find(), nullptr);
    const ToolFactory factory([] { return new Tool("permanent"); });
    EXPECT_EQ(permanentD.install(factory).name, "permanent");
}

TEST(RegistryPermanent, WhatTheFactoryThrowsPassesAndTheSlotStaysEmpty) {
    const ToolFactory broken([]() -> Tool* { throw std::runtime_error("out of tools"); });
    EXPECT_THROW(permanentE.install(broken), std::runtime_error);
    EXPECT_EQ(permanentE.find(), nullptr);
    const ToolFactory factory([] { return new Tool("permanent"); });
    EXPECT_EQ(permanentE.install(factory).name, "permanent");
}

TEST(RegistryPermanent, AFactoryThatFillsTheSlotItselfHasOccupiedIt) {
    Tool lent("lent");
    bool deleted = false;
    const ToolFactory meddler([&] {
        router.lend(lent);
        return new Tool("permanent", [&deleted] { deleted = true; });
    });
    EXPECT_THROW(router.install(meddler), Exceptions::SlotAlreadyOccupied);
    EXPECT_TRUE(deleted);
    EXPECT_EQ(router.find(), &lent);
}

// --- Misuse ---------------------------------------------------------------------------------------------------------

TEST(RegistryMisuse, DestroyingAValueBelowAnotherThrowsAndLeavesTheOther) {
    Tool* const a = new Tool("a");
    router.lend(*a);
    {
        Tool b("b");
        router.lend(b);
        EXPECT_EQ(reportedBy([a] { EXPECT_THROW(delete a, Exceptions::Misuse); }), "");
        EXPECT_EQ(router.find(), &b);
    }
    // The dead value does not come back.
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryMisuse, TheOrderOfTheOthersStays) {
    Tool bottom("bottom");
    router.lend(bottom);
    Tool* const middle = new Tool("middle");
    router.lend(*middle);
    {
        Tool top("top");
        router.lend(top);
        EXPECT_THROW(delete middle, Exceptions::Misuse);
        EXPECT_EQ(router.find(), &top);
    }
    EXPECT_EQ(router.find(), &bottom);
}

TEST(RegistryMisuse, AValueLentTwiceIsRegisteredWithItsFirstPlaceOddity) {
    Tool* const tool = new Tool("twice");
    router.lend(*tool);
    EXPECT_EQ(&router.lend(*tool), tool);
    EXPECT_EQ(router.find(), tool);
    EXPECT_THROW(delete tool, Exceptions::Misuse);
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryMisuse, AValueLentToTwoSlotsLeavesBoth) {
    auto tool = std::make_unique<Tool>("shared");
    Tool above("above");
    router.lend(*tool);
    drill.lend(*tool);
    drill.lend(above);
    tool.reset();
    EXPECT_EQ(router.find(), nullptr);
    EXPECT_EQ(drill.find(), &above);
}

TEST(RegistryMisuse, ADestroyedLocalObjectThrowsOutOfItsScope) {
    auto above = std::make_unique<Tool>("above");
    const auto leaveScope = [&above] {
        Tool tool("local");
        router.lend(tool);
        router.lend(*above);
    };
    EXPECT_THROW(leaveScope(), Exceptions::Misuse);
    EXPECT_EQ(router.find(), above.get());
    above.reset();
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryMisuse, IsReportedOnStandardErrorWhileAnotherExceptionIsInFlight) {
    auto above = std::make_unique<Tool>("above");
    const auto failInScope = [&above] {
        Tool tool("local");
        router.lend(tool);
        router.lend(*above);
        throw std::runtime_error("first");
    };
    std::string caught;
    const std::string reported = reportedBy([&] {
        try {
            failInScope();
        } catch (const std::runtime_error& error) {
            caught = error.what();
        }
    });
    EXPECT_EQ(caught, "first");
    EXPECT_EQ(reported, "zelutil: a lent registry value was destroyed while it was not on top of its slot\n");
    EXPECT_EQ(router.find(), above.get());
    above.reset();
    EXPECT_EQ(router.find(), nullptr);
}

TEST(RegistryMisuse, ThrowsAgainOnceTheOtherExceptionIsCaught) {
    Tool* const tool = new Tool("tool");
    router.lend(*tool);
    Tool above("above");
    router.lend(above);
    try {
        throw std::runtime_error("first");
    } catch (const std::runtime_error&) {
        EXPECT_THROW(delete tool, Exceptions::Misuse);
    }
    EXPECT_EQ(router.find(), &above);
}

TEST(RegistryMisuse, AProperWithdrawalIsSilentWhileAnotherExceptionIsInFlight) {
    Tool below("below");
    router.lend(below);
    const std::string reported = reportedBy([] {
        try {
            Tool tool("local");
            router.lend(tool);
            throw std::runtime_error("first");
        } catch (const std::runtime_error&) {
        }
    });
    EXPECT_EQ(reported, "");
    EXPECT_EQ(router.find(), &below);
}

TEST(RegistryMisuse, ANameDeclaredAfterTheFirstUseHasNoSlotOddity) {
    EXPECT_EQ(router.find(), nullptr);
    const ToolShortcut late("declared too late");
    const ToolShortcut again("declared too late");
    Tool tool("tool");
    const ToolFactory factory([] { return new Tool("permanent"); });
    for (const ToolShortcut& shortcut : {late, again}) {
        EXPECT_THROW(shortcut.find(), Exceptions::Misuse);
        EXPECT_THROW(shortcut.demand(), Exceptions::Misuse);
        EXPECT_THROW(shortcut.lend(tool), Exceptions::Misuse);
        EXPECT_THROW(shortcut.install(factory), Exceptions::Misuse);
    }
    EXPECT_EQ(factory.calls, 0);
    // A known name may still be declared again.
    EXPECT_EQ(ToolShortcut("router").find(), nullptr);
}

// --- Exceptions -----------------------------------------------------------------------------------------------------

TEST(RegistryExceptions, EachIsCaughtByTheBaseOfItsNamespace) {
    EXPECT_THROW(router.demand(), Exceptions::Base);
    Tool tool("tool");
    router.lend(tool);
    const ToolFactory factory([] { return new Tool("permanent"); });
    EXPECT_THROW(router.install(factory), Exceptions::Base);
    EXPECT_THROW(ToolShortcut("late").find(), Exceptions::Base);
}

TEST(RegistryExceptions, MisuseIsAlsoTheGeneralOne) {
    EXPECT_EQ(router.find(), nullptr);
    EXPECT_THROW(ToolShortcut("late").find(), Smart::Exceptions::Misuse);
    EXPECT_THROW(ToolShortcut("late").find(), Smart::Exceptions::Base);
}

// --- The end of the process -----------------------------------------------------------------------------------------

void endWithPermanentValue() {
    const ToolFactory factory([] { return new Tool("permanent", [] { std::fputs("released ", stderr); }); });
    permanentA.install(factory);
    std::exit(0);
}

TEST(RegistryAtExitDeathTest, PermanentValuesAreReleasedOnce) {
    EXPECT_EXIT(endWithPermanentValue(), ::testing::ExitedWithCode(0), "^released $");
}

void endWithLentValues() {
    static Tool lent("lent", [] { std::fputs("gone ", stderr); });
    router.lend(lent);
    Tool* const never = new Tool("never destroyed");
    drill.lend(*never);
    drill.lend(lent);
    std::exit(0);
}

TEST(RegistryAtExitDeathTest, LentValuesAreLeftToTheirOwners) {
    EXPECT_EXIT(endWithLentValues(), ::testing::ExitedWithCode(0), "^gone $");
}

void endWithValueThatOutlivesTheRegistry() {
    survivor.tool = new Tool("survivor", [] { std::fputs("outlived ", stderr); });
    router.lend(*survivor.tool);
    std::exit(0);
}

TEST(RegistryAtExitDeathTest, AValueThatOutlivesTheRegistryDoesNothing) {
    EXPECT_EXIT(endWithValueThatOutlivesTheRegistry(), ::testing::ExitedWithCode(0), "^outlived $");
}

void endWithValuesThatAskForOthers() {
    const ToolFactory curious([] {
        return new Tool("curious", [] {
            // Whatever order the slots go in: no value is to be had any more, and none can be installed.
            std::fputs(router.find() == nullptr ? "none " : "some ", stderr);
            try {
                router.demand();
            } catch (const Exceptions::EmptyValueAccess&) {
                std::fputs("empty ", stderr);
            }
            Tool late("late");
            try {
                router.lend(late);
            } catch (const Exceptions::Misuse&) {
                std::fputs("misuse ", stderr);
            }
            const ToolShortcut unknown("unknown");
            std::fputs(unknown.find() == nullptr ? "none " : "some ", stderr);
        });
    });
    permanentA.install(curious);
    const ToolFactory plain([] { return new Tool("plain"); });
    router.install(plain);
    std::exit(0);
}

TEST(RegistryAtExitDeathTest, NothingIsToBeHadFromARegistryThatGoes) {
    EXPECT_EXIT(endWithValuesThatAskForOthers(), ::testing::ExitedWithCode(0), "^none empty misuse none $");
}

// --- What programs compiled earlier rely on -------------------------------------------------------------------------

TEST(RegistryInterfaces, HaveTheirOperationsInOrder) {
    const ToolFactory factory([] { return new Tool("made"); });
    IValue* const made = virtualFunction<IValue* (*)(const IValueFactory*)>(&factory, 0)(&factory);
    EXPECT_EQ(static_cast<Tool*>(made)->name, "made");
    virtualFunction<void (*)(IValue*)>(made, 1)(made);  // the deleting half of the destructor
    EXPECT_TRUE(std::has_virtual_destructor_v<IValue>);
    EXPECT_FALSE(std::is_nothrow_destructible_v<IValue>);
    EXPECT_FALSE(std::is_nothrow_destructible_v<Tool>);
}

class OpenShortcut : public ShortcutBase {
public:
    using ShortcutBase::get;
    using ShortcutBase::set;
    using ShortcutBase::ShortcutBase;
};

TEST(RegistryInterfaces, AHostMayOpenTheUntypedOperationsToo) {
    const OpenShortcut shortcut("router");
    Tool tool("tool");
    IValue& value = shortcut.set(tool);
    EXPECT_EQ(&value, &tool);
    EXPECT_EQ(shortcut.get(true), &tool);
}

}  // namespace
}  // namespace zelutil::test
