#include "tests/groups/GroupFixture.h"

#include <atomic>

using interactive::InteractiveView;
using platform::Array;
using platform::Button;
using platform::Identifier;
using platform::View;

namespace {

/// What the rest of the plug-in asks about, and does to, a group's button.
class GroupButtonLookUpTest : public testsupport::GroupFixture
{
protected:
    void nameGroupsWithHyphens() { station.groups = {"A-1", "A-2", "B"}; }
    QList<bool> enabled()
    {
        QList<bool> found;
        for (Button *button : plugin().groupButtons())
            found.append(button->isEnabled());
        return found;
    }
    QList<int> states()
    {
        QList<int> found;
        for (Button *button : plugin().groupButtons())
            found.append(button->state());
        return found;
    }
};

TEST_F(GroupButtonLookUpTest, AGroupIsOnUnlessItsButtonIsOff)
{
    const std::pair<Button::State, bool> cases[] = {
        {Button::On, true}, {Button::Off, false}, {Button::Mixed, true}};
    for (const auto &[state, expected] : cases) {
        groupButton("G2")->setState(state);
        EXPECT_EQ(plugin().isGroupOn(key("G2")), expected) << state;
        EXPECT_TRUE(plugin().isGroupOn(key("G1"))) << state;
    }
}

TEST_F(GroupButtonLookUpTest, TheStateOfAGroupIsItsButtons)
{
    for (const Button::State state : {Button::On, Button::Off, Button::Mixed}) {
        groupButton("G2")->setState(state);
        EXPECT_EQ(plugin().getGroupButtonState(key("G2")), state);
        EXPECT_EQ(plugin().getGroupButtonState(key("G1")), 1);
    }
}

TEST_F(GroupButtonLookUpTest, AnUnknownGroupCountsAsOn)
{
    for (Button *button : plugin().groupButtons())
        button->setState(Button::Off);
    for (const Identifier &unknown : {Identifier("X"), Identifier(""), Identifier(), Identifier("G1-0")}) {
        EXPECT_TRUE(plugin().isGroupOn(unknown)) << unknown.text().toStdString();
        EXPECT_EQ(plugin().getGroupButtonState(unknown), 1) << unknown.text().toStdString();
        EXPECT_FALSE(plugin().isGroupView(unknown)) << unknown.text().toStdString();
    }
}

TEST_F(GroupButtonLookUpTest, AnyIdentifierOfTheGroupsTextFindsItsButton)
{
    groupButton("G2")->setState(Button::Off);
    EXPECT_FALSE(plugin().isGroupOn(Identifier("G2")));
    EXPECT_EQ(plugin().getGroupButtonState(Identifier("G2")), 0);
    EXPECT_TRUE(plugin().isGroupView(Identifier("G2")));
}

TEST_F(GroupButtonLookUpTest, BeforeTheViewIsLoadedEveryGroupIsOnAndNoneIsAGroupView)
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

TEST_F(GroupButtonLookUpTest, AGroupNamedWithAHyphenIsFoundUnderWhatStandsBeforeIt)
{
    nameGroupsWithHyphens();
    EXPECT_EQ(testsupport::identifierOf(plugin().groupButtons().first()), "A-1");
    groupButton("A-1")->setState(Button::Off);
    EXPECT_FALSE(plugin().isGroupOn(Identifier("A")));
    EXPECT_EQ(plugin().getGroupButtonState(Identifier("A")), 0);
    EXPECT_TRUE(plugin().isGroupOn(Identifier("A-1")));
    EXPECT_EQ(plugin().getGroupButtonState(Identifier("A-1")), 1);
}

TEST_F(GroupButtonLookUpTest, AGroupNamedWithAHyphenIsAGroupViewUnderItsWholeNameAlone)
{
    nameGroupsWithHyphens();
    EXPECT_TRUE(plugin().isGroupView(Identifier("A-1")));
    EXPECT_TRUE(plugin().isGroupView(Identifier("A-2")));
    EXPECT_FALSE(plugin().isGroupView(Identifier("A")));
}

TEST_F(GroupButtonLookUpTest, EnablingChangesTheFirstButtonThatMatches)
{
    nameGroupsWithHyphens();
    plugin().enableGroupButton(false, Identifier("A"));
    EXPECT_EQ(enabled(), (QList<bool>{false, true, true}));
    plugin().enableGroupButton(false, Identifier("B"));
    EXPECT_EQ(enabled(), (QList<bool>{false, true, false}));
    plugin().enableGroupButton(true, Identifier("A"));
    EXPECT_EQ(enabled(), (QList<bool>{true, true, false}));
    EXPECT_EQ(states(), (QList<int>{1, 1, 1}));
}

TEST_F(GroupButtonLookUpTest, EnablingAnUnknownGroupChangesNothing)
{
    nameGroupsWithHyphens();
    for (const Identifier &unknown : {Identifier("X"), Identifier("A-1"), Identifier("")})
        plugin().enableGroupButton(false, unknown);
    EXPECT_EQ(enabled(), (QList<bool>{true, true, true}));
}

TEST_F(GroupButtonLookUpTest, TurningOffAndOnChangesTheFirstButtonThatMatches)
{
    nameGroupsWithHyphens();
    plugin().turnOnGroupButton(false, Identifier("A"));
    EXPECT_EQ(states(), (QList<int>{0, 1, 1}));
    plugin().turnOnGroupButton(true, Identifier("A"));
    EXPECT_EQ(states(), (QList<int>{1, 1, 1}));
}

TEST_F(GroupButtonLookUpTest, TurningAGroupOffHidesNothingAndLogsNothing)
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

TEST_F(GroupButtonLookUpTest, TurningAnUnknownGroupOffChangesNothing)
{
    plugin().turnOnGroupButton(false, Identifier("X"));
    EXPECT_EQ(states(), (QList<int>{1, 1}));
}

TEST_F(GroupButtonLookUpTest, ASequenceCanAskWhileTheOperatorSwitches)
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

TEST_F(GroupButtonLookUpTest, TheParentsIdentifierIsTheVeryInstance)
{
    View *parent = addPane(key("G1"));
    auto *child = new Button(platform::Rect(0, 0, 10, 10));
    parent->addSubview(child);
    log.clear();
    EXPECT_TRUE(plugin().getParentIdentifier(child).isSameInstance(key("G1")));
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(GroupButtonLookUpTest, NoViewHasNoParentAndIsNotLogged)
{
    start();
    log.clear();
    EXPECT_TRUE(plugin().getParentIdentifier(nullptr).isNull());
    EXPECT_EQ(logged(), QStringList());
}

TEST_F(GroupButtonLookUpTest, AParentWithoutAnIdentifierCountsAsNone)
{
    expectError("no parent view found");
    View *parent = addPane(Identifier());
    auto *child = new Button(platform::Rect(0, 0, 10, 10));
    child->setIdentifier(Identifier("G1-0-OK"));
    parent->addSubview(child);
    log.clear();
    EXPECT_TRUE(plugin().getParentIdentifier(child).isNull());
    EXPECT_EQ(logged(), QStringList{"error: -[InteractiveView getParentIdentifier:]: <Button: "
                                    "G1-0-OK>(G1-0-OK), no parent view found"});
}

TEST_F(GroupButtonLookUpTest, AViewOutsideTheTreeHasNoParent)
{
    expectError("no parent view found");
    start();
    View alone;
    log.clear();
    EXPECT_TRUE(plugin().getParentIdentifier(&alone).isNull());
    EXPECT_EQ(logged(), QStringList{"error: -[InteractiveView getParentIdentifier:]: <View: "
                                    "(null)>((null)), no parent view found"});
}

} // namespace
