#include "platform/MainQueue.h"
#include "tests/operator/OperatorFixture.h"
#include "tests/support/Wait.h"

#include <QFile>

using platform::Box;
using platform::MainQueue;
using platform::TextField;
using platform::View;

namespace {

class PanelWait : public testsupport::OperatorFixture
{
protected:
    /// A slot's panel that is emptied and drawn anew as soon as it is answered, with the next title.
    void drawAnswerable(Box *box, const QStringList &titles)
    {
        if (titles.isEmpty())
            return;
        button(box->contentView(), {10, 10, 64, 30}, titles.first(), "Pass", [this, box, titles] {
            empty(box->contentView());
            drawAnswerable(box, titles.mid(1));
        });
    }
};

} // namespace

TEST_F(PanelWait, ReturnsForAGroupPanelThatIsThere)
{
    groupPanel("G1");
    runs("operator.waitForPanel('G1', 5)");
}

TEST_F(PanelWait, ReturnsForASlotPanelThatIsThere)
{
    button(tile("3")->contentView(), {10, 10, 64, 30}, "OK", "Pass");
    runs("operator.waitForPanel('3', 5) operator.waitForPanel(3, 5)");
}

TEST_F(PanelWait, ReturnsWhenThePanelComes)
{
    start("operator.waitForPanel('G1', 60)");
    MainQueue::async([this] { groupPanel("G1"); });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(PanelWait, FailsWithWhatWasThereInstead)
{
    groupPanel("G2");
    button(tile("3")->contentView(), {10, 10, 64, 30}, "OK", "Pass");
    EXPECT_EQ(fails("\noperator.waitForPanel('G1', 0.05)"),
              "operator.lua:2: no panel \"G1\" within 0.05 s; visible panels: \"G2\", \"3\"");
}

TEST_F(PanelWait, FailsWithNoneWhenNoPanelIsThere)
{
    EXPECT_EQ(fails("operator.waitForPanel('G1', 0)"),
              "operator.lua:1: no panel \"G1\" within 0 s; visible panels: none");
}

TEST_F(PanelWait, AGroupsButtonIsNoPanel)
{
    button(root, {700, 560, 80, 30}, "G1", "G1");
    EXPECT_EQ(run("operator.waitForPanel('G1', 0)").ok, false);
}

TEST_F(PanelWait, AnEmptiedTileIsNoPanel)
{
    tile("3");
    EXPECT_EQ(run("operator.waitForPanel('3', 0)").ok, false);
}

TEST_F(PanelWait, TheContainerOfSlotPanelsIsNoPanel)
{
    groupPanel("G1-group");
    EXPECT_EQ(run("operator.waitForPanel('G1-group', 0)").ok, false);
}

TEST_F(PanelWait, AHiddenPanelIsNotThere)
{
    groupPanel("G1")->setHidden(true);
    EXPECT_EQ(fails("operator.waitForPanel('G1', 0)"),
              "operator.lua:1: no panel \"G1\" within 0 s; visible panels: none");
}

TEST_F(PanelWait, GoneReturnsAtOnceWhenNoPanelIsThere)
{
    runs("operator.waitForPanelGone('G1', 0)");
}

TEST_F(PanelWait, GoneReturnsWhenTheViewLeavesTheTree)
{
    View *panel = groupPanel("G1");
    start("operator.waitForPanelGone('G1', 60)");
    MainQueue::async([panel] { panel->removeFromSuperview(); });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(PanelWait, GoneReturnsWhenTheTileIsEmptied)
{
    View *content = tile("3")->contentView();
    button(content, {10, 10, 64, 30}, "OK", "Pass");
    start("operator.waitForPanelGone('3', 60)");
    MainQueue::async([content] { empty(content); });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(PanelWait, GoneFailsForAPanelThatStays)
{
    groupPanel("G1");
    EXPECT_EQ(fails("operator.waitForPanelGone('G1', 0.05)"),
              "operator.lua:1: panel \"G1\" still there after 0.05 s; visible panels: \"G1\"");
}

TEST_F(PanelWait, AHiddenPanelIsNotGone)
{
    groupPanel("G1")->setHidden(true);
    EXPECT_EQ(fails("operator.waitForPanelGone('G1', 0)"),
              "operator.lua:1: panel \"G1\" still there after 0 s; visible panels: none");
}

TEST_F(PanelWait, GoneMeansTheAnsweredShowingAlsoWhenTheNextIsThereAlready)
{
    drawAnswerable(tile("3"), {"first", "second"});
    runs("operator.click{panel='3', title='first'} operator.waitForPanelGone('3', 60)\n"
         "operator.waitForPanel('3', 60) operator.click{panel='3', title='second'}");
    EXPECT_EQ(pressed, QStringList({"first", "second"}));
}

TEST_F(PanelWait, GoneMeansTheShowingOfTheLastClick)
{
    drawAnswerable(tile("3"), {"first", "second", "third"});
    EXPECT_EQ(fails("operator.click{panel='3', title='first'}\n"
                    "operator.waitForPanelGone('3', 60)\n"
                    "operator.waitForPanelGone('3', 0)"),
              "operator.lua:3: panel \"3\" still there after 0 s; visible panels: \"3\"");
}

TEST_F(PanelWait, GoneMeansTheShowingThatWasWaitedForWhenNothingWasDoneInIt)
{
    View *content = tile("3")->contentView();
    button(content, {10, 10, 64, 30}, "first", "Pass");
    start("operator.waitForPanel('3', 60) operator.click('Next') operator.waitForPanelGone('3', 60)");
    button(root, {700, 560, 80, 30}, "Next", "Next", [this, content] {
        empty(content);
        button(content, {10, 10, 64, 30}, "second", "Pass");
    });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(PanelWait, GoneMeansTheShowingOfTheLastEntry)
{
    View *content = tile("3")->contentView();
    TextField *asking = field(content, {10, 10, 64, 30}, "3-SN");
    asking->setTarget(&context, "enter:", [this, content](View *) {
        empty(content);
        field(content, {10, 10, 64, 30}, "3-SN");
    });
    runs("operator.enter('3-SN', 'x') operator.waitForPanelGone('3', 60)");
}

TEST_F(PanelWait, ASecondWaitForTheNextShowingForgetsTheClickIntoTheFirst)
{
    drawAnswerable(tile("3"), {"first", "second"});
    EXPECT_EQ(fails("operator.click{panel='3', title='first'}\n"
                    "operator.waitForPanel('3', 60)\n"
                    "operator.waitForPanelGone('3', 0)"),
              "operator.lua:3: panel \"3\" still there after 0 s; visible panels: \"3\"");
}

TEST_F(PanelWait, AClickThatFailedIsNotRemembered)
{
    View *panel = groupPanel("G1");
    panel->setEnabled(false);
    button(panel, {100, 10, 80, 30}, "Cancel");
    start("pcall(operator.click, {panel='G1', title='OK'})\n"
          "operator.waitForPanelGone('G1', 60)");
    MainQueue::async([panel] { panel->removeFromSuperview(); });
    EXPECT_TRUE(outcome().ok);
}

TEST_F(PanelWait, StopEndsAWait)
{
    station::OperatorScript &script = start("operator.screenshot('" + path("begun.png") +
                                            "')\n"
                                            "operator.waitForPanel('G1', 3600)");
    ASSERT_TRUE(testsupport::waitUntil([this] { return QFile::exists(path("begun.png")); }));
    script.stop();
    const Outcome result = outcome();
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.message, "operator.lua:2: stopped");
}

TEST_F(PanelWait, KeysAndSecondsAreAskedForByName)
{
    EXPECT_EQ(fails("operator.waitForPanel(nil, 1)"),
              "operator.lua:1: operator.waitForPanel: argument 1 (key) must be a text, not nil");
    EXPECT_EQ(
        fails("operator.waitForPanelGone('G1')"),
        "operator.lua:1: operator.waitForPanelGone: argument 2 (seconds) must be a number, not no value");
}
