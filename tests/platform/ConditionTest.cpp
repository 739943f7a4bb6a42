#include "platform/Condition.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>
#include <vector>

using platform::Condition;
using Place = Condition::Place;
using Ticket = Condition::Ticket;
using Wake = Condition::Wake;

namespace {

/// A thread that takes a place and waits in it.
class Waiter
{
public:
    explicit Waiter(Condition &condition)
        : m_thread([this, &condition] { run(condition); })
    {
        m_taken.get_future().wait();
    }
    ~Waiter()
    {
        if (m_thread.joinable())
            m_thread.join();
    }
    Waiter(const Waiter &) = delete;
    Waiter &operator=(const Waiter &) = delete;

    Wake result()
    {
        m_thread.join();
        return m_wake;
    }

private:
    void run(Condition &condition)
    {
        Place place(condition);
        m_taken.set_value();
        m_wake = place.wait();
    }

    std::promise<void> m_taken;
    Wake m_wake = Wake::Interrupted;
    std::thread m_thread;
};

/// How a place ends whose wait nothing but an interruption is left to end: Signalled when it was signalled
/// before.
Wake endOf(Condition &condition, Place &place)
{
    condition.interruptAll();
    return place.wait();
}

} // namespace

TEST(Condition, ASignalEndsAWaitThatHasNotBegun)
{
    Condition condition;
    Place place(condition);
    condition.signal();
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, ASignalWakesAThreadThatWaits)
{
    Condition condition;
    Waiter waiter(condition);
    condition.signal();
    EXPECT_EQ(waiter.result(), Wake::Signalled);
}

TEST(Condition, OneSignalWakesTheEarliestPlaceAlone)
{
    Condition condition;
    Place first(condition);
    Place second(condition);
    condition.signal();
    EXPECT_EQ(first.wait(), Wake::Signalled);
    EXPECT_EQ(endOf(condition, second), Wake::Interrupted);
}

TEST(Condition, WakingUpForAnothersSignalEndsNoWait)
{
    Condition condition;
    Waiter first(condition);
    Waiter second(condition);
    condition.signal();
    EXPECT_EQ(first.result(), Wake::Signalled);
    condition.interruptAll();
    EXPECT_EQ(second.result(), Wake::Interrupted);
}

TEST(Condition, EachSignalWakesOneMorePlace)
{
    Condition condition;
    Place first(condition);
    Place second(condition);
    Place third(condition);
    condition.signal();
    condition.signal();
    EXPECT_EQ(first.wait(), Wake::Signalled);
    EXPECT_EQ(second.wait(), Wake::Signalled);
    EXPECT_EQ(endOf(condition, third), Wake::Interrupted);
}

TEST(Condition, ASignalThatNobodyWaitsForIsNotKept)
{
    Condition condition;
    condition.signal();
    Place place(condition);
    EXPECT_EQ(endOf(condition, place), Wake::Interrupted);
}

TEST(Condition, ASecondSignalForTheSamePlaceIsNotKeptForTheNext)
{
    Condition condition;
    {
        Place first(condition);
        condition.signal();
        condition.signal();
        EXPECT_EQ(first.wait(), Wake::Signalled);
    }
    Place next(condition);
    EXPECT_EQ(endOf(condition, next), Wake::Interrupted);
}

TEST(Condition, APlaceThatWasGivenUpTakesNoSignal)
{
    Condition condition;
    {
        const Place givenUp(condition);
    }
    Place place(condition);
    condition.signal();
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, AnInterruptionEndsEveryWait)
{
    Condition condition;
    Waiter first(condition);
    Waiter second(condition);
    condition.interruptAll();
    EXPECT_EQ(first.result(), Wake::Interrupted);
    EXPECT_EQ(second.result(), Wake::Interrupted);
}

TEST(Condition, AnInterruptionDoesNotUndoASignal)
{
    Condition condition;
    Place place(condition);
    condition.signal();
    EXPECT_EQ(endOf(condition, place), Wake::Signalled);
}

TEST(Condition, ASignalDoesNotUndoAnInterruption)
{
    Condition condition;
    Place place(condition);
    const Condition::Ticket ticket = condition.ticket();
    condition.interruptAll();
    condition.signal(ticket);
    condition.signal();
    EXPECT_EQ(place.wait(), Wake::Interrupted);
}

TEST(Condition, AnInterruptionIsNotKeptForLaterPlaces)
{
    Condition condition;
    condition.interruptAll();
    Place place(condition);
    condition.signal();
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, ATicketEndsTheWaitThatItWasMadeFor)
{
    Condition condition;
    Place place(condition);
    const Ticket ticket = condition.ticket();
    EXPECT_TRUE(condition.accepts(ticket));
    condition.signal(ticket);
    EXPECT_EQ(place.wait(), Wake::Signalled);
    EXPECT_FALSE(condition.accepts(ticket));
}

TEST(Condition, ATicketThatComesTooLateEndsNoOtherWait)
{
    Condition condition;
    Ticket late;
    {
        Place first(condition);
        late = condition.ticket();
        condition.signal();
        EXPECT_EQ(first.wait(), Wake::Signalled);
    }
    Place next(condition);
    EXPECT_FALSE(condition.accepts(late));
    condition.signal(late);
    EXPECT_EQ(endOf(condition, next), Wake::Interrupted);
}

TEST(Condition, ATicketIsForTheEarliestPlaceThatStillWaits)
{
    Condition condition;
    Place first(condition);
    Place second(condition);
    condition.signal();
    condition.signal(condition.ticket());
    EXPECT_EQ(first.wait(), Wake::Signalled);
    EXPECT_EQ(second.wait(), Wake::Signalled);
}

TEST(Condition, ATicketThatWasMadeWhenEveryWaitHadEndedIsForNothing)
{
    Condition condition;
    Place answered(condition);
    condition.signal();
    const Ticket ticket = condition.ticket();
    EXPECT_FALSE(condition.accepts(ticket));
    Place next(condition);
    condition.signal(ticket);
    EXPECT_EQ(endOf(condition, next), Wake::Interrupted);
}

TEST(Condition, ATicketThatWasMadeWhenNobodyWaitedCountsAsLongAsNobodyDoes)
{
    Condition condition;
    const Ticket ticket = condition.ticket();
    EXPECT_TRUE(condition.accepts(ticket));
    Place place(condition);
    EXPECT_FALSE(condition.accepts(ticket));
    condition.signal(ticket);
    EXPECT_EQ(endOf(condition, place), Wake::Interrupted);
}

TEST(Condition, NoSignalIsLostBetweenManyThreads)
{
    constexpr int rounds = 500;
    Condition condition;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::unique_ptr<Waiter>> waiters;
        for (int i = 0; i < 4; ++i)
            waiters.push_back(std::make_unique<Waiter>(condition));
        for (int i = 0; i < 4; ++i)
            condition.signal();
        for (const auto &waiter : waiters)
            ASSERT_EQ(waiter->result(), Wake::Signalled);
    }
}
