#include "platform/SplitView.h"
#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView showInteractiveView:systemIndex:config:error:]");

/// Show calls whose panel already has an answer, while loop mode is on.
class LoopShortCutTest : public testsupport::PanelFixture
{};

TEST_F(LoopShortCutTest, ASecondCallForASystemGivesTheStoredRecordWithoutDrawing)
{
    setLoop(2);
    auto &first = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("X");
    press("0", "OK");
    const Value answer = first.result();
    ASSERT_EQ(answer, Value(Dictionary{{"SN", "X"}, {"clickedButton", "Pass"}}));
    const int drawings = timesLoggedFrom("Entered: ");
    highlights.clear();

    auto &second = showView(0, {{"input", Array{"SN"}}});
    EXPECT_EQ(second.result(), answer);
    EXPECT_EQ(second.error(), Error());
    EXPECT_EQ(timesLoggedFrom("Entered: "), drawings);
    EXPECT_TRUE(highlights.empty());
    EXPECT_EQ(timesLoggedFrom(method + ": 1, "), 1);
    EXPECT_EQ(record("0"), answer.toMap());
}

TEST_F(LoopShortCutTest, AGroupsStoredRecordIsGivenAtOnce)
{
    setLoop(2);
    answerGroup(1, {"S1"}, {"A"});
    EXPECT_EQ(showGroup(1, {{"input", Array{"S1"}}}).result(),
              Value(Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_TRUE(splitView()->subviews().isEmpty());
}

TEST_F(LoopShortCutTest, ASwitchPanelsStatesAreGivenAtOnce)
{
    setLoop(2);
    const Dictionary config{{"switch", Array{"S1", "S2", "S3", "S4"}}};
    auto &first = showGroup(0, config);
    ASSERT_TRUE(waitForPanel("G1"));
    click(buttons(content("G1", 1)).first());
    press("G1", "OK");
    ASSERT_EQ(first.result(), Value(Dictionary{{"S1", 1}, {"S3", 1}, {"S4", 1}}));
    const int drawings = timesLoggedFrom("Entered: ");
    EXPECT_EQ(showGroup(0, config).result(), Value(Dictionary{{"S1", 1}, {"S3", 1}, {"S4", 1}}));
    EXPECT_EQ(timesLoggedFrom("Entered: "), drawings);
}

TEST_F(LoopShortCutTest, AQuestionIsAskedInEveryPass)
{
    setLoop(2);
    auto &first = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    ASSERT_EQ(first.result(), Value(true));
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_FALSE(call.finished());
    press("0", "No");
    EXPECT_EQ(call.result(), Value(false));
}

TEST_F(LoopShortCutTest, WithoutAnAnswerTheOperatorIsAsked)
{
    setLoop(2);
    auto &other = showView(1, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("1"));
    scan("OTHER");
    press("1", "OK");
    ASSERT_TRUE(other.waitUntilFinished());
    showView(0, {{"input", Array{"SN"}}});
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(LoopShortCutTest, WithLoopModeOffTheOperatorIsAskedAgain)
{
    answerGroup(0, {"S1"}, {"A"});
    showGroup(0, {{"input", Array{"S1"}}});
    EXPECT_TRUE(waitForPanel("G1"));
}

TEST_F(LoopShortCutTest, TheEarlierPanelIsTakenAwayBeforeTheStoredAnswerIsGiven)
{
    setLoop(2);
    answerGroup(0, {"S1"}, {"A"});
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}}).waitUntilFinished());
    ASSERT_NE(panel("G1"), nullptr);
    ASSERT_TRUE(showGroup(0, {{"input", Array{"S1"}}}).waitUntilFinished());
    EXPECT_EQ(panel("G1"), nullptr);
}

TEST_F(LoopShortCutTest, ASwitchPanelThatWasNotConfirmedGivesItsRecordAndItsErrorAgain)
{
    setLoop(2);
    // A switch panel has no such button of its own.
    rooms().records.restore({{"G1", Dictionary{{"clickedButton", "G1-9-Retry"}}}});
    auto &call = showGroup(0, {{"switch", Array{"S1"}}});
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "G1-9-Retry"}}));
    EXPECT_EQ(call.error(), (Error{interactive::InteractivePluginErrorDomain, 301,
                                   method + ": User canceld interactive view: G1"}));
}

TEST_F(LoopShortCutTest, TheFocusOrderOfASystemIsForgottenAndThatOfAGroupIsNot)
{
    setLoop(2);
    auto &first = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("A");
    press("0", "OK");
    ASSERT_TRUE(first.waitUntilFinished());
    answerGroup(1, {"S1"}, {"B"});
    // As if something had been left of the system's panel.
    rooms().views.setResponders("0", {});
    ASSERT_TRUE(knowsFieldsOf("0"));
    ASSERT_TRUE(showView(0, {{"input", Array{"SN"}}}).waitUntilFinished());
    ASSERT_TRUE(showGroup(1, {{"input", Array{"S1"}}}).waitUntilFinished());
    EXPECT_FALSE(knowsFieldsOf("0"));
    EXPECT_TRUE(knowsFieldsOf("G2"));
}

} // namespace
