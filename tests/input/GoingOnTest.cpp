#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QTest>

#include <stdexcept>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const Dictionary entry{{"input", Array{"SN"}}};

Dictionary asking(const Array &slotNames)
{
    return {{"input", slotNames}};
}

/// Which panel has the keys next, and which waits longest.
class GoingOnTest : public testsupport::PluginFixture
{
protected:
    void open(int system)
    {
        showView(system, entry);
        ASSERT_TRUE(waitForPanel(QString::number(system)));
    }
};

TEST_F(GoingOnTest, AGroupsPanelThatIsFilledHandsTheKeysOn)
{
    open(4);
    showGroup(0, asking({"S1", "S2"}));
    ASSERT_TRUE(waitForPanel("G1"));
    for (const char *text : {"A", "B", "C"})
        scan(text);
    EXPECT_EQ(record("G1").value("S2"), Value("B"));
    EXPECT_EQ(record("4").value("SN"), Value("C"));
}

TEST_F(GoingOnTest, AGroupsPanelThatIsNotFilledKeepsTheKeys)
{
    open(4);
    showGroup(0, asking({"S1", "S2"}));
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(GoingOnTest, APanelThatIsHiddenWithItsGroupIsPassedOver)
{
    showGroup(0, asking({"S1"}));
    ASSERT_TRUE(waitForPanel("G1"));
    open(4);
    open(5);
    click(groupButton("G1"));
    scan("A");
    scan("B");
    EXPECT_EQ(record("5").value("SN"), Value("A"));
    EXPECT_EQ(record("4").value("SN"), Value("B"));
}

TEST_F(GoingOnTest, APanelWaitsFromItsOwnOpeningAndNotFromThatOfAMessage)
{
    auto &message = showGroup(0, {{"message", "Load"}});
    ASSERT_TRUE(message.waitUntilFinished());
    open(4);
    showGroup(0, asking({"S1"}));
    ASSERT_TRUE(waitForPanel("G1"));
    open(5);
    scan("A");
    EXPECT_TRUE(field("4-SN")->isFirstResponder());
}

TEST_F(GoingOnTest, AFieldThatAPersonHasChosenKeepsTheKeysWhenAnotherPanelGoes)
{
    open(4);
    open(5);
    showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    ASSERT_TRUE(field("5-SN")->isFirstResponder());
    press("0", "Yes");
    ASSERT_TRUE(waitForPanelGone("0"));
    EXPECT_TRUE(field("5-SN")->isFirstResponder());
}

TEST_F(GoingOnTest, AnAcknowledgedErrorHandsTheKeysOn)
{
    open(4);
    auto &refused = showView(0, {{"input", Array{"A", "B"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    ASSERT_TRUE(button("G1", "OK")->becomeFirstResponder());
    type(" ");
    EXPECT_EQ(refused.error().code, 105);
    EXPECT_TRUE(field("4-SN")->isFirstResponder());
}

TEST_F(GoingOnTest, AMessageTakesNoEntryWhateverItsCallLists)
{
    auto &message = showGroup(0, {{"message", "Load"}, {"input", Array{"S1"}}});
    ASSERT_TRUE(message.waitUntilFinished());
    click(field("G1-SharedInput"));
    expectError("Entry refused: A");
    scan("A");
    EXPECT_EQ(operatorLines, QStringList{"Entry refused: A (no field waits for it)"});
    EXPECT_EQ(field("G1-SharedInput")->stringValue(), "");
    EXPECT_EQ(plugin().savedData(), Dictionary());
}

TEST_F(GoingOnTest, AnEntryThatTheFieldCannotTakeReplacesTheFormerOne)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Skip"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("ABC");
    expectError("Entry refused: x");
    scan(QString(4097, QLatin1Char('x')));
    EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
    press("0", "Skip");
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "Pass"}}));
}

TEST_F(GoingOnTest, AScanForASlotWhoseFieldIsOffIsRefusedVisibly)
{
    showGroup(0, asking({"S1", "S2"}));
    ASSERT_TRUE(waitForPanel("G1"));
    field("G1-S1")->setEnabled(false);
    expectError("Entry refused: A");
    scan("A");
    EXPECT_EQ(operatorLines, QStringList{"Entry refused: A (no slot waits for it)"});
    EXPECT_EQ(record("G1"), (Dictionary{{"length", 0}}));
}

/// What presses leave when they do nothing, or cannot be carried out.
class PressTest : public testsupport::PluginFixture
{};

TEST_F(PressTest, AGroupsPanelThatAsksForNothingIsEndedByClearToo)
{
    auto &call = showGroup(0, {{"button", Array{"Clear", "Go"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Clear");
    EXPECT_EQ(call.result(), Value(false));
}

TEST_F(PressTest, ASlotsPanelWhoseOnlyButtonIsClearIsEndedByIt)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Clear"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "Clear");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(PressTest, OkOnAGroupThatIsOffSaysSoToTheOperator)
{
    showGroup(0, asking({"S1"}));
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    rooms().groupButtons.turnOnGroupButton(false, rooms().waits.panelKey("G1"));
    expectError("Inputs are valid. But group is disabled.");
    press("G1", "OK");
    EXPECT_TRUE(testsupport::waitUntil(
        [&] { return operatorLines.contains("G1 is switched off: switch the group on to confirm."); }));
}

TEST_F(PressTest, WithEverySlotSwitchedOffTheLogSaysWhyOkDoesNothing)
{
    showGroup(0, asking({"S1"}));
    ASSERT_TRUE(waitForPanel("G1"));
    rooms().slotStates.restore({{"G1", Dictionary()}});
    const QString why = "G1: every slot is switched off. Switch one on, or press \"Cancel\".";
    expectError(why);
    press("G1", "OK");
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, why));
}

TEST_F(PressTest, OneThatFailsEndsNothingAndLosesNoKey)
{
    auto &call = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    const auto fail = [&](const std::function<void()> &how) {
        rooms().confirmation.setGroups({[](const auto &) { return true; }, [how](const auto &) { how(); }});
        click(button("0", "OK"));
        scan("A");
        settle();
        EXPECT_TRUE(testsupport::waitUntil([&] { return record("0").value("SN") == Value("A"); }));
        EXPECT_FALSE(call.finished());
        EXPECT_FALSE(record("0").contains("clickedButton"));
    };
    expectError("the lamp is off");
    fail([] { throw std::runtime_error("the lamp is off"); });
    expectError("an exception of an unknown type");
    fail([] { throw 1; });
}

} // namespace
