#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Color;
using platform::Dictionary;
using platform::Value;

namespace {

const Array allSlots{"S1", "S2", "S3", "S4"};

/// How a slot's switch stands when a group panel is drawn, and what that leaves in the group's enable status.
class InitialSwitchTest : public testsupport::PanelFixture
{
protected:
    void setStatus(const Dictionary &slotStatus) { rooms().slotStates.restore({{"G1", slotStatus}}); }
    QList<int> states()
    {
        QList<int> found;
        for (int i = 0; i < 4; ++i)
            found.append(buttons(content("G1", i)).value(0) ? buttons(content("G1", i)).first()->state()
                                                            : -1);
        return found;
    }
    QString statusText() { return platform::description(status("G1")); }
};

TEST_F(InitialSwitchTest, EverySlotIsOnAtFirst)
{
    drawGroup(0, {{"input", allSlots}});
    EXPECT_EQ(states(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(statusText(), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(InitialSwitchTest, ASlotThatIsOnButTakesNoPartTakesNoInput)
{
    drawGroup(0, {{"input", Array{"S3", "S1"}}});
    EXPECT_EQ(states(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(statusText(), "{S1 = 1; S2 = -1; S3 = 1; S4 = -1}");
}

TEST_F(InitialSwitchTest, ASlotThatTookNoPartTakesInputWhenALaterPanelNamesIt)
{
    drawGroup(0, {{"input", Array{"S1"}}});
    ASSERT_EQ(statusText(), "{S1 = 1; S2 = -1; S3 = -1; S4 = -1}");
    drawGroup(0, {{"input", allSlots}});
    EXPECT_EQ(states(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(statusText(), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(InitialSwitchTest, ASlotThatIsMissingOrFalseIsDrawnSwitchedOff)
{
    setStatus({{"S1", 1}, {"S2", 0}, {"S3", false}});
    drawGroup(0, {{"input", allSlots}});
    EXPECT_EQ(states(), (QList<int>{1, 0, 0, 0}));
    EXPECT_EQ(statusText(), "{S1 = 1}");
    for (int i = 0; i < 4; ++i) {
        ASSERT_EQ(inputs(content("G1", i)).size(), 1);
        EXPECT_EQ(inputs(content("G1", i)).first()->isEnabled(), i == 0) << i;
        EXPECT_EQ(box("G1", i)->fillColor(),
                  i == 0 ? Color::white().withAlphaComponent(0.3) : Color::windowBackground())
            << i;
    }
}

TEST_F(InitialSwitchTest, AnyNumberButZeroIsOn)
{
    setStatus({{"S1", true}, {"S2", 2}, {"S3", -1}, {"S4", 1}});
    drawGroup(0, {{"input", allSlots}});
    EXPECT_EQ(states(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(statusText(), "{S1 = 1; S2 = 2; S3 = 1; S4 = 1}");
}

TEST_F(InitialSwitchTest, AGroupWithoutAStatusIsDrawnSwitchedOnAndGetsNone)
{
    rooms().slotStates.restore({{"G2", Dictionary{{"S1", 1}}}});
    drawGroup(0, {{"input", Array{"S1"}}});
    EXPECT_EQ(states(), (QList<int>{1, 1, 1, 1}));
    EXPECT_EQ(platform::description(plugin().enableStatus()), "{G2 = {S1 = 1}}");
}

TEST_F(InitialSwitchTest, ASwitchPanelShowsWhatIsSwitchedOff)
{
    setStatus({{"S1", 1}, {"S3", 1}, {"S4", 1}});
    drawGroup(0, {{"switch", allSlots}});
    EXPECT_EQ(states(), (QList<int>{1, 0, 1, 1}));
    EXPECT_EQ(box("G1", 1)->fillColor(), Color::windowBackground());
}

TEST_F(InitialSwitchTest, WhatWasEnteredForASlotThatIsOffIsForgotten)
{
    rooms().records.restore({{"G1", Dictionary{{"length", 0}, {"S1", "A"}, {"S3", "B"}}}});
    setStatus({{"S1", 1}, {"S2", 1}, {"S4", 1}});
    drawGroup(0, {{"input", allSlots}});
    EXPECT_EQ(platform::description(record("G1")), "{S1 = A; length = 0}");
}

TEST_F(InitialSwitchTest, OtherGroupsKeepTheirStatus)
{
    drawGroup(1, {{"input", Array{"S1"}}});
    EXPECT_EQ(statusText(), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = -1; S3 = -1; S4 = -1}");
}

} // namespace
