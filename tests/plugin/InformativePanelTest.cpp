#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <QPointer>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const QString method = QStringLiteral("-[InteractiveView showInteractiveView:systemIndex:config:error:]");

class InformativePanelTest : public testsupport::PluginFixture
{
protected:
    bool showsText(const QString &text)
    {
        for (platform::View *view : testsupport::descendants(splitView())) {
            auto *label = qobject_cast<platform::TextField *>(view);
            if (label && label->isVisible() && label->stringValue() == text)
                return true;
        }
        return false;
    }
};

TEST_F(InformativePanelTest, AMessageForAGroupReturnsAnEmptyDictionaryAtOnceAndStaysUp)
{
    auto &call = showGroup(0, {{"message", "Load the fixture"}});
    EXPECT_EQ(call.result(), Value(Dictionary()));
    EXPECT_FALSE(call.error().isPresent());
    EXPECT_TRUE(showsText("Load the fixture"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, method + ": start to draw informative message"));
}

TEST_F(InformativePanelTest, TheNextPanelOfTheGroupTakesItsPlace)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}}).waitUntilFinished());
    const QPointer<platform::View> load(panel("G1"));
    showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_FALSE(showsText("Load"));
    EXPECT_TRUE(!load || !load->superview());
    EXPECT_EQ(splitView()->subviews().size(), 1);
}

TEST_F(InformativePanelTest, AnAnswerThatIsGivenAgainTakesItAwayAndItsRoomWithIt)
{
    setLoop(2);
    answerGroup(0, {"S1"}, {"A"});
    const auto room = [this] { return rooms().views.scrollView()->documentSize(); };
    const platform::Size none = room();
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}}).waitUntilFinished());
    EXPECT_NE(room(), none);
    groupButton("G1")->setEnabled(false);
    EXPECT_EQ(showGroup(0, {{"input", Array{"S1"}}}).result().toMap().value("S1"), Value("A"));
    EXPECT_FALSE(showsText("Load"));
    EXPECT_EQ(room(), none);
    EXPECT_TRUE(testsupport::waitUntil([this] { return groupButton("G1")->isEnabled(); }));
}

TEST_F(InformativePanelTest, WhatIsDoubtfulInAConfigurationIsLogged)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}, {"mesage", "Lod"}}).waitUntilFinished());
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Default,
                           method + ": key 'mesage' is not known; it is not used. Did you mean 'message'?"));
}

TEST_F(InformativePanelTest, AMessageForAGroupIsNotValidated)
{
    auto &call = showGroup(0, {{"message", "Load"}, {"input", Array{"S1", "nowhere", "S1"}}});
    EXPECT_EQ(call.result(), Value(Dictionary()));
    EXPECT_FALSE(call.error().isPresent());
}

TEST_F(InformativePanelTest, AMessageForAGroupLeavesItsRecordAndHighlightsNothing)
{
    answerGroup(0, {"S1"}, {"A"});
    const int counts = timesLoggedFrom(method + ": 0, ");
    ASSERT_TRUE(showGroup(0, {{"message", "Load"}}).waitUntilFinished());
    EXPECT_EQ(record("G1"), (Dictionary{{"S1", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_TRUE(highlights.empty());
    EXPECT_EQ(timesLoggedFrom(method + ": 0, "), counts);
}

TEST_F(InformativePanelTest, AMessageForAGroupComesBeforeTheLoopShortCut)
{
    setLoop(2);
    answerGroup(0, {"S1"}, {"A"});
    EXPECT_EQ(showGroup(0, {{"message", "Load"}, {"input", Array{"S1"}}}).result(), Value(Dictionary()));
    EXPECT_TRUE(showsText("Load"));
}

TEST_F(InformativePanelTest, AMessageThatIsNoTextIsShownAsItDescribesItself)
{
    EXPECT_EQ(showGroup(0, {{"message", 42}}).result(), Value(Dictionary()));
    EXPECT_TRUE(showsText("42"));
}

TEST_F(InformativePanelTest, AnEmptyMessageForAGroupIsNone)
{
    auto &call = showGroup(0, {{"message", ""}, {"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    settle();
    EXPECT_FALSE(call.finished());
    EXPECT_EQ(timesLoggedFrom(method + ": start to draw"), 0);
}

TEST_F(InformativePanelTest, AMessageForASystemWaitsForItsAnswer)
{
    auto &call = showView(0, {{"message", "Is the lamp green?"}, {"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("0"));
    EXPECT_TRUE(showsText("Is the lamp green?"));
    settle();
    EXPECT_FALSE(call.finished());
    press("0", "Yes");
    EXPECT_EQ(call.result(), Value(true));
}

TEST_F(InformativePanelTest, TheNextCallOfTheGroupTakesTheMessageAway)
{
    ASSERT_TRUE(showGroup(0, {{"message", "Load the fixture"}}).waitUntilFinished());
    showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_FALSE(showsText("Load the fixture"));
}

TEST_F(InformativePanelTest, AMessageWithSwitchesThatAreNoArrayIsRefusedFirst)
{
    auto &call = showGroup(0, {{"message", "Load"}, {"switch", "S1"}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_TRUE(showsText("Invalid config. Value for key 'switch' is not array."));
    press("G1", "OK");
    EXPECT_EQ(call.result(), Value());
}

} // namespace
