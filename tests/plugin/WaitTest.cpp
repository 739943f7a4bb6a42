#include "tests/support/Wait.h"

#include "kovan/KovanLogging/KVKLogging.h"
#include "platform/Button.h"
#include "platform/Condition.h"
#include "platform/MainQueue.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using interactive::InteractiveView;
using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const Dictionary question{{"button", Array{"No", "Yes"}}};

/// How a show call waits for its operator, and what does and does not end the wait.
class WaitTest : public testsupport::PluginFixture
{};

TEST_F(WaitTest, ThePanelWaitsUntilAButtonIsPressed)
{
    auto &call = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    settle();
    EXPECT_FALSE(call.finished());
    press("0", "Yes");
    EXPECT_TRUE(call.waitUntilFinished());
}

TEST_F(WaitTest, NoLockIsHeldWhileACallWaits)
{
    showView(0, {{"input", Array{"SN"}}});
    ASSERT_TRUE(waitForPanel("0"));
    // Each would block for ever if the waiting call held a lock that it needs.
    EXPECT_EQ(setLoop(1), Value(1));
    answerGroup(1, {"S1"}, {"A"});
    EXPECT_EQ(record("G2"), (Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_EQ(status("G2").value("S2"), Value(-1));
    EXPECT_TRUE(isOpen("0"));
}

TEST_F(WaitTest, EightCallsWaitAtOnceAndAreAnsweredInAnyOrder)
{
    std::vector<testsupport::SequencerCall *> calls;
    for (int i = 0; i < 8; ++i)
        calls.push_back(&showView(i, {{"input", Array{"SN"}}, {"button", Array{"Cancel", "OK"}}}));
    for (int i = 0; i < 8; ++i)
        ASSERT_TRUE(waitForPanel(QString::number(i)));
    for (const int i : {5, 0, 7, 2, 1, 6, 4, 3}) {
        const QString key = QString::number(i);
        click(field(key + "-SN"));
        scan("SN" + key);
        press(key, "OK");
        EXPECT_EQ(calls[static_cast<size_t>(i)]->result(),
                  Value(Dictionary{{"SN", "SN" + key}, {"clickedButton", "Pass"}}));
    }
}

TEST_F(WaitTest, AnAnswerEndsTheCallOfItsOwnPanelAlone)
{
    auto &first = showView(0, question);
    auto &second = showView(1, question);
    auto &group = showGroup(1, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("0") && waitForPanel("1") && waitForPanel("G2"));
    press("1", "Yes");
    ASSERT_TRUE(second.waitUntilFinished());
    EXPECT_FALSE(first.finished());
    EXPECT_FALSE(group.finished());
}

TEST_F(WaitTest, APressBetweenTheDrawingAndTheWaitIsNotLost)
{
    start();
    InteractiveView &target = plugin();
    // The press is queued while the panel is being drawn, so that it is made before the call can have got to
    // sleep.
    KVKLogProxy *proxy = KVKLogGetProxy();
    const KVKLogProxy::SinkId sink = proxy->addSink([this](const KVKLogProxy::Line &line) {
        if (!line.message.startsWith("Entered: "))
            return;
        platform::MainQueue::async([this] {
            if (platform::Button *yes = button("0", "Yes"))
                yes->sendAction();
        });
    });
    auto &calls = onSequencer([&target](Error *error) {
        int answered = 0;
        for (int i = 0; i < 50; ++i)
            answered += target.showView(0, question, error) == Value(true) ? 1 : 0;
        return Value(answered);
    });
    EXPECT_EQ(calls.result(), Value(50));
    proxy->removeSink(sink);
}

TEST_F(WaitTest, ManyCallsLeaveTheNumberOfViewsWhereItWas)
{
    start();
    InteractiveView &target = plugin();
    KVKLogProxy *proxy = KVKLogGetProxy();
    const KVKLogProxy::SinkId sink = proxy->addSink([this](const KVKLogProxy::Line &line) {
        if (!line.message.startsWith("Entered: "))
            return;
        platform::MainQueue::async([this] {
            for (const char *key : {"0", "1"}) {
                if (platform::Button *yes = button(key, "Yes"))
                    yes->sendAction();
            }
        });
    });
    const auto viewsAfter = [&](int pairs) {
        auto &calls = onSequencer([&target, pairs](Error *error) {
            for (int i = 0; i < pairs; ++i) {
                target.showView(0, question, error);
                target.showView(1, question, error);
            }
            return Value(true);
        });
        EXPECT_EQ(calls.result(), Value(true));
        return testsupport::descendants(target.view()).size();
    };
    const qsizetype few = viewsAfter(2);
    EXPECT_EQ(viewsAfter(100), few);
    proxy->removeSink(sink);
}

TEST_F(WaitTest, ADoubledPressDoesNotEndTheNextCall)
{
    InteractiveView &target = plugin();
    expectError("<Button: Pass>(Pass), no parent view found"); // what the second press finds
    for (int i = 0; i < 20; ++i) {
        auto &first = onSequencer([&target](Error *error) {
            const Value answer = target.showView(0, question, error);
            return Array{answer, target.showView(0, question, error)};
        });
        ASSERT_TRUE(waitForPanel("0"));
        QPointer<platform::Button> yes = button("0", "Yes");
        yes->sendAction();
        yes->sendAction();
        settle();
        ASSERT_TRUE(testsupport::waitUntil([&] { return !yes; }));
        ASSERT_TRUE(waitForPanel("0"));
        settle();
        EXPECT_FALSE(first.finished());
        EXPECT_EQ(record("0"), (Dictionary{{"length", 0}}));
        press("0", "No");
        EXPECT_EQ(first.result(), Value(Array{true, false}));
    }
}

TEST_F(WaitTest, ASignalThatComesWhenNobodyWaitsIsNotKeptForTheNextCall)
{
    auto &first = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    press("0", "Yes");
    ASSERT_TRUE(first.waitUntilFinished());
    rooms().waits.getCondition(platform::Identifier("0"))->signal();

    auto &second = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    settle();
    EXPECT_FALSE(second.finished());
    press("0", "Yes");
    EXPECT_EQ(second.result(), Value(true));
}

TEST_F(WaitTest, TwoCallsForTheSamePanelTakeTurns)
{
    auto &first = showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    auto &second = showView(0, question);
    ASSERT_TRUE(waitsForTurn(1));
    press("0", "Yes");
    EXPECT_EQ(first.result(), Value(true));
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_FALSE(second.finished());
    press("0", "No");
    EXPECT_EQ(second.result(), Value(false));
}

TEST_F(WaitTest, OnTheMainThreadAShowCallReturnsAnErrorAtOnce)
{
    Error error;
    EXPECT_EQ(plugin().showView(0, question, &error), Value());
    EXPECT_EQ(error.domain, interactive::InteractivePluginErrorDomain);
    EXPECT_FALSE(error.localizedDescription.isEmpty());
    EXPECT_FALSE(isOpen("0"));

    Error groupError;
    EXPECT_EQ(plugin().showGroupView(0, {{"input", Array{"S1"}}}, &groupError), Value());
    EXPECT_TRUE(groupError.isPresent());
    EXPECT_EQ(plugin().showInteractiveView(0, {}, question, nullptr), Value());
}

TEST_F(WaitTest, OnTheMainThreadAlsoACallThatWouldNotWaitReturnsAnError)
{
    Error error;
    EXPECT_EQ(plugin().showGroupView(0, {{"message", "Load"}}, &error), Value());
    EXPECT_TRUE(error.isPresent());
}

TEST_F(WaitTest, TheErrorOfACallOnTheMainThreadSaysWhy)
{
    Error error;
    static_cast<void>(plugin().showView(3, question, &error));
    EXPECT_EQ(
        error,
        (Error{interactive::InteractivePluginErrorDomain, 403,
               "-[InteractiveView showInteractiveView:systemIndex:config:error:]: Must not be called on "
               "the main thread, where it would wait for itself: 3"}));
}

} // namespace
