#include "common/StationMap.h"

#include <gtest/gtest.h>

using interactive::StationMap;
using platform::Array;
using platform::Value;

namespace {

const StationMap station(Array{"G2", "G2", "G1", "G1"}, Array{"S1", "S2", "S1", "S2"});

TEST(StationMap, GroupsAreCountedInTheOrderOfTheirFirstSystems)
{
    EXPECT_EQ(station.groupNames(), (Array{"G2", "G1"}));
    EXPECT_EQ(station.groupNumber("G2"), 0U);
    EXPECT_EQ(station.groupNumber("G1"), 1U);
    EXPECT_FALSE(station.groupNumber("G3").has_value());
    EXPECT_EQ(station.slotCount(), 2U);
}

TEST(StationMap, ASystemHasItsGroupAndSlotAndOneBeyondHasNone)
{
    EXPECT_EQ(station.groupOf(2), Value("G1"));
    EXPECT_EQ(station.slotOf(3), Value("S2"));
    EXPECT_FALSE(station.groupOf(4).isValid());
    EXPECT_FALSE(station.slotOf(-1).isValid());
}

TEST(StationMap, AGroupHasItsSystems)
{
    EXPECT_EQ(station.systemsOf("G1"), (QList<quint64>{2, 3}));
    EXPECT_TRUE(station.systemsOf("G3").isEmpty());
}

TEST(StationMap, AStationWithoutSystemsIsEmpty)
{
    const StationMap nothing(Array{}, Array{});
    EXPECT_EQ(nothing.groupCount(), 0U);
    EXPECT_EQ(nothing.slotCount(), 0U);
    EXPECT_EQ(nothing.systemCount(), 0);
}

} // namespace
