#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;
using platform::TextField;
using platform::Value;

namespace {

/// Whether a panel may be closed, for records and fields as no panel of a show call has them.
class CheckAllInputsTest : public testsupport::InputRoom
{};

TEST_F(CheckAllInputsTest, APanelWithoutRegisteredFieldsMayClose)
{
    EXPECT_TRUE(mayClose("0"));
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, TheFirstInvalidFieldStopsTheCheck)
{
    records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}, {"B", "BB"}, {"C", "CCC"}});
    testsupport::expectError("Invalid input: 0-B = BB");
    root.show(); // a text is selected where it can be seen
    EXPECT_FALSE(mayClose("0"));
    EXPECT_EQ(field("0-A")->backgroundColor(), Color::white());
    EXPECT_EQ(field("0-B")->backgroundColor(), Color::standardRed());
    EXPECT_EQ(field("0-B")->selectedText(), "BB");
    EXPECT_EQ(field("0-C")->backgroundColor(), Color::systemBlue());
    EXPECT_EQ(record("0"), (Dictionary{{"A", "AAA"}, {"length", 3}}));
}

TEST_F(CheckAllInputsTest, APanelWhoseFieldsAreAllValidMayClose)
{
    records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}, {"B", "BBB"}});
    EXPECT_TRUE(mayClose("0"));
    EXPECT_EQ(record("0"), (Dictionary{{"A", "AAA"}, {"B", "BBB"}, {"length", 3}}));
}

TEST_F(CheckAllInputsTest, AFieldThatIsGoneDoesNotHoldThePanelUp)
{
    records.restore({{"0", Dictionary{{"length", 3}}}});
    addFields("0", {{"A", "AAA"}});
    delete field("0-A");
    EXPECT_TRUE(mayClose("0"));
    EXPECT_EQ(record("0"), (Dictionary{{"length", 3}}));
}

TEST_F(CheckAllInputsTest, WhatIsNoEntryOfASlotDoesNotLetAGroupClose)
{
    slotStates.setUp("G1", {"S1"});
    addFields("G1", {{"S1", ""}, {"SharedInput", ""}});
    EXPECT_FALSE(mayClose("G1"));
    records.restore({{"G1", Dictionary{{"length", 3}, {"clickedButton", "Pass"}}}});
    EXPECT_FALSE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, AGroupWhoseLastFieldIsNoInputFieldMayClose)
{
    TextField plain;
    plain.setIdentifier(Identifier("G1-S1"));
    views.setResponders("G1", {&plain});
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, AGroupWhoseListOfFieldsIsEmptyMayClose)
{
    views.setResponders("G1", {});
    EXPECT_TRUE(mayClose("G1"));
}

TEST_F(CheckAllInputsTest, ASystemsPanelWithASlotThatStillWaitsMayNotClose)
{
    slotStates.restore({{"0", Dictionary{{"S1", 1}, {"S2", 1}}}});
    records.restore({{"0", Dictionary{{"S1", "A"}}}});
    views.setResponders("0", {});
    EXPECT_FALSE(mayClose("0"));
}

TEST_F(CheckAllInputsTest, WithoutARecordNoSlotIsWaitedFor)
{
    slotStates.restore({{"0", Dictionary{{"S1", 1}}}});
    views.setResponders("0", {});
    EXPECT_TRUE(mayClose("0"));
}

/// The same as the operator sees it who presses "OK".
class CloseGroupPanelTest : public testsupport::PluginFixture
{
protected:
    testsupport::SequencerCall &ask(const Array &slotNames, int length)
    {
        auto &call = showGroup(0, {{"input", slotNames}, {"length", length}});
        waitForPanel("G1");
        return call;
    }
};

TEST_F(CloseGroupPanelTest, AGroupsFieldsAreNotCheckedAgain)
{
    auto &call = ask({"S1"}, 3);
    scan("AAA");
    type("XX");
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "AAA"}, {"clickedButton", "Pass"}}));
}

TEST_F(CloseGroupPanelTest, AGroupWithAnEnabledSlotStillEmptyMayNotCloseAndTheSharedFieldGetsTheFocus)
{
    auto &call = ask({"S1", "S2"}, 0);
    scan("A");
    type("X");
    click(loopField());
    ASSERT_FALSE(field("G1-SharedInput")->isFirstResponder());
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
    EXPECT_EQ(field("G1-SharedInput")->selectedText(), "X");
}

TEST_F(CloseGroupPanelTest, ASlotThatTakesNoInputDoesNotHoldTheGroupUp)
{
    auto &call = ask({"S1"}, 0);
    ASSERT_EQ(status("G1").value("S2"), Value(-1));
    scan("A");
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
}

} // namespace
