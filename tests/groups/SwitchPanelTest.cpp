#include "tests/groups/GroupFixture.h"

using platform::Array;
using platform::Button;
using platform::Color;
using platform::Dictionary;

namespace {

const Dictionary allSlots{{"input", Array{"S1", "S2", "S3", "S4"}}};
const Color own{0.2, 0.4, 0.6, 0.8};

/// The switches of a drawn group panel or switch panel under the operator's mouse.
class SwitchPanelTest : public testsupport::GroupFixture
{
protected:
    SwitchPanelTest()
    {
        station.customColors = true;
        station.backgrounds = {{6, own}};
    }
    void clickSwitch(const QString &group, int i) { click(switchOf(content(group, i))); }
};

TEST_F(SwitchPanelTest, OffTakesTheSlotOutAndEmptiesItsField)
{
    drawGroup(1, allSlots);
    field("G2-S3")->setStringValue("4711");
    clickSwitch("G2", 2);
    EXPECT_EQ(switchOf(content("G2", 2))->state(), Button::Off);
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = 1; S4 = 1}");
    EXPECT_FALSE(field("G2-S3")->isEnabled());
    EXPECT_EQ(field("G2-S3")->stringValue(), "");
    EXPECT_EQ(box("G2", 2)->fillColor(), Color::windowBackground());
}

TEST_F(SwitchPanelTest, SwitchingASlotOnEnablesItsFieldAndPaintsItsBoxInItsOwnFaintColour)
{
    drawGroup(1, allSlots);
    clickSwitch("G2", 2);
    clickSwitch("G2", 2);
    EXPECT_EQ(switchOf(content("G2", 2))->state(), Button::On);
    EXPECT_TRUE(field("G2-S3")->isEnabled());
    EXPECT_EQ(field("G2-S3")->stringValue(), "");
    EXPECT_EQ(box("G2", 2)->fillColor(), own.withAlphaComponent(0.3));
}

TEST_F(SwitchPanelTest, SwitchingASlotLeavesTheOthersAsTheyAre)
{
    drawGroup(1, allSlots);
    field("G2-S2")->setStringValue("B");
    const Color before = box("G2", 1)->fillColor();
    clickSwitch("G2", 2);
    EXPECT_TRUE(field("G2-S2")->isEnabled());
    EXPECT_EQ(field("G2-S2")->stringValue(), "B");
    EXPECT_EQ(box("G2", 1)->fillColor(), before);
    EXPECT_EQ(switchOf(content("G2", 1))->state(), Button::On);
}

TEST_F(SwitchPanelTest, ASlotThatIsOffIsAbsentFromTheGroupsStatusAndTrueOnceItIsOnAgain)
{
    drawGroup(1, allSlots);
    clickSwitch("G2", 2);
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = 1; S4 = 1}");
    clickSwitch("G2", 2);
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
    EXPECT_EQ(status("G2").value("S3").typeId(), QMetaType::Bool);
    EXPECT_EQ(platform::description(status("G1")), "{S1 = 1; S2 = 1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchPanelTest, ASlotThatTookNoInputTakesItOnceItWasSwitchedOffAndOn)
{
    drawGroup(1, {{"input", Array{"S1", "S3"}}});
    ASSERT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = -1; S3 = 1; S4 = -1}");
    Button *hiddenSwitch = switchOf(content("G2", 3));
    hiddenSwitch->setState(Button::On);
    rooms().switches.switchBtnClicked(hiddenSwitch);
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = -1; S3 = 1; S4 = 1}");
}

TEST_F(SwitchPanelTest, WhatWasEnteredIsDiscardedOnTheWayOffAndNotBroughtBack)
{
    answerGroup(0, {"S3"}, {"AA"});
    Dictionary config = allSlots;
    config.insert("length", 2);
    showGroup(1, config);
    ASSERT_TRUE(waitForPanel("G2"));
    for (const char *text : {"BB", "CC", "DD"})
        scan(text);
    ASSERT_EQ(field("G2-S3")->stringValue(), "DD");
    clickSwitch("G2", 2);
    EXPECT_EQ(platform::description(record("G2")), "{S1 = BB; S2 = CC; length = 2}");
    clickSwitch("G2", 2);
    EXPECT_EQ(platform::description(record("G2")), "{S1 = BB; S2 = CC; length = 2}");
    EXPECT_EQ(platform::description(record("G1")), "{S3 = AA; clickedButton = Pass}");
    EXPECT_EQ(field("G2-S3")->stringValue(), "");
}

TEST_F(SwitchPanelTest, WhatCameInMeanwhileIsDiscardedOnTheWayOnToo)
{
    drawGroup(1, allSlots);
    clickSwitch("G2", 2);
    rooms().records.restore({{"G2", Dictionary{{"S3", "C"}}}});
    clickSwitch("G2", 2);
    EXPECT_TRUE(plugin().savedData().contains("G2"));
    EXPECT_EQ(record("G2"), Dictionary());
}

TEST_F(SwitchPanelTest, OnASwitchPanelTheBoxIsPaintedThoughThereIsNoField)
{
    drawGroup(1, {{"switch", Array{"S1", "S2", "S3", "S4"}}});
    ASSERT_TRUE(inputs(content("G2", 2)).isEmpty());
    clickSwitch("G2", 2);
    EXPECT_EQ(box("G2", 2)->fillColor(), Color::windowBackground());
    EXPECT_EQ(platform::description(status("G2")), "{S1 = 1; S2 = 1; S4 = 1}");
    clickSwitch("G2", 2);
    EXPECT_EQ(box("G2", 2)->fillColor(), own.withAlphaComponent(0.3));
}

TEST_F(SwitchPanelTest, TheBoxTakesTheOpacityOfItsOwnPanel)
{
    Dictionary config = allSlots;
    config.insert("backgroundAlpha", 0.75);
    drawGroup(1, config);
    clickSwitch("G2", 2);
    // A panel of another group that is drawn meanwhile has its own.
    drawGroup(0, {{"input", Array{"S1"}}, {"backgroundAlpha", 0.25}});
    clickSwitch("G2", 2);
    EXPECT_EQ(box("G2", 2)->fillColor(), own.withAlphaComponent(0.75));
}

TEST_F(SwitchPanelTest, TheWholeEnableStatusIsLogged)
{
    drawGroup(1, allSlots);
    log.clear();
    clickSwitch("G2", 2);
    EXPECT_EQ(logged(), QStringList{"default: -[InteractiveView switchBtnClicked:]: enable status: {G1 = {S1 "
                                    "= 1; S2 = 1; S3 = 1; S4 = 1}; G2 = {S1 = 1; S2 = 1; S4 = 1}}"});
    log.clear();
    clickSwitch("G2", 2);
    EXPECT_EQ(logged(), QStringList{"default: -[InteractiveView switchBtnClicked:]: enable status: {G1 = {S1 "
                                    "= 1; S2 = 1; S3 = 1; S4 = 1}; G2 = {S1 = 1; S2 = 1; S3 = 1; S4 = 1}}"});
}

TEST_F(SwitchPanelTest, WithoutARecordNothingIsStored)
{
    drawGroup(0, allSlots);
    clickSwitch("G1", 1);
    EXPECT_EQ(plugin().savedData(), Dictionary{});
}

TEST_F(SwitchPanelTest, EverySlotOfAPanelMayBeSwitchedOff)
{
    drawGroup(0, allSlots);
    for (int slot = 0; slot < 4; ++slot)
        clickSwitch("G1", slot);
    EXPECT_EQ(platform::description(status("G1")), "{}");
}

} // namespace
