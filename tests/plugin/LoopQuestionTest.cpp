#include "platform/SplitView.h"
#include "tests/support/PluginFixture.h"

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const Dictionary serial{{"input", Array{"SN"}}};
const Dictionary address{{"input", Array{"MAC"}}};
const Dictionary question{{"button", Array{"No", "Yes"}}};

/// Loop mode gives each question its own answer back.
class LoopQuestionTest : public testsupport::PluginFixture
{
protected:
    /// Asks a system, answers with a scan and "OK", and returns what the call gave.
    Value answer(int system, const Dictionary &config, const QString &text)
    {
        testsupport::SequencerCall &call = showView(system, config);
        if (!waitForPanel(QString::number(system)))
            return {};
        scan(text);
        press(QString::number(system), "OK");
        return call.result();
    }
};

TEST_F(LoopQuestionTest, AQuestionInBetweenNeitherBecomesTheAnswerNorErasesIt)
{
    setLoop(2);
    const Value first = answer(0, serial, "A");
    auto &asked = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    ASSERT_EQ(asked.result(), Value(true));
    EXPECT_EQ(showView(0, serial).result(), first);
    EXPECT_EQ(first.toMap().value("SN"), Value("A"));
}

TEST_F(LoopQuestionTest, AnotherLabelIsAskedAndBothAreKept)
{
    setLoop(2);
    const Value first = answer(0, serial, "A");
    const Value second = answer(0, address, "B");
    EXPECT_EQ(second.toMap().value("MAC"), Value("B"));
    EXPECT_EQ(showView(0, serial).result(), first);
    EXPECT_EQ(showView(0, address).result(), second);
}

TEST_F(LoopQuestionTest, TheOrderOfTheLabelsIsNoPartOfTheQuestion)
{
    setLoop(2);
    auto &call = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    scan("B");
    press("G1", "OK");
    const Value first = call.result();
    EXPECT_EQ(showGroup(0, {{"input", Array{"S2", "S1"}}}).result(), first);
    showGroup(0, {{"input", Array{"S1", "S2"}}, {"label", "MAC"}});
    EXPECT_TRUE(waitForPanel("G1"));
}

TEST_F(LoopQuestionTest, AGroupsAnswerFromBeforeLoopModeCounts)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "OK");
    const Value first = call.result();
    setLoop(2);
    EXPECT_EQ(showGroup(0, {{"input", Array{"S1"}}}).result(), first);
}

TEST_F(LoopQuestionTest, WhatDataIsReadFollowsTheAnswerThatWasGivenAgain)
{
    setLoop(2);
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "OK");
    ASSERT_TRUE(call.waitUntilFinished());
    auto &asked = showGroup(0, question);
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "Yes");
    ASSERT_TRUE(asked.waitUntilFinished());
    ASSERT_TRUE(showGroup(0, {{"input", Array{"S1"}}}).waitUntilFinished());
    platform::Error error;
    EXPECT_EQ(plugin().getData(0, &error), Value("A"));
}

TEST_F(LoopQuestionTest, AnAcknowledgedErrorIsNoAnswer)
{
    setLoop(2);
    auto &refused = showGroup(0, {{"input", Array{"S9"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    press("G1", "OK");
    ASSERT_EQ(refused.error().code, 101);
    EXPECT_EQ(plugin().savedData().keys(), QStringList{"Loop"});
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_FALSE(call.finished());
}

TEST_F(LoopQuestionTest, ACancelledQuestionIsAskedAgain)
{
    setLoop(2);
    auto &call = showView(0, {{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}});
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Cancel");
    ASSERT_EQ(call.result(), Value());
    showView(0, serial);
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(LoopQuestionTest, TheEndOfAGroupsLoopForgetsItsSystemsAnswersAndNoOthers)
{
    setLoop(2);
    ASSERT_TRUE(answer(0, serial, "A").isValid());
    const Value other = answer(4, serial, "B");
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(0));
    ASSERT_EQ(plugin().isLoopFinished(0, nullptr), Value(1));
    EXPECT_EQ(showView(4, serial).result(), other);
    showView(0, serial);
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(LoopQuestionTest, ARunBeginsWithoutAnswers)
{
    setLoop(5);
    ASSERT_TRUE(answer(0, serial, "A").isValid());
    plugin().interruptWaitingCalls();
    plugin().acceptCalls();
    EXPECT_EQ(plugin().getLoopConfig(nullptr).value("LoopMax"), Value(5));
    showView(0, serial);
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(LoopQuestionTest, AStoredAnswerTakesNoTurnAndLeavesAPanelThatIsWaitedOnAlone)
{
    setLoop(2);
    const Value first = answer(0, serial, "A");
    auto &open = showView(0, address);
    ASSERT_TRUE(waitForPanel("0"));
    type("B");
    EXPECT_EQ(showView(0, serial).result(), first);
    EXPECT_TRUE(isOpen("0"));
    type("2\n");
    press("0", "OK");
    EXPECT_EQ(open.result(), Value(Dictionary{{"MAC", "B2"}, {"clickedButton", "Pass"}}));
}

} // namespace
