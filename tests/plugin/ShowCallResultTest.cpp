#include "platform/Button.h"
#include "platform/Condition.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Error;
using platform::Identifier;
using platform::Value;

namespace {

/// What a show call gives back, by kind of panel and by the button that ended it.
class ShowCallResultTest : public testsupport::PluginFixture
{
protected:
    /// Adds a button to an open panel, as no configuration could.
    void addButton(const QString &panelKey, const QString &identifier, const QString &title)
    {
        auto *button = new Button(platform::Rect(300.0, 4.0, 80.0, 30.0));
        button->setTitle(title);
        button->setIdentifier(Identifier(identifier));
        interactive::InteractiveView &target = plugin();
        button->setTarget(&target, "confirmBtnClicked:", [&target](platform::View *sender) {
            target.rooms().confirmation.confirmBtnClicked(sender);
        });
        panel(panelKey)->addSubview(button);
    }
};

TEST_F(ShowCallResultTest, AnInputPanelGivesItsRecordWithoutTheLength)
{
    auto &call = showView(3, {{"input", Array{"SN"}}, {"length", 3}});
    ASSERT_TRUE(waitForPanel("3"));
    scan("ABC");
    press("3", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "ABC"}, {"clickedButton", "Pass"}}));
    EXPECT_EQ(call.error(), Error());
}

TEST_F(ShowCallResultTest, AGroupPanelGivesItsRecordAndKeepsIt)
{
    auto &call = showGroup(1, {{"input", Array{"S2", "S1"}}, {"length", 2}});
    ASSERT_TRUE(waitForPanel("G2"));
    scan("A1");
    scan("B2");
    press("G2", "OK");
    const Dictionary answer{{"S1", "A1"}, {"S2", "B2"}, {"clickedButton", "Pass"}};
    EXPECT_EQ(call.result(), Value(answer));
    EXPECT_EQ(record("G2"), answer);
}

TEST_F(ShowCallResultTest, ASystemsRecordAndFocusOrderAreForgottenAfterTheCall)
{
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(knowsFieldsOf("0"));
    press("0", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_FALSE(plugin().savedData().contains("0"));
    EXPECT_FALSE(knowsFieldsOf("0"));
}

TEST_F(ShowCallResultTest, InLoopModeASystemsRecordStaysButNotItsFocusOrder)
{
    setLoop(2);
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("X");
    press("0", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(record("0"), (Dictionary{{"SN", "X"}, {"clickedButton", "Pass"}}));
    EXPECT_FALSE(knowsFieldsOf("0"));
}

TEST_F(ShowCallResultTest, WhatAPanelHeldIsGivenBackWithIt)
{
    start();
    const auto room = [this] { return rooms().views.scrollView()->documentSize(); };
    auto &call = showGroup(0, {{"input", Array{"S1"}}, {"column", 4}, {"hint", "Label"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_GE(room().width(), 1000.0);
    EXPECT_EQ(rooms().rules.panels(), QStringList{"G1"});
    scan("A");
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(room(), platform::Size(0.0, 0.0));
    EXPECT_EQ(rooms().rules.panels(), QStringList());
    EXPECT_FALSE(rooms().keys.isHolding());
}

TEST_F(ShowCallResultTest, ThePanelIsGoneWhenTheCallReturns)
{
    auto &slot = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "OK");
    ASSERT_TRUE(slot.waitUntilFinished());
    EXPECT_FALSE(isOpen("0"));
    EXPECT_EQ(field("0-SN"), nullptr);

    auto &group = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    ASSERT_TRUE(group.waitUntilFinished());
    EXPECT_EQ(panel("G1"), nullptr);
}

TEST_F(ShowCallResultTest, CancelOnAnInputPanelGivesNothingAndNoError)
{
    auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "Cancel");
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(call.error().isPresent());
    EXPECT_FALSE(plugin().savedData().contains("G1"));
}

TEST_F(ShowCallResultTest, CancelOnASwitchPanelGivesNothingAndNoError)
{
    auto &call = showGroup(0, {{"switch", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Cancel");
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, CancelOnASystemsPanelGivesNothingAndNoError)
{
    auto &call = showView(2, {{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}});
    ASSERT_TRUE(waitForPanel("2"));
    press("2", "Cancel");
    EXPECT_EQ(call.result(), Value());
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, ASwitchPanelEndedWithOkGivesTheSwitchStates)
{
    auto &call = showGroup(0, {{"switch", Array{"S1", "S2", "S3", "S4"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"S1", 1}, {"S2", 1}, {"S3", 1}, {"S4", 1}}));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, TheNameOfASwitchPanelsButtonCountsAndNotItsTitle)
{
    auto &call = showGroup(1, {{"switch", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    addButton("G2", "G2-9-OK", "Done");
    press("G2", "Done");
    EXPECT_EQ(call.result(), Value(status("G2")));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, ASwitchPanelWithoutStatesGivesItsRecordOnOk)
{
    auto &call = showView(0, {{"switch", Array{"A"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "OK");
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "0-1-OK"}}));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, ASwitchPanelEndedWithAnotherButtonGivesItsRecordAndError301)
{
    auto &call = showGroup(0, {{"switch", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    addButton("G1", "G1-9-Retry", "Retry");
    press("G1", "Retry");
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "G1-9-Retry"}}));
    EXPECT_EQ(
        call.error(),
        (Error{interactive::InteractivePluginErrorDomain, 301,
               "-[InteractiveView showInteractiveView:systemIndex:config:error:]: User canceld interactive "
               "view: G1"}));
}

TEST_F(ShowCallResultTest, OnlyTheLastPieceOfASwitchPanelsButtonCounts)
{
    auto &call = showGroup(0, {{"switch", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    addButton("G1", "G1-OK-Retry", "Retry");
    press("G1", "Retry");
    EXPECT_EQ(call.error().code, 301);
}

TEST_F(ShowCallResultTest, ASwitchPanelEndedWithAnotherButtonGivesItsRecordToACallerWithoutAPlaceForAnError)
{
    auto &call = showGroupWithoutError(0, {{"switch", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    addButton("G1", "G1-9-Retry", "Retry");
    press("G1", "Retry");
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "G1-9-Retry"}}));
}

TEST_F(ShowCallResultTest, TheButtonThatIsNamedPassAnswersAQuestionWithYes)
{
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    EXPECT_EQ(call.result(), Value(true));
    EXPECT_EQ(call.result().typeId(), QMetaType::Bool);
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(ShowCallResultTest, AnyOtherButtonAnswersAQuestionWithNo)
{
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "No");
    EXPECT_EQ(call.result(), Value(false));
    EXPECT_EQ(call.result().typeId(), QMetaType::Bool);
}

TEST_F(ShowCallResultTest, AButtonWhoseTitleIsPassButWhoseNameIsNotAnswersWithNo)
{
    auto &call = showView(0, {{"button", Array{"Pass", "Fail"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Pass");
    EXPECT_EQ(call.result(), Value(false));
}

TEST_F(ShowCallResultTest, AQuestionForAGroupIsAnsweredTheSameWay)
{
    auto &call = showGroup(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Yes");
    EXPECT_EQ(call.result(), Value(true));
    EXPECT_EQ(record("G1"), (Dictionary{{"clickedButton", "Pass"}}));
}

TEST_F(ShowCallResultTest, AnInputPanelEndedWithAnotherButtonGivesWhatWasEntered)
{
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Skip", "OK"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("X");
    press("0", "Skip");
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "X"}, {"clickedButton", "0-0-Skip"}}));
}

TEST_F(ShowCallResultTest, APanelEndedWithoutAButtonGivesItsRecord)
{
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("X");
    rooms().waits.getCondition(platform::Identifier("0"))->signal();
    EXPECT_EQ(call.result(), Value(Dictionary{{"SN", "X"}}));
}

TEST_F(ShowCallResultTest, AQuestionEndedWithoutAButtonGivesItsRecordToo)
{
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    rooms().waits.getCondition(platform::Identifier("0"))->signal();
    EXPECT_EQ(call.result(), Value(Dictionary()));
}

TEST_F(ShowCallResultTest, TheLengthIsRemovedFromAGroupsRecordAlsoOnASwitchPanel)
{
    auto &call = showGroup(0, {{"switch", Array{"S1"}}, {"length", 8}});
    ASSERT_TRUE(waitForPanel("G1"));
    addButton("G1", "G1-9-Retry", "Retry");
    press("G1", "Retry");
    ASSERT_TRUE(call.waitUntilFinished());
    EXPECT_FALSE(record("G1").contains("length"));
}

} // namespace
