#include "platform/SplitView.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView showInteractiveView:systemIndex:config:error:]");

/// Show calls whose panel already has an answer, while loop mode is on.
class LoopShortCutTest : public testsupport::PluginFixture
{};

TEST_F(LoopShortCutTest, ASecondCallForASystemGivesTheStoredRecordWithoutDrawing)
{
    rooms().records.setLoopEnabled(true);
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
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"G2", Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}}});
    EXPECT_EQ(showGroup(1, {{"input", Array{"S1"}}}).result(),
              Value(Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_TRUE(rooms().views.splitView()->subviews().isEmpty());
}

TEST_F(LoopShortCutTest, ASwitchPanelsStatesAreGivenAtOnce)
{
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"G1", Dictionary{{"clickedButton", "G1-1-OK"}}}});
    rooms().slotStates.restore({{"G1", Dictionary{{"S1", 1}, {"S3", 1}}}});
    EXPECT_EQ(showGroup(0, {{"switch", Array{"S1", "S2", "S3"}}}).result(),
              Value(Dictionary{{"S1", 1}, {"S3", 1}}));
}

TEST_F(LoopShortCutTest, AQuestionIsAskedInEveryPass)
{
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"0", Dictionary{{"clickedButton", "Pass"}}}});
    auto &call = showView(0, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_FALSE(call.finished());
    press("0", "No");
    EXPECT_EQ(call.result(), Value(false));
}

TEST_F(LoopShortCutTest, WithoutAnAnswerTheOperatorIsAsked)
{
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"1", Dictionary{{"SN", "OTHER"}}}});
    showView(0, {{"input", Array{"SN"}}});
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(LoopShortCutTest, WithLoopModeOffTheOperatorIsAskedAgain)
{
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    showGroup(0, {{"input", Array{"S1"}}});
    EXPECT_TRUE(waitForPanel("G1"));
}

TEST_F(LoopShortCutTest, TheEarlierPanelIsTakenAwayBeforeTheStoredAnswerIsGiven)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}}).waitUntilFinished());
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"G1", Dictionary{{"S1", "A"}}}});
    ASSERT_TRUE(showGroup(0, {{"input", Array{"S1"}}}).waitUntilFinished());
    EXPECT_EQ(panel("G1"), nullptr);
}

TEST_F(LoopShortCutTest, ASwitchPanelThatWasNotConfirmedGivesItsRecordAndItsErrorAgain)
{
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"G1", Dictionary{{"clickedButton", "G1-9-Retry"}}}});
    auto &call = showGroup(0, {{"switch", Array{"S1"}}});
    EXPECT_EQ(call.result(), Value(Dictionary{{"clickedButton", "G1-9-Retry"}}));
    EXPECT_EQ(call.error(), (Error{interactive::InteractivePluginErrorDomain, 301,
                                   method + ": User canceld interactive view: G1"}));
}

TEST_F(LoopShortCutTest, TheFocusOrderOfASystemIsForgottenAndThatOfAGroupIsNot)
{
    rooms().records.setLoopEnabled(true);
    rooms().records.restore({{"0", Dictionary{{"SN", "A"}}}, {"G2", Dictionary{{"S1", "B"}}}});
    rooms().views.setResponders("0", {});
    rooms().views.setResponders("G2", {});
    ASSERT_TRUE(showView(0, {{"input", Array{"SN"}}}).waitUntilFinished());
    ASSERT_TRUE(showGroup(1, {{"input", Array{"S1"}}}).waitUntilFinished());
    EXPECT_FALSE(rooms().views.hasResponders("0"));
    EXPECT_TRUE(rooms().views.hasResponders("G2"));
}

} // namespace
