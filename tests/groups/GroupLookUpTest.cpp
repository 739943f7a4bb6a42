#include "tests/groups/GroupFixture.h"

#include <atomic>

using interactive::InteractiveView;
using platform::Button;
using platform::Identifier;
using platform::View;

namespace {

const Identifier none;

/// What the rest of the plug-in asks about groups, and changes.
class GroupLookUpTest : public testsupport::GroupFixture
{
protected:
    static Identifier named(const char *text) { return Identifier(QString::fromLatin1(text)); }
    QList<int> states()
    {
        QList<int> found;
        for (const Button *button : rooms().groupButtons.groupButtons())
            found.append(button->state());
        return found;
    }
};

TEST_F(GroupLookUpTest, AGroupIsOnUnlessItsButtonIsOff)
{
    EXPECT_TRUE(rooms().groupButtons.isGroupOn(named("G1")));
    groupButton("G1")->setState(Button::Off);
    EXPECT_FALSE(rooms().groupButtons.isGroupOn(named("G1")));
    EXPECT_TRUE(rooms().groupButtons.isGroupOn(named("G2")));
    groupButton("G1")->setState(Button::Mixed);
    EXPECT_TRUE(rooms().groupButtons.isGroupOn(named("G1")));
}

TEST_F(GroupLookUpTest, TheStateIsTheButtons)
{
    EXPECT_EQ(rooms().groupButtons.getGroupButtonState(named("G2")), 1);
    groupButton("G2")->setState(Button::Off);
    EXPECT_EQ(rooms().groupButtons.getGroupButtonState(named("G2")), 0);
    groupButton("G2")->setState(Button::Mixed);
    EXPECT_EQ(rooms().groupButtons.getGroupButtonState(named("G2")), -1);
}

TEST_F(GroupLookUpTest, AnIdentifierIsAGroupsOnlyAsAWhole)
{
    EXPECT_TRUE(rooms().views.isGroupView(named("G1")));
    EXPECT_FALSE(rooms().views.isGroupView(named("G1-S1")));
    EXPECT_FALSE(rooms().views.isGroupView(named("0")));
    EXPECT_FALSE(rooms().views.isGroupView(named("")));
    EXPECT_FALSE(rooms().views.isGroupView(none));
}

TEST_F(GroupLookUpTest, AGroupWithAHyphenIsFoundUnderWhatStandsBeforeIt)
{
    station.groups = {"A-1", "B"};
    rooms().groupButtons.turnOnGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_FALSE(rooms().groupButtons.isGroupOn(named("A")));
    EXPECT_TRUE(rooms().groupButtons.isGroupOn(named("A-1")));
    EXPECT_EQ(rooms().groupButtons.getGroupButtonState(named("A")), 0);
    EXPECT_EQ(rooms().groupButtons.getGroupButtonState(named("A-1")), 1);
    rooms().groupButtons.enableGroupButton(false, named("A-1"));
    EXPECT_TRUE(groupButton("A-1")->isEnabled());
    rooms().groupButtons.enableGroupButton(false, named("A"));
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(rooms().views.isGroupView(named("A-1")));
    EXPECT_FALSE(rooms().views.isGroupView(named("A")));
}

TEST_F(GroupLookUpTest, OfTwoGroupsThatMatchTheFirstCounts)
{
    station.groups = {"A-1", "A-2"};
    rooms().groupButtons.turnOnGroupButton(false, named("A"));
    rooms().groupButtons.enableGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_EQ(groupButton("A-2")->state(), Button::On);
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(groupButton("A-2")->isEnabled());
}

TEST_F(GroupLookUpTest, EnablingAndTurningOnChangeTheNamedButtonAlone)
{
    rooms().groupButtons.enableGroupButton(false, named("G1"));
    EXPECT_FALSE(groupButton("G1")->isEnabled());
    EXPECT_TRUE(groupButton("G2")->isEnabled());
    rooms().groupButtons.enableGroupButton(true, named("G1"));
    EXPECT_TRUE(groupButton("G1")->isEnabled());

    rooms().groupButtons.turnOnGroupButton(false, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::Off);
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
    rooms().groupButtons.turnOnGroupButton(true, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
}

TEST_F(GroupLookUpTest, AnUnknownGroupChangesNothing)
{
    rooms().groupButtons.enableGroupButton(false, named("G9"));
    rooms().groupButtons.turnOnGroupButton(false, named("G9"));
    for (const Button *button : rooms().groupButtons.groupButtons()) {
        EXPECT_TRUE(button->isEnabled());
        EXPECT_EQ(button->state(), Button::On);
    }
}

TEST_F(GroupLookUpTest, AnUnknownGroupCountsAsOn)
{
    for (Button *button : rooms().groupButtons.groupButtons())
        button->setState(Button::Off);
    for (const Identifier &unknown : {Identifier("X"), Identifier(""), Identifier(), Identifier("G1-0")}) {
        EXPECT_TRUE(rooms().groupButtons.isGroupOn(unknown)) << unknown.text().toStdString();
        EXPECT_EQ(rooms().groupButtons.getGroupButtonState(unknown), 1) << unknown.text().toStdString();
        EXPECT_FALSE(rooms().views.isGroupView(unknown)) << unknown.text().toStdString();
    }
}

TEST_F(GroupLookUpTest, BeforeTheViewIsLoadedEveryGroupIsOnAndNoneIsAGroupView)
{
    InteractiveView unloadedView;
    interactive::GroupButtons &unloaded = unloadedView.rooms().groupButtons;
    EXPECT_TRUE(unloaded.isGroupOn(Identifier("G1")));
    EXPECT_EQ(unloaded.getGroupButtonState(Identifier("G1")), 1);
    EXPECT_FALSE(unloadedView.rooms().views.isGroupView(Identifier("G1")));
    unloaded.enableGroupButton(false, Identifier("G1"));
    unloaded.turnOnGroupButton(false, Identifier("G1"));
    unloaded.relayoutGroupButtons(800);
    EXPECT_TRUE(unloaded.groupButtons().isEmpty());
}

TEST_F(GroupLookUpTest, TurningAGroupOffHidesNothingAndLogsNothing)
{
    View *pane = addPane(key("G1"));
    log.clear();
    rooms().groupButtons.turnOnGroupButton(false, key("G1"));
    rooms().groupButtons.turnOnGroupButton(false, key("G2"));
    EXPECT_EQ(states(), (QList<int>{0, 0}));
    EXPECT_FALSE(pane->isHidden());
    pane->setHidden(true);
    rooms().groupButtons.turnOnGroupButton(true, key("G1"));
    EXPECT_TRUE(pane->isHidden());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(GroupLookUpTest, ASequenceCanAskWhileTheOperatorSwitches)
{
    start();
    std::atomic<bool> stop{false};
    std::atomic<int> answers{0};
    auto &call = onSequencer([&](platform::Error *) -> platform::Value {
        bool otherIsOn = true;
        while (!stop) {
            static_cast<void>(rooms().groupButtons.isGroupOn(Identifier("G1")));
            otherIsOn = otherIsOn && rooms().groupButtons.isGroupOn(Identifier("G2"));
            ++answers;
        }
        return otherIsOn;
    });
    for (int i = 0; i < 100 || answers == 0; ++i)
        rooms().groupButtons.turnOnGroupButton(i % 2 == 0, key("G1"));
    stop = true;
    EXPECT_EQ(call.result(), platform::Value(true));
}

} // namespace
