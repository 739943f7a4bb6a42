#include "kovan/KovanLuaSequencer/KVKLuaRun.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

namespace {

using std::chrono::duration;

std::vector<KVKLuaPartner> systems(int count)
{
    std::vector<KVKLuaPartner> partners;
    for (int i = 0; i < count; ++i)
        partners.push_back({QStringLiteral("system %1").arg(i), QStringLiteral("G1")});
    return partners;
}

template <class Action>
QString problemOf(const Action &action)
{
    try {
        action();
    } catch (const KVKLuaWaitError &problem) {
        return QString::fromUtf8(problem.what());
    }
    return {};
}

TEST(LuaRun, ALockThatIsHandedToOneThatIsBeingStoppedGoesOnToTheNext)
{
    KVKLuaRun run(systems(3));
    ASSERT_TRUE(run.enter(0, "meter"));
    ASSERT_FALSE(run.enter(1, "meter"));
    ASSERT_FALSE(run.enter(2, "meter"));
    run.interrupt(1);
    run.leave(0, "meter");
    EXPECT_EQ(problemOf([&] { run.awaitLock(1); }), "stopped");
    run.awaitLock(2);
    run.leave(2, "meter");
    EXPECT_TRUE(run.enter(0, "meter"));
}

TEST(LuaRun, AWaiterThatIsStoppedLeavesTheQueue)
{
    KVKLuaRun run(systems(3));
    ASSERT_TRUE(run.enter(0, "meter"));
    ASSERT_FALSE(run.enter(1, "meter"));
    std::thread waiter([&] { EXPECT_EQ(problemOf([&] { run.awaitLock(1); }), "stopped"); });
    run.interrupt(1);
    waiter.join();
    ASSERT_FALSE(run.enter(2, "meter"));
    run.leave(0, "meter");
    run.awaitLock(2);
}

TEST(LuaRun, TheEndOfASequenceGivesUpWhatItHas)
{
    KVKLuaRun run(systems(2));
    ASSERT_TRUE(run.enter(0, "meter"));
    EXPECT_EQ(run.beginUpdate(0, qint64{1}), nullptr);
    ASSERT_FALSE(run.enter(1, "meter"));
    run.end(0);
    run.end(0);
    run.awaitLock(1);
    EXPECT_EQ(run.beginUpdate(1, qint64{1}), nullptr);
}

TEST(LuaRun, ACircleThatAStoppedWaiterIsPartOfIsNone)
{
    KVKLuaRun run(systems(2));
    ASSERT_TRUE(run.enter(0, "a"));
    ASSERT_TRUE(run.enter(1, "b"));
    ASSERT_FALSE(run.enter(0, "b"));
    run.interrupt(0);
    ASSERT_FALSE(run.enter(1, "a"));
    EXPECT_EQ(problemOf([&] { run.awaitLock(0); }), "stopped");
    run.leave(0, "a");
    run.awaitLock(1);
}

TEST(LuaRun, AWaiterThatHasTheLockButIsNotAwakeYetIsInNoCircle)
{
    KVKLuaRun run(systems(2));
    ASSERT_TRUE(run.enter(0, "a"));
    ASSERT_TRUE(run.enter(1, "b"));
    ASSERT_FALSE(run.enter(0, "b"));
    run.leave(1, "b");
    ASSERT_FALSE(run.enter(1, "a"));
    run.awaitLock(0);
    run.leave(0, "a");
    run.awaitLock(1);
}

TEST(LuaRun, AWaitWithALimitIsInNoCircle)
{
    KVKLuaRun run(systems(2));
    ASSERT_TRUE(run.enter(0, "meter"));
    ASSERT_FALSE(run.comeTo(0, "start", true));
    ASSERT_FALSE(run.enter(1, "meter"));
    EXPECT_EQ(run.awaitOthers(0, duration<double>(0.0)), QStringList{"system 1"});
    // Without a limit it would be one.
    EXPECT_EQ(problemOf([&] { static_cast<void>(run.comeTo(0, "start", false)); }),
              "rendezvous: waiting at \"start\" would never end: system 0 waits at \"start\" for system 1; "
              "system 1 waits for lock \"meter\", which system 0 holds");
}

TEST(LuaRun, WhoeverIsStoppedAfterTheMeetingIsCompleteDoesNotKeepTheOthers)
{
    KVKLuaRun run(systems(3));
    ASSERT_FALSE(run.comeTo(0, "start", false));
    ASSERT_FALSE(run.comeTo(1, "start", false));
    ASSERT_TRUE(run.comeTo(2, "start", false));
    run.interrupt(0);
    EXPECT_EQ(problemOf([&] { static_cast<void>(run.awaitOthers(0, std::nullopt)); }), "stopped");
    EXPECT_EQ(run.awaitOthers(1, std::nullopt), QStringList{});
}

TEST(LuaRun, OneThatIsFastIsNotPartOfTheFirstMeetingTwice)
{
    KVKLuaRun run(systems(2));
    ASSERT_FALSE(run.comeTo(0, "pass", false));
    ASSERT_TRUE(run.comeTo(1, "pass", false));
    // The other one has not left the first meeting yet.
    ASSERT_FALSE(run.comeTo(1, "pass", true));
    EXPECT_EQ(run.awaitOthers(1, duration<double>(0.0)), QStringList{"system 0"});
    EXPECT_EQ(run.awaitOthers(0, std::nullopt), QStringList{});
}

TEST(LuaRun, WhenTheTimeIsUpAsTheLastOneComesBothHaveMetOrNeither)
{
    std::mt19937 chance(4711);
    std::uniform_int_distribution<int> microseconds(0, 120);
    KVKLuaRun run(systems(2));
    for (int round = 0; round < 1000; ++round) {
        bool met[2] = {};
        const auto go = [&](std::size_t who, int limit) {
            const duration<double> time(limit * 1e-6);
            met[who] = run.comeTo(who, "start", true) || run.awaitOthers(who, time).isEmpty();
        };
        const int limits[2] = {microseconds(chance), microseconds(chance)};
        std::thread other([&] { go(1, limits[1]); });
        go(0, limits[0]);
        other.join();
        ASSERT_EQ(met[0], met[1]) << round;
    }
}

TEST(LuaRun, AnUpdateOfAnotherKeyDoesNotWait)
{
    KVKLuaRun run(systems(2));
    EXPECT_EQ(run.beginUpdate(0, qint64{1}), nullptr);
    EXPECT_EQ(run.beginUpdate(1, QByteArray("1")), nullptr);
    run.leaveUpdate(1, QByteArray("1"));
    // The same one waits, and is ended by a stop.
    std::thread waiter(
        [&] { EXPECT_EQ(problemOf([&] { static_cast<void>(run.beginUpdate(1, qint64{1})); }), "stopped"); });
    run.interrupt(1);
    waiter.join();
    EXPECT_EQ(problemOf([&] { run.refuseInsideUpdate(0, "showView"); }),
              "showView: cannot be called inside of shared.update");
    run.leaveUpdate(0, qint64{1});
    run.refuseInsideUpdate(0, "showView");
}

TEST(LuaRun, NamesAreCutWhereTheyAreShown)
{
    EXPECT_EQ(KVKShownName("meter"), "meter");
    EXPECT_EQ(KVKShownName(QByteArray(1000, 'x')), QString(60, 'x') + QChar(0x2026));
}

} // namespace
