#include "platform/Condition.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
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

TEST(Condition, AnAskingWakesAThreadForWorkAndLeavesItsPlace)
{
    Condition condition;
    Place place(condition);
    condition.ask();
    condition.ask();
    EXPECT_EQ(place.wait(), Wake::Asked);
    const Ticket ticket = condition.ticket();
    EXPECT_TRUE(condition.signal(ticket)) << "the place is still taken, and can be ended";
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, AnAskingIsNotCountedButNeverLost)
{
    Condition condition;
    Place place(condition);
    condition.ask();
    condition.ask();
    ASSERT_EQ(place.wait(), Wake::Asked);
    EXPECT_EQ(endOf(condition, place), Wake::Interrupted) << "asked twice, woken once";
}

TEST(Condition, WithNobodyInAPlaceAnAskingIsForgotten)
{
    Condition condition;
    condition.ask();
    Place place(condition);
    EXPECT_EQ(endOf(condition, place), Wake::Interrupted);
}

TEST(Condition, TheEndComesBeforeTheWork)
{
    Condition condition;
    Place place(condition);
    condition.ask();
    condition.signal();
    EXPECT_EQ(place.wait(), Wake::Signalled);
    EXPECT_EQ(place.wait(), Wake::Signalled) << "and stays";
}

TEST(Condition, APlaceThatHasEndedIsNotAsked)
{
    Condition condition;
    Place first(condition);
    Place second(condition);
    condition.signal();
    condition.ask();
    EXPECT_EQ(first.wait(), Wake::Signalled);
    EXPECT_EQ(second.wait(), Wake::Asked);
}

TEST(Condition, ASignalWhileTheOwnerWorksEndsItsNextWait)
{
    Condition condition;
    Place place(condition);
    const Ticket ticket = condition.ticket();
    condition.ask();
    ASSERT_EQ(place.wait(), Wake::Asked);
    EXPECT_TRUE(condition.signal(ticket)) << "the ticket was made before the work";
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, APlaceEndsByItselfWhenItsTimeHasCome)
{
    Condition condition;
    Place place(condition);
    place.setLimit(std::chrono::steady_clock::now() + std::chrono::milliseconds(1));
    const Ticket ticket = condition.ticket();
    EXPECT_EQ(place.wait(), Wake::TimedOut);
    EXPECT_FALSE(condition.signal(ticket)) << "nothing ends it twice";
    EXPECT_FALSE(condition.accepts(ticket));
    EXPECT_FALSE(condition.accepts(condition.ticket()));
    EXPECT_EQ(endOf(condition, place), Wake::TimedOut);
}

TEST(Condition, ASignalBeforeTheLimitIsLookedAtWins)
{
    Condition condition;
    Place place(condition);
    place.setLimit(std::chrono::steady_clock::now() - std::chrono::seconds(1));
    condition.signal();
    EXPECT_FALSE(condition.endOverdue());
    EXPECT_EQ(place.wait(), Wake::Signalled);
}

TEST(Condition, ThePastLimitComesBeforeTheWork)
{
    Condition condition;
    Place place(condition);
    place.setLimit(std::chrono::steady_clock::now() - std::chrono::seconds(1));
    condition.ask();
    EXPECT_EQ(place.wait(), Wake::TimedOut);
}

TEST(Condition, AnOverduePlaceIsEndedWhileItsOwnerWorks)
{
    Condition condition;
    Place place(condition);
    EXPECT_FALSE(condition.endOverdue()) << "without a limit";
    place.setLimit(std::chrono::steady_clock::now() + std::chrono::hours(1));
    EXPECT_FALSE(condition.endOverdue()) << "not yet";
    const Ticket ticket = condition.ticket();
    place.setLimit(std::chrono::steady_clock::now());
    EXPECT_TRUE(condition.endOverdue());
    EXPECT_FALSE(condition.signal(ticket));
    EXPECT_EQ(place.wait(), Wake::TimedOut);
}

TEST(Condition, ItsOwnerEndsAPlaceUnlessSomethingElseHas)
{
    Condition condition;
    Place first(condition);
    const Ticket ticket = condition.ticket();
    EXPECT_EQ(first.end(), Wake::Interrupted);
    EXPECT_FALSE(condition.signal(ticket));
    Place second(condition);
    condition.signal();
    EXPECT_EQ(second.end(), Wake::Signalled);
}

TEST(Condition, OfASignalAndTheLimitInTheSameMomentExactlyOneWins)
{
    int signalled = 0;
    int timedOut = 0;
    for (int i = 0; i < 300; ++i) {
        Condition condition;
        Place place(condition);
        const auto limit = std::chrono::steady_clock::now() + std::chrono::microseconds(200);
        place.setLimit(limit);
        const Ticket ticket = condition.ticket();
        std::future<bool> signal = std::async(std::launch::async, [&] {
            while (std::chrono::steady_clock::now() < limit) {
            }
            return condition.signal(ticket);
        });
        const Wake wake = place.wait();
        ASSERT_EQ(wake == Wake::Signalled, signal.get());
        ++(wake == Wake::Signalled ? signalled : timedOut);
    }
    RecordProperty("signalled", signalled);
    RecordProperty("timedOut", timedOut);
}

TEST(Condition, NoAskingIsLostBetweenTheWorkAndTheNextWait)
{
    constexpr int Pieces = 5000;
    Condition condition;
    Place place(condition);
    std::atomic<int> made{0};
    std::thread other([&] {
        for (int i = 0; i < Pieces; ++i) {
            ++made;
            condition.ask();
        }
    });
    int done = 0;
    // Ends only when the last piece was told of, or the test's time is over.
    while (done < Pieces) {
        ASSERT_EQ(place.wait(), Wake::Asked);
        done = made;
    }
    other.join();
    EXPECT_EQ(done, Pieces);
}
