#include "kovan/KovanUIExtension/KVKExtensionStatusRelay.h"
#include "platform/Button.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

using interactive::InteractivePluginErrorDomain;
using platform::Array;
using platform::Dictionary;
using platform::Error;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView showInteractiveView:systemIndex:config:error:]");
const Dictionary entry{{"input", Array{"SN"}}};
const Dictionary refused{{"input", Array{"A", "B"}}};
const Dictionary question{{"button", Array{"No", "Yes"}}};

/// Calls whose panels would stand in the same group's band.
class TurnTest : public testsupport::PluginFixture
{};

TEST_F(TurnTest, SlotPanelsOfAGroupStandBesideOneAnother)
{
    showView(0, entry);
    showView(1, entry);
    EXPECT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(waitForPanel("1"));
    EXPECT_TRUE(waitsForTurn(0));
}

TEST_F(TurnTest, AGroupsPanelWaitsForTheOpenSlotPanelsAndTheyStay)
{
    auto &slot = showView(0, entry);
    ASSERT_TRUE(waitForPanel("0"));
    auto &group = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitsForTurn(1));
    EXPECT_TRUE(isOpen("0"));
    scan("A");
    press("0", "OK");
    EXPECT_EQ(slot.result().toMap().value("SN"), Value("A"));
    ASSERT_TRUE(waitForPanel("G1"));
    scan("B");
    press("G1", "OK");
    EXPECT_EQ(group.result().toMap().value("S1"), Value("B"));
}

TEST_F(TurnTest, ARefusalWaitsUntilTheGroupsPanelIsAnsweredAndEndsItsOwnCallAlone)
{
    auto &group = showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    auto &wrong = showView(1, refused);
    ASSERT_TRUE(waitsForTurn(1));
    scan("B");
    press("G1", "OK");
    EXPECT_EQ(group.result(), Value(Dictionary{{"S1", "A"}, {"S2", "B"}, {"clickedButton", "Pass"}}));
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_FALSE(wrong.finished());
    const Dictionary before = plugin().savedData();
    press("G1", "OK");
    EXPECT_EQ(wrong.result(), Value());
    EXPECT_EQ(wrong.error().code, 105);
    EXPECT_EQ(plugin().savedData(), before);
}

TEST_F(TurnTest, FourRefusalsOfAGroupAreAcknowledgedOneByOne)
{
    std::vector<testsupport::SequencerCall *> calls;
    for (int system = 0; system < 4; ++system)
        calls.push_back(&showView(system, refused));
    for (int ended = 1; ended <= 4; ++ended) {
        ASSERT_TRUE(waitForPanel("G1"));
        ASSERT_TRUE(waitsForTurn(4 - ended));
        press("G1", "OK");
        ASSERT_TRUE(testsupport::waitUntil([&] {
            return std::ranges::count_if(calls, [](const auto *call) { return call->finished(); }) == ended;
        }));
    }
    for (testsupport::SequencerCall *call : calls)
        EXPECT_EQ(call->error().code, 105);
}

TEST_F(TurnTest, ACallThatQueuesIsEndedByTheHostLikeAnyOther)
{
    auto &shown = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    auto &queues = showView(1, entry);
    ASSERT_TRUE(waitsForTurn(1));
    plugin().interruptWaitingCalls();
    EXPECT_EQ(queues.result(), Value());
    EXPECT_EQ(queues.error(), (Error{InteractivePluginErrorDomain, 401,
                                     method + ": The station stopped while waiting for the operator: 1"}));
    EXPECT_EQ(shown.error().code, 401);
    EXPECT_EQ(plugin().savedData(), Dictionary());
}

TEST_F(TurnTest, ACancelledCallPassesTheTurnOn)
{
    auto &first = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    showView(0, question);
    ASSERT_TRUE(waitsForTurn(1));
    press("G1", "Cancel");
    EXPECT_EQ(first.result(), Value());
    EXPECT_TRUE(waitForPanel("0"));
}

TEST_F(TurnTest, AMessageWaitsUntilTheBandIsFreeAndHoldsNobodyUpThen)
{
    showView(0, question);
    ASSERT_TRUE(waitForPanel("0"));
    auto &message = showGroup(0, {{"message", "Load"}});
    ASSERT_TRUE(waitsForTurn(1));
    press("0", "Yes");
    EXPECT_EQ(message.result(), Value(Dictionary()));
    showView(1, question);
    EXPECT_TRUE(waitForPanel("1"));
}

TEST_F(TurnTest, TheHostIsToldWhatACallWaitsFor)
{
    start();
    std::mutex mutex;
    std::vector<std::pair<QString, QList<quint64>>> told;
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler([&](const KVKCallWait &wait) {
        const std::lock_guard lock(mutex);
        told.emplace_back(wait.what, wait.systems);
    });
    auto &call = showGroup(1, {{"button", Array{"OK"}}});
    ASSERT_TRUE(waitForPanel("G2"));
    press("G2", "OK");
    EXPECT_EQ(call.result(), Value(true));
    KVKExtensionStatusRelay::sharedStatusRelay()->setWaitHandler({});
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], std::make_pair(QStringLiteral("the operator"), (QList<quint64>{4, 5, 6, 7})));
    EXPECT_EQ(told[1].first, QString());
}

TEST_F(TurnTest, AGroupsPanelThatAsksForNothingIsEndedByOk)
{
    for (const Dictionary &config : {Dictionary(), Dictionary{{"button", Array{"OK"}}}}) {
        auto &call = showGroup(0, config);
        ASSERT_TRUE(waitForPanel("G1"));
        press("G1", "OK");
        EXPECT_EQ(call.result(), Value(true));
    }
}

TEST_F(TurnTest, ASlotThatAnEarlierCallLeftOutTakesInputWhenItIsListed)
{
    auto &first = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "OK");
    ASSERT_TRUE(first.waitUntilFinished());
    auto &second = showGroup(0, {{"input", Array{"S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("B");
    press("G1", "OK");
    EXPECT_EQ(second.result(), Value(Dictionary{{"S2", "B"}, {"clickedButton", "Pass"}}));
}

TEST_F(TurnTest, WithEverySlotSwitchedOffOkSaysWhyItDoesNothing)
{
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    click(view("G1-100-S1"));
    const QString why = "G1: every slot is switched off. Switch one on, or press \"Cancel\".";
    expectError(why);
    press("G1", "OK");
    EXPECT_FALSE(call.finished());
    EXPECT_TRUE(testsupport::waitUntil([&] { return operatorLines.contains(why); }));
}

TEST_F(TurnTest, ARefusedOkLeavesNoMarkThatCountsAsADuplicate)
{
    showGroup(0, {{"input", Array{"S1", "S2"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    scan("A");
    press("G1", "OK");
    scan("Pass");
    EXPECT_EQ(record("G1").value("S2"), Value("Pass"));
}

TEST_F(TurnTest, TextsAndNumbersAreNoButtons)
{
    for (const Value &buttons : {Value("Go"), Value(3), Value(Dictionary{{"x", "Go"}})}) {
        expectError("Value for key 'button' is not array.");
        log.clear();
        auto &call = showView(0, {{"button", buttons}});
        ASSERT_TRUE(waitForPanel("0"));
        EXPECT_TRUE(loggedOnce(KVKLogLevel::Error, "Invalid config. Value for key 'button' is not array."));
        EXPECT_EQ(button("0", "G"), nullptr);
        press("0", "OK");
        EXPECT_EQ(call.result(), Value(true));
    }
}

TEST_F(TurnTest, TwoCallsAtOnceEachHaveTheirOwnSettings)
{
    showGroup(0, {{"input", Array{"S1"}}, {"backgroundAlpha", 0.2}});
    ASSERT_TRUE(waitForPanel("G1"));
    showGroup(1, {{"input", Array{"S1"}}, {"backgroundAlpha", 0.4}});
    ASSERT_TRUE(waitForPanel("G2"));
    click(field("G1-SharedInput"));
    scan("A");
    EXPECT_EQ(field("G1-S1")->backgroundColor(), platform::Color::white().withAlphaComponent(0.4));
}

} // namespace
