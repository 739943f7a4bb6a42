#include "platform/WorkQueue.h"

#include "platform/MainQueue.h"
#include "tests/support/Wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <vector>

using platform::MainQueue;
using platform::WorkQueue;

TEST(WorkQueue, JobsRunOneAfterAnotherInTheOrderOfSubmission)
{
    WorkQueue queue;
    std::vector<int> order;
    std::atomic<bool> ended = false;
    for (int i = 0; i < 100; ++i)
        queue.async([&order, i] { order.push_back(i); });
    queue.async([&] {
        ended = true;
        MainQueue::wake();
    });
    ASSERT_TRUE(testsupport::waitUntil([&] { return ended.load(); }));
    ASSERT_EQ(order.size(), 100u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(order[static_cast<size_t>(i)], i);
}

TEST(WorkQueue, JobsLeaveTheMainThreadFree)
{
    WorkQueue queue;
    std::promise<bool> onMainThread;
    queue.async([&] { onMainThread.set_value(MainQueue::isMainThread()); });
    EXPECT_FALSE(onMainThread.get_future().get());
}

TEST(WorkQueue, AQueueThatGoesWaitsForTheJobThatRunsAndDropsTheOthers)
{
    std::promise<void> begun;
    std::promise<void> release;
    std::atomic<bool> ended = false;
    std::atomic<bool> second = false;
    {
        WorkQueue queue;
        queue.async([&] {
            begun.set_value();
            release.get_future().wait();
            // What a job may wait for: the main thread that destroys the queue.
            MainQueue::sync([&] { ended = true; });
        });
        queue.async([&] { second = true; });
        begun.get_future().wait();
        MainQueue::async([&] { release.set_value(); });
    }
    EXPECT_TRUE(ended);
    EXPECT_FALSE(second);
}

TEST(WorkQueue, WhatAJobHoldsGoesBeforeTheNextJobAndMaySubmitOne)
{
    std::vector<int> order;
    std::promise<void> last;
    WorkQueue queue;
    const auto submit = [&](int number) {
        queue.async([&order, &last, number] {
            order.push_back(number);
            if (number == 3)
                last.set_value();
        });
    };
    std::shared_ptr<void> held(nullptr, [&](void *) {
        order.push_back(1);
        submit(3);
    });
    std::promise<void> second;
    queue.async([kept = std::move(held), isThere = second.get_future().share()] { isThere.wait(); });
    submit(2);
    second.set_value();
    last.get_future().wait();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(WorkQueue, OneThatWasEndedTakesNoJobs)
{
    bool ran = false;
    {
        WorkQueue queue;
        queue.end();
        queue.async([&] { ran = true; });
        queue.end();
    }
    EXPECT_FALSE(ran);
}
