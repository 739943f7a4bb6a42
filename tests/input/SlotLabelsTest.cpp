#include "tests/support/PluginFixture.h"

using platform::Array;

namespace {

/// The list helpers that order and check slot labels.
class SlotLabelsTest : public testsupport::PluginFixture
{
protected:
    SlotLabelsTest()
    {
        station.groups = {"G1"};
        station.slotNames = {"S1", "S2", "S3"};
    }
};

TEST_F(SlotLabelsTest, LaterDuplicatesAreDroppedAndTheOrderIsKept)
{
    EXPECT_EQ(plugin().uniqueArray({"b", "a", "b", "c", "a"}), (Array{"b", "a", "c"}));
    EXPECT_EQ(plugin().uniqueArray({}), Array{});
}

TEST_F(SlotLabelsTest, LabelsAreOrderedAsInTheMappingOnceEachWithoutStrangers)
{
    EXPECT_EQ(plugin().orderedArray({"S3", "S1", "S3", "X"}), (Array{"S1", "S3"}));
    EXPECT_EQ(plugin().orderedArray({"S3", "S2", "S1"}), (Array{"S1", "S2", "S3"}));
    EXPECT_EQ(plugin().orderedArray({}), Array{});
}

TEST_F(SlotLabelsTest, OnlyTheFirstSlotsOfTheMappingAreLookedAt)
{
    // Three distinct names, of which the first three systems hold two.
    station.systemGroups = Array{"G1", "G1", "G1", "G2"};
    station.systemSlots = Array{"S1", "S2", "S1", "S9"};
    EXPECT_EQ(plugin().slotCount(), 3U);
    EXPECT_EQ(plugin().orderedArray({"S9", "S2"}), (Array{"S2"}));
}

TEST_F(SlotLabelsTest, ALabelThatTheMappingRepeatsIsRepeated)
{
    station.systemGroups = Array{"G1", "G1", "G1", "G2"};
    station.systemSlots = Array{"S1", "S2", "S1", "S9"};
    EXPECT_EQ(plugin().orderedArray({"S2", "S1"}), (Array{"S1", "S2", "S1"}));
}

TEST_F(SlotLabelsTest, WithoutSlotsNothingIsOrdered)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    EXPECT_EQ(plugin().orderedArray({"S1"}), Array{});
}

TEST_F(SlotLabelsTest, ALabelThatOccursTwiceIsADuplicate)
{
    EXPECT_TRUE(plugin().hasDuplication({"a", "b", "a"}));
    EXPECT_FALSE(plugin().hasDuplication({"a", "b"}));
    EXPECT_FALSE(plugin().hasDuplication({"a", "A"}));
    EXPECT_FALSE(plugin().hasDuplication({}));
}

TEST_F(SlotLabelsTest, NumbersAreComparedAsNumbers)
{
    EXPECT_TRUE(plugin().hasDuplication({1, 2, 1.0}));
    EXPECT_FALSE(plugin().hasDuplication({1, "1"}));
}

TEST_F(SlotLabelsTest, ALabelThatIsNoSlotNameIsInvalid)
{
    EXPECT_TRUE(plugin().hasInvalidLabel({"S1", "Z"}));
    EXPECT_TRUE(plugin().hasInvalidLabel({"s1"}));
    EXPECT_FALSE(plugin().hasInvalidLabel({"S3", "S1", "S1"}));
    EXPECT_FALSE(plugin().hasInvalidLabel({}));
}

} // namespace
