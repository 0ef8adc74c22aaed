#include <gtest/gtest.h>
#include <zelutil/util/dbg_chk.h>

#include <thread>

#include "support/environment.h"

namespace {

using zelutil::test::setVariable;
using zelutil::test::unsetVariable;

constexpr char kName[] = "ZELUTIL_TEST_SWITCH";

TEST(DbgChk, IsOffWhileTheVariableIsUndefined) {
    unsetVariable(kName);
    const ZelU::DbgChk chk(kName);
    EXPECT_FALSE(chk);
    EXPECT_FALSE(chk);
}

TEST(DbgChk, AnyValueTurnsItOnOddity) {
    for (const char* const value : {"1", "0", "no", "false", "off", " ", ""}) {
        setVariable(kName, value);
        const ZelU::DbgChk chk(kName);
        EXPECT_TRUE(chk) << "value: \"" << value << '"';
    }
}

TEST(DbgChk, AnotherVariableDoesNotTurnItOn) {
    unsetVariable(kName);
    setVariable("ZELUTIL_TEST_SWITCH2", "1");
    setVariable("ZELUTIL_TEST_SWITC", "1");
    EXPECT_FALSE(ZelU::DbgChk(kName));
}

TEST(DbgChk, ReadsTheEnvironmentAtTheFirstTestAndNotAtConstruction) {
    unsetVariable(kName);
    const ZelU::DbgChk madeBefore(kName);
    setVariable(kName, "1");
    EXPECT_TRUE(madeBefore);

    const ZelU::DbgChk madeWhileSet(kName);
    unsetVariable(kName);
    EXPECT_FALSE(madeWhileSet);
}

TEST(DbgChk, KeepsItsFirstAnswerOddity) {
    setVariable(kName, "1");
    const ZelU::DbgChk on(kName);
    EXPECT_TRUE(on);
    unsetVariable(kName);
    EXPECT_TRUE(on);

    const ZelU::DbgChk off(kName);
    EXPECT_FALSE(off);
    setVariable(kName, "1");
    EXPECT_FALSE(off);
}

TEST(DbgChk, AnOverrideBeforeTheFirstTestHidesTheEnvironment) {
    setVariable(kName, "1");
    ZelU::DbgChk chk(kName);
    chk.overrideValue(false);
    EXPECT_FALSE(chk);
    setVariable(kName, "2");
    EXPECT_FALSE(chk);
}

TEST(DbgChk, AnOverrideReplacesAnEarlierAnswer) {
    unsetVariable(kName);
    ZelU::DbgChk chk(kName);
    EXPECT_FALSE(chk);
    chk.overrideValue(true);
    EXPECT_TRUE(chk);
    chk.overrideValue(false);
    EXPECT_FALSE(chk);
}

TEST(DbgChk, CopiesOfAnUntestedSwitchReadTheEnvironmentThemselves) {
    unsetVariable(kName);
    const ZelU::DbgChk original(kName);
    const ZelU::DbgChk copy(original);
    EXPECT_FALSE(original);
    setVariable(kName, "1");
    EXPECT_TRUE(copy);
    EXPECT_FALSE(original);
}

TEST(DbgChk, CopiesTakeOverAnAnswer) {
    setVariable(kName, "1");
    const ZelU::DbgChk tested(kName);
    EXPECT_TRUE(tested);
    unsetVariable(kName);
    ZelU::DbgChk overridden(kName);
    overridden.overrideValue(false);

    const ZelU::DbgChk copy(tested);
    EXPECT_TRUE(copy);
    overridden = tested;
    EXPECT_TRUE(overridden);
}

TEST(DbgChk, AssignmentTakesOverTheNameToo) {
    setVariable(kName, "1");
    unsetVariable("ZELUTIL_TEST_SWITCH2");
    ZelU::DbgChk chk("ZELUTIL_TEST_SWITCH2");
    EXPECT_FALSE(chk);
    chk = ZelU::DbgChk(kName);
    EXPECT_TRUE(chk);
}

TEST(DbgChk, TheNameIsNotCopied) {
    char name[] = "ZELUTIL_TEST_SWITCH2";
    setVariable(kName, "1");
    unsetVariable(name);
    const ZelU::DbgChk chk(name);
    name[sizeof kName - 1] = '\0';
    EXPECT_TRUE(chk);
}

TEST(DbgChk, ANullNameIsAlwaysOff) { EXPECT_FALSE(ZelU::DbgChk(nullptr)); }

TEST(DbgChk, ThreadsThatMeetAtAFreshSwitchGetTheSameAnswer) {
    setVariable(kName, "1");
    for (int round = 0; round < 100; ++round) {
        const ZelU::DbgChk chk(kName);
        bool other = false;
        std::thread thread([&] { other = chk; });
        const bool mine = chk;
        thread.join();
        EXPECT_TRUE(mine);
        EXPECT_TRUE(other);
    }
}

}  // namespace
