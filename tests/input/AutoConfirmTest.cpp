#include "kovan/KovanUIExtension/KVKExtensionAnswerRelay.h"
#include "platform/TextField.h"
#include "tests/support/FieldKeys.h"

#include <future>

using platform::Array;
using platform::Dictionary;
using platform::Value;
using testsupport::SequencerCall;

namespace {

class AutoConfirmTest : public testsupport::FieldKeysFixture
{
protected:
    SequencerCall &askSystem(Dictionary config = {})
    {
        config.insert("input", Array{"SN"});
        config.insert("autoConfirm", true);
        SequencerCall &call = showView(0, config);
        EXPECT_TRUE(waitForPanel("0"));
        return call;
    }
    SequencerCall &askGroup(Dictionary config = {})
    {
        config.insert("input", Array{"S1", "S2"});
        config.insert("autoConfirm", true);
        SequencerCall &call = showGroup(0, config);
        EXPECT_TRUE(waitForPanel("G1"));
        return call;
    }
    /// Whether the panel stands there after all presses so far were carried out.
    bool staysOpen(SequencerCall &call, const QString &panelKey)
    {
        settle();
        return !call.finished() && isOpen(panelKey);
    }
};

TEST_F(AutoConfirmTest, ASlotsPanelEndsWithItsEntryAsByOk)
{
    SequencerCall &call = askSystem();
    scan("A");
    const Dictionary answer = call.result().toMap();
    EXPECT_EQ(answer.value("SN"), Value("A"));
    EXPECT_EQ(answer.value("clickedButton"), Value("Pass"));
}

TEST_F(AutoConfirmTest, AGroupsPanelEndsWithItsLastEntryAsByOk)
{
    SequencerCall &call = askGroup();
    scan("A");
    EXPECT_TRUE(staysOpen(call, "G1"));
    scan("B");
    const Dictionary answer = call.result().toMap();
    EXPECT_EQ(answer.value("S2"), Value("B"));
    EXPECT_EQ(answer.value("clickedButton"), Value("Pass"));
}

TEST_F(AutoConfirmTest, WithoutItThePanelWaitsForItsButton)
{
    SequencerCall &call = showView(0, {{"input", Array{"SN"}}, {"autoConfirm", false}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    EXPECT_TRUE(staysOpen(call, "0"));
}

TEST_F(AutoConfirmTest, ARefusedEntryEndsNothing)
{
    expectError("Invalid input: 0-SN = ABC");
    SequencerCall &call = askSystem({{"length", 2}});
    scan("ABC");
    EXPECT_TRUE(staysOpen(call, "0"));
    scan("AB");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("AB"));
}

TEST_F(AutoConfirmTest, APanelThatNobodyTouchedStaysOpen)
{
    SequencerCall &call = askSystem({{"default", "A"}});
    EXPECT_TRUE(staysOpen(call, "0"));
    SequencerCall &group =
        showGroup(1, {{"input", Array{"S1"}}, {"default", Dictionary{{"S1", "A"}}}, {"autoConfirm", true}});
    ASSERT_TRUE(waitForPanel("G2"));
    EXPECT_TRUE(staysOpen(group, "G2"));
}

TEST_F(AutoConfirmTest, AConfirmedDefaultCountsAndTheOthersDoNot)
{
    SequencerCall &call = askGroup({{"default", Dictionary{{"S1", "A"}, {"S2", "B"}}}});
    type("\n");
    EXPECT_TRUE(staysOpen(call, "G1"));
    type("\n");
    EXPECT_EQ(call.result().toMap().value("S2"), Value("B"));
}

TEST_F(AutoConfirmTest, ASlotThatIsSwitchedOffIsNotWaitedFor)
{
    SequencerCall &call = askGroup();
    pressSwitch("G1-100-S1");
    EXPECT_TRUE(staysOpen(call, "G1"));
    scan("B");
    const Dictionary answer = call.result().toMap();
    EXPECT_EQ(answer.value("S2"), Value("B"));
    EXPECT_FALSE(answer.contains("S1"));
}

TEST_F(AutoConfirmTest, SwitchingTheLastMissingSlotOffCompletesWhatWasEntered)
{
    SequencerCall &call = askGroup();
    scan("A");
    pressSwitch("G1-101-S2");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("A"));
}

TEST_F(AutoConfirmTest, SwitchingAllSlotsOffEndsNothing)
{
    SequencerCall &call = askGroup();
    scan("A");
    pressSwitch("G1-100-S1");
    pressSwitch("G1-101-S2");
    EXPECT_TRUE(staysOpen(call, "G1"));
}

TEST_F(AutoConfirmTest, AnEntryThatWasBegunKeepsThePanelOpen)
{
    SequencerCall &call = askGroup();
    scan("A");
    type("B");
    pressSwitch("G1-101-S2");
    EXPECT_TRUE(staysOpen(call, "G1"));
}

TEST_F(AutoConfirmTest, TheScanBehindTheLastOneGoesToThePanelThatWaitsNext)
{
    SequencerCall &next = showView(5, {{"input", Array{"SN"}}, {"autoConfirm", true}});
    ASSERT_TRUE(waitForPanel("5"));
    SequencerCall &call = askSystem();
    ASSERT_TRUE(field("0-SN")->isFirstResponder());
    // Without a pause: the second one comes while the first panel is being ended.
    scan("A");
    scan("B");
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
    EXPECT_EQ(next.result().toMap().value("SN"), Value("B"));
}

TEST_F(AutoConfirmTest, APressOfOkInTheSameMomentEndsNoOtherCall)
{
    // The answer is told while the panel stands, which it does until "OK" has been pressed, too.
    std::promise<void> pressed;
    KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler(
        [moment = pressed.get_future().share()](const KVKGivenAnswer &) { moment.wait(); });
    SequencerCall &call = askSystem();
    scan("A");
    click(button("0", "OK"));
    pressed.set_value();
    KVKExtensionAnswerRelay::sharedAnswerRelay()->setHandler({});
    EXPECT_EQ(call.result().toMap().value("SN"), Value("A"));
    SequencerCall &again = askSystem();
    EXPECT_TRUE(staysOpen(again, "0"));
}

TEST_F(AutoConfirmTest, AGroupsPanelHasItsOkWhateverButtonsAreNamed)
{
    SequencerCall &call =
        showGroup(0, {{"input", Array{"S1"}}, {"autoConfirm", true}, {"button", Array{"Go"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    EXPECT_EQ(call.result().toMap().value("S1"), Value("A"));
}

TEST_F(AutoConfirmTest, AChoiceByTheMouseEndsThePanel)
{
    SequencerCall &call = askSystem({{"choices", Array{"Green", "Red"}}});
    clickArrow("0-SN");
    clickRow(1);
    EXPECT_EQ(call.result().toMap().value("SN"), Value("Red"));
}

} // namespace
