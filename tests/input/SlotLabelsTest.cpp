#include "common/SlotLabels.h"

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

    Array ordered(const Array &list)
    {
        return interactive::labels::ordered(list, plugin().systemIndexToSlotMapping(), plugin().slotCount());
    }
    bool hasInvalidLabel(const Array &list)
    {
        return interactive::labels::hasInvalidLabel(list, plugin().systemIndexToSlotMapping());
    }
};

TEST_F(SlotLabelsTest, LaterDuplicatesAreDroppedAndTheOrderIsKept)
{
    EXPECT_EQ(interactive::labels::unique({"b", "a", "b", "c", "a"}), (Array{"b", "a", "c"}));
    EXPECT_EQ(interactive::labels::unique({}), Array{});
}

TEST_F(SlotLabelsTest, LabelsAreOrderedAsInTheMappingOnceEachWithoutStrangers)
{
    EXPECT_EQ(ordered({"S3", "S1", "S3", "X"}), (Array{"S1", "S3"}));
    EXPECT_EQ(ordered({"S3", "S2", "S1"}), (Array{"S1", "S2", "S3"}));
    EXPECT_EQ(ordered({}), Array{});
}

TEST_F(SlotLabelsTest, AListIsALabelOnlyWhereItIsEqual)
{
    const platform::Value one = Array{1};
    const platform::Value other = Array{2};
    EXPECT_EQ(interactive::labels::ordered({one}, {one, other}, 2), Array(1, one));
    EXPECT_TRUE(interactive::labels::hasInvalidLabel({one}, {other}));
    EXPECT_FALSE(interactive::labels::hasInvalidLabel({one}, {one}));
}

TEST_F(SlotLabelsTest, OnlyTheFirstSlotsOfTheMappingAreLookedAt)
{
    // Three distinct names, of which the first three systems hold two.
    station.systemGroups = Array{"G1", "G1", "G1", "G2"};
    station.systemSlots = Array{"S1", "S2", "S1", "S9"};
    EXPECT_EQ(plugin().slotCount(), 3U);
    EXPECT_EQ(ordered({"S9", "S2"}), (Array{"S2"}));
}

TEST_F(SlotLabelsTest, ALabelThatTheMappingRepeatsIsRepeated)
{
    station.systemGroups = Array{"G1", "G1", "G1", "G2"};
    station.systemSlots = Array{"S1", "S2", "S1", "S9"};
    EXPECT_EQ(ordered({"S2", "S1"}), (Array{"S1", "S2", "S1"}));
}

TEST_F(SlotLabelsTest, WithoutSlotsNothingIsOrdered)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    EXPECT_EQ(ordered({"S1"}), Array{});
}

TEST_F(SlotLabelsTest, ALabelThatOccursTwiceIsADuplicate)
{
    EXPECT_TRUE(interactive::labels::hasDuplication({"a", "b", "a"}));
    EXPECT_FALSE(interactive::labels::hasDuplication({"a", "b"}));
    EXPECT_FALSE(interactive::labels::hasDuplication({"a", "A"}));
    EXPECT_FALSE(interactive::labels::hasDuplication({}));
}

TEST_F(SlotLabelsTest, NumbersAreComparedAsNumbers)
{
    EXPECT_TRUE(interactive::labels::hasDuplication({1, 2, 1.0}));
    EXPECT_FALSE(interactive::labels::hasDuplication({1, "1"}));
}

TEST_F(SlotLabelsTest, ALabelThatIsNoSlotNameIsInvalid)
{
    EXPECT_TRUE(hasInvalidLabel({"S1", "Z"}));
    EXPECT_TRUE(hasInvalidLabel({"s1"}));
    EXPECT_FALSE(hasInvalidLabel({"S3", "S1", "S1"}));
    EXPECT_FALSE(hasInvalidLabel({}));
}

TEST_F(SlotLabelsTest, ANumberIsOneLabelWhateverItsType)
{
    using namespace interactive;
    const Array mapping{1, 2.0, "3", true, 4LL};
    EXPECT_EQ(labels::ordered({2, 1.0, 3}, mapping, 5), (Array{1, 2.0, true}));
    EXPECT_EQ(labels::ordered({"3", "1", 4.0}, mapping, 5), (Array{"3", 4LL}));
    EXPECT_EQ(labels::firstUnfilled({1, 2.0, "3"}, {2, true}), platform::Value("3"));
    EXPECT_FALSE(labels::firstUnfilled({1, "A"}, {"A", 1.0}).isValid());
}

TEST_F(SlotLabelsTest, ALabelOfAnotherKindIsFoundByItsValue)
{
    using namespace interactive;
    const platform::Value list = Array{"A"};
    EXPECT_EQ(labels::ordered({list}, {list, "A"}, 2), (Array{list}));
    EXPECT_EQ(labels::firstUnfilled({list, "A"}, {list}), platform::Value("A"));
}

} // namespace
