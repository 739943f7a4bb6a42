#include "common/SlotStates.h"

#include <gtest/gtest.h>

using interactive::SlotStates;
using platform::Array;
using platform::Dictionary;

namespace {

TEST(SlotStates, AllSlotsOfANewPanelAreOnAndAnOldOneKeepsItsStates)
{
    SlotStates states;
    states.setUp("G1", {"S1", "S2"});
    EXPECT_EQ(states.of("G1").toMap(), (Dictionary{{"S1", 1}, {"S2", 1}}));
    states.switchOff("G1", "S1");
    states.setUp("G1", {"S1", "S2"});
    EXPECT_EQ(states.of("G1").toMap(), (Dictionary{{"S2", 1}}));
}

TEST(SlotStates, ASlotThatWasLeftOutIsTakenInAndOneThatIsOffStaysOff)
{
    SlotStates states;
    states.setUp("G1", {"S1", "S2"});
    states.leaveOut("G1", "S1");
    states.switchOff("G1", "S2");
    EXPECT_EQ(states.of("G1").toMap(), (Dictionary{{"S1", -1}}));
    states.takeIn("G1", "S1");
    states.takeIn("G1", "S2");
    EXPECT_EQ(states.of("G1").toMap(), (Dictionary{{"S1", 1}}));
}

TEST(SlotStates, TheFirstSwitchMakesAPanelsStates)
{
    SlotStates states;
    EXPECT_FALSE(states.of("3").isValid());
    states.switchOff("3", "A");
    EXPECT_EQ(states.of("3").toMap(), Dictionary());
    states.switchOn("3", "A");
    EXPECT_EQ(states.of("3").toMap(), (Dictionary{{"A", true}}));
    states.forget("3");
    EXPECT_FALSE(states.of("3").isValid());
}

TEST(SlotStates, WhatWasHandedOutIsNeverWrittenAgain)
{
    SlotStates states;
    states.setUp("G1", {"S1"});
    const Dictionary before = states.all();
    states.switchOff("G1", "S1");
    states.forget("G1");
    EXPECT_EQ(before, (Dictionary{{"G1", Dictionary{{"S1", 1}}}}));
}

TEST(SlotStates, SlotsAreTakenInAndLeftOutAsOneChange)
{
    SlotStates states;
    states.setUp("G1", {"S1", "S2", "S3", "S4"});
    states.leaveOut("G1", "S1");
    states.switchOff("G1", "S2");
    states.divide("G1", {"S1", "S2", "S3"}, {"S4"});
    EXPECT_EQ(states.of("G1").toMap(), (Dictionary{{"S1", 1}, {"S3", 1}, {"S4", -1}}));
}

} // namespace
