#include "platform/MainQueue.h"

#include "tests/support/Wait.h"

#include <QEventLoop>
#include <QString>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

using platform::MainQueue;

namespace {

/// Runs a function on a thread of its own while the main thread serves its event loop.
void onWorker(const std::function<void()> &work)
{
    std::atomic<bool> ended = false;
    std::thread worker([&] {
        work();
        ended = true;
        MainQueue::wake();
    });
    EXPECT_TRUE(testsupport::waitUntil([&] { return ended.load(); }));
    worker.join();
}

} // namespace

TEST(MainQueue, TheThreadOfTheApplicationIsTheMainThread)
{
    EXPECT_TRUE(MainQueue::isMainThread());
    onWorker([] { EXPECT_FALSE(MainQueue::isMainThread()); });
}

TEST(MainQueue, AJobOfAnotherThreadRunsOnTheMainThreadBeforeTheCallReturns)
{
    bool onMainThread = false;
    onWorker([&] {
        MainQueue::sync([&] { onMainThread = MainQueue::isMainThread(); });
        EXPECT_TRUE(onMainThread);
    });
}

TEST(MainQueue, TheResultOfAJobComesBack)
{
    QString text;
    onWorker([&] { text = MainQueue::sync([] { return QStringLiteral("G1"); }); });
    EXPECT_EQ(text, QStringLiteral("G1"));
}

TEST(MainQueue, AnExceptionOfAJobComesBack)
{
    onWorker([] { EXPECT_THROW(MainQueue::sync([] { throw std::out_of_range("7"); }), std::out_of_range); });
}

TEST(MainQueue, OnTheMainThreadAJobThatIsWaitedForRunsInPlace)
{
    bool ran = false;
    bool queued = false;
    MainQueue::async([&] { queued = true; });
    MainQueue::sync([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_FALSE(queued) << "what was queued before is not served meanwhile";
    EXPECT_TRUE(testsupport::waitUntil([&] { return queued; }));
}

TEST(MainQueue, AJobThatIsNotWaitedForRunsLater)
{
    bool ran = false;
    MainQueue::async([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(testsupport::waitUntil([&] { return ran; }));
}

TEST(MainQueue, JobsRunInTheOrderInWhichTheyWereSubmitted)
{
    std::vector<int> order;
    onWorker([&] {
        MainQueue::async([&] { order.push_back(1); });
        MainQueue::async([&] { order.push_back(2); });
        MainQueue::sync([&] { order.push_back(3); });
        EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    });
}

TEST(MainQueue, AJobMayWaitForTheJobsBehindIt)
{
    std::vector<int> order;
    MainQueue::async([&] {
        MainQueue::async([&] { order.push_back(1); });
        MainQueue::drainUntil([&] { return !order.empty(); });
        order.push_back(2);
    });
    EXPECT_TRUE(testsupport::waitUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(MainQueue, OtherEventsAreServedAmongJobsThatNeverEnd)
{
    // Each job submits the next one until a timer has run out, which needs the event loop.
    bool ranOut = false;
    bool ended = false;
    int rounds = 0;
    std::function<void()> next = [&] {
        if (++rounds < 1000000 && !ranOut)
            MainQueue::async(next);
        else
            ended = true;
    };
    QTimer::singleShot(0, [&] { ranOut = true; });
    MainQueue::async(next);
    EXPECT_TRUE(testsupport::waitUntil([&] { return ended; }));
    EXPECT_TRUE(ranOut);
    EXPECT_LT(rounds, 1000);
}

TEST(MainQueue, AnEventLoopInsideAJobServesTheJobsBehindItAndThoseThatCome)
{
    std::vector<int> order;
    MainQueue::async([&] {
        QEventLoop inner;
        MainQueue::async([&] {
            order.push_back(2);
            MainQueue::async([&] {
                order.push_back(3);
                inner.quit();
            });
        });
        inner.exec();
        order.push_back(4);
    });
    MainQueue::async([&] { order.push_back(1); });
    MainQueue::async([&] { order.push_back(1); });
    EXPECT_TRUE(testsupport::waitUntil([&] { return order.size() == 5; }));
    EXPECT_EQ(order, (std::vector<int>{1, 1, 2, 3, 4}));
}

TEST(MainQueue, WhatIsLeftRunsBeforeTheServiceEnds)
{
    int left = 100;
    std::function<void()> next = [&] {
        if (--left > 0)
            MainQueue::async(next);
    };
    MainQueue::async(next);
    MainQueue::detach();
    EXPECT_EQ(left, 0);
    MainQueue::attach();
}

TEST(MainQueue, AMainThreadThatWaitsForAWorkerServesItsJobs)
{
    std::atomic<bool> ended = false;
    int served = 0;
    std::thread worker([&] {
        for (int i = 0; i < 100; ++i)
            MainQueue::sync([&] { ++served; });
        ended = true;
        MainQueue::wake();
    });
    MainQueue::drainUntil([&] { return ended.load(); });
    worker.join();
    EXPECT_EQ(served, 100);
}

TEST(MainQueue, NoJobIsLostBetweenManyThreads)
{
    constexpr int threadCount = 8;
    constexpr int rounds = 200;
    int ran = 0;
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                MainQueue::async([&] { ++ran; });
                MainQueue::sync([&] { ++ran; });
            }
            ++ended;
            MainQueue::wake();
        });
    }
    EXPECT_TRUE(testsupport::waitUntil([&] { return ended == threadCount; }));
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(ran, threadCount * rounds * 2);
}

TEST(MainQueue, WhoeverIsAboutToGoRunsWhatWasSubmittedAndNoMore)
{
    std::vector<int> order;
    MainQueue::async([&] {
        order.push_back(1);
        MainQueue::async([&] { order.push_back(3); });
    });
    MainQueue::async([&] { order.push_back(2); });
    MainQueue::serveSubmitted();
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_TRUE(testsupport::waitUntil([&] { return order.size() == 3; }));
}
