#include "platform/Button.h"
#include "tests/support/PluginFixture.h"

using platform::Button;
using platform::Identifier;

namespace {

const Identifier none;

/// What the rest of the plug-in asks about groups, and changes.
class GroupLookUpTest : public testsupport::PluginFixture
{
protected:
    static Identifier named(const char *text) { return Identifier(QString::fromLatin1(text)); }
};

TEST_F(GroupLookUpTest, AGroupIsOnUnlessItsButtonIsOff)
{
    EXPECT_TRUE(plugin().isGroupOn(named("G1")));
    groupButton("G1")->setState(Button::Off);
    EXPECT_FALSE(plugin().isGroupOn(named("G1")));
    EXPECT_TRUE(plugin().isGroupOn(named("G2")));
    groupButton("G1")->setState(Button::Mixed);
    EXPECT_TRUE(plugin().isGroupOn(named("G1")));
}

TEST_F(GroupLookUpTest, AnUnknownGroupIsOnAndItsStateIsOne)
{
    EXPECT_TRUE(plugin().isGroupOn(named("G9")));
    EXPECT_EQ(plugin().getGroupButtonState(named("G9")), 1);
    EXPECT_TRUE(plugin().isGroupOn(none));
    EXPECT_EQ(plugin().getGroupButtonState(none), 1);
}

TEST_F(GroupLookUpTest, WithoutButtonsEveryGroupIsOnAndNoIdentifierIsAGroups)
{
    interactive::InteractiveView fresh;
    EXPECT_TRUE(fresh.isGroupOn(named("G1")));
    EXPECT_FALSE(fresh.isGroupView(named("G1")));
}

TEST_F(GroupLookUpTest, TheStateIsTheButtons)
{
    EXPECT_EQ(plugin().getGroupButtonState(named("G2")), 1);
    groupButton("G2")->setState(Button::Off);
    EXPECT_EQ(plugin().getGroupButtonState(named("G2")), 0);
    groupButton("G2")->setState(Button::Mixed);
    EXPECT_EQ(plugin().getGroupButtonState(named("G2")), -1);
}

TEST_F(GroupLookUpTest, AnIdentifierIsAGroupsOnlyAsAWhole)
{
    EXPECT_TRUE(plugin().isGroupView(named("G1")));
    EXPECT_FALSE(plugin().isGroupView(named("G1-S1")));
    EXPECT_FALSE(plugin().isGroupView(named("0")));
    EXPECT_FALSE(plugin().isGroupView(named("")));
    EXPECT_FALSE(plugin().isGroupView(none));
}

TEST_F(GroupLookUpTest, AGroupWithAHyphenIsFoundUnderWhatStandsBeforeIt)
{
    station.groups = {"A-1", "B"};
    plugin().turnOnGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_FALSE(plugin().isGroupOn(named("A")));
    EXPECT_TRUE(plugin().isGroupOn(named("A-1")));
    EXPECT_EQ(plugin().getGroupButtonState(named("A")), 0);
    EXPECT_EQ(plugin().getGroupButtonState(named("A-1")), 1);
    plugin().enableGroupButton(false, named("A-1"));
    EXPECT_TRUE(groupButton("A-1")->isEnabled());
    plugin().enableGroupButton(false, named("A"));
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(plugin().isGroupView(named("A-1")));
    EXPECT_FALSE(plugin().isGroupView(named("A")));
}

TEST_F(GroupLookUpTest, OfTwoGroupsThatMatchTheFirstCounts)
{
    station.groups = {"A-1", "A-2"};
    plugin().turnOnGroupButton(false, named("A"));
    plugin().enableGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_EQ(groupButton("A-2")->state(), Button::On);
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(groupButton("A-2")->isEnabled());
}

TEST_F(GroupLookUpTest, EnablingAndTurningOnChangeTheNamedButtonAlone)
{
    plugin().enableGroupButton(false, named("G1"));
    EXPECT_FALSE(groupButton("G1")->isEnabled());
    EXPECT_TRUE(groupButton("G2")->isEnabled());
    plugin().enableGroupButton(true, named("G1"));
    EXPECT_TRUE(groupButton("G1")->isEnabled());

    plugin().turnOnGroupButton(false, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::Off);
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
    plugin().turnOnGroupButton(true, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
}

TEST_F(GroupLookUpTest, AnUnknownGroupChangesNothing)
{
    plugin().enableGroupButton(false, named("G9"));
    plugin().turnOnGroupButton(false, named("G9"));
    for (const Button *button : plugin().groupButtons()) {
        EXPECT_TRUE(button->isEnabled());
        EXPECT_EQ(button->state(), Button::On);
    }
}

TEST_F(GroupLookUpTest, TurningAButtonRunsNoAction)
{
    plugin();
    plugin().turnOnGroupButton(false, named("G1"));
    plugin().turnOnGroupButton(false, named("G2"));
    EXPECT_EQ(timesLoggedFrom("-[InteractiveView groupBtnClicked:]"), 0);
    EXPECT_EQ(groupButton("G1")->state(), Button::Off);
    EXPECT_EQ(groupButton("G2")->state(), Button::Off);
}

} // namespace
