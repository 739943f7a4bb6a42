#include "platform/Button.h"
#include "platform/TextField.h"
#include "tests/input/InputRoom.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QAbstractButton>

#include <memory>

using platform::Array;
using platform::Button;
using platform::Color;
using platform::Dictionary;
using platform::Identifier;
using platform::TextField;
using platform::Value;
using platform::View;

namespace {

const QString job = QStringLiteral("__37-[InteractiveView confirmBtnClicked:]_block_invoke");
const Dictionary twoButtons{{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}};

/// Buttons that stand on no panel of the plug-in.
class PressedButtonTest : public testsupport::InputRoom
{
protected:
    /// Waits until every press so far has been carried out: only then the keys are let go.
    void settle()
    {
        EXPECT_TRUE(testsupport::waitUntil([this] { return !keys.isHolding(); }));
    }
};

TEST_F(PressedButtonTest, AnotherSenderIsRefused)
{
    testsupport::expectError("Invalid call for ");
    TextField sender;
    confirmation.confirmBtnClicked(&sender);
    settle();
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView confirmBtnClicked:] from sender: "
                           "<TextField: (null)>"));
    EXPECT_EQ(records.all(), Dictionary());
}

TEST_F(PressedButtonTest, NoSenderIsRefused)
{
    testsupport::expectError("Invalid call for ");
    confirmation.confirmBtnClicked(nullptr);
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView confirmBtnClicked:] from sender: (null)"));
}

TEST_F(PressedButtonTest, AButtonWithoutAPanelChangesNothing)
{
    testsupport::expectError("no parent view found");
    Button lost;
    lost.setIdentifier(Identifier("Pass"));
    lost.setTitle("OK");
    confirmation.confirmBtnClicked(&lost);
    settle();
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "-[InteractiveView getParentIdentifier:]: <Button: Pass>(Pass), "
                           "no parent view found"));
    EXPECT_EQ(records.all(), Dictionary());
}

TEST_F(PressedButtonTest, AButtonThatIsGoneByThenChangesNothing)
{
    View parent;
    parent.setIdentifier(Identifier("G1"));
    auto *gone = new Button(&parent);
    gone->setTitle("Cancel");
    records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    confirmation.confirmBtnClicked(gone);
    delete gone;
    settle();
    EXPECT_EQ(records.all(), (Dictionary{{"G1", Dictionary{{"S1", "A"}}}}));
}

TEST_F(PressedButtonTest, AButtonThatHasLeftItsPanelByThenChangesNothingAndIsNoError)
{
    View parent;
    parent.setIdentifier(Identifier("G1"));
    const auto left = std::make_unique<Button>(&parent);
    left->setTitle("Cancel");
    records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    confirmation.confirmBtnClicked(left.get());
    // Not deleted yet.
    left->setParent(nullptr);
    settle();
    EXPECT_EQ(records.all(), (Dictionary{{"G1", Dictionary{{"S1", "A"}}}}));
}

TEST_F(PressedButtonTest, WithoutAConditionThePressIsRecordedAndNothingElse)
{
    waits.makeCondition(Identifier("G1")); // of another panel
    View parent;
    parent.setIdentifier(Identifier("77-box"));
    auto *pressed = new Button(&parent);
    pressed->setIdentifier(Identifier("77-0-Cancel"));
    pressed->setTitle("Cancel");
    confirmation.confirmBtnClicked(pressed);
    settle();
    EXPECT_EQ(records.all(), (Dictionary{{"77", Dictionary{{"clickedButton", "77-0-Cancel"}}}}));
}

/// Presses of a panel's buttons: what they record and which of them end the wait.
class ConfirmationTest : public testsupport::PluginFixture
{
protected:
    /// A press whose consequences are not waited for: no event is served.
    static void push(Button *target)
    {
        ASSERT_NE(target, nullptr);
        target->findChild<QAbstractButton *>()->click();
    }
};

TEST_F(ConfirmationTest, APressIsLoggedWithItsPanelAndAllRegisteredFields)
{
    showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "OK");
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Debug, job + ": 0. responders: {0 = (<MouseTrackedTextField: 0-SN>)} "));
}

TEST_F(ConfirmationTest, TheMainThreadIsNotHeldUp)
{
    showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    // The work asks the main thread for the button's panel before it says anything, and the main thread is
    // here.
    push(button("0", "OK"));
    EXPECT_EQ(timesLoggedFrom(job + ": 0"), 0);
    settle();
    EXPECT_EQ(timesLoggedFrom(job + ": 0"), 1);
}

TEST_F(ConfirmationTest, OkWithAValidEntryEndsTheWait)
{
    auto &call = showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkChecksWhatWasTypedWithoutReturn)
{
    auto &call = showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    type("A");
    press("0", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkWithAnInvalidEntryKeepsTheCallWaitingAndLeavesNoMark)
{
    Dictionary config = twoButtons;
    config.insert("length", 3);
    auto &call = showView(0, config);
    ASSERT_TRUE(waitForPanel("0"));
    expectError("Invalid input: 0-SN = AB");
    type("AB");
    press("0", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(field("0-SN")->backgroundColor(), Color::standardRed());
    EXPECT_EQ(field("0-SN")->selectedText(), "AB");
    EXPECT_EQ(record("0"), (Dictionary{{"length", 3}}));

    scan("ABC");
    press("0", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "ABC"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkOnAGroupWithNoSlotFilledKeepsTheCallWaiting)
{
    auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_TRUE(groupButton("G1")->isEnabled());
}

TEST_F(ConfirmationTest, OkOnAGroupWithASlotStillEmptyBringsTheFocusToTheSharedField)
{
    auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    click(loopField());
    ASSERT_FALSE(field("G1-SharedInput")->isFirstResponder());
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());

    scan("B");
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "A"}, {"S2", "B"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkDisablesTheGroupsButton)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    EXPECT_TRUE(groupButton("G1")->isEnabled());
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_FALSE(groupButton("G1")->isEnabled());
    EXPECT_TRUE(groupButton("G2")->isEnabled());
}

TEST_F(ConfirmationTest, CancelLeavesTheGroupsButtonEnabled)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_TRUE(groupButton("G1")->isEnabled());
}

TEST_F(ConfirmationTest, OkOnAGroupThatIsOffIsRefusedAndLogged)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    // Not by a click, which would hide the panel.
    groupButton("G1")->setState(Button::Off);
    expectError("Inputs are valid. But group is disabled.");
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, job + ": Inputs are valid. But group is disabled."));
    EXPECT_TRUE(groupButton("G1")->isEnabled());

    groupButton("G1")->setState(Button::On);
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkOnAGroupThatWasSwitchedOffBeforeItsCallWaitsUntilItIsOnAgain)
{
    click(groupButton("G1"));
    ASSERT_EQ(groupButton("G1")->state(), Button::Off);
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    expectError(job + ": Inputs are valid. But group is disabled.");
    press("G1", "OK");
    EXPECT_FALSE(call.finished());

    click(groupButton("G1"));
    EXPECT_TRUE(isOpen("G1"));
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, OkOnAGroupThatIsOffWithInvalidEntriesSaysNothingOfTheGroup)
{
    click(groupButton("G1"));
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(timesLoggedFrom(job + ": Inputs are valid."), 0);
}

TEST_F(ConfirmationTest, AGroupThatIsNeitherOnNorOffCounts)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    groupButton("G1")->setState(Button::Mixed);
    press("G1", "OK");
    EXPECT_TRUE(call.waitUntilFinished());
}

TEST_F(ConfirmationTest, CancelRemovesTheRecordAndEndsTheWait)
{
    auto &call = showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "Cancel");
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(plugin().savedData().contains("0"));
}

TEST_F(ConfirmationTest, CancelIsNotHeldUpByAnInvalidEntryOrAGroupThatIsOff)
{
    click(groupButton("G1"));
    auto &call = showGroup(0, {{"input", Array{"S1"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("G1"));
    type("A");
    press("G1", "Cancel");
    EXPECT_EQ(call.result(), Value());
}

TEST_F(ConfirmationTest, AnyOtherButtonEndsTheWaitWithWhatWasEntered)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Retry", "OK"}}, {"length", 1}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    type("not checked");
    press("0", "Retry");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "0-0-Retry"}}));
}

TEST_F(ConfirmationTest, TheTitlesAreComparedWithTheirCase)
{
    auto &ok = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Ok", "Go"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Ok");
    EXPECT_EQ(ok.result(), Value(Dictionary{{"clickedButton", "0-0-Ok"}}));

    auto &cancel = showView(1, {{"input", Array{"SN"}}, {"button", Array{"CANCEL", "Go"}}});
    ASSERT_TRUE(waitForPanel("1"));
    press("1", "CANCEL");
    EXPECT_EQ(cancel.result(), Value(Dictionary{{"clickedButton", "1-0-CANCEL"}}));

    auto &clear = showView(2, {{"input", Array{"SN"}}, {"button", Array{"clear", "Go"}}});
    ASSERT_TRUE(waitForPanel("2"));
    press("2", "clear");
    EXPECT_EQ(clear.result(), Value(Dictionary{{"clickedButton", "2-0-clear"}}));
}

TEST_F(ConfirmationTest, TwoPressesInOneMomentEndOneCallAndHarmNothing)
{
    auto &call = showView(0, twoButtons);
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    expectError("no parent view found"); // what the later presses find
    QPointer<Button> ok = button("0", "OK");
    push(ok);
    push(ok);
    push(button("0", "Cancel"));
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
    settle();
    EXPECT_FALSE(plugin().savedData().contains("0"));
}

TEST_F(ConfirmationTest, APressWhoseCallIsAnsweredMeanwhileLeavesTheAnswerAsItIs)
{
    // A panel that nobody takes away, with this test in the place of the call that waits.
    start();
    rooms().builder.drawUI({{}, {}, {}, Array{"Cancel", "Yes"}, subject(0, {})});
    platform::Condition::Place place(*rooms().waits.getCondition(Identifier("G1")));
    push(button("G1", "Yes"));
    push(button("G1", "Cancel"));
    ASSERT_TRUE(testsupport::waitUntil([&] { return rooms().waits.isAnswered(Identifier("G1")); }));
    rooms().keys.release();
    settle();
    EXPECT_EQ(place.wait(), platform::Condition::Wake::Signalled);
    EXPECT_EQ(record("G1"), (Dictionary{{"clickedButton", "Pass"}}));
}

TEST_F(ConfirmationTest, TheSwitchStatesOfASwitchPanelAreConfirmedWithoutAnyField)
{
    auto &call = showGroup(0, {{"switch", Array{"S1", "S2", "S3", "S4"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_TRUE(call.waitUntilFinished());
    EXPECT_FALSE(groupButton("G1")->isEnabled());
}

} // namespace
