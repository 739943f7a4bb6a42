#include "platform/SerialQueue.h"

#include "platform/MainQueue.h"
#include "tests/support/Wait.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <vector>

using platform::MainQueue;
using platform::SerialQueue;

TEST(SerialQueue, JobsRunOneAfterAnotherInTheOrderOfSubmission)
{
    SerialQueue queue;
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

TEST(SerialQueue, JobsLeaveTheMainThreadFree)
{
    SerialQueue queue;
    std::promise<bool> onMainThread;
    queue.async([&] { onMainThread.set_value(MainQueue::isMainThread()); });
    EXPECT_FALSE(onMainThread.get_future().get());
}

TEST(SerialQueue, AQueueThatGoesWaitsForTheJobThatRunsAndDropsTheOthers)
{
    std::promise<void> begun;
    std::promise<void> release;
    std::atomic<bool> ended = false;
    std::atomic<bool> second = false;
    {
        SerialQueue queue;
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
