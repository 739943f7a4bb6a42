#include "tests/support/PluginFixture.h"

#include "common/Waits.h"

using interactive::Waits;
using platform::Array;
using platform::Dictionary;
using platform::Identifier;

namespace {

const QString method = QStringLiteral("-[InteractiveView getCondition:]");
const Dictionary question{{"button", Array{"No", "Yes"}}};

QString lineOf(const QString &key, int number, const std::shared_ptr<platform::Condition> &condition)
{
    const auto address = reinterpret_cast<quintptr>(condition.get()); // NOLINT: an address to show
    return QString("%1: %2 [%3] conidtion: <Condition: 0x%4>")
        .arg(method, key)
        .arg(number)
        .arg(address, 0, 16);
}

/// The look-up and what it says.
class ConditionLookUpTest : public ::testing::Test
{
protected:
    testsupport::LogRecorder log;
    Waits waits;
};

TEST_F(ConditionLookUpTest, FindsTheConditionOfAGroupAndSaysSo)
{
    waits.makeCondition(waits.panelKey("G1"));
    const auto condition = waits.getCondition(waits.panelKey("G1"));
    ASSERT_NE(condition, nullptr);
    EXPECT_EQ(log.count(KVKLogLevel::Debug, lineOf("G1", 0, condition)), 1);
    EXPECT_EQ(waits.getCondition(waits.panelKey("G1")), condition);
}

TEST_F(ConditionLookUpTest, ComparesKeysByTheirText)
{
    waits.makeCondition(waits.panelKey("G1"));
    EXPECT_NE(waits.getCondition(Identifier("G1")), nullptr);
    EXPECT_EQ(waits.getCondition(Identifier("G1")), waits.getCondition(waits.panelKey("G1")));
}

TEST_F(ConditionLookUpTest, AKeyWithoutConditionGivesNoneAndIsNoError)
{
    waits.makeCondition(waits.panelKey("G1"));
    EXPECT_EQ(waits.getCondition(waits.panelKey("3")), nullptr);
    EXPECT_EQ(log.count(KVKLogLevel::Debug, method + ": 3 [3] conidtion: (null)"), 1);
}

TEST_F(ConditionLookUpTest, WithoutAnyConditionALookUpIsAnError)
{
    testsupport::expectError("no conidtion found for: G1");
    EXPECT_EQ(waits.getCondition(waits.panelKey("G1")), nullptr);
    EXPECT_EQ(log.count(KVKLogLevel::Error, method + ": no conidtion found for: G1"), 1);
    EXPECT_EQ(log.systemLines().size(), 1U);
}

TEST_F(ConditionLookUpTest, TheLineAboutAFoundConditionNamesKeyIntegerAndCondition)
{
    waits.makeCondition(waits.panelKey("3"));
    const auto condition = waits.getCondition(waits.panelKey("3"));
    EXPECT_EQ(log.count(KVKLogLevel::Debug, lineOf("3", 3, condition)), 1);
}

/// The conditions that show calls wait on.
class PanelConditionTest : public testsupport::PluginFixture
{};

TEST_F(PanelConditionTest, AShownPanelKeepsItsConditionForTheNextCall)
{
    auto &first = showView(3, question);
    ASSERT_TRUE(waitForPanel("3"));
    const auto condition = rooms().waits.getCondition(Identifier("3"));
    ASSERT_NE(condition, nullptr);
    press("3", "Yes");
    ASSERT_TRUE(first.waitUntilFinished());
    EXPECT_EQ(rooms().waits.getCondition(Identifier("3")), condition);

    auto &second = showView(3, question);
    ASSERT_TRUE(waitForPanel("3"));
    EXPECT_EQ(rooms().waits.getCondition(Identifier("3")), condition);
    press("3", "Yes");
    EXPECT_TRUE(second.waitUntilFinished());
}

TEST_F(PanelConditionTest, AGroupPanelWaitsOnTheConditionMadeAtStartUpAndLeavesIt)
{
    const auto condition = rooms().waits.getCondition(Identifier("G1"));
    ASSERT_NE(condition, nullptr);
    auto &call = showGroup(0, {{"input", Array{"S1"}}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_EQ(rooms().waits.getCondition(Identifier("G1")), condition);
    press("G1", "Cancel");
    EXPECT_TRUE(call.waitUntilFinished());
    EXPECT_EQ(rooms().waits.getCondition(Identifier("G1")), condition);
}

} // namespace
