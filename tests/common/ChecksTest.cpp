#include "common/Checks.h"

#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using interactive::Check;
using interactive::Checks;
using platform::Value;

namespace {

/// The checks of one panel, "G1".
class ChecksTest : public ::testing::Test
{
protected:
    ChecksTest()
    {
        checks.open("G1", [this](bool wasPressed) { left += wasPressed ? "pressed " : "over "; });
    }
    bool ask(const QString &slot, const QString &text) { return checks.ask("G1", slot, text, text); }
    /// The text of the check that is taken next; empty when there is none.
    QString take()
    {
        taken = checks.takeNext("G1");
        return taken ? taken->text : QString();
    }

    Checks checks;
    std::optional<Check> taken;
    QString left;
};

TEST_F(ChecksTest, AreTakenOnceAndInTheirOrder)
{
    EXPECT_TRUE(ask("S1", "A"));
    EXPECT_TRUE(ask("S2", "B"));
    EXPECT_EQ(take(), "A");
    EXPECT_EQ(taken->slot, "S1");
    EXPECT_EQ(taken->value, Value("A"));
    EXPECT_EQ(take(), "B");
    EXPECT_EQ(take(), "");
}

TEST_F(ChecksTest, ArePendingUntilTheyAreSettled)
{
    ask("S1", "A");
    EXPECT_TRUE(checks.arePending("G1"));
    take();
    EXPECT_TRUE(checks.isPending("G1", "S1"));
    EXPECT_FALSE(checks.isPending("G1", "S2"));
    EXPECT_TRUE(checks.settle("G1", *taken, true));
    EXPECT_FALSE(checks.arePending("G1"));
    EXPECT_FALSE(checks.settle("G1", *taken, true)) << "a verdict counts once";
}

TEST_F(ChecksTest, TheSameEntryIsNotAskedAboutAgain)
{
    ask("S1", "A");
    EXPECT_FALSE(ask("S1", "A")) << "it is being checked";
    take();
    EXPECT_FALSE(ask("S1", "A"));
    static_cast<void>(checks.settle("G1", *taken, true));
    EXPECT_FALSE(ask("S1", "A")) << "it was found good";
    EXPECT_TRUE(ask("S2", "A")) << "in another slot it is another entry";
    EXPECT_TRUE(ask("S1", "B"));
    EXPECT_TRUE(ask("S1", "A")) << "it was replaced meanwhile";
}

TEST_F(ChecksTest, ARefusedEntryIsAskedAboutAgain)
{
    ask("S1", "A");
    take();
    static_cast<void>(checks.settle("G1", *taken, false));
    EXPECT_TRUE(ask("S1", "A"));
}

TEST_F(ChecksTest, AnotherEntryInTheSlotTakesThePlaceOfTheFirst)
{
    ask("S1", "A");
    take();
    const Check first = *taken;
    ask("S1", "B");
    EXPECT_FALSE(checks.settle("G1", first, true));
    EXPECT_EQ(take(), "B");
}

TEST_F(ChecksTest, DroppedOnesCountNoMore)
{
    ask("S1", "A");
    ask("S2", "B");
    take();
    checks.drop("G1", "S1");
    EXPECT_FALSE(checks.settle("G1", *taken, true));
    EXPECT_TRUE(checks.arePending("G1"));
    checks.drop("G1");
    EXPECT_EQ(take(), "");
    EXPECT_FALSE(checks.arePending("G1"));
}

TEST_F(ChecksTest, WhatWasFoundGoodIsAskedAboutAgainWhenAllAreDropped)
{
    ask("S1", "A");
    take();
    EXPECT_TRUE(checks.settle("G1", *taken, true));
    checks.drop("G1");
    EXPECT_TRUE(ask("S1", "A"));
}

TEST_F(ChecksTest, AfterTheClosingNothingIsAskedAndNothingSettled)
{
    ask("S1", "A");
    take();
    checks.close("G1");
    EXPECT_FALSE(checks.settle("G1", *taken, true));
    EXPECT_FALSE(ask("S1", "A"));
    checks.open("G1", {});
    EXPECT_FALSE(checks.settle("G1", *taken, true)) << "of the call before";
    EXPECT_TRUE(ask("S1", "A"));
    EXPECT_FALSE(checks.settle("G1", *taken, true)) << "of the call before";
}

TEST_F(ChecksTest, PanelsKnowNothingOfOneAnother)
{
    checks.open("0", {});
    ask("S1", "A");
    EXPECT_FALSE(checks.arePending("0"));
    EXPECT_FALSE(checks.takeNext("0"));
    EXPECT_FALSE(checks.ask("1", "SN", "A", "A")) << "not open";
    EXPECT_FALSE(checks.takeNext("1"));
    EXPECT_FALSE(checks.arePending("1"));
    EXPECT_TRUE(checks.arePending("G1"));
}

TEST_F(ChecksTest, TheEndOfAWaitIsToldWhileTheFunctionRunsAlone)
{
    checks.waitHasEnded("G1", true);
    {
        const Checks::Running running(checks, "G1");
        checks.waitHasEnded("G1", true);
        checks.waitHasEnded("0", true);
    }
    checks.waitHasEnded("G1", true);
    EXPECT_EQ(left, "pressed ");
    const Checks::Running running(checks, "G1");
    checks.waitHasEnded("G1", false);
    EXPECT_EQ(left, "pressed over ");
    checks.close("G1");
    checks.waitHasEnded("G1", false);
    EXPECT_EQ(left, "pressed over ");
}

TEST_F(ChecksTest, EachIsTakenByOneThreadAlone)
{
    constexpr int Count = 2000;
    std::atomic<int> takenByAll{0};
    std::atomic<bool> allAsked{false};
    const auto take = [&] {
        while (!allAsked || checks.arePending("G1")) {
            if (const auto check = checks.takeNext("G1"); check && checks.settle("G1", *check, true))
                ++takenByAll;
        }
    };
    std::thread one(take);
    std::thread other(take);
    for (int i = 0; i < Count; ++i)
        ask(QString::number(i), "A");
    allAsked = true;
    one.join();
    other.join();
    EXPECT_EQ(takenByAll, Count);
}

} // namespace
