#include "platform/Button.h"
#include "platform/SplitView.h"
#include "tests/support/PanelFixture.h"

using platform::Array;
using platform::Button;

namespace {

constexpr auto Standard = KVKLogLevel::Default;
constexpr auto Debug = KVKLogLevel::Debug;

/// What a click on a group's check box does.
class GroupButtonClickTest : public testsupport::PanelFixture
{
protected:
    void drawBoth()
    {
        drawGroup(0, {{"input", Array{"S1"}}});
        drawGroup(1, {{"input", Array{"S1"}}});
    }
};

TEST_F(GroupButtonClickTest, SwitchesAGroupOffAndHidesItsPanel)
{
    drawBoth();
    click(groupButton("G1"));
    EXPECT_EQ(groupButton("G1")->state(), Button::Off);
    EXPECT_TRUE(pane("G1")->isHidden());
    EXPECT_FALSE(pane("G2")->isHidden());
    EXPECT_TRUE(
        loggedOnce(Debug, "-[InteractiveView groupBtnClicked:]: viewIdentifier G1 button G1 new state: 0"));
    EXPECT_TRUE(loggedOnce(Standard, "-[InteractiveView groupBtnClicked:]: group set to off: G1"));
}

TEST_F(GroupButtonClickTest, SwitchesAGroupOnAndShowsItsPanelAgain)
{
    drawBoth();
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
    EXPECT_FALSE(pane("G1")->isHidden());
    EXPECT_TRUE(
        loggedOnce(Debug, "-[InteractiveView groupBtnClicked:]: viewIdentifier G1 button G1 new state: 1"));
    EXPECT_EQ(timesLogged(Standard, "-[InteractiveView groupBtnClicked:]: group set to off: G1"), 1);
}

TEST_F(GroupButtonClickTest, TheLastGroupStaysOnAndShown)
{
    drawBoth();
    click(groupButton("G2"));
    click(groupButton("G1"));
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
    EXPECT_FALSE(pane("G1")->isHidden());
    EXPECT_TRUE(
        loggedOnce(Debug, "-[InteractiveView groupBtnClicked:]: viewIdentifier G1 button G1 new state: 0"));
    EXPECT_TRUE(loggedOnce(Debug,
                           "-[InteractiveView groupBtnClicked:]: Cannot disable all groups, re-enabled "
                           "current group: G1"));
    EXPECT_EQ(timesLogged(Standard, "-[InteractiveView groupBtnClicked:]: group set to off: G1"), 0);
    EXPECT_EQ(groupButton("G2")->state(), Button::Off);
}

TEST_F(GroupButtonClickTest, TheLastGroupIsShownAgainWhenItWasHidden)
{
    station.groups = {"G1"};
    drawGroup(0, {{"input", Array{"S1"}}});
    plugin().hideUI(pane("G1")->identifier());
    ASSERT_TRUE(pane("G1")->isHidden());
    click(groupButton("G1"));
    EXPECT_FALSE(pane("G1")->isHidden());
}

TEST_F(GroupButtonClickTest, LeavesTheStatusOfTheSlotsAlone)
{
    drawBoth();
    const platform::Dictionary before = plugin().enableStatus();
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(plugin().enableStatus(), before);
}

TEST_F(GroupButtonClickTest, TheKeyIsWhatStandsBeforeTheFirstHyphen)
{
    station.groups = {"A-1", "B"};
    click(groupButton("A-1"));
    EXPECT_TRUE(
        loggedOnce(Debug, "-[InteractiveView groupBtnClicked:]: viewIdentifier A button A-1 new state: 0"));
    EXPECT_TRUE(loggedOnce(Standard, "-[InteractiveView groupBtnClicked:]: group set to off: A"));
}

TEST_F(GroupButtonClickTest, AnythingButAButtonIsToldAndIgnored)
{
    plugin();
    expectError("Invalid call for -[InteractiveView groupBtnClicked:]");
    platform::View view;
    view.setIdentifier(platform::Identifier(QStringLiteral("G1")));
    plugin().groupBtnClicked(&view);
    plugin().groupBtnClicked(nullptr);
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView groupBtnClicked:] from sender: <View: G1>"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView groupBtnClicked:] from sender: (null)"));
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
}

} // namespace
