#include "common/Waits.h"

#include "tests/support/LogTrap.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

using interactive::Turns;
using interactive::Waits;
using platform::Condition;
using platform::Identifier;

namespace {

TEST(Waits, APanelKeyHasOneInstance)
{
    Waits waits;
    EXPECT_TRUE(waits.panelKey("G1").isSameInstance(waits.panelKey(QString("G") + "1")));
    EXPECT_FALSE(waits.panelKey("G1").isSameInstance(waits.panelKey("G2")));
    EXPECT_FALSE(waits.panelKey("G1").isSameInstance(Identifier("G1")));
    EXPECT_EQ(waits.panelKey("G1"), Identifier("G1"));
}

TEST(Waits, APressEndsTheWaitThatItWasMadeForAndNoLaterOne)
{
    Waits waits;
    const Identifier key = waits.panelKey("0");
    waits.makeCondition(key);
    auto first = std::make_optional<Waits::Wait>(waits, key, Waits::Purpose::Answer);
    const Waits::Press press = waits.press(key);
    const Waits::Press doubled = waits.press(key);
    EXPECT_TRUE(press.isOpen());
    EXPECT_TRUE(press.end());
    EXPECT_EQ(first->wait(), Waits::Wake::Pressed);
    first.reset();

    const Waits::Wait next(waits, key, Waits::Purpose::Answer);
    EXPECT_FALSE(doubled.isOpen());
    EXPECT_FALSE(doubled.end());
    EXPECT_TRUE(waits.press(key).isOpen());
}

TEST(Waits, APressKnowsWhetherAnErrorIsAcknowledged)
{
    Waits waits;
    const Identifier key = waits.panelKey("G1");
    waits.makeCondition(key);
    EXPECT_EQ(waits.press(key).purpose(), Waits::Purpose::Answer);
    {
        const Waits::Wait wait(waits, key, Waits::Purpose::Acknowledgement);
        EXPECT_EQ(waits.press(key).purpose(), Waits::Purpose::Acknowledgement);
    }
    EXPECT_EQ(waits.press(key).purpose(), Waits::Purpose::Answer);
}

TEST(Waits, APressWithNobodyWaitingEndsNothing)
{
    Waits waits;
    const Identifier key = waits.panelKey("0");
    EXPECT_FALSE(waits.press(key).hasCondition());
    EXPECT_FALSE(waits.press(key).end());
    waits.makeCondition(key);
    EXPECT_TRUE(waits.press(key).hasCondition());
    EXPECT_FALSE(waits.press(key).end());
}

TEST(Waits, AnAnsweredCallIsToldFromOneThatWaits)
{
    Waits waits;
    const Identifier key = waits.panelKey("0");
    waits.makeCondition(key);
    EXPECT_FALSE(waits.isAnswered(key));
    const Waits::Wait wait(waits, key, Waits::Purpose::Answer);
    EXPECT_FALSE(waits.isAnswered(key));
    EXPECT_TRUE(waits.press(key).end());
    EXPECT_TRUE(waits.isAnswered(key));
}

TEST(Waits, AnInterruptionEndsTheWaitsAndIsRemembered)
{
    Waits waits;
    const Identifier key = waits.panelKey("0");
    waits.makeCondition(key);
    Waits::Wait wait(waits, key, Waits::Purpose::Answer);
    waits.interrupt();
    EXPECT_EQ(wait.wait(), Waits::Wake::Interrupted);
    EXPECT_TRUE(waits.isInterrupted());
    waits.accept();
    EXPECT_FALSE(waits.isInterrupted());
}

TEST(Waits, AnInterruptionEndsTheQueueingToo)
{
    Waits waits;
    const Turns::Turn shown(waits.turns(), "G1", "G1", Turns::Room::Alone);
    Turns::Turn queues(waits.turns(), "G1", "0", Turns::Room::Shared);
    waits.interrupt();
    EXPECT_EQ(queues.wait(), Turns::Wake::Interrupted);
    waits.accept();
    Turns::Turn next(waits.turns(), "G2", "4", Turns::Room::Shared);
    EXPECT_EQ(next.wait(), Turns::Wake::Granted);
}

TEST(Waits, AWaitWhoseTimeHasComeIsEndedWhileItsCallWorks)
{
    Waits waits;
    const Identifier key = waits.panelKey("0");
    waits.makeCondition(key);
    EXPECT_FALSE(waits.endOverdue("0")) << "nobody waits";
    Waits::Wait wait(waits, key, Waits::Purpose::Answer);
    wait.setLimit(std::chrono::steady_clock::now() + std::chrono::hours(1));
    EXPECT_FALSE(waits.endOverdue("0")) << "not yet";
    const Waits::Press press = waits.press(key);
    wait.setLimit(std::chrono::steady_clock::now());
    EXPECT_TRUE(waits.endOverdue("0"));
    EXPECT_FALSE(press.end());
    EXPECT_EQ(wait.wait(), Waits::Wake::TimedOut);
    EXPECT_FALSE(waits.endOverdue("of nobody"));
}

TEST(Waits, TwoFirstCallsForAPanelAtTheSameMomentGetOneCondition)
{
    testsupport::expectError("no conidtion found for");
    constexpr int Panels = 200;
    Waits waits;
    std::array<std::atomic<int>, Panels> arrived{};
    std::array<std::array<std::shared_ptr<Condition>, Panels>, 2> made;
    const auto ask = [&](std::size_t caller) {
        for (std::size_t i = 0; i < Panels; ++i) {
            ++arrived[i];
            while (arrived[i] < 2)
                std::this_thread::yield();
            made[caller][i] = waits.conditionMade(waits.panelKey(QString::number(i)));
        }
    };
    std::thread other(ask, 1U);
    ask(0U);
    other.join();
    EXPECT_EQ(made[0], made[1]);
}

TEST(Waits, HowMuchIsKeptGrowsWithThePanelsAndNotWithTheCalls)
{
    testsupport::expectError("no conidtion found for");
    Waits waits;
    for (int call = 0; call < 5; ++call) {
        const Identifier key = waits.panelKey("G1");
        const interactive::Turns::Turn turn(waits.turns(), "G1", "G1", interactive::Turns::Room::Alone);
        const Waits::Wait wait(waits, key, Waits::Purpose::Answer);
        EXPECT_EQ(waits.kept().turns, 1);
        EXPECT_EQ(waits.kept().waits, 1);
    }
    EXPECT_EQ(waits.kept().panelKeys, 1);
    EXPECT_EQ(waits.kept().conditions, 1);
    EXPECT_EQ(waits.kept().turns, 0);
    EXPECT_EQ(waits.kept().waits, 0);
    waits.clear();
    EXPECT_EQ(waits.kept().conditions, 0);
    EXPECT_EQ(waits.kept().panelKeys, 1) << "who has a key goes on comparing by its instance";
}

} // namespace
