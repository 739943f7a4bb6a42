#include "platform/Button.h"
#include "platform/ScrollView.h"
#include "tests/support/PluginFixture.h"
#include "tests/support/Wait.h"

#include <stdexcept>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

const Dictionary serial{{"input", Array{"SN"}}};

/// What a call finds, or leaves, where others of its group queue.
class QueuedCallTest : public testsupport::PluginFixture
{};

TEST_F(QueuedCallTest, AQuestionThatIsAnsweredWhileACallQueuesWithItIsNotAskedAgain)
{
    rooms().records.setLoopEnabled(true);
    auto &first = showView(0, serial);
    ASSERT_TRUE(waitForPanel("0"));
    auto &second = showView(0, serial);
    ASSERT_TRUE(waitsForTurn(1));
    scan("A");
    press("0", "OK");
    EXPECT_EQ(second.result(), Value(Dictionary{{"SN", "A"}, {"clickedButton", "Pass"}}));
    EXPECT_EQ(first.result(), second.result());
    EXPECT_FALSE(isOpen("0"));
}

TEST_F(QueuedCallTest, ARefusedNumberOfColumnsIsNoneForThePanelThatSaysSo)
{
    start();
    const double width = rooms().views.scrollView()->documentSize().width();
    showGroup(0, {{"input", Array{"S1"}}, {"column", 40}});
    ASSERT_TRUE(waitForPanel("G1"));
    EXPECT_LE(panel("G1")->frame().width(), window().width());
    EXPECT_LE(rooms().views.scrollView()->documentSize().width(), std::max<double>(width, window().width()));
}

TEST_F(QueuedCallTest, ANumberOfColumnsThatIsNotRefusedHoldsForThePanelThatSaysWhatIs)
{
    station.windowSize = {600, 800};
    // One that stays in force for those who say nothing.
    showGroup(1, {{"input", Array{"S1"}}, {"column", 2}});
    ASSERT_TRUE(waitForPanel("G2"));
    for (const int columns : {3, 4}) {
        showGroup(0, {{"input", Array{"nowhere"}}, {"column", columns}});
        ASSERT_TRUE(waitForPanel("G1"));
        EXPECT_GE(panel("G1")->frame().width(), columns * 250.0);
        EXPECT_LT(panel("G1")->frame().width(), (columns + 1) * 250.0);
        // Not by the mouse: the button stands outside of the window.
        button("G1", "OK")->sendAction();
        ASSERT_TRUE(testsupport::waitUntil([this] { return !isOpen("G1"); }));
    }
}

TEST_F(QueuedCallTest, OneThatFailsWhileItIsDrawnLeavesNothingAndPassesItsTurnOn)
{
    // The last system has a group but no slot.
    station.groups = {"G1"};
    station.slotNames = {"S1", "S2"};
    station.systemGroups = Array{"G1", "G1"};
    station.systemSlots = Array{"S1"};
    auto &call = showView(1, serial);
    EXPECT_NE(call.thrown<std::out_of_range>(), QString());
    EXPECT_EQ(plugin().savedData(), Dictionary());
    EXPECT_TRUE(testsupport::waitUntil([&] { return highlights.size() == 2; }));
    EXPECT_EQ(highlights.back(), std::make_pair(quint64{1}, false));
    showGroup(0, {{"message", "Load"}});
    EXPECT_TRUE(waitsForTurn(0));
}

} // namespace
