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
        for (const Button *button : plugin().groupButtons())
            found.append(button->state());
        return found;
    }
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

TEST_F(GroupLookUpTest, AnUnknownGroupCountsAsOn)
{
    for (Button *button : plugin().groupButtons())
        button->setState(Button::Off);
    for (const Identifier &unknown : {Identifier("X"), Identifier(""), Identifier(), Identifier("G1-0")}) {
        EXPECT_TRUE(plugin().isGroupOn(unknown)) << unknown.text().toStdString();
        EXPECT_EQ(plugin().getGroupButtonState(unknown), 1) << unknown.text().toStdString();
        EXPECT_FALSE(plugin().isGroupView(unknown)) << unknown.text().toStdString();
    }
}

TEST_F(GroupLookUpTest, BeforeTheViewIsLoadedEveryGroupIsOnAndNoneIsAGroupView)
{
    InteractiveView unloaded;
    EXPECT_TRUE(unloaded.isGroupOn(Identifier("G1")));
    EXPECT_EQ(unloaded.getGroupButtonState(Identifier("G1")), 1);
    EXPECT_FALSE(unloaded.isGroupView(Identifier("G1")));
    unloaded.enableGroupButton(false, Identifier("G1"));
    unloaded.turnOnGroupButton(false, Identifier("G1"));
    unloaded.relayoutGroupButtons(800);
    EXPECT_TRUE(unloaded.groupButtons().isEmpty());
}

TEST_F(GroupLookUpTest, TurningAGroupOffHidesNothingAndLogsNothing)
{
    View *pane = addPane(key("G1"));
    log.clear();
    plugin().turnOnGroupButton(false, key("G1"));
    plugin().turnOnGroupButton(false, key("G2"));
    EXPECT_EQ(states(), (QList<int>{0, 0}));
    EXPECT_FALSE(pane->isHidden());
    pane->setHidden(true);
    plugin().turnOnGroupButton(true, key("G1"));
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
            static_cast<void>(plugin().isGroupOn(Identifier("G1")));
            otherIsOn = otherIsOn && plugin().isGroupOn(Identifier("G2"));
            ++answers;
        }
        return otherIsOn;
    });
    for (int i = 0; i < 100 || answers == 0; ++i)
        plugin().turnOnGroupButton(i % 2 == 0, key("G1"));
    stop = true;
    EXPECT_EQ(call.result(), platform::Value(true));
}

} // namespace
