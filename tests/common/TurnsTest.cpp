#include "common/Turns.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using interactive::Turns;
using Turn = Turns::Turn;
using Room = Turns::Room;

namespace {

const QString band = QStringLiteral("G1");

TEST(Turns, SlotPanelsOfDifferentSystemsShareABand)
{
    Turns turns;
    const Turn first(turns, band, "0", Room::Shared);
    const Turn second(turns, band, "1", Room::Shared);
    EXPECT_TRUE(first.hasCome());
    EXPECT_TRUE(second.hasCome());
}

TEST(Turns, TwoCallsForTheSamePanelNeverHaveTheirTurnsAtOnce)
{
    Turns turns;
    auto first = std::make_unique<Turn>(turns, band, "0", Room::Shared);
    const Turn second(turns, band, "0", Room::Shared);
    EXPECT_FALSE(second.hasCome());
    first.reset();
    EXPECT_TRUE(second.hasCome());
}

TEST(Turns, WhoNeedsTheBandAloneWaitsForAllAndKeepsAllOut)
{
    Turns turns;
    auto first = std::make_unique<Turn>(turns, band, "0", Room::Shared);
    auto second = std::make_unique<Turn>(turns, band, "1", Room::Shared);
    auto alone = std::make_unique<Turn>(turns, band, "G1", Room::Alone);
    EXPECT_FALSE(alone->hasCome());
    first.reset();
    EXPECT_FALSE(alone->hasCome());
    second.reset();
    EXPECT_TRUE(alone->hasCome());
    const Turn later(turns, band, "2", Room::Shared);
    EXPECT_FALSE(later.hasCome());
    alone.reset();
    EXPECT_TRUE(later.hasCome());
}

TEST(Turns, ALaterSlotPanelDoesNotOvertakeAGroupPanelThatQueues)
{
    Turns turns;
    auto shown = std::make_unique<Turn>(turns, band, "0", Room::Shared);
    auto queues = std::make_unique<Turn>(turns, band, "G1", Room::Alone);
    const Turn later(turns, band, "1", Room::Shared);
    EXPECT_FALSE(later.hasCome());
    shown.reset();
    EXPECT_TRUE(queues->hasCome());
    EXPECT_FALSE(later.hasCome());
}

TEST(Turns, BandsOfDifferentGroupsHaveNothingToDoWithEachOther)
{
    Turns turns;
    const Turn first(turns, band, "G1", Room::Alone);
    const Turn second(turns, "G2", "G2", Room::Alone);
    EXPECT_TRUE(second.hasCome());
}

TEST(Turns, WhoLeavesTheQueueLetsTheNextOneMoveUp)
{
    Turns turns;
    auto shown = std::make_unique<Turn>(turns, band, "0", Room::Shared);
    auto queues = std::make_unique<Turn>(turns, band, "G1", Room::Alone);
    const Turn later(turns, band, "1", Room::Shared);
    queues.reset();
    EXPECT_TRUE(later.hasCome());
}

TEST(Turns, AnInterruptionEndsWhatQueuesAlreadyAndWhatBeginsLater)
{
    Turns turns;
    const Turn shown(turns, band, "G1", Room::Alone);
    Turn queues(turns, band, "0", Room::Shared);
    turns.interrupt();
    EXPECT_FALSE(queues.hasCome());
    EXPECT_EQ(queues.wait(), Turns::Wake::Interrupted);
    Turn later(turns, "G2", "G2", Room::Alone);
    EXPECT_EQ(later.wait(), Turns::Wake::Interrupted);
    turns.accept();
    EXPECT_EQ(queues.wait(), Turns::Wake::Interrupted) << "what was interrupted stays so";
    const Turn next(turns, "G2", "0", Room::Shared);
    EXPECT_FALSE(next.hasCome()) << "the interrupted turn is still in the queue";
    const Turn free(turns, "G3", "0", Room::Shared);
    EXPECT_TRUE(free.hasCome());
}

TEST(Turns, AnInterruptionWakesWhoIsAsleep)
{
    // Often enough for some of the threads to have fallen asleep before.
    for (int round = 0; round < 50; ++round) {
        Turns turns;
        const Turn shown(turns, band, "G1", Room::Alone);
        std::atomic<int> begun{0};
        std::atomic<int> interrupted{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < 2; ++i) {
            threads.emplace_back([&] {
                Turn turn(turns, band, "0", Room::Shared);
                ++begun;
                if (turn.wait() == Turns::Wake::Interrupted)
                    ++interrupted;
            });
        }
        while (begun < 2)
            std::this_thread::yield();
        turns.interrupt();
        for (std::thread &thread : threads)
            thread.join();
        EXPECT_EQ(interrupted, 2);
    }
}

TEST(Turns, ManyThreadsHaveTheBandAloneOneAfterAnother)
{
    Turns turns;
    std::atomic<int> inside{0};
    std::atomic<int> most{0};
    std::atomic<int> done{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < 50; ++j) {
                Turn turn(turns, band, "G1", Room::Alone);
                if (turn.wait() != Turns::Wake::Granted)
                    return;
                most = std::max(most.load(), ++inside);
                --inside;
                ++done;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(most, 1);
    EXPECT_EQ(done, 400);
}

} // namespace
