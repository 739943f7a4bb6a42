#include "platform/SplitView.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const Dictionary question{{"button", Array{"No", "Yes"}}};

/// The host stops its sequences: calls that wait for the operator end.
class InterruptionTest : public testsupport::PluginFixture
{
protected:
    static void expectInterrupted(testsupport::SequencerCall &call)
    {
        EXPECT_EQ(call.result(), Value());
        EXPECT_EQ(call.error().domain, interactive::InteractivePluginErrorDomain);
        EXPECT_FALSE(call.error().localizedDescription.isEmpty());
    }
};

TEST_F(InterruptionTest, TheHostFindsTheInterfaceOnTheController)
{
    EXPECT_EQ(qobject_cast<KVKExtensionInterruption *>(plugin().pluginContext()), &plugin());
    EXPECT_EQ(qobject_cast<KVKExtensionInteractiveView *>(plugin().pluginContext()), &plugin());
}

TEST_F(InterruptionTest, EveryCallThatWaitsReturnsNothingWithAnErrorThatSaysSo)
{
    std::vector<testsupport::SequencerCall *> calls;
    for (int i = 0; i < 4; ++i)
        calls.push_back(&showView(i, {{"input", Array{"SN"}}}));
    calls.push_back(&showGroup(1, {{"input", Array{"S1"}}}));
    for (const char *key : {"0", "1", "2", "3", "G2"})
        ASSERT_TRUE(waitForPanel(key));
    plugin().interruptWaitingCalls();
    for (testsupport::SequencerCall *call : calls)
        expectInterrupted(*call);
}

TEST_F(InterruptionTest, ThePanelIsTakenAwayAndTheHighlightEnds)
{
    auto &slot = showView(0, question);
    auto &group = showGroup(1, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("0") && waitForPanel("G2"));
    plugin().interruptWaitingCalls();
    ASSERT_TRUE(slot.waitUntilFinished() && group.waitUntilFinished());
    EXPECT_FALSE(isOpen("0"));
    EXPECT_EQ(panel("G2"), nullptr);
    EXPECT_FALSE(rooms().views.hasResponders("0"));
    EXPECT_EQ(highlights, (std::vector<Highlight>{{0, true}, {0, false}}));
}

TEST_F(InterruptionTest, WhatWasEnteredBeforeIsNotGivenAsAnAnswer)
{
    auto &call = showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    scan("X");
    plugin().interruptWaitingCalls();
    expectInterrupted(call);
}

TEST_F(InterruptionTest, AnEarlierAnswerIsNotGivenByACallThatComesAfterTheStop)
{
    answerGroup(0, {"S1"}, {"A"});
    ASSERT_EQ(record("G1").value("S1"), Value("A"));
    plugin().interruptWaitingCalls();
    expectInterrupted(showGroup(0, {{"input", Array{"S1", "S2"}}}));
}

TEST_F(InterruptionTest, ARefusalThatComesAfterTheStopIsNotShown)
{
    start();
    plugin().interruptWaitingCalls();
    auto &call = showView(0, {{"input", "SN"}});
    expectInterrupted(call);
    EXPECT_EQ(call.error().code, 401);
    EXPECT_FALSE(isOpen("G1"));
}

TEST_F(InterruptionTest, ACallThatWaitsForARefusalToBeAcknowledgedEndsToo)
{
    auto &call = showView(0, {{"input", "SN"}});
    ASSERT_TRUE(waitForPanel("G1"));
    plugin().interruptWaitingCalls();
    expectInterrupted(call);
    EXPECT_FALSE(isOpen("G1"));
}

TEST_F(InterruptionTest, LaterCallsEndAtOnceUntilCallsAreAcceptedAgain)
{
    start();
    plugin().interruptWaitingCalls();
    expectInterrupted(showView(0, question));
    expectInterrupted(showGroup(0, {{"input", Array{"S1"}}}));
    EXPECT_FALSE(isOpen("0"));
    EXPECT_FALSE(isOpen("G1"));

    plugin().acceptCalls();
    auto &call = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    EXPECT_EQ(call.result(), Value(true));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(InterruptionTest, AnInterruptionIsNotKeptForCallsThatComeAfterAcceptance)
{
    start();
    plugin().interruptWaitingCalls();
    plugin().acceptCalls();
    auto &call = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    settle();
    EXPECT_FALSE(call.finished());
}

TEST_F(InterruptionTest, AnInterruptionFromAnotherThreadIsAsGood)
{
    auto &call = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    auto &host = onSequencer([this](Error *) {
        plugin().interruptWaitingCalls();
        return Value();
    });
    ASSERT_TRUE(host.waitUntilFinished());
    expectInterrupted(call);
}

TEST_F(InterruptionTest, AnInterruptionInTheMiddleOfManyCallsEndsThemAll)
{
    std::vector<testsupport::SequencerCall *> calls;
    for (int i = 0; i < 8; ++i)
        calls.push_back(&showView(i, question));
    ASSERT_TRUE(testsupport::waitUntil([&] { return timesLoggedFrom("Called: ") > 3; }));
    plugin().interruptWaitingCalls();
    for (testsupport::SequencerCall *call : calls)
        expectInterrupted(*call);
    EXPECT_TRUE(std::ranges::none_of(std::vector{0, 1, 2, 3, 4, 5, 6, 7},
                                     [this](int i) { return isOpen(QString::number(i)); }));
}

TEST_F(InterruptionTest, ACallerWithoutAPlaceForAnErrorGetsNothing)
{
    auto &call = showViewWithoutError(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    plugin().interruptWaitingCalls();
    EXPECT_EQ(call.result(), Value());
}

TEST_F(InterruptionTest, TheErrorNamesTheMethodAndThePanel)
{
    auto &call = showView(3, question);
    ASSERT_TRUE(waitForPanel("3"));
    plugin().interruptWaitingCalls();
    EXPECT_EQ(call.error(),
              (Error{interactive::InteractivePluginErrorDomain, 401,
                     "-[InteractiveView showInteractiveView:systemIndex:config:error:]: The station stopped "
                     "while waiting for the operator: 3"}));
}

} // namespace
