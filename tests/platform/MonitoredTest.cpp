#include "platform/Monitored.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>
#include <vector>

using platform::Monitored;

TEST(Monitored, BeginsWithTheValueThatItIsGiven)
{
    Monitored<int> given(5);
    Monitored<int> plain;
    EXPECT_EQ(given.copy(), 5);
    EXPECT_EQ(plain.copy(), 0);
}

TEST(Monitored, AThreadThatHoldsTheGuardMayTakeItAgain)
{
    Monitored<std::vector<int>> list;
    const auto outer = list.lock();
    list.lock()->push_back(1);
    outer->push_back(2);
    EXPECT_EQ(list.copy(), (std::vector<int>{1, 2}));
}

TEST(Monitored, ACopyIsApartFromTheValue)
{
    Monitored<std::vector<int>> list;
    std::vector<int> copy = list.copy();
    copy.push_back(1);
    EXPECT_TRUE(list.lock()->empty());
}

TEST(Monitored, NoChangeIsLostBetweenThreads)
{
    constexpr int threadCount = 8;
    constexpr int rounds = 2000;
    Monitored<std::map<int, int>> counts;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const auto guard = counts.lock();
                const int before = (*guard)[round % 10];
                (*guard)[round % 10] = before + 1;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    for (const auto &[key, count] : counts.copy())
        EXPECT_EQ(count, threadCount * rounds / 10) << key;
}
