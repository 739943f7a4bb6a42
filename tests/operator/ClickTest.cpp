#include "tests/operator/OperatorFixture.h"

#include <QScrollArea>
#include <QScrollBar>

using platform::Box;
using platform::Button;
using platform::Rect;
using platform::TextField;
using platform::View;

namespace {

using Click = testsupport::OperatorFixture;

} // namespace

TEST_F(Click, PressesAndReleasesTheViewWithTheIdentifier)
{
    button(root, {700, 560, 80, 30}, "G1", "G1");
    runs("operator.click('G1')");
    EXPECT_EQ(pressed, QStringList("G1"));
}

TEST_F(Click, OfSeveralWithTheIdentifierMeansTheFirstThatCanBeSeen)
{
    View *hidden = groupPanel("G1");
    hidden->setHidden(true);
    Box *box = tile("3");
    button(box->contentView(), {10, 10, 64, 30}, "Yes", "Pass");
    runs("operator.click('Pass')");
    EXPECT_EQ(pressed, QStringList("Yes"));
}

TEST_F(Click, MeansTheGroupsButtonRatherThanItsPanel)
{
    groupPanel("G1");
    button(root, {700, 560, 80, 30}, "G1", "G1");
    runs("operator.click('G1')");
    EXPECT_EQ(pressed, QStringList("G1"));
}

TEST_F(Click, FindsAButtonOfAPanelByItsTitle)
{
    groupPanel("G1");
    View *second = groupPanel("G2", {0, 220, 300, 100});
    button(second, {100, 10, 80, 30}, "Cancel", "G2-0-Cancel");
    runs("operator.click{panel='G2', title='Cancel'}");
    EXPECT_EQ(pressed, QStringList("Cancel"));
}

TEST_F(Click, FindsTheFieldOfASlotBeforeItsSwitch)
{
    View *panel = groupPanel("G1");
    TextField *target = field(panel, {10, 50, 100, 25}, "G1-S2");
    const Button *beside = switchButton(panel, {120, 50, 30, 30}, "G1-101-S2");
    runs("operator.click{panel='G1', slot='S2'} operator.type('x')");
    EXPECT_EQ(target->stringValue(), "x");
    EXPECT_EQ(beside->state(), Button::On);
}

TEST_F(Click, FindsTheSwitchOfASlotThatHasNoField)
{
    View *panel = groupPanel("G1");
    const Button *target = switchButton(panel, {120, 50, 30, 30}, "G1-101-S2");
    runs("operator.click{panel='G1', slot='S2'}");
    EXPECT_EQ(target->state(), Button::Off);
}

TEST_F(Click, FindsTheSwitchBesideAFieldWhenItIsAskedFor)
{
    View *panel = groupPanel("G1");
    field(panel, {10, 50, 100, 25}, "G1-S2");
    const Button *target = switchButton(panel, {120, 50, 30, 30}, "G1-101-S2");
    runs("operator.click{panel='G1', switch='S2'}");
    EXPECT_EQ(target->state(), Button::Off);
}

TEST_F(Click, GivesTheFocusToAFieldThatTakesItByClick)
{
    TextField *first = field(split, {10, 300, 200, 25}, "first");
    const TextField *second = field(split, {10, 260, 200, 25}, "second");
    first->becomeFirstResponder();
    runs("operator.click('second')");
    EXPECT_TRUE(second->isFirstResponder());
    EXPECT_FALSE(first->isFirstResponder());
}

TEST_F(Click, OnAButtonLeavesTheFocusWhereItIs)
{
    TextField *focused = field(split, {10, 300, 200, 25}, "first");
    focused->becomeFirstResponder();
    groupPanel("G1");
    runs("operator.click('Pass')");
    EXPECT_EQ(pressed, QStringList("OK"));
    EXPECT_TRUE(focused->isFirstResponder());
}

TEST_F(Click, ScrollsWhatLiesOutsideTheVisiblePartIntoSight)
{
    scroll->setDocumentSize({800, 2000});
    scroll->scrollToPoint({0, 2000});
    groupPanel("G1", {0, 20, 300, 100});
    ASSERT_GT(scroll->documentVisibleRect().y(), 120.0);
    runs("operator.click{panel='G1', title='OK'}");
    EXPECT_EQ(pressed, QStringList("OK"));
    EXPECT_TRUE(scroll->documentVisibleRect().contains(Rect(10, 30, 80, 30)));
}

TEST_F(Click, LeavesTheScrollPositionOfWhatCanBeSeen)
{
    scroll->setDocumentSize({800, 2000});
    scroll->scrollToPoint({0, 1500});
    const Rect before = scroll->documentVisibleRect();
    groupPanel("G1", {0, 1200, 300, 100});
    runs("operator.click{panel='G1', title='OK'}");
    EXPECT_EQ(pressed, QStringList("OK"));
    EXPECT_EQ(scroll->documentVisibleRect(), before);
}

TEST_F(Click, ScrollsInWhatTheStationHoldsTheViewsIn)
{
    QScrollArea area(&window);
    area.setFrameShape(QFrame::NoFrame);
    area.setGeometry(0, 0, 300, 600);
    root->setFixedSize(800, 600);
    area.setWidget(root);
    area.show();
    groupPanel("G1", {450, 100, 300, 100});
    runs("operator.click{panel='G1', title='OK'}");
    EXPECT_EQ(pressed, QStringList("OK"));
    EXPECT_GT(area.horizontalScrollBar()->value(), 0);
    area.takeWidget();
    root->setParent(&window);
}

TEST_F(Click, OutOfSightOfWhatDoesNotScrollFails)
{
    View *panel = groupPanel("G1");
    button(panel, {310, 10, 80, 30}, "Far", "Far");
    EXPECT_EQ(
        fails("operator.click('Far')"),
        "operator.lua:1: cannot click the view \"Far\": it lies out of sight, and nothing scrolls to it");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Click, FoldsAListOfChoicesThatLiesOverIt)
{
    TextField *choices = field(split, {10, 300, 200, 25}, "choices");
    choices->setChoices({"Red", "Green", "Blue"});
    Button *below = button(split, {10, 270, 100, 25}, "Below", "Below");
    choices->becomeFirstResponder();
    choices->toggleList();
    ASSERT_TRUE(choices->isListOpen());
    ASSERT_FALSE(below->isAncestorOf(window.childAt(below->mapTo(&window, below->rect().center()))));
    runs("operator.click('Below')");
    EXPECT_EQ(pressed, QStringList("Below"));
    EXPECT_FALSE(choices->isListOpen());
}

TEST_F(Click, OnWhatIsNotThereFails)
{
    EXPECT_EQ(fails("operator.click('Nobody')"), "operator.lua:1: there is no view \"Nobody\"");
}

TEST_F(Click, InAPanelThatIsNotThereSaysWhichAre)
{
    groupPanel("G1");
    EXPECT_EQ(fails("operator.click{panel='G2', title='OK'}"),
              "operator.lua:1: there is no panel \"G2\" for the button \"OK\" of panel \"G2\"; visible "
              "panels: \"G1\"");
}

TEST_F(Click, OnAMissingButtonOfAPanelFails)
{
    groupPanel("G1");
    EXPECT_EQ(fails("operator.click{panel='G1', title='Retry'}"),
              "operator.lua:1: there is no button \"Retry\" of panel \"G1\"");
}

TEST_F(Click, OnSomethingHiddenFails)
{
    groupPanel("G1")->setHidden(true);
    EXPECT_EQ(fails("operator.click('Pass')"),
              "operator.lua:1: cannot click the view \"Pass\": it is hidden");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Click, OnSomethingDisabledFails)
{
    button(root, {700, 560, 80, 30}, "G1", "G1")->setEnabled(false);
    EXPECT_EQ(fails("operator.click('G1')"), "operator.lua:1: cannot click the view \"G1\": it is disabled");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Click, OnSomethingCoveredNamesWhatCoversIt)
{
    groupPanel("G1");
    auto *cover = new View(Rect(0, 100, 300, 100));
    cover->setIdentifier(platform::Identifier("curtain"));
    split->addSubview(cover);
    EXPECT_EQ(fails("operator.click('Pass')"),
              "operator.lua:1: cannot click the view \"Pass\": it is covered by View \"curtain\"");
    EXPECT_TRUE(pressed.isEmpty());
}

TEST_F(Click, ReachesThroughAViewThatLetsClicksPass)
{
    groupPanel("G1");
    auto *pane = new View(Rect(0, 100, 300, 100));
    pane->setPassesClicksThrough(true);
    split->addSubview(pane);
    runs("operator.click('Pass')");
    EXPECT_EQ(pressed, QStringList("OK"));
}

TEST_F(Click, OutsideTheWindowFails)
{
    button(root, {2000, 560, 80, 30}, "Far", "Far");
    EXPECT_EQ(fails("operator.click('Far')"),
              "operator.lua:1: cannot click the view \"Far\": it lies outside the window");
}

TEST_F(Click, TargetOfAnotherFormIsRefused)
{
    const QString forms = "an identifier or a table {panel=..., title=...}, {panel=..., slot=...} or "
                          "{panel=..., switch=...}, not ";
    EXPECT_EQ(fails("operator.click()"),
              "operator.lua:1: operator.click: argument 1 (target) must be " + forms + "no value");
    EXPECT_EQ(fails("operator.click{title='OK'}"),
              "operator.lua:1: operator.click: argument 1 (target) must be " + forms + "table");
    EXPECT_EQ(fails("operator.click{panel='G1', title='OK', slot='S1'}"),
              "operator.lua:1: operator.click: argument 1 (target) must be " + forms + "table");
}
