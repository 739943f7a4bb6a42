#include "tests/support/PluginFixture.h"

using platform::Array;

namespace {

class ConditionLookUpTest : public testsupport::PluginFixture
{};

TEST_F(ConditionLookUpTest, FindsTheConditionOfAGroupAndSaysSo)
{
    const auto condition = rooms().waits.getCondition(rooms().waits.panelKey("G1"));
    ASSERT_NE(condition, nullptr);
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView getCondition:]: G1 [0] conidtion: "), 1);
    EXPECT_EQ(timesLogged(KVKLogLevel::Debug, "-[InteractiveView getCondition:]: G1 [0] conidtion: (null)"),
              0);
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("G1")), condition);
}

TEST_F(ConditionLookUpTest, ComparesKeysByTheirText)
{
    EXPECT_EQ(rooms().waits.getCondition(platform::Identifier("G1")),
              rooms().waits.getCondition(rooms().waits.panelKey("G1")));
}

TEST_F(ConditionLookUpTest, AKeyWithoutConditionGivesNoneAndIsNoError)
{
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("3")), nullptr);
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Debug, "-[InteractiveView getCondition:]: 3 [3] conidtion: (null)"));
}

TEST_F(ConditionLookUpTest, WithoutAnyConditionALookUpIsAnError)
{
    station.systemGroups = Array{};
    station.systemSlots = Array{};
    start();
    expectError("no conidtion found for: G1");
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("G1")), nullptr);
    EXPECT_TRUE(
        loggedOnce(KVKLogLevel::Error, "-[InteractiveView getCondition:]: no conidtion found for: G1"));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView getCondition:]: "), 1);
}

TEST_F(ConditionLookUpTest, AShownPanelKeepsItsConditionForTheNextCall)
{
    auto &first = showView(3, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("3"));
    const auto condition = rooms().waits.getCondition(rooms().waits.panelKey("3"));
    ASSERT_NE(condition, nullptr);
    press("3", "Yes");
    ASSERT_TRUE(first.waitUntilFinished());
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("3")), condition);

    auto &second = showView(3, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("3"));
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("3")), condition);
    press("3", "Yes");
    EXPECT_TRUE(second.waitUntilFinished());
}

TEST_F(ConditionLookUpTest, AGroupPanelWaitsOnTheConditionMadeAtStartUp)
{
    const auto condition = rooms().waits.getCondition(rooms().waits.panelKey("G1"));
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(rooms().waits.getCondition(rooms().waits.panelKey("G1")), condition);
    press("G1", "Cancel");
    EXPECT_TRUE(call.waitUntilFinished());
}

TEST_F(ConditionLookUpTest, TheLineAboutAFoundConditionNamesKeyIntegerAndCondition)
{
    showView(3, {{"button", Array{"No", "Yes"}}});
    ASSERT_TRUE(waitForPanel("3"));
    log.clear();
    const auto condition = rooms().waits.getCondition(rooms().waits.panelKey("3"));
    const auto address = reinterpret_cast<quintptr>(condition.get()); // NOLINT: an address to show
    EXPECT_TRUE(loggedOnce(
        KVKLogLevel::Debug,
        QString("-[InteractiveView getCondition:]: 3 [3] conidtion: <Condition: 0x%1>").arg(address, 0, 16)));
}

} // namespace
