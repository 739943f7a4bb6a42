#include "tests/groups/GroupFixture.h"

using platform::Array;
using platform::Button;
using platform::Dictionary;
using platform::Identifier;
using platform::View;

namespace {

const Dictionary groupEntry{{"input", Array{"S1", "S2"}}};

/// What a press of a group button does and logs, line by line, whatever the button looks like.
class GroupButtonPressTest : public testsupport::GroupFixture
{
protected:
    /// The click of an operator on a group's button, and what it logs.
    QStringList loggedByClickOn(const QString &group)
    {
        log.clear();
        click(groupButton(group));
        return logged();
    }
    /// A call of the handler with the button in that state, as its own click would have left it.
    QStringList loggedByCallFor(Button *button, Button::State state)
    {
        button->setState(state);
        log.clear();
        rooms().groupButtons.groupBtnClicked(button);
        return logged();
    }
};

TEST_F(GroupButtonPressTest, SwitchingAGroupOffHidesItsPanelAndSaysSo)
{
    View *pane = addPane(key("G1"));
    EXPECT_EQ(
        loggedByClickOn("G1"),
        (QStringList{"debug: -[InteractiveView groupBtnClicked:]: viewIdentifier G1 button G1 new state: 0",
                     "default: -[InteractiveView groupBtnClicked:]: group set to off: G1"}));
    EXPECT_EQ(groupButton("G1")->state(), Button::Off);
    EXPECT_TRUE(pane->isHidden());
}

TEST_F(GroupButtonPressTest, SwitchingAGroupOnShowsItsPanelAgain)
{
    View *pane = addPane(key("G2"));
    click(groupButton("G2"));
    ASSERT_TRUE(pane->isHidden());
    EXPECT_EQ(
        loggedByClickOn("G2"),
        QStringList{"debug: -[InteractiveView groupBtnClicked:]: viewIdentifier G2 button G2 new state: 1"});
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
    EXPECT_FALSE(pane->isHidden());
}

TEST_F(GroupButtonPressTest, SwitchingAGroupLeavesTheOthersPanelsAlone)
{
    View *own = addPane(key("G1"));
    View *other = addPane(key("G2"));
    View *slotPanels = addPane(Identifier("G1-group"));
    click(groupButton("G1"));
    EXPECT_TRUE(own->isHidden());
    EXPECT_FALSE(other->isHidden());
    EXPECT_FALSE(slotPanels->isHidden());
}

TEST_F(GroupButtonPressTest, ADrawnPanelGoesAndComesBackWithTheFocusInItsSharedField)
{
    drawGroup(0, groupEntry);
    drawGroup(1, groupEntry);
    field("G1-S1")->setStringValue("A");
    click(groupButton("G1"));
    ASSERT_NE(pane("G1"), nullptr);
    EXPECT_TRUE(pane("G1")->isHidden());
    click(groupButton("G1"));
    EXPECT_FALSE(pane("G1")->isHidden());
    EXPECT_EQ(field("G1-S1")->stringValue(), "A");
    EXPECT_TRUE(field("G1-SharedInput")->isFirstResponder());
}

TEST_F(GroupButtonPressTest, TheLastGroupThatIsOnStaysOnAndItsPanelShown)
{
    View *pane = addPane(key("G2"));
    click(groupButton("G1"));
    EXPECT_EQ(loggedByClickOn("G2"),
              (QStringList{
                  "debug: -[InteractiveView groupBtnClicked:]: viewIdentifier G2 button G2 new state: 0",
                  "debug: -[InteractiveView groupBtnClicked:]: Cannot disable all groups, re-enabled current "
                  "group: G2"}));
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
    EXPECT_EQ(groupButton("G1")->state(), Button::Off);
    EXPECT_FALSE(pane->isHidden());
}

TEST_F(GroupButtonPressTest, TheRefusedPressShowsTheGroupsPanelAgain)
{
    View *pane = addPane(key("G2"));
    click(groupButton("G1"));
    pane->setHidden(true);
    click(groupButton("G2"));
    EXPECT_FALSE(pane->isHidden());
}

TEST_F(GroupButtonPressTest, TheOnlyGroupOfAStationCannotBeSwitchedOff)
{
    station.groups = {"G1"};
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
}

TEST_F(GroupButtonPressTest, AGroupThatIsNeitherOnNorOffDoesNotCountAsOn)
{
    groupButton("G1")->setState(Button::Mixed);
    click(groupButton("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
}

TEST_F(GroupButtonPressTest, AMixedStateIsLoggedAsItIsAndHidesLikeOff)
{
    View *pane = addPane(key("G1"));
    EXPECT_EQ(
        loggedByCallFor(groupButton("G1"), Button::Mixed),
        (QStringList{"debug: -[InteractiveView groupBtnClicked:]: viewIdentifier G1 button G1 new state: -1",
                     "default: -[InteractiveView groupBtnClicked:]: group set to off: G1"}));
    EXPECT_TRUE(pane->isHidden());
}

TEST_F(GroupButtonPressTest, TheLogNamesTheTitleBesideTheGroup)
{
    groupButton("G1")->setTitle("Upper row");
    click(groupButton("Upper row"));
    EXPECT_EQ(
        loggedByClickOn("Upper row"),
        QStringList{"debug: -[InteractiveView groupBtnClicked:]: viewIdentifier G1 button Upper row new "
                    "state: 1"});
}

TEST_F(GroupButtonPressTest, TheRefusalNamesTheTitle)
{
    click(groupButton("G2"));
    groupButton("G1")->setTitle("Upper row");
    EXPECT_TRUE(loggedByClickOn("Upper row")
                    .contains("debug: -[InteractiveView groupBtnClicked:]: Cannot disable all groups, "
                              "re-enabled current group: Upper row"));
}

TEST_F(GroupButtonPressTest, AGroupNamedWithAHyphenIsHandledUnderWhatStandsBeforeIt)
{
    station.groups = {"A-1", "B"};
    View *whole = addPane(key("A-1"));
    View *part = addPane(Identifier("A"));
    EXPECT_EQ(
        loggedByClickOn("A-1"),
        (QStringList{"debug: -[InteractiveView groupBtnClicked:]: viewIdentifier A button A-1 new state: 0",
                     "default: -[InteractiveView groupBtnClicked:]: group set to off: A"}));
    // Hiding asks for the very instance, which a part of another text never is; showing compares the text.
    EXPECT_FALSE(whole->isHidden());
    EXPECT_FALSE(part->isHidden());
    part->setHidden(true);
    whole->setHidden(true);
    click(groupButton("A-1"));
    EXPECT_FALSE(part->isHidden());
    EXPECT_TRUE(whole->isHidden());
}

TEST_F(GroupButtonPressTest, AButtonThatIsDisabledTakesNoClick)
{
    groupButton("G1")->setEnabled(false);
    EXPECT_EQ(loggedByClickOn("G1"), QStringList());
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
}

TEST_F(GroupButtonPressTest, LeavesTheStatusOfTheSlotsAlone)
{
    drawGroup(0, groupEntry);
    const platform::Dictionary before = plugin().enableStatus();
    click(groupButton("G1"));
    click(groupButton("G1"));
    EXPECT_EQ(plugin().enableStatus(), before);
}

TEST_F(GroupButtonPressTest, AnythingButAButtonIsToldAndIgnored)
{
    plugin();
    expectError("Invalid call for -[InteractiveView groupBtnClicked:]");
    platform::View view;
    view.setIdentifier(platform::Identifier(QStringLiteral("G1")));
    rooms().groupButtons.groupBtnClicked(&view);
    rooms().groupButtons.groupBtnClicked(nullptr);
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView groupBtnClicked:] from sender: <View: G1>"));
    EXPECT_TRUE(loggedOnce(KVKLogLevel::Error,
                           "Invalid call for -[InteractiveView groupBtnClicked:] from sender: (null)"));
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
}

} // namespace
