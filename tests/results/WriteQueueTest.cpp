#include "station/results/WriteQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using station::WriteQueue;

namespace {

TEST(WriteQueueTest, JobsAreDoneInTheirOrderOnOneThreadOfTheirOwn)
{
    std::vector<int> done;
    std::thread::id thread;
    WriteQueue queue;
    for (int i = 0; i < 100; ++i)
        queue.post([&done, i] { done.push_back(i); });
    queue.wait([&thread] { thread = std::this_thread::get_id(); });
    ASSERT_EQ(done.size(), 100U);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(done.at(static_cast<std::size_t>(i)), i);
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(WriteQueueTest, TheEndWaitsForWhatWasPosted)
{
    std::atomic<int> done{0};
    {
        WriteQueue queue;
        for (int i = 0; i < 1000; ++i)
            queue.post([&done] { ++done; });
    }
    EXPECT_EQ(done, 1000);
}

TEST(WriteQueueTest, EachOfManyWaitsForItsOwnJob)
{
    WriteQueue queue;
    int done = 0;
    std::vector<std::thread> threads;
    std::atomic<int> early{0};
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                bool mine = false;
                queue.wait([&done, &mine] {
                    ++done;
                    mine = true;
                });
                early += mine ? 0 : 1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(early, 0);
    EXPECT_EQ(done, 800);
}

} // namespace
