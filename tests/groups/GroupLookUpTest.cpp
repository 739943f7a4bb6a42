#include "tests/groups/Groups.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/SequencerCall.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using interactive::GroupButtons;
using platform::Button;
using platform::Identifier;
using platform::View;
using testsupport::Groups;

namespace {

const Identifier none;

Identifier named(const char *text)
{
    return Identifier(QString::fromLatin1(text));
}

/// What the rest of the plug-in asks about groups, and changes.
class GroupLookUpTest : public ::testing::Test
{
protected:
    void use(const QStringList &names)
    {
        m_groups = std::make_unique<Groups>(names);
        m_groups->setUp();
    }
    void SetUp() override { use({"G1", "G2"}); }

    GroupButtons &buttons() { return m_groups->buttons; }
    bool isGroupView(const Identifier &identifier) { return m_groups->views.isGroupView(identifier); }
    Identifier key(const QString &text) { return m_groups->waits.panelKey(text); }
    View *addPane(const Identifier &identifier)
    {
        auto *made = new View;
        made->setIdentifier(identifier);
        m_groups->splitView->addSubview(made);
        return made;
    }
    Button *groupButton(const QString &title) { return m_groups->button(title); }
    QList<int> states()
    {
        QList<int> found;
        for (const Button *button : buttons().groupButtons())
            found.append(button->state());
        return found;
    }

    testsupport::LogRecorder log;

private:
    std::unique_ptr<Groups> m_groups;
};

TEST_F(GroupLookUpTest, AGroupIsOnUnlessItsButtonIsOff)
{
    EXPECT_TRUE(buttons().isGroupOn(named("G1")));
    groupButton("G1")->setState(Button::Off);
    EXPECT_FALSE(buttons().isGroupOn(named("G1")));
    EXPECT_TRUE(buttons().isGroupOn(named("G2")));
    groupButton("G1")->setState(Button::Mixed);
    EXPECT_TRUE(buttons().isGroupOn(named("G1")));
}

TEST_F(GroupLookUpTest, TheStateIsTheButtons)
{
    EXPECT_EQ(buttons().getGroupButtonState(named("G2")), 1);
    groupButton("G2")->setState(Button::Off);
    EXPECT_EQ(buttons().getGroupButtonState(named("G2")), 0);
    groupButton("G2")->setState(Button::Mixed);
    EXPECT_EQ(buttons().getGroupButtonState(named("G2")), -1);
}

TEST_F(GroupLookUpTest, AnIdentifierIsAGroupsOnlyAsAWhole)
{
    EXPECT_TRUE(isGroupView(named("G1")));
    EXPECT_FALSE(isGroupView(named("G1-S1")));
    EXPECT_FALSE(isGroupView(named("0")));
    EXPECT_FALSE(isGroupView(named("")));
    EXPECT_FALSE(isGroupView(none));
}

TEST_F(GroupLookUpTest, AGroupWithAHyphenIsFoundUnderWhatStandsBeforeIt)
{
    use({"A-1", "B"});
    buttons().turnOnGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_FALSE(buttons().isGroupOn(named("A")));
    EXPECT_TRUE(buttons().isGroupOn(named("A-1")));
    EXPECT_EQ(buttons().getGroupButtonState(named("A")), 0);
    EXPECT_EQ(buttons().getGroupButtonState(named("A-1")), 1);
    buttons().enableGroupButton(false, named("A-1"));
    EXPECT_TRUE(groupButton("A-1")->isEnabled());
    buttons().enableGroupButton(false, named("A"));
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(isGroupView(named("A-1")));
    EXPECT_FALSE(isGroupView(named("A")));
}

TEST_F(GroupLookUpTest, OfTwoGroupsThatMatchTheFirstCounts)
{
    use({"A-1", "A-2"});
    buttons().turnOnGroupButton(false, named("A"));
    buttons().enableGroupButton(false, named("A"));
    EXPECT_EQ(groupButton("A-1")->state(), Button::Off);
    EXPECT_EQ(groupButton("A-2")->state(), Button::On);
    EXPECT_FALSE(groupButton("A-1")->isEnabled());
    EXPECT_TRUE(groupButton("A-2")->isEnabled());
}

TEST_F(GroupLookUpTest, EnablingAndTurningOnChangeTheNamedButtonAlone)
{
    buttons().enableGroupButton(false, named("G1"));
    EXPECT_FALSE(groupButton("G1")->isEnabled());
    EXPECT_TRUE(groupButton("G2")->isEnabled());
    buttons().enableGroupButton(true, named("G1"));
    EXPECT_TRUE(groupButton("G1")->isEnabled());

    buttons().turnOnGroupButton(false, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::Off);
    EXPECT_EQ(groupButton("G1")->state(), Button::On);
    buttons().turnOnGroupButton(true, named("G2"));
    EXPECT_EQ(groupButton("G2")->state(), Button::On);
}

TEST_F(GroupLookUpTest, AnUnknownGroupChangesNothing)
{
    buttons().enableGroupButton(false, named("G9"));
    buttons().turnOnGroupButton(false, named("G9"));
    for (const Button *button : buttons().groupButtons()) {
        EXPECT_TRUE(button->isEnabled());
        EXPECT_EQ(button->state(), Button::On);
    }
}

TEST_F(GroupLookUpTest, AnUnknownGroupCountsAsOn)
{
    for (Button *button : buttons().groupButtons())
        button->setState(Button::Off);
    for (const Identifier &unknown : {Identifier("X"), Identifier(""), Identifier(), Identifier("G1-0")}) {
        EXPECT_TRUE(buttons().isGroupOn(unknown)) << unknown.text().toStdString();
        EXPECT_EQ(buttons().getGroupButtonState(unknown), 1) << unknown.text().toStdString();
        EXPECT_FALSE(isGroupView(unknown)) << unknown.text().toStdString();
    }
}

TEST_F(GroupLookUpTest, BeforeTheViewIsLoadedEveryGroupIsOnAndNoneIsAGroupView)
{
    Groups groups({});
    GroupButtons &unloaded = groups.buttons;
    EXPECT_TRUE(unloaded.isGroupOn(Identifier("G1")));
    EXPECT_EQ(unloaded.getGroupButtonState(Identifier("G1")), 1);
    EXPECT_FALSE(groups.views.isGroupView(Identifier("G1")));
    unloaded.enableGroupButton(false, Identifier("G1"));
    unloaded.turnOnGroupButton(false, Identifier("G1"));
    unloaded.relayoutGroupButtons(800);
    EXPECT_TRUE(unloaded.groupButtons().isEmpty());
}

TEST_F(GroupLookUpTest, TurningAGroupOffHidesNothingAndLogsNothing)
{
    View *pane = addPane(key("G1"));
    log.clear();
    buttons().turnOnGroupButton(false, key("G1"));
    buttons().turnOnGroupButton(false, key("G2"));
    EXPECT_EQ(states(), (QList<int>{0, 0}));
    EXPECT_FALSE(pane->isHidden());
    pane->setHidden(true);
    buttons().turnOnGroupButton(true, key("G1"));
    EXPECT_TRUE(pane->isHidden());
    EXPECT_TRUE(log.systemLines().empty());
    EXPECT_TRUE(log.proxyLines().empty());
}

TEST_F(GroupLookUpTest, ASequenceCanAskWhileTheOperatorSwitches)
{
    std::atomic<bool> stop{false};
    std::atomic<int> answers{0};
    testsupport::SequencerCall call([&](platform::Error *) -> platform::Value {
        bool otherIsOn = true;
        while (!stop) {
            static_cast<void>(buttons().isGroupOn(Identifier("G1")));
            otherIsOn = otherIsOn && buttons().isGroupOn(Identifier("G2"));
            ++answers;
        }
        return otherIsOn;
    });
    for (int i = 0; i < 100 || answers == 0; ++i)
        buttons().turnOnGroupButton(i % 2 == 0, key("G1"));
    stop = true;
    EXPECT_EQ(call.result(), platform::Value(true));
}

} // namespace
