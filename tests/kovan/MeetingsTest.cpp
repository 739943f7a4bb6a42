#include "kovan/KovanLuaSequencer/KVKLuaLocks.h"
#include "kovan/KovanLuaSequencer/KVKLuaMeetings.h"

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<std::size_t>;

constexpr std::size_t Station = 4;

/// Two sequences of G1, two of G2, one of the station.
KVKLuaMeetings twoGroups()
{
    return KVKLuaMeetings({"G1", "G1", "G2", "G2", ""});
}

TEST(Meetings, AreCompleteWhenAllOfTheGroupHaveCome)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 0);
    EXPECT_EQ(meetings.missing("start", 0), Numbers{1});
    meetings.come("start", 1);
    EXPECT_TRUE(meetings.missing("start", 0).empty());
    EXPECT_TRUE(meetings.missing("start", 1).empty());
}

TEST(Meetings, OfAnotherNameAreOthers)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 0);
    meetings.come("end", 1);
    EXPECT_EQ(meetings.missing("start", 0), Numbers{1});
    EXPECT_EQ(meetings.missing("end", 1), Numbers{0});
}

TEST(Meetings, ASecondComingOfOneIsNotMetByTheFirstOfAnother)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("pass", 0);
    meetings.come("pass", 1);
    meetings.come("pass", 1);
    EXPECT_TRUE(meetings.missing("pass", 0).empty()); // of the first one, which it may not have left yet
    EXPECT_EQ(meetings.missing("pass", 1), Numbers{0});
    meetings.come("pass", 0);
    EXPECT_TRUE(meetings.missing("pass", 1).empty());
}

TEST(Meetings, OfTheStationsSequenceAreWithAllOthers)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", Station);
    EXPECT_EQ(meetings.missing("start", Station), (Numbers{0, 1, 2, 3}));
    for (const std::size_t who : {0U, 1U})
        meetings.come("start", who);
    EXPECT_EQ(meetings.missing("start", Station), (Numbers{2, 3}));
    for (const std::size_t who : {2U, 3U})
        meetings.come("start", who);
    EXPECT_TRUE(meetings.missing("start", Station).empty());
}

TEST(Meetings, OfAGroupDoNotWaitForTheStationsSequence)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 2);
    meetings.come("start", 3);
    EXPECT_TRUE(meetings.missing("start", 2).empty());
}

TEST(Meetings, OneThatHasEndedIsNotWaitedForAndToldOnce)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 0);
    EXPECT_TRUE(meetings.newlyAbsent("start", 0).empty());
    meetings.end(1);
    EXPECT_TRUE(meetings.missing("start", 0).empty());
    EXPECT_EQ(meetings.newlyAbsent("start", 0), Numbers{1});
    EXPECT_TRUE(meetings.newlyAbsent("start", 0).empty());
    meetings.come("other", 0);
    EXPECT_EQ(meetings.newlyAbsent("other", 0), Numbers{1});
}

TEST(Meetings, OneThatEndedAfterItHadComeIsNotAbsent)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 0);
    meetings.come("start", 1);
    meetings.end(1);
    EXPECT_TRUE(meetings.newlyAbsent("start", 0).empty());
}

TEST(Meetings, WhoeverHasWaitedInVainIsMissedAgain)
{
    KVKLuaMeetings meetings = twoGroups();
    meetings.come("start", 0);
    meetings.withdraw("start", 0);
    meetings.come("start", 1);
    EXPECT_EQ(meetings.missing("start", 1), Numbers{0});
}

TEST(Locks, GoToWhoeverWaitsLongest)
{
    KVKLuaLocks locks;
    EXPECT_TRUE(locks.enter("meter", 3));
    EXPECT_FALSE(locks.enter("meter", 1));
    EXPECT_FALSE(locks.enter("meter", 2));
    EXPECT_TRUE(locks.enter("scope", 1));
    EXPECT_EQ(locks.leave("meter", 3), 1U);
    EXPECT_EQ(locks.heldBy(1), (std::vector<QByteArray>{"meter", "scope"}));
    EXPECT_EQ(locks.leave("meter", 1), 2U);
    EXPECT_EQ(locks.leave("meter", 2), std::nullopt);
    EXPECT_EQ(locks.holder("meter"), std::nullopt);
    EXPECT_TRUE(locks.enter("meter", 0));
}

TEST(Locks, APlaceInTheQueueCanBeGivenUp)
{
    KVKLuaLocks locks;
    EXPECT_TRUE(locks.enter("meter", 0));
    EXPECT_FALSE(locks.enter("meter", 1));
    EXPECT_FALSE(locks.enter("meter", 2));
    EXPECT_EQ(locks.leave("meter", 1), std::nullopt);
    EXPECT_EQ(locks.leave("meter", 1), std::nullopt);
    EXPECT_EQ(locks.holder("meter"), 0U);
    EXPECT_EQ(locks.leave("meter", 0), 2U);
    EXPECT_EQ(locks.leave("scope", 0), std::nullopt);
}

} // namespace
