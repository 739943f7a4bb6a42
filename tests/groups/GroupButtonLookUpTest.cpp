#include "tests/groups/GroupFixture.h"

#include <atomic>

using interactive::InteractiveView;
using platform::Button;
using platform::Identifier;
using platform::View;

namespace {

/// Look-ups of group buttons from unusual sides: identifiers of any kind, before the view is loaded, on other
/// threads.
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

TEST_F(GroupButtonLookUpTest, EnablingAnUnknownGroupChangesNothing)
{
    nameGroupsWithHyphens();
    for (const Identifier &unknown : {Identifier("X"), Identifier("A-1"), Identifier("")})
        plugin().enableGroupButton(false, unknown);
    EXPECT_EQ(enabled(), (QList<bool>{true, true, true}));
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

} // namespace
