#include "common/PanelSubject.h"

#include <gtest/gtest.h>

using interactive::PanelSubject;
using interactive::StationMap;
using interactive::Waits;
using platform::Array;
using platform::Value;

namespace {

class PanelSubjectTest : public ::testing::Test
{
protected:
    PanelSubject of(const Value &groupNumber, const Value &systemIndex)
    {
        return PanelSubject::of(groupNumber, systemIndex, station, waits);
    }

    StationMap station{Array{"G2", "G2", "G1", "G1"}, Array{"S1", "S2", "S1", "S2"}};
    Waits waits;
};

TEST_F(PanelSubjectTest, AGroupsPanelIsKeptUnderTheGroupsName)
{
    const PanelSubject subject = of(1, {});
    EXPECT_TRUE(subject.isGroup);
    EXPECT_TRUE(subject.panelKey.isSameInstance(waits.panelKey("G1")));
    EXPECT_TRUE(subject.groupName.isSameInstance(subject.panelKey));
    EXPECT_EQ(subject.groupNumber, 1U);
    EXPECT_FALSE(subject.systemIndex.isValid());
    EXPECT_FALSE(subject.slot.isValid());
    EXPECT_EQ(subject.systems, (QList<quint64>{2, 3}));
}

TEST_F(PanelSubjectTest, ASlotsPanelIsKeptUnderItsSystemsNumber)
{
    const PanelSubject subject = of({}, 3);
    EXPECT_FALSE(subject.isGroup);
    EXPECT_TRUE(subject.panelKey.isSameInstance(waits.panelKey("3")));
    EXPECT_TRUE(subject.groupName.isSameInstance(waits.panelKey("G1")));
    EXPECT_EQ(subject.groupNumber, 1U);
    EXPECT_EQ(subject.systemIndex, Value(3));
    EXPECT_EQ(subject.slot, Value("S2"));
    EXPECT_EQ(subject.systems, QList<quint64>{3});
}

TEST_F(PanelSubjectTest, WithASingleSlotEachSystemIsAGroupOfItsOwn)
{
    const StationMap single{Array{"G1", "G2", "G3"}, Array{"S1", "S1", "S1"}};
    EXPECT_EQ(PanelSubject::of({}, 2, single, waits).groupNumber, 2U);
}

TEST_F(PanelSubjectTest, ANumberWithAPointIsTheSameSystem)
{
    EXPECT_TRUE(of({}, 3.0).panelKey.isSameInstance(of({}, 3).panelKey));
}

TEST_F(PanelSubjectTest, ASystemBeyondTheMappingHasNoGroupAndNoSlot)
{
    const PanelSubject subject = of({}, 4);
    EXPECT_EQ(subject.panelKey.text(), "4");
    EXPECT_EQ(subject.groupName.text(), "(null)");
    EXPECT_EQ(subject.groupNumber, 0U);
    EXPECT_FALSE(subject.slot.isValid());
}

TEST_F(PanelSubjectTest, AStationWithoutSlotsHasSubjectsAllTheSame)
{
    station = StationMap(Array{"G1"}, Array{});
    const PanelSubject subject = of({}, 0);
    EXPECT_EQ(subject.groupName.text(), "G1");
    EXPECT_EQ(subject.groupNumber, 0U);
}

} // namespace
